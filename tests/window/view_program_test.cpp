// TolvanView as its user has it: the program runs, its windows get keys and commands, and what they
// show and write is looked at.
//
// With TLVN_PICTURES in the environment, the name of a folder, each step leaves a picture of the
// screen there (scripts/draw-view.sh).

#include "tests/zip/zip_support.h"
#include "viewer/command_id.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using tlvn::WString;
using tlvn::WStringView;

const WCHAR kFrameClass[] = TW("TolvanViewWndClass");
const WCHAR kComposeClass[] = TW("TolvanComposeWndClass");
const WCHAR kDialogClass[] = TW("#32770");
constexpr DWORD kPatience = 30'000; // milliseconds
constexpr DWORD kPause = 20;
constexpr int kTextField = 201; // of the program's own
constexpr WCHAR kHalfWidthA = 0xFF71;

bool WaitUntil(const std::function<bool()>& holds)
{
    for (DWORD waited = 0; waited < kPatience; waited += kPause) {
        if (holds())
            return true;
        ::Sleep(kPause);
    }
    return false;
}

WString TextOf(HWND window)
{
    WCHAR text[1'000] = {};
    ::SendMessageW(window, WM_GETTEXT, 1'000, reinterpret_cast<LPARAM>(text));
    return text;
}

void SetTextOf(HWND window, const WString& text)
{
    ::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

bool Contains(const WString& text, WStringView part)
{
    return text.find(part) != text.npos;
}

void Command(HWND window, int command)
{
    ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

struct Search {
    DWORD process;
    WStringView className;
    WStringView text; // part of its text; empty for any
    HWND found;
};

BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    WCHAR name[64] = {};
    ::GetClassNameW(window, name, 64);
    if (process != search.process || search.className != name || !::IsWindowVisible(window) ||
        (!search.text.empty() && !Contains(TextOf(window), search.text)))
        return TRUE;
    search.found = window;
    return FALSE;
}

// The screen as a bitmap file, if pictures are wanted.
void TakePicture(const char* name)
{
    const char* const folder = std::getenv("TLVN_PICTURES");
    if (folder == nullptr)
        return;
    ::Sleep(700); // until all is drawn
    const int width = ::GetSystemMetrics(SM_CXSCREEN);
    const int height = ::GetSystemMetrics(SM_CYSCREEN);
    const HDC screen = ::GetDC(nullptr);
    const HDC memory = ::CreateCompatibleDC(screen);
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(memory, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HGDIOBJ old = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
    const auto size = static_cast<DWORD>((width * 3 + 3) / 4 * 4 * height); // rows of 32 bits
    BITMAPFILEHEADER header = {};
    header.bfType = 0x4D42;
    header.bfOffBits = sizeof header + sizeof info.bmiHeader;
    header.bfSize = header.bfOffBits + size;
    std::ofstream file(std::filesystem::path(folder) / (std::string(name) + ".bmp"),
                       std::ios::binary);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
    file.write(static_cast<const char*>(pixels), size);
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
}

// The program, which ends with the object.
class Program {
public:
    Program(const std::string& settings, const std::string& mails)
    {
        WCHAR path[MAX_PATH] = {};
        ::GetModuleFileNameW(nullptr, path, MAX_PATH);
        const std::filesystem::path program =
            std::filesystem::path(path).parent_path() / "TolvanView.exe";
        WString command = TW("\"") + program.wstring() + TW("\" --settings \"") +
                          tlvn::Utf8ToUtf16(settings) + TW("\" \"") + tlvn::Utf8ToUtf16(mails) +
                          TW("\"");
        STARTUPINFOW start = {};
        start.cb = sizeof start;
        ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                         &start, &m_process);
    }
    ~Program()
    {
        ::TerminateProcess(m_process.hProcess, 1);
        ::CloseHandle(m_process.hProcess);
        ::CloseHandle(m_process.hThread);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // A visible window of its own, waited for; null when it does not come.
    HWND Window(WStringView className, WStringView text = {})
    {
        return Child(::GetDesktopWindow(), className, text);
    }
    HWND Frame() { return Window(kFrameClass, TW(" - TolvanView")); }
    HWND Child(HWND parent, WStringView className, WStringView text = {})
    {
        Search search = {m_process.dwProcessId, className, text, nullptr};
        WaitUntil([&] {
            ::EnumChildWindows(parent, VisitWindow, reinterpret_cast<LPARAM>(&search));
            return search.found != nullptr;
        });
        return search.found;
    }

    // Presses a button of a dialog, which then goes.
    void Press(HWND dialog, WStringView text)
    {
        ::PostMessageW(Child(dialog, TW("Button"), text), BM_CLICK, 0, 0);
        ExpectGone(dialog);
    }
    // The same of a button of the system's, whose texts are in its language.
    void End(HWND dialog, int button)
    {
        Command(dialog, button);
        ExpectGone(dialog);
    }
    void AnswerPassword(const WCHAR* text, const char* picture = nullptr)
    {
        const HWND dialog = Window(kDialogClass, TW("パスワード"));
        ASSERT_NE(dialog, nullptr);
        if (picture != nullptr)
            TakePicture(picture);
        SetTextOf(::GetDlgItem(dialog, kTextField), text);
        End(dialog, IDOK);
    }

    // Opens a dialog by its command, has it filled in, and ends it by the button.
    void Fill(HWND frame, int command, const std::function<void(HWND)>& fill, int button)
    {
        Command(frame, command);
        const HWND dialog = Window(kDialogClass);
        ASSERT_NE(dialog, nullptr) << command;
        fill(dialog);
        End(dialog, button);
    }

    // Gives the system's dialog a path, once it has filled its field with the name proposed.
    void SaveAs(const std::filesystem::path& path)
    {
        const HWND dialog = Window(kDialogClass);
        ASSERT_NE(dialog, nullptr);
        const HWND field = Child(dialog, TW("Edit"));
        EXPECT_TRUE(WaitUntil([&] { return !TextOf(field).empty(); }));
        SetTextOf(field, path.wstring());
        End(dialog, IDOK);
    }

    // Closes the main window, also when the program tells before that it does not save its
    // settings. The exit code, or ~0 when the program stays.
    DWORD Close(HWND frame, bool tells = false)
    {
        ::PostMessageW(frame, WM_CLOSE, 0, 0);
        if (tells)
            End(Window(kDialogClass, TW("TolvanView")), IDOK);
        DWORD code = ~0U;
        if (::WaitForSingleObject(m_process.hProcess, kPatience) == WAIT_OBJECT_0)
            ::GetExitCodeProcess(m_process.hProcess, &code);
        return code;
    }

private:
    static void ExpectGone(HWND dialog)
    {
        EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(dialog) || !::IsWindowVisible(dialog); }));
    }

    PROCESS_INFORMATION m_process = {};
};

class ViewProgram : public testing::Test {
protected:
    ViewProgram()
    {
        std::filesystem::copy(std::filesystem::path(TLVN_SOURCE_DIR) / "samples",
                              folder.Native("mails"));
        settings = folder.Path("settings.cfg");
    }

    static int CountMails(HWND list)
    {
        return static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    }

    // One's own address in a file of settings.
    void StoreAddress(const char* password) const
    {
        CSettingData data;
        data.LoadNone();
        data.SetCryptKey(password);
        data.SetValue("Mail", "From", "me@example.jp");
        data.SaveSdWithRetry(settings.c_str(), ASK_NOTHING, 0, nullptr, nullptr, nullptr);
    }
    // A value of that file; empty when there is none.
    std::string Stored(const char* password, const char* section, const char* name) const
    {
        CSettingData data;
        data.SetCryptKey(password);
        EXPECT_TRUE(data.LoadFile(settings.c_str()));
        CString text;
        data.GetValue(section, name, text);
        return text.GetString();
    }

    TempFolder folder;
    std::string settings;
};

// One user's way through the program.
TEST_F(ViewProgram, ReadsSearchesMarksRepliesAndExports)
{
    Program program(settings, folder.Path("mails"));
    const HWND frame = program.Frame();
    ASSERT_NE(frame, nullptr);
    ::SetForegroundWindow(frame);
    const HWND list = program.Child(frame, TW("SysListView32"));
    EXPECT_EQ(CountMails(list), 13);
    TakePicture("view-open");

    // Arrow keys choose another mail, here the one in ISO-2022-JP.
    for (int i = 0; i < 2; ++i)
        ::PostMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
    EXPECT_TRUE(WaitUntil([&] { return Contains(TextOf(frame), TW("秋のカタログ")); }));

    // The menu with its keys is there to be looked at; its texts do not leave the process.
    ::PostMessageW(frame, WM_SYSCOMMAND, SC_KEYMENU, 'M');
    EXPECT_NE(program.Window(TW("#32768")), nullptr);
    TakePicture("view-menu");
    ::SendMessageW(frame, WM_CANCELMODE, 0, 0);

    Command(frame, ID_SEARCH_FIND);
    const HWND bar = program.Child(frame, TW("TolvanFindBarClass"));
    const HWND field = program.Child(bar, TW("Edit"));
    SetTextOf(field, TW("[0-9]+(月|日)"));
    const HWND none = program.Child(bar, TW("Static"), TW("見つかりません"));
    EXPECT_NE(none, nullptr);
    ::PostMessageW(program.Child(bar, TW("Button"), TW("正規表現")), BM_CLICK, 0, 0);
    EXPECT_NE(program.Child(bar, TW("Static"), TW("か所")), nullptr);
    Command(frame, ID_SEARCH_NEXT);
    TakePicture("view-search");

    // Searching selects; selected text of the body is marked, and the mark is kept beside the mail.
    SetTextOf(field, TW("の"));
    EXPECT_NE(program.Child(bar, TW("Static"), TW("か所")), nullptr);
    for (int i = 0; i < 3; ++i)
        Command(frame, ID_SEARCH_PREVIOUS);
    Command(frame, ID_MARKER_FIRST);
    EXPECT_TRUE(WaitUntil([&] { return !folder.Read("mails/.tolvan-markers").empty(); }));
    Command(frame, ID_SEARCH_CLOSE);
    TakePicture("view-marker");

    // A reply: recipient and subject are there; half-width katakana is pointed out and replaced.
    Command(frame, ID_MAIL_REPLY);
    const HWND compose = program.Window(kComposeClass);
    ASSERT_NE(compose, nullptr);
    EXPECT_TRUE(Contains(TextOf(::GetDlgItem(compose, 2)), TW("@")));
    EXPECT_TRUE(Contains(TextOf(::GetDlgItem(compose, 4)), TW("Re: ")));
    const HWND editor = ::GetDlgItem(compose, 21);
    ::PostMessageW(editor, WM_CHAR, kHalfWidthA, 1);
    EXPECT_NE(program.Child(compose, TW("msctls_statusbar32"), TW("半角カタカナ 1")), nullptr);
    TakePicture("view-reply");
    Command(compose, ID_FILE_SAVE);
    const HWND warning = program.Window(kDialogClass);
    ASSERT_NE(warning, nullptr);
    TakePicture("view-warning");
    program.Press(warning, TW("置き換える"));
    program.SaveAs(folder.Native("mails\\reply.eml"));
    EXPECT_TRUE(WaitUntil([&] { return CountMails(list) == 14; }));
    EXPECT_NE(folder.Read("mails/reply.eml").find("In-Reply-To: <"), std::string::npos);
    // "ア" of JIS X 0208; the half-width one would have gone as it stands or in UTF-8.
    EXPECT_NE(folder.Read("mails/reply.eml").find("\x1b$B%\""), std::string::npos);
    ::PostMessageW(compose, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(compose); }));

    // All mails of the list into an archive with a password.
    ::SetForegroundWindow(frame);
    Command(frame, ID_VIEW_NEXT_PANE);
    Command(frame, ID_VIEW_NEXT_PANE);
    Command(frame, ID_EDIT_SELECT_ALL);
    Command(frame, ID_FILE_EXPORT);
    program.SaveAs(folder.Native("all.zip"));
    program.AnswerPassword(TW("secret"), "view-export");
    EXPECT_TRUE(WaitUntil([&] { return folder.Exists("all.zip"); }));
    const auto mails = ReadZip(folder.Read("all.zip"), "secret");
    EXPECT_EQ(mails.size(), 14U);
    EXPECT_EQ(mails.at("reply.eml"), folder.Read("mails/reply.eml"));

    // To nothing and back, and in another arrangement.
    for (const int size : {0, 60, 200, 900}) {
        ::SetWindowPos(frame, nullptr, 0, 0, size, size * 3 / 4, SWP_NOZORDER);
        ::UpdateWindow(frame);
    }
    Command(frame, ID_VIEW_SPLIT_LAST);
    TakePicture("view-layout");
    EXPECT_EQ(program.Close(frame), 0U);
    EXPECT_EQ(Stored("", "Frame", "SplitType"), std::to_string(SPLIT_THREE_ROWS));
}

// A mail that breaks the rules, its multiparts deeper than anybody goes, is text. What cannot be
// read is told in its place. A window that reads can be closed.
TEST_F(ViewProgram, ShowsWhateverItIsGiven)
{
    std::string rules = "Date: 1 Jan 2024 00:00\nSubject: \xFF\xFE\r\r=?ISO-2022-JP?B?GyRC!!?=\n"
                        "From: <<a@@b,,\"\n";
    for (int i = 0; i < 1'000; ++i) {
        const std::string boundary = "b" + std::to_string(i);
        rules += "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + '\n';
    }
    folder.Write("odd/rules.eml", rules + '\0' + "\x1B$B\x80\x81");
    folder.Write("odd/empty.eml", "");
    folder.Write("odd/big", "From a\nSubject: big\n\n" + std::string(100'000'000, 'x'));
    {
        Program program(settings, folder.Path("odd"));
        const HWND frame = program.Window(kFrameClass);
        const HWND editor = program.Child(frame, TW("TolvanEditorWndClass"));
        EXPECT_TRUE(WaitUntil([&] { return Contains(TextOf(editor), TW("\n--b100")); }));
        const HWND list = program.Child(frame, TW("SysListView32"));
        ::PostMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
        EXPECT_TRUE(WaitUntil([&] { return Contains(TextOf(editor), TW("空のファイルです。")); }));
        EXPECT_EQ(program.Close(frame), 0U);
    }
    Program program(settings, folder.Path("odd/big"));
    EXPECT_EQ(program.Close(program.Window(kFrameClass)), 0U);
}

// A file that cannot be read is told, and kept under another name; the program works.
TEST_F(ViewProgram, GoesOnWithDamagedSettings)
{
    const std::string damaged("\xFF\xFE[\0D\0A\0T\0A\0-\0S\0T\0A\0R\0T\0]\0\r\0\n\0", 30);
    folder.Write("settings.cfg", damaged);
    Program program(settings, folder.Path("mails"));
    const HWND box = program.Window(kDialogClass, TW("TolvanView"));
    ASSERT_NE(box, nullptr);
    TakePicture("view-damaged");
    program.End(box, IDOK);
    EXPECT_EQ(program.Close(program.Frame(), true), 0U);
    EXPECT_EQ(folder.Read("settings.cfg.kept"), damaged);
    EXPECT_NE(Stored("", "Frame", "SplitType"), "");
}

TEST_F(ViewProgram, LeavesReadOnlySettingsAlone)
{
    StoreAddress("");
    const std::string before = folder.Read("settings.cfg");
    ASSERT_TRUE(tlvn::SetFileReadOnly(settings.c_str(), true));
    {
        Program program(settings, folder.Path("mails"));
        EXPECT_EQ(program.Close(program.Frame(), true), 0U);
    }
    EXPECT_EQ(folder.Read("settings.cfg"), before);
    tlvn::SetFileReadOnly(settings.c_str(), false);
}

// 24 points.
void FillFont(HWND dialog)
{
    constexpr int kSizes = 1138; // of the system's dialog
    const HWND sizes = ::GetDlgItem(dialog, kSizes);
    ::SendMessageW(sizes, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                   reinterpret_cast<LPARAM>(TW("24")));
    ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kSizes, CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(sizes));
}

void FillColor(HWND dialog, COLORREF color)
{
    constexpr int kRedField = 706; // of the system's dialog
    const int parts[] = {GetRValue(color), GetGValue(color), GetBValue(color)};
    for (int i = 0; i < 3; ++i)
        SetTextOf(::GetDlgItem(dialog, kRedField + i), std::to_wstring(parts[i]));
}

// Ctrl+J in place of the keys of the search.
void FillKeys(HWND dialog)
{
    constexpr int kCommandList = 202; // of the program's own
    constexpr int kHotKey = 203;
    constexpr WPARAM kAssign = 204;
    ::SendDlgItemMessageW(dialog, kCommandList, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                          reinterpret_cast<LPARAM>(TW("検索...")));
    ::SendDlgItemMessageW(dialog, kHotKey, HKM_SETHOTKEY, MAKEWORD('J', HOTKEYF_CONTROL), 0);
    ::SendMessageW(dialog, WM_COMMAND, kAssign, 0);
}

void PressControlAnd(BYTE key)
{
    ::keybd_event(VK_CONTROL, 0, 0, 0);
    ::keybd_event(key, 0, 0, 0);
    ::keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    ::keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
}

// What the screen shows at a place of a window's client area.
COLORREF PixelAt(HWND window, POINT place)
{
    ::ClientToScreen(window, &place);
    const HDC screen = ::GetDC(nullptr);
    const COLORREF color = ::GetPixel(screen, place.x, place.y);
    ::ReleaseDC(nullptr, screen);
    return color;
}

// What is given up changes nothing; what is confirmed shows at once and is kept.
TEST_F(ViewProgram, ChangesWhatItsDialogsAreTold)
{
    constexpr COLORREF kText = RGB(1, 2, 3);
    constexpr COLORREF kBack = RGB(250, 240, 230);
    const auto fillText = [](const WCHAR* text) {
        return [text](HWND dialog) { SetTextOf(::GetDlgItem(dialog, kTextField), text); };
    };
    const struct {
        int command;
        std::function<void(HWND)> fill;
    } changes[] = {
        {ID_SETTINGS_FONT, FillFont},
        {ID_SETTINGS_TEXT_COLOR, [](HWND d) { FillColor(d, kText); }},
        {ID_SETTINGS_BACK_COLOR, [](HWND d) { FillColor(d, kBack); }},
        {ID_SETTINGS_KEYS, FillKeys},
        {ID_SETTINGS_ADDRESS, fillText(TW("me@example.jp"))},
        {ID_SETTINGS_PASSWORD, fillText(TW("secret"))},
    };
    for (const int button : {IDCANCEL, IDOK}) {
        Program program(settings, folder.Path("mails"));
        const HWND frame = program.Frame();
        ASSERT_NE(frame, nullptr);
        for (const auto& change : changes)
            program.Fill(
                frame, change.command,
                [&](HWND dialog) {
                    change.fill(dialog);
                    if (change.command == ID_SETTINGS_KEYS && button == IDCANCEL)
                        TakePicture("view-keys");
                },
                button);
        if (button == IDOK) {
            ::SetForegroundWindow(frame);
            PressControlAnd('J');
            EXPECT_NE(program.Child(frame, TW("TolvanFindBarClass")), nullptr);
            Command(frame, ID_MAIL_NEW);
            const HWND compose = program.Window(kComposeClass);
            EXPECT_EQ(TextOf(::GetDlgItem(compose, 1)), TW("me@example.jp"));
            // The text is in Shift_JIS until it gets what that does not have.
            const HWND editor = ::GetDlgItem(compose, 21);
            for (const WPARAM unit : {0x25A0, 0xE9})
                ::SendMessageW(editor, WM_CHAR, unit, 1);
            EXPECT_EQ(TextOf(editor), TW("\x25A0\xE9"));
            // The square is that large with 24 points only.
            EXPECT_TRUE(WaitUntil([&] { return PixelAt(editor, {20, 20}) == kText; }));
            EXPECT_EQ(PixelAt(editor, {200, 200}), kBack);
            ::PostMessageW(compose, WM_CLOSE, 0, 0);
            program.End(program.Window(kDialogClass), IDYES);
        }
        EXPECT_EQ(program.Close(frame), 0U);
        const struct {
            const char *section, *name, *canceled, *confirmed;
        } values[] = {{"Viewer", "FontPoint_128", "9", "24"},
                      {"Composer", "FontPoint_128", "9", "24"},
                      {"Colors", "Text", "0xFFFFFFFF", "0x00030201"},
                      {"Colors", "Back", "0xFFFFFFFF", "0x00E6F0FA"},
                      {"Mail", "From", "", "me@example.jp"},
                      {"Keys", "Main4", "40040 Ctrl+F", "40040 Ctrl+J"}};
        for (const auto& value : values)
            EXPECT_EQ(Stored(button == IDOK ? "secret" : "", value.section, value.name),
                      button == IDOK ? value.confirmed : value.canceled);
    }
}

// An enciphered file asks for its password until it is right; the file stays enciphered.
TEST_F(ViewProgram, AsksForThePasswordOfItsSettings)
{
    StoreAddress("secret");
    Program program(settings, folder.Path("mails"));
    for (const WCHAR* password : {TW("wrong"), TW("secret")})
        program.AnswerPassword(password);
    EXPECT_EQ(program.Close(program.Frame()), 0U);
    EXPECT_EQ(Stored("secret", "Mail", "From"), "me@example.jp");
    EXPECT_NE(folder.Read("settings.cfg").substr(0, 2), "\xFF\xFE");
}

} // namespace
