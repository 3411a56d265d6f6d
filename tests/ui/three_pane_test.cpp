#include "ui/three_pane_wnd.h"

#include "persist/setting_data.h"
#include "platform/string_table.h"
#include "tests/support/test.h"

namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 400;

class TestPanes : public C3PaneWnd {
public:
    using C3PaneWnd::Load3Pane;
};

// A popup window with the panes and their three windows, W0 to W2.
class ThreePane : public testing::Test {
protected:
    ThreePane()
    {
        frame.CreateEx(0, nullptr, "frame", WS_POPUP, 10, 10, kWidth, kHeight, nullptr, nullptr);
        frame.ShowWindow(SW_SHOWNOACTIVATE);
        panes.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &frame, 1);
        for (CWnd& window : windows)
            window.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 0, 0), &panes, 2);
        panes.SetPaneWnd(&windows[0], &windows[1], &windows[2]);
    }
    ~ThreePane() override
    {
        frame.DestroyWindow();
        tlvn::PumpPendingMessages();
    }

    void Init(SplitType type = SPLIT_LEFT, CSettingData* data = nullptr)
    {
        // Limits speak of sizes; those of an arrangement before are none of this one's.
        for (CWnd& window : windows) {
            if (window.m_hWnd != nullptr)
                window.MoveWindow(0, 0, 0, 0);
        }
        panes.InitPaneSize(data, "Layout", type, VFOLD_NORMAL, VFOLD_NORMAL, HFOLD_NORMAL,
                           HFOLD_NORMAL, 100, 200, 100, 200);
    }
    CRect RectOf(int window) const
    {
        CRect rect;
        windows[window].GetWindowRect(&rect);
        panes.ScreenToClient(&rect);
        return rect;
    }
    std::vector<CRect> Rects() const { return {RectOf(0), RectOf(1), RectOf(2)}; }
    void Mouse(UINT message, int x, int y) { panes.SendMessage(message, 0, MAKELPARAM(x, y)); }
    void Drag(int x, int y, int toX, int toY)
    {
        Mouse(WM_LBUTTONDOWN, x, y);
        Mouse(WM_MOUSEMOVE, toX, toY);
        Mouse(WM_LBUTTONUP, toX, toY);
    }

    CWnd frame;
    TestPanes panes;
    CWnd windows[3];
};

TEST_F(ThreePane, LaysOutOnceInitialized)
{
    EXPECT_EQ(RectOf(0), CRect(0, 0, 0, 0));
    Init();
    EXPECT_EQ(RectOf(0), CRect(0, 0, 100, kHeight));
    panes.MoveWindow(0, 0, 300, 200);
    EXPECT_EQ(RectOf(2), CRect(105, 105, 300, 200));
    panes.SetWinIdx(2, 0, 1);
    EXPECT_EQ(RectOf(2), CRect(0, 0, 100, 200));
    panes.SetWinIdx(1, 1, 1);
    EXPECT_EQ(panes.GetPaneWnd(0), &windows[2]) << "no permutation, not taken";
    EXPECT_EQ(panes.GetPaneIdx(&frame), -1);

    windows[0].DestroyWindow();
    EXPECT_EQ(panes.GetPaneWnd(1), nullptr);
    panes.MoveWindow(0, 0, kWidth, kHeight);
    EXPECT_EQ(RectOf(2), CRect(0, 0, 100, kHeight)) << "others are laid out all the same";
    panes.SetSplitType(static_cast<SplitType>(6));
    EXPECT_EQ(panes.GetSplitType(), SPLIT_LEFT);
    panes.SetSplitType(SPLIT_TOP);
    panes.SetHorzFolding(HFOLD_MIN);
    EXPECT_EQ(RectOf(2), CRect(0, 0, kWidth, 1));
}

// Each border, in steps from where the last one left it -> a window.
TEST_F(ThreePane, DragsBorders)
{
    const struct {
        int type, x, y, toX, toY, window;
        CRect rect;
    } steps[] = {
        {0, 102, 10, 152, 390, 0, {0, 0, 150, 400}},
        {0, 300, 102, 5, 302, 1, {155, 0, 600, 300}},
        {0, 152, 10, -500, 10, 0, {0, 0, 1, 400}}, // not beyond the minimum
        {0, 3, 10, 5000, 10, 0, {0, 0, 594, 400}}, // nor the maximum
        {-1, 5, 10, 5, 10, 0, {0, 0, 1, 400}},     // folded, a click moves nothing
        {0, 3, 10, 82, 10, 0, {0, 0, 80, 400}},    // but a movement unfolds
        {4, 202, 10, 402, 10, 1, {105, 0, 400, 400}},
        {4, 102, 10, 500, 10, 0, {0, 0, 394, 400}}, // pane 1 keeps a pixel, pane 2 all
        {5, 10, 202, 10, 302, 1, {0, 105, 600, 300}},
        {5, 10, 102, 10, 52, 1, {0, 55, 600, 300}},
    };
    int type = -1;
    for (const auto& step : steps) {
        if (step.type < 0)
            panes.ClickLeftButton();
        else if (step.type != type)
            Init(static_cast<SplitType>(type = step.type));
        Drag(step.x, step.y, step.toX, step.toY);
        EXPECT_EQ(RectOf(step.window), step.rect) << step.type << ": " << step.x << "," << step.y;
    }
}

// What ends a drag, and where the border is then. What was before is not put back into an
// arrangement that is new.
TEST_F(ThreePane, DragsAreTakenBack)
{
    Init();
    panes.ClickRightButton();
    const auto start = [&](int x) {
        Mouse(WM_LBUTTONDOWN, x, 10);
        Mouse(WM_MOUSEMOVE, 300, 10);
        EXPECT_EQ(RectOf(0).right, 298);
        EXPECT_EQ(CWnd::GetCapture(), &panes);
    };
    start(kWidth - 4);
    Mouse(WM_RBUTTONDOWN, 300, 10);
    EXPECT_EQ(RectOf(0).right, kWidth - 6) << "folded again";
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    start(kWidth - 4);
    ::ReleaseCapture();
    Mouse(WM_MOUSEMOVE, 200, 10);
    EXPECT_EQ(RectOf(0).right, kWidth - 6) << "the drag is over";
    start(kWidth - 4);
    panes.SetSplitType(SPLIT_THREE_COLUMNS);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_EQ(RectOf(0).right, 200);
    start(202);
    Init();
    Mouse(WM_RBUTTONDOWN, 302, 10);
    EXPECT_EQ(RectOf(0).right, 100);
    start(102);
    Mouse(WM_RBUTTONDOWN, 302, 10);
    EXPECT_EQ(RectOf(0).right, 100) << "the position, too";
}

TEST_F(ThreePane, ButtonsWorkWhenReleasedOnThem)
{
    Init();
    Drag(102, 190, 103, 170);
    EXPECT_EQ(RectOf(0).right, 1) << "first button: folded";
    Drag(3, 190, 3, 210);
    EXPECT_EQ(RectOf(0).right, 1) << "gone to the other button";
    Drag(3, 210, 3, 210);
    EXPECT_EQ(RectOf(0).right, kWidth - 6) << "second button: from one end to the other";
    Drag(kWidth - 4, 210, kWidth - 4, 210);
    EXPECT_EQ(RectOf(0).right, 100);
}

TEST_F(ThreePane, ButtonsTellWhatTheyDo)
{
    const auto tells = [&](CursorOn button, UINT message) {
        NMTTDISPINFOW info = {};
        info.hdr = {panes.m_hWnd, static_cast<UINT_PTR>(button), TTN_NEEDTEXTW};
        panes.SendMessage(WM_NOTIFY, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(&info));
        return tlvn::WString(info.lpszText) == tlvn::WString(tlvn::FindMessage(message));
    };
    Init(SPLIT_THREE_COLUMNS);
    EXPECT_TRUE(tells(ON_LEFT_BUTTON1, 3400) && tells(ON_LEFT_BUTTON2, 3401));
    panes.ClickLeftButton2();
    EXPECT_TRUE(tells(ON_CENTER_BUTTON1, 3404));
    EXPECT_TRUE(tells(ON_LEFT_BUTTON2, 0)) << "does nothing now";
    Init(SPLIT_THREE_ROWS);
    EXPECT_TRUE(tells(ON_MIDDLE_BUTTON2, 3403));
}

TEST_F(ThreePane, MaximizesAndGoesBack)
{
    const auto seen = [&] {
        return panes.IsPaneVisible(0) * 100 + panes.IsPaneVisible(1) * 10 + panes.IsPaneVisible(2);
    };
    for (int type = 0; type <= 5; ++type) {
        Init(static_cast<SplitType>(type));
        const auto before = Rects();
        for (int pane = 0; pane < 3; ++pane) {
            panes.MaximizePane(pane);
            panes.MaximizePane((pane + 1) % 3);
            panes.MaximizePane(pane);
            EXPECT_EQ(seen(), pane == 0 ? 100 : pane == 1 ? 10 : 1) << type;
            panes.MaximizePane(pane);
            EXPECT_EQ(Rects(), before) << type << " after " << pane;
        }
    }
    Init();
    panes.ClickUpButton();
    panes.MaximizePane(0);
    panes.MaximizePane(0);
    EXPECT_EQ(seen(), 101) << "pane 1 was folded";
    Init();
    panes.ClickRightButton();
    panes.MaximizePane(0);
    EXPECT_EQ(seen(), 111) << "all folded by hand, where nothing was before";
}

// From a window, in a direction -> the next one, and whether that was around the end.
TEST_F(ThreePane, NextWindow)
{
    CWnd inner;
    inner.Create(nullptr, "", WS_CHILD, CRect(0, 0, 5, 5), &windows[1], 9);
    int wrapped = 9;
    Init();
    panes.SetWinIdx(0, 2, 1); // windows by pane: 0, 2, 1
    CWnd* const from[] = {&windows[0], &windows[1], &windows[2], nullptr, &inner, &frame};
    const int cases[][4] = {{3, 1, 0, 0}, {3, -1, 1, 0}, {0, 1, 2, 0}, {2, 1, 1, 0},
                            {1, 1, 0, 1}, {0, -1, 1, 1}, {4, 1, 0, 1}, {5, 1, 0, 0}};
    for (const auto& [index, step, next, around] : cases) {
        EXPECT_EQ(panes.GetNextWnd(from[index], step, wrapped), &windows[next]) << index;
        EXPECT_EQ(wrapped, around) << index;
    }
    panes.ClickLeftButton();
    EXPECT_EQ(panes.GetNextWnd(&windows[1], 1, wrapped), &windows[2]) << "past the folded one";
    EXPECT_EQ(wrapped, 1);
    panes.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &windows[2]) << "the focus is for a pane";
}

// Sizes, mouse messages and calls in any order, with absurd numbers: the panes stay in the client
// area and beside each other.
TEST_F(ThreePane, StaysInOrderUnderAnyCalls)
{
    static constexpr UINT kMouse[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_RBUTTONDOWN};
    void (C3PaneWnd::*const clicks[])() = {
        &C3PaneWnd::ClickLeftButton,   &C3PaneWnd::ClickRightButton, &C3PaneWnd::ClickLeftButton2,
        &C3PaneWnd::ClickRightButton2, &C3PaneWnd::ClickUpButton,    &C3PaneWnd::ClickDownButton,
        &C3PaneWnd::ClickUpButton2,    &C3PaneWnd::ClickDownButton2};
    std::mt19937 random(11);
    const auto pick = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const auto type = [&] { return static_cast<SplitType>(pick(-1, 6)); };
    const auto place = [&] {
        return pick(0, 3) > 0 ? pick(-100, 900) : pick(0, 1) > 0 ? INT_MAX - pick(0, 4) : INT_MIN;
    };
    for (int step = 0; step < 5000; ++step) {
        const int kind = pick(0, 12);
        if (kind == 0) {
            const auto across = static_cast<VFolding>(pick(0, 2));
            const auto down = static_cast<HFolding>(pick(0, 2));
            panes.InitPaneSize(nullptr, nullptr, type(), across, VFOLD_NORMAL, down, HFOLD_NORMAL,
                               place(), place(), place(), place());
        } else if (kind < 3) {
            const int most = pick(0, 2) > 0 ? 700 : 30;
            panes.MoveWindow(0, 0, pick(0, most), pick(0, most));
        } else if (kind == 3) {
            panes.SetSplitType(type());
        } else if (kind == 4) {
            panes.MaximizePane(pick(-1, 3));
        } else if (kind == 5) {
            panes.SetWinIdx(pick(0, 2), pick(0, 2), pick(0, 2));
        } else if (kind == 6) {
            panes.SetHorzFolding(static_cast<HFolding>(pick(-1, 3)));
        } else if (kind < 9) {
            (panes.*clicks[pick(0, 7)])();
        } else {
            Mouse(kMouse[pick(0, 3)], pick(-40, 740), pick(-40, 740));
        }
        CRect all;
        panes.GetClientRect(&all);
        const std::vector<CRect> rects = Rects();
        for (std::size_t i = 0; i < 3; ++i) {
            ASSERT_TRUE((rects[i] | all) == all || rects[i].IsRectEmpty()) << step;
            ASSERT_TRUE((rects[i] & rects[(i + 1) % 3]).IsRectEmpty()) << step;
        }
    }
}

const char* const kNames[] = {"SplitType",         "VerticalFolding",    "VerticalFolding2",
                              "HorizontalFolding", "HorizontalFolding2", "LeftPaneRight",
                              "CenterPaneRight",   "TopPaneBottom",      "MiddlePaneBottom",
                              "PaneWindow0",       "PaneWindow1",        "PaneWindow2"};

void Fill(CSettingData& settings, const std::vector<int>& values)
{
    settings.LoadNone();
    for (std::size_t i = 0; i < 12; ++i)
        settings.SetValue("Layout", kNames[i], values[i]);
}

// Positions are kept as they are, absurd ones too.
TEST_F(ThreePane, SavesWhatItLoads)
{
    CSettingData settings, saved;
    Fill(settings, {3, 1, 0, 2, 1, 250, -7, INT_MAX, INT_MIN, 2, 0, 1});
    saved.CopySD(settings);
    Init(SPLIT_LEFT, &saved);
    EXPECT_EQ(RectOf(2), CRect(0, 0, 250, kHeight - 6));
    saved.RemoveKey("Layout");
    panes.Save3Pane();
    EXPECT_EQ(saved.EqualSD(settings), 1);
}

// Name, value that is not taken; then each name is missing; then a sum of 3 that is no order.
TEST_F(ThreePane, RejectsSettings)
{
    std::vector<std::pair<int, const char*>> cases = {{0, "6"}, {0, "-1"}, {1, "3"}, {9, "1"}};
    for (int i = 0; i < 12; ++i)
        cases.push_back({i, nullptr});
    for (const auto& [index, text] : cases) {
        CSettingData settings;
        Fill(settings, {2, 1, 1, 1, 1, 50, 60, 70, 80, 2, 1, 0});
        ASSERT_EQ(panes.Load3Pane(&settings, "Layout"), 1);
        if (text == nullptr)
            settings.RemoveName("Layout", kNames[index]);
        else
            settings.SetValue("Layout", kNames[index], text);
        Init(SPLIT_LEFT, &settings);
        EXPECT_EQ(RectOf(0), CRect(0, 0, 100, kHeight)) << kNames[index];
    }
    CSettingData ones;
    Fill(ones, std::vector<int>(12, 1));
    EXPECT_EQ(panes.Load3Pane(&ones, "Layout"), 0);
}

// Arrows in the system's colours: at rest, and gray where a click does nothing.
TEST_F(ThreePane, DrawsButtons)
{
    Init(SPLIT_THREE_COLUMNS);
    const auto color = [&](int x, int y) {
        frame.UpdateWindow();
        panes.UpdateWindow();
        CClientDC dc(&panes);
        return dc.GetPixel(x, y);
    };
    EXPECT_EQ(color(102, 177), ::GetSysColor(COLOR_BTNTEXT));
    EXPECT_EQ(color(101, 176), ::GetSysColor(COLOR_BTNFACE)) << "points to the left";
    EXPECT_EQ(color(102, 150), ::GetSysColor(COLOR_BTNFACE)) << "the border beside the buttons";
    panes.ClickLeftButton2();
    EXPECT_EQ(color(101, 223), ::GetSysColor(COLOR_GRAYTEXT));
}

} // namespace
