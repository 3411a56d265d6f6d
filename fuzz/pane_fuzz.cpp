// Settings, sizes, mouse messages and calls in any order and with absurd coordinates: the panes
// stay in the client area and beside each other, and the arrangement saved is the one loaded.

#include "fuzz/fuzz.h"
#include "persist/setting_data.h"
#include "tests/support/byte_source.h"
#include "ui/three_pane_wnd.h"

#include <climits>

namespace {

const char* const kNames[] = {"SplitType",         "VerticalFolding",    "VerticalFolding2",
                              "HorizontalFolding", "HorizontalFolding2", "LeftPaneRight",
                              "CenterPaneRight",   "TopPaneBottom",      "MiddlePaneBottom",
                              "PaneWindow0",       "PaneWindow1",        "PaneWindow2"};

class FuzzedPanes : public C3PaneWnd {
public:
    using C3PaneWnd::Load3Pane;
};

int AnyNumber(ByteSource& bytes)
{
    static constexpr int odd[] = {INT_MAX, INT_MIN, -1, 0, INT_MAX - 4, 1 << 28};
    return bytes.Number(0, 3) == 0 ? odd[bytes.Number(0, 5)] : bytes.Number(-100, 900);
}

void Check(FuzzedPanes& panes)
{
    CRect client;
    panes.GetClientRect(&client);
    CRect rects[3];
    for (int i = 0; i < 3; ++i) {
        panes.GetPaneWnd(i)->GetWindowRect(&rects[i]);
        panes.ScreenToClient(&rects[i]);
        FUZZ_CHECK(rects[i].left >= 0 && rects[i].right <= client.right);
        FUZZ_CHECK(rects[i].top >= 0 && rects[i].bottom <= client.bottom);
        for (int k = 0; k < i; ++k) {
            CRect common;
            FUZZ_CHECK(!common.IntersectRect(&rects[i], &rects[k]));
        }
    }
}

void CheckSaving(FuzzedPanes& panes, CSettingData& settings)
{
    panes.Save3Pane();
    CSettingData copy;
    copy.LoadNone();
    copy.CopySD(settings);
    FUZZ_CHECK(panes.Load3Pane(&copy, "Layout"));
    panes.Save3Pane();
    FUZZ_CHECK(copy.EqualSD(settings));
    FUZZ_CHECK(panes.Load3Pane(&settings, "Layout"));
}

void Step(FuzzedPanes& panes, ByteSource& bytes)
{
    static constexpr UINT mouse[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_RBUTTONDOWN};
    switch (bytes.Number(0, 7)) {
    case 0:
        panes.MoveWindow(0, 0, bytes.Number(0, 700), bytes.Number(0, 700));
        break;
    case 1:
        panes.SetSplitType(static_cast<SplitType>(bytes.Number(-1, 6)));
        break;
    case 2:
        panes.MaximizePane(bytes.Number(-1, 3));
        break;
    case 3:
        panes.SetWinIdx(bytes.Number(0, 2), bytes.Number(0, 2), bytes.Number(0, 2));
        break;
    case 4: {
        void (C3PaneWnd::*const clicks[])() = {
            &C3PaneWnd::ClickLeftButton,  &C3PaneWnd::ClickRightButton,
            &C3PaneWnd::ClickLeftButton2, &C3PaneWnd::ClickRightButton2,
            &C3PaneWnd::ClickUpButton,    &C3PaneWnd::ClickDownButton,
            &C3PaneWnd::ClickUpButton2,   &C3PaneWnd::ClickDownButton2};
        (panes.*clicks[bytes.Number(0, 7)])();
        break;
    }
    case 5:
        panes.SetHorzFolding(static_cast<HFolding>(bytes.Number(-1, 3)));
        break;
    default:
        panes.SendMessage(mouse[bytes.Number(0, 3)], 0,
                          MAKELPARAM(bytes.Number(-40, 740), bytes.Number(-40, 740)));
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ByteSource bytes(data, size);
    CWnd frame;
    if (!frame.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 700, 700, nullptr, nullptr))
        return 0;
    FuzzedPanes panes;
    CWnd windows[3];
    panes.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 600, 400), &frame, 1);
    for (CWnd& window : windows)
        window.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 0, 0), &panes, 2);
    panes.SetPaneWnd(&windows[0], &windows[1], &windows[2]);

    CSettingData settings;
    settings.LoadNone();
    for (int i = 0; i < 12; ++i) {
        const int highest = i == 0 ? 5 : 2;
        const bool position = i >= 5 && i <= 8;
        settings.SetValue("Layout", kNames[i],
                          position ? AnyNumber(bytes) : bytes.Number(0, highest));
    }
    panes.InitPaneSize(&settings, "Layout", static_cast<SplitType>(bytes.Number(-1, 6)),
                       VFOLD_NORMAL, VFOLD_NORMAL, HFOLD_NORMAL, HFOLD_NORMAL, AnyNumber(bytes),
                       AnyNumber(bytes), AnyNumber(bytes), AnyNumber(bytes));
    Check(panes);
    while (!bytes.IsEmpty()) {
        Step(panes, bytes);
        Check(panes);
    }
    CheckSaving(panes, settings);
    frame.DestroyWindow();
    return 0;
}
