#include "framework/framework.h"
#include "framework/headless/headless.h"
#include "tests/support/test.h"
#include "ui/accel_data.h"

#include <functional>

namespace {

namespace headless = tlvn::headless;
using tlvn::WString;

std::vector<UINT> g_messages;

LRESULT CALLBACK Recorder(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    g_messages.push_back(message);
    return DefWindowProcW(window, message, wParam, lParam);
}

class Headless : public testing::Test {
protected:
    void SetUp() override
    {
        headless::Reset();
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = &Recorder;
        windowClass.style = CS_DBLCLKS;
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        windowClass.lpszClassName = TW("Recorder");
        RegisterClassW(&windowClass);
        top = CreateWindowExW(0, TW("Recorder"), TW("top"), WS_POPUP | WS_VISIBLE, 100, 100, 400,
                              300, nullptr, nullptr, nullptr, nullptr);
        UpdateWindow(top);
        g_messages.clear();
    }
    void TearDown() override
    {
        headless::Reset();
        UnregisterClassW(TW("Recorder"), nullptr);
    }
    HWND MakeChild(DWORD style)
    {
        return CreateWindowExW(0, TW("recorder"), TW("child"), WS_CHILD | style, 10, 10, 100, 50,
                               top, nullptr, nullptr, nullptr);
    }
    void Draw(HWND window, int x, int y, const WCHAR* text, int length)
    {
        const HDC dc = GetDC(window);
        SetBkMode(dc, TRANSPARENT);
        TextOutW(dc, x, y, text, length);
        ReleaseDC(window, dc);
    }
    void Fill(HWND window, const RECT& rect, COLORREF color)
    {
        const HDC dc = GetDC(window);
        SetBkColor(dc, color);
        ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
        ReleaseDC(window, dc);
    }

    HWND top = nullptr;
};

using Messages = std::vector<UINT>;

// The order in which Windows sends them to a child; the parent's notice comes in between, but
// goes to the same procedure here.
TEST_F(Headless, ChildHearsOfItsLifeInOrder)
{
    const HWND child = MakeChild(0);
    EXPECT_EQ(g_messages,
              (Messages{WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, WM_SIZE, WM_MOVE, WM_PARENTNOTIFY}));
    g_messages.clear();
    ShowWindow(child, SW_SHOW);
    EXPECT_EQ(g_messages, (Messages{WM_SHOWWINDOW, WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED}));
    g_messages.clear();
    SetFocus(child);
    SetCapture(child);
    g_messages.clear();
    ShowWindow(child, SW_HIDE);
    // A hidden window keeps neither mouse nor focus.
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(GetFocus(), top);
    g_messages.clear();
    DestroyWindow(child);
    EXPECT_EQ(g_messages, (Messages{WM_PARENTNOTIFY, WM_DESTROY, WM_NCDESTROY}));
    EXPECT_FALSE(IsWindow(child));
    // The slot is used again, the stale handle is not.
    const HWND next = MakeChild(0);
    EXPECT_NE(next, child);
    EXPECT_FALSE(IsWindow(child));
}

TEST_F(Headless, TreeIsDestroyedDownAndFreedUp)
{
    const HWND child = MakeChild(WS_VISIBLE);
    CreateWindowExW(0, TW("Recorder"), TW(""), WS_CHILD, 0, 0, 5, 5, child, nullptr, nullptr,
                    nullptr);
    g_messages.clear();
    DestroyWindow(top);
    std::erase_if(g_messages, [](UINT m) { return m != WM_DESTROY && m != WM_NCDESTROY; });
    EXPECT_EQ(g_messages, (Messages{WM_DESTROY, WM_DESTROY, WM_DESTROY, WM_NCDESTROY, WM_NCDESTROY,
                                    WM_NCDESTROY}));
}

// Random trees of windows moved, hidden and destroyed while keys and the mouse come in: nothing
// refers to a window that is gone (the sanitizers watch), and the state stays consistent.
TEST_F(Headless, RandomOperationsKeepTheStateConsistent)
{
    std::mt19937 random(7);
    const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    std::vector<HWND> all = {top};
    HWND window = nullptr;
    const std::function<void()> operations[] = {
        [&] {
            const DWORD style = (below(2) ? WS_VISIBLE : 0) | (below(2) ? WS_CLIPCHILDREN : 0);
            all.push_back(CreateWindowExW(0, TW("Recorder"), TW(""), WS_CHILD | style, below(200),
                                          5, 80, 60, window, nullptr, nullptr, nullptr));
        },
        [&] { window != top&& DestroyWindow(window); },
        [&] { ShowWindow(window, below(2) ? SW_SHOW : SW_HIDE); },
        [&] { SetFocus(window); },
        [&] { SetCapture(window); },
        [&] { MoveWindow(window, below(300), below(200), below(300), 100, TRUE); },
        [&] { SetTimer(window, random() % 3 + 1, 10, nullptr); },
        [&] {
            headless::SendMouseClick({below(500), 150});
        },
        [&] { headless::SendKeyPress('A'); },
        [&] { InvalidateRect(window, nullptr, TRUE); },
        [&] { tlvn::PumpPendingMessages(); },
    };
    for (int i = 0; i < 4000; ++i) {
        window = all[random() % all.size()];
        operations[random() % std::size(operations)]();
        std::erase_if(all, [](HWND h) { return !IsWindow(h); });
        for (const HWND held : {GetFocus(), GetCapture(), GetActiveWindow()})
            ASSERT_TRUE(held == nullptr || IsWindow(held)) << i;
        std::string svg;
        ASSERT_TRUE(i % 100 != 0 || tlvn::WriteWindowSvg(top, svg));
    }
}

// Width by width against a plain list of blocks.
TEST(CellMetrics, HalfAndFullWidth)
{
    const headless::CellFont font = headless::MakeCellFont(-12, 0);
    for (const WCHAR half : std::u16string(u"A~\u00E9\u00FF\uFF61\uFF9F\uFFDC"))
        EXPECT_EQ(font.WidthOf(half), 6) << static_cast<int>(half);
    for (const WCHAR full : std::u16string(u"\u3000\u3042\u30FF\u4E00\u9FFF\uFF01\uFF60\uFFE5"
                                           u"\uE000\u2026\u2500\u0416\u03B1"))
        EXPECT_EQ(font.WidthOf(full), 12) << static_cast<int>(full);
    EXPECT_EQ(font.WidthOf(TW("\U00020BB7"), 2), 12) << "a pair is one full-width character";
    // An odd height: the half is rounded down.
    EXPECT_EQ(headless::MakeCellFont(-13, 0).half, 6);
    int width = 0;
    EXPECT_EQ(font.FitIn(TW("a\u3042b"), 3, 17, width), 1);
    EXPECT_EQ(width, 6);
    EXPECT_EQ(font.FitIn(TW("a\u3042b"), 3, 18, width), 2);
}

TEST_F(Headless, KeysBecomeMessagesWithTheStateOfTheirTime)
{
    SetFocus(top);
    for (const auto& [held, key] : {std::pair(VK_SHIFT, 'A'), {VK_MENU, 'F'}}) {
        headless::SendKey(held, true);
        headless::SendKeyPress(key);
        headless::SendKey(held, false);
    }
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "nothing is taken yet";
    MSG message;
    std::vector<std::pair<UINT, WPARAM>> seen;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        seen.emplace_back(message.message, message.wParam);
        TranslateMessage(&message);
    }
    const std::vector<std::pair<UINT, WPARAM>> wanted = {
        {WM_KEYDOWN, VK_SHIFT}, {WM_KEYDOWN, 'A'},        {WM_CHAR, 'A'},       {WM_KEYUP, 'A'},
        {WM_KEYUP, VK_SHIFT},   {WM_SYSKEYDOWN, VK_MENU}, {WM_SYSKEYDOWN, 'F'}, {WM_SYSCHAR, 'f'},
        {WM_SYSKEYUP, 'F'},     {WM_SYSKEYUP, VK_MENU}};
    EXPECT_EQ(seen, wanted);
}

// Clicks where the child is -> the messages it gets; the last is too late for a double click.
// Captured, the mouse stays with the window.
TEST_F(Headless, MouseFindsItsWindow)
{
    const HWND child = MakeChild(WS_VISIBLE);
    headless::UseTestClock();
    MSG message;
    Messages seen;
    for (int click = 0; click < 3; ++click) {
        headless::AdvanceClock(click == 2 ? 600 : 100);
        headless::SendMouseClick({115, 120});
        while (PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
            EXPECT_EQ(message.hwnd, child);
            EXPECT_EQ(CPoint(message.lParam), CPoint(5, 10));
            seen.push_back(message.message);
        }
    }
    EXPECT_EQ(seen,
              (Messages{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEMOVE, WM_LBUTTONDBLCLK,
                        WM_LBUTTONUP, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP}));
    SetCapture(child);
    headless::SendMouseMove({0, 0});
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE));
    EXPECT_EQ(message.hwnd, child);
    EXPECT_EQ(CPoint(message.lParam), CPoint(-110, -110));
}

TEST_F(Headless, TestClockFiresEveryPeriod)
{
    headless::UseTestClock();
    SetTimer(top, 1, 100, nullptr);
    SetTimer(top, 2, 250, nullptr);
    g_messages.clear();
    headless::AdvanceClock(99);
    EXPECT_EQ(std::count(g_messages.begin(), g_messages.end(), WM_TIMER), 0);
    headless::AdvanceClock(901);
    EXPECT_EQ(std::count(g_messages.begin(), g_messages.end(), WM_TIMER), 10 + 4);
    MSG message;
    EXPECT_FALSE(GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER)) << "it must not wait";
}

// What an opaque operation covers wholly is forgotten, and what is scrolled out; otherwise
// painting would pile up.
TEST_F(Headless, RepaintingReplacesOlderDrawing)
{
    const RECT all = {0, 0, 400, 300};
    for (int i = 0; i < 200; ++i) {
        Fill(top, all, RGB(255, 255, 255));
        for (int line = 0; line < 10; ++line)
            Draw(top, 0, line * 16, TW("\u65E5\u672C\u8A9E text"), 8);
    }
    EXPECT_EQ(headless::GetDrawing(top)->Operations().size(), 11u);
    const auto texts = headless::GetDrawnTexts(top);
    ASSERT_EQ(texts.size(), 10u);
    EXPECT_EQ(texts[3].text, TW("\u65E5\u672C\u8A9E text"));
    EXPECT_EQ(CPoint(texts[3].position), CPoint(0, 48));
    // A fill over part of a line leaves the line; one over all of it does not.
    Fill(top, {0, 48, 20, 64}, RGB(1, 2, 3));
    EXPECT_EQ(headless::GetDrawnTexts(top).size(), 10u);
    Fill(top, {0, 48, 400, 64}, RGB(1, 2, 3));
    EXPECT_EQ(headless::GetDrawnTexts(top).size(), 9u);
    EXPECT_EQ(headless::GetDrawnColor(top, 5, 50), RGB(1, 2, 3));

    for (int step = 0; step < 100; ++step) {
        RECT exposed = {};
        ScrollWindowEx(top, 0, -16, &all, &all, nullptr, &exposed, 0);
        Fill(top, exposed, RGB(255, 255, step));
        Draw(top, 0, exposed.top, TW("line"), 4);
    }
    EXPECT_LT(headless::GetDrawing(top)->Operations().size(), 50u);
}

// A window that leaves the result alone gets characters.
TEST_F(Headless, CompositionTextIsTaken)
{
    SetFocus(top);
    headless::CommitCompositionText(top, TW("\u65E5\u672C"));
    MSG message;
    WString typed;
    while (PeekMessageW(&message, nullptr, WM_CHAR, WM_CHAR, PM_REMOVE))
        typed.push_back(static_cast<WCHAR>(message.wParam));
    EXPECT_EQ(typed, TW("\u65E5\u672C"));
}

TEST_F(Headless, ToolTipsAskTheirOwner)
{
    const HWND tips = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP, 0, 0, 0, 0, top,
                                      nullptr, nullptr, nullptr);
    ASSERT_NE(tips, nullptr);
    WCHAR own[] = TW("\u8AAC\u660E");
    TOOLINFOW tool = {};
    tool.cbSize = sizeof(tool);
    tool.hwnd = top;
    for (const auto& [id, text] : {std::pair(3u, own), {4u, LPSTR_TEXTCALLBACKW}}) {
        tool.uId = id;
        tool.lpszText = text;
        SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    EXPECT_EQ(SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0), 2);
    EXPECT_EQ(headless::GetToolTipText(tips, top, 3), TW("\u8AAC\u660E"));
    g_messages.clear();
    EXPECT_EQ(headless::GetToolTipText(tips, top, 4), TW(""));
    EXPECT_EQ(g_messages, Messages{WM_NOTIFY});
}

TEST_F(Headless, MessageBoxesAndMenusAnswer)
{
    EXPECT_EQ(MessageBoxW(top, TW("a"), TW("b"), MB_OK), IDOK);
    EXPECT_EQ(MessageBoxW(top, TW("a"), TW("b"), MB_YESNO | MB_DEFBUTTON2), IDNO);
    headless::SetMessageBoxAnswer(IDCANCEL);
    EXPECT_EQ(MessageBoxW(top, TW("c"), TW("b"), MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(headless::GetMessageBoxes().at(2).text, TW("c"));
    headless::SetPopupMenuAnswer(9);
    CMenu menu;
    menu.CreatePopupMenu();
    EXPECT_EQ(TrackPopupMenu(menu.m_hMenu, TPM_RETURNCMD, 0, 0, 0, top, nullptr), 9);
    EXPECT_EQ(headless::GetShownMenu(), menu.m_hMenu);
}

// The picture holds what can be seen, in characters that XML allows.
TEST_F(Headless, SvgHoldsTheWindow)
{
    SetWindowLongW(top, GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_VISIBLE | WS_VSCROLL));
    const HWND child = MakeChild(WS_VISIBLE | WS_BORDER);
    UpdateWindow(child);
    UpdateWindow(top);
    const WCHAR hostile[] = {u'<', u'&', u'"', u'>', 0x0001, 0xD800, u'\u65E5', 0xFFFF};
    Draw(child, 2, 2, hostile, 8);
    SetFocus(top);
    CreateCaret(top, nullptr, 2, 16);
    ShowCaret(top);
    std::string svg;
    ASSERT_TRUE(tlvn::WriteWindowSvg(top, svg));
    for (const char* wanted :
         {"width=\"400\" height=\"300\"", "&lt;&amp;&quot;&gt;", "\xE6\x97\xA5"})
        EXPECT_NE(svg.find(wanted), std::string::npos) << wanted;
    EXPECT_EQ(svg.find_first_of("\x01\x7F"), std::string::npos);
    EXPECT_FALSE(tlvn::WriteWindowSvg(nullptr, svg));
}

TEST_F(Headless, AcceleratorResourcesAreLoadedByName)
{
    const ACCEL entries[] = {{FVIRTKEY | FCONTROL, 'N', 101}, {FVIRTKEY, VK_F5, 102}};
    headless::AddAcceleratorResource(TW("MAINKEYS"), entries, 2);
    CAccelData table;
    table.LoadResourceAccelData("MAINKEYS");
    ASSERT_EQ(table.GetSize(), 2);
    EXPECT_EQ(table.GetCmdID(FCONTROL, 'N'), 101);
    table.LoadResourceAccelData("OTHER");
    EXPECT_EQ(table.GetSize(), 0);
}

} // namespace
