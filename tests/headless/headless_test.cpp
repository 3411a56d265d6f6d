#include "framework/framework.h"
#include "framework/headless/headless.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

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
    Messages ends;
    for (const UINT m : g_messages) {
        if (m == WM_DESTROY || m == WM_NCDESTROY)
            ends.push_back(m);
    }
    EXPECT_EQ(ends, (Messages{WM_DESTROY, WM_DESTROY, WM_DESTROY, WM_NCDESTROY, WM_NCDESTROY,
                              WM_NCDESTROY}));
}

// Random trees of windows moved, hidden and destroyed while keys and the mouse come in: nothing
// refers to a window that is gone (the sanitizers watch), and the state stays consistent.
TEST_F(Headless, RandomOperationsKeepTheStateConsistent)
{
    std::mt19937 random(7);
    std::vector<HWND> all = {top};
    const auto pick = [&] { return all[random() % all.size()]; };
    for (int i = 0; i < 4000; ++i) {
        const HWND window = pick();
        switch (random() % 10) {
        case 0:
            all.push_back(CreateWindowExW(
                0, TW("Recorder"), TW(""),
                WS_CHILD | (random() % 2 ? WS_VISIBLE : 0) | (random() % 2 ? WS_CLIPCHILDREN : 0),
                static_cast<int>(random() % 200), 5, 80, 60, window, nullptr, nullptr, nullptr));
            break;
        case 1:
            if (window != top)
                DestroyWindow(window);
            break;
        case 2:
            ShowWindow(window, random() % 2 ? SW_SHOW : SW_HIDE);
            break;
        case 3:
            SetFocus(window);
            break;
        case 4:
            SetCapture(window);
            break;
        case 5:
            MoveWindow(window, static_cast<int>(random() % 300), static_cast<int>(random() % 200),
                       static_cast<int>(random() % 300), 100, TRUE);
            break;
        case 6:
            SetTimer(window, random() % 3 + 1, 10, nullptr);
            break;
        case 7:
            headless::SendMouseClick({static_cast<LONG>(random() % 500), 150});
            break;
        case 8:
            headless::SendKeyPress('A');
            InvalidateRect(window, nullptr, TRUE);
            break;
        default:
            tlvn::PumpPendingMessages();
        }
        std::erase_if(all, [](HWND h) { return !IsWindow(h); });
        for (const HWND held : {GetFocus(), GetCapture(), GetActiveWindow()})
            ASSERT_TRUE(held == nullptr || IsWindow(held)) << i;
        if (i % 100 == 0) {
            std::string svg;
            ASSERT_TRUE(tlvn::WriteWindowSvg(top, svg));
        }
    }
}

// Width by width against a plain list of blocks.
TEST(CellMetrics, HalfAndFullWidth)
{
    const headless::CellFont font = headless::MakeCellFont(-12, 0);
    EXPECT_EQ(font.height, 12);
    const struct {
        WCHAR unit;
        int width;
    } cases[] = {{u'A', 6},       {u'~', 6},       {u'\u00E9', 6},  {u'\u00FF', 6},
                 {u'\u3000', 12}, {u'\u3042', 12}, {u'\u30FF', 12}, {u'\u4E00', 12},
                 {u'\u9FFF', 12}, {u'\uFF01', 12}, {u'\uFF60', 12}, {u'\uFF61', 6},
                 {u'\uFF9F', 6},  {u'\uFFDC', 6},  {u'\uFFE5', 12}, {u'\uE000', 12},
                 {u'\u2026', 12}, {u'\u2500', 12}, {u'\u0416', 12}, {u'\u03B1', 12}};
    for (const auto& c : cases)
        EXPECT_EQ(font.WidthOf(c.unit), c.width) << std::hex << static_cast<int>(c.unit);
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
    g_messages.clear();
    headless::SendKey(VK_SHIFT, true);
    headless::SendKeyPress('A');
    headless::SendKey(VK_SHIFT, false);
    headless::SendKey(VK_MENU, true);
    headless::SendKeyPress('F');
    headless::SendKey(VK_MENU, false);
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

TEST_F(Headless, MouseFindsItsWindow)
{
    const HWND child = MakeChild(WS_VISIBLE);
    headless::UseTestClock();
    headless::SendMouseClick({115, 120});
    headless::SendMouseClick({115, 120});
    MSG message;
    Messages seen;
    while (PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
        EXPECT_EQ(message.hwnd, child);
        EXPECT_EQ(CPoint(message.lParam), CPoint(5, 10));
        seen.push_back(message.message);
    }
    EXPECT_EQ(seen, (Messages{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEMOVE,
                              WM_LBUTTONDBLCLK, WM_LBUTTONUP}));
    // Too late for a double click.
    headless::SendMouseClick({115, 120});
    headless::AdvanceClock(600);
    headless::SendMouseClick({115, 120});
    while (PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE))
        EXPECT_NE(message.message, WM_LBUTTONDBLCLK);
    // Captured, it stays with the window.
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

// What an opaque operation covers wholly is forgotten; otherwise painting would pile up.
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
}

// Scrolling a text under a fixed ruler, line by line with the new line painted, shows what one
// painting of the end position shows, and does not pile up.
TEST_F(Headless, ScrollingEqualsRepainting)
{
    const RECT area = {0, 16, 400, 16 + 10 * 16};
    const auto paintLine = [&](int row, int number) {
        const int y = 16 + row * 16;
        Fill(top, {0, y, 400, y + 16}, RGB(255, 255, number % 256));
        const std::u16string text =
            u"line " + std::u16string(1, static_cast<char16_t>(u'A' + number % 26));
        Draw(top, 4, y, text.data(), static_cast<int>(text.size()));
    };
    Fill(top, {0, 0, 400, 300}, RGB(9, 9, 9));
    Draw(top, 0, 0, TW("ruler"), 5);
    for (int row = 0; row < 10; ++row)
        paintLine(row, row);
    for (int step = 1; step <= 500; ++step) {
        RECT exposed = {};
        ScrollWindowEx(top, 0, -16, &area, &area, nullptr, &exposed, 0);
        ASSERT_EQ(exposed.top, 16 + 9 * 16);
        paintLine(9, 9 + step);
    }
    const auto texts = headless::GetDrawnTexts(top);
    ASSERT_EQ(texts.size(), 11u);
    for (const auto& t : texts) {
        if (t.text == TW("ruler"))
            continue;
        const int row = (t.position.y - 16) / 16;
        const int number = 500 + row;
        EXPECT_EQ(t.text.back(), static_cast<WCHAR>(u'A' + number % 26)) << row;
        EXPECT_EQ(headless::GetDrawnColor(top, 300, t.position.y + 3), RGB(255, 255, number % 256));
    }
    EXPECT_LT(headless::GetDrawing(top)->Operations().size(), 40u);
}

TEST_F(Headless, CompositionTextIsTaken)
{
    SetFocus(top);
    g_messages.clear();
    headless::SetCompositionText(top, TW("\u306B"));
    const HIMC context = ImmGetContext(top);
    EXPECT_EQ(ImmGetCompositionStringW(context, GCS_COMPSTR, nullptr, 0), 2);
    headless::CommitCompositionText(top, TW("\u65E5\u672C"));
    WCHAR text[4] = {};
    EXPECT_EQ(ImmGetCompositionStringW(context, GCS_RESULTSTR, text, sizeof(text)), 4);
    EXPECT_EQ(WString(text), TW("\u65E5\u672C"));
    MSG message;
    std::u16string typed;
    while (PeekMessageW(&message, nullptr, WM_CHAR, WM_CHAR, PM_REMOVE))
        typed.push_back(static_cast<char16_t>(message.wParam));
    EXPECT_EQ(typed, u"\u65E5\u672C") << "a window that leaves the result alone gets characters";
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
    tool.uId = 3;
    tool.lpszText = own;
    SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    tool.uId = 4;
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
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
    ASSERT_EQ(headless::GetMessageBoxes().size(), 3u);
    EXPECT_EQ(headless::GetMessageBoxes()[2].text, TW("c"));

    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 9, TW("x"));
    headless::SetPopupMenuAnswer(9);
    EXPECT_EQ(TrackPopupMenu(menu, TPM_RETURNCMD, 0, 0, 0, top, nullptr), 9);
    EXPECT_EQ(headless::GetShownMenu(), menu);
    DestroyMenu(menu);
}

// The picture is well formed whatever is drawn, and holds what can be seen.
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
    EXPECT_NE(svg.find("width=\"400\" height=\"300\""), std::string::npos);
    EXPECT_NE(svg.find("&lt;&amp;&quot;&gt;"), std::string::npos);
    EXPECT_NE(svg.find("\xE6\x97\xA5"), std::string::npos);
    for (const char bad : {'\x01', '\x7F'})
        EXPECT_EQ(svg.find(bad), std::string::npos);
    const auto count = [&svg](const std::string& what) {
        int n = 0;
        for (std::size_t at = 0; (at = svg.find(what, at)) != std::string::npos; ++at)
            ++n;
        return n;
    };
    EXPECT_EQ(count("<g "), count("</g>"));
    EXPECT_EQ(count("<text "), count("</text>"));
    EXPECT_FALSE(tlvn::WriteWindowSvg(nullptr, svg));
}

} // namespace
