#include "ui/three_pane_wnd.h"

#include "persist/setting_data.h"

#include <algorithm>
#include <climits>
#include <iterator>

namespace {

const char kWindowClass[] = "Tolvan3PaneWndClass";

int FoldOr(int fold)
{
    return tlvn::IsFold(fold) ? fold : static_cast<int>(tlvn::kFoldNormal);
}

bool IsVerticalBorder(CursorOn border)
{
    return border == ON_LEFT_BORDER || border == ON_CENTER_BORDER;
}

bool IsBorder(CursorOn on)
{
    return on >= ON_LEFT_BORDER && on <= ON_MIDDLE_BORDER;
}

bool IsButton(CursorOn on)
{
    return on >= ON_LEFT_BUTTON1 && on <= ON_MIDDLE_BUTTON2;
}

// The fold state and the position of a border.
struct BorderState {
    int& fold;
    int& position;
};

BorderState StateOf(tlvn::PaneState& state, CursorOn border)
{
    switch (border) {
    case ON_LEFT_BORDER:
        return {state.across.fold, state.across.position};
    case ON_CENTER_BORDER:
        return {state.across.fold2, state.across.position2};
    case ON_TOP_BORDER:
        return {state.down.fold, state.down.position};
    default:
        return {state.down.fold2, state.down.position2};
    }
}

SIZE SizeOf(const CWnd* window)
{
    if (window == nullptr)
        return {0, 0};
    CRect rect;
    window->GetWindowRect(&rect);
    return rect.Size();
}

// The names of the settings, in the order in which they are read and written.
const char* const kStateNames[] = {"SplitType",         "VerticalFolding",    "VerticalFolding2",
                                   "HorizontalFolding", "HorizontalFolding2", "LeftPaneRight",
                                   "CenterPaneRight",   "TopPaneBottom",      "MiddlePaneBottom",
                                   "PaneWindow0",       "PaneWindow1",        "PaneWindow2"};
constexpr int kStateCount = static_cast<int>(std::size(kStateNames));

} // namespace

IMPLEMENT_DYNAMIC(C3PaneWnd, CWnd)

BEGIN_MESSAGE_MAP(C3PaneWnd, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_RBUTTONDOWN()
ON_WM_CAPTURECHANGED()
ON_WM_SETFOCUS()
ON_WM_SETCURSOR()
ON_WM_SYSCOLORCHANGE()
ON_NOTIFY_EX_RANGE(TTN_NEEDTEXTW, ON_LEFT_BUTTON1, ON_MIDDLE_BUTTON2, &C3PaneWnd::OnToolTipNeedText)
END_MESSAGE_MAP()

C3PaneWnd::~C3PaneWnd()
{
    DestroyWindow();
}

// --- arrangement ------------------------------------------------------------------------------

void C3PaneWnd::InitPaneSize(CSettingData* settings, const char* section, SplitType type,
                             VFolding vertical, VFolding vertical2, HFolding horizontal,
                             HFolding horizontal2, int leftPaneRight, int centerPaneRight,
                             int topPaneBottom, int middlePaneBottom)
{
    EndDrag(false);
    if (!Load3Pane(settings, section)) {
        m_state.type = tlvn::IsSplitType(type) ? type : SPLIT_LEFT;
        m_state.across = {FoldOr(vertical), FoldOr(vertical2), leftPaneRight, centerPaneRight};
        m_state.down = {FoldOr(horizontal), FoldOr(horizontal2), topPaneBottom, middlePaneBottom};
        for (int i = 0; i < 3; ++i)
            m_order[i] = i;
    }
    m_beforeMaximize = tlvn::PaneState();
    m_initialized = 1;
    RecalcPanes(1);
}

int C3PaneWnd::Load3Pane(CSettingData* settings, const char* section)
{
    m_settings = settings;
    m_section = section;
    if (m_settings == nullptr || m_section.IsEmpty())
        return 0;
    int values[kStateCount];
    for (int i = 0; i < kStateCount; ++i) {
        if (!m_settings->GetValue(m_section, kStateNames[i], values[i]))
            return 0;
    }
    if (!tlvn::IsSplitType(values[0]) || !std::all_of(values + 1, values + 5, tlvn::IsFold) ||
        !tlvn::IsPaneOrder(values[9], values[10], values[11]))
        return 0;
    m_state.type = static_cast<SplitType>(values[0]);
    m_state.across = {values[1], values[2], values[5], values[6]};
    m_state.down = {values[3], values[4], values[7], values[8]};
    std::copy_n(values + 9, 3, m_order);
    return 1;
}

void C3PaneWnd::Save3Pane()
{
    if (m_settings == nullptr || m_section.IsEmpty())
        return;
    const tlvn::PaneAxis& across = m_state.across;
    const tlvn::PaneAxis& down = m_state.down;
    const int values[kStateCount] = {
        m_state.type,     across.fold,   across.fold2,   down.fold,  down.fold2, across.position,
        across.position2, down.position, down.position2, m_order[0], m_order[1], m_order[2]};
    for (int i = 0; i < kStateCount; ++i)
        m_settings->SetValue(m_section, kStateNames[i], values[i]);
}

void C3PaneWnd::SetSplitType(SplitType type)
{
    if (!tlvn::IsSplitType(type))
        return;
    EndDrag(false);
    InvalidateBorders();
    const bool kept = tlvn::ChangeSplitType(m_state, type, GetClientSize());
    if (!kept)
        m_beforeMaximize = m_state;
    RecalcPanes(kept);
}

void C3PaneWnd::SetHorzFolding(HFolding folding)
{
    if (!tlvn::IsFold(folding) || m_state.down.fold == folding)
        return;
    m_state.down.fold = folding;
    RecalcPanes(1);
}

void C3PaneWnd::Click(CursorOn button)
{
    if (tlvn::ClickPaneButton(m_state, button))
        RecalcPanes(1);
}

void C3PaneWnd::MaximizePane(int pane)
{
    if (pane < 0 || pane > 2)
        return;
    const auto isMaximized = [](const tlvn::PaneState& before, int which,
                                const tlvn::PaneState& now) {
        return tlvn::HaveSameFolds(tlvn::FoldedAround(before, which), now);
    };
    m_beforeMaximize.type = m_state.type;
    tlvn::PaneState folds = m_beforeMaximize;
    if (isMaximized(m_state, pane, m_state)) {
        // Back; to no folds at all where those before would leave the pane as it is.
        if (isMaximized(folds, pane, folds))
            folds = tlvn::PaneState();
    } else {
        // With another pane maximized, the way back still leads to before that.
        bool other = false;
        for (int i = 0; i < 3; ++i)
            other = other || isMaximized(m_beforeMaximize, i, m_state);
        if (!other)
            m_beforeMaximize = m_state;
        folds = tlvn::FoldedAround(m_beforeMaximize, pane);
    }
    m_state.across.fold = folds.across.fold;
    m_state.across.fold2 = folds.across.fold2;
    m_state.down.fold = folds.down.fold;
    m_state.down.fold2 = folds.down.fold2;
    // Several borders change at once, so the sizes that the windows have are no measure for the
    // limits; those they are about to have are.
    tlvn::PaneState next = m_state;
    const tlvn::PaneLayout layout = tlvn::ArrangePanes(next, GetClientSize(), {}, false);
    Layout(1, {layout.panes[0].Size(), layout.panes[2].Size()});
}

// --- windows and panes ------------------------------------------------------------------------

// The new windows, or the same ones in other panes, bring sizes along that say nothing about
// this arrangement; the positions are in their limits already.
void C3PaneWnd::SetPaneWnd(CWnd* window0, CWnd* window1, CWnd* window2)
{
    m_windows[0] = window0;
    m_windows[1] = window1;
    m_windows[2] = window2;
    RecalcPanes(0);
}

void C3PaneWnd::SetWinIdx(int pane0, int pane1, int pane2)
{
    if (!tlvn::IsPaneOrder(pane0, pane1, pane2))
        return;
    m_order[0] = pane0;
    m_order[1] = pane1;
    m_order[2] = pane2;
    RecalcPanes(0);
}

void C3PaneWnd::GetWinIdx(int& pane0, int& pane1, int& pane2) const
{
    pane0 = m_order[0];
    pane1 = m_order[1];
    pane2 = m_order[2];
}

CWnd* C3PaneWnd::GetPaneWnd(int pane) const
{
    if (pane < 0 || pane > 2)
        return nullptr;
    CWnd* const window = m_windows[m_order[pane]];
    return window != nullptr && ::IsWindow(window->m_hWnd) ? window : nullptr;
}

int C3PaneWnd::GetPaneIdx(CWnd* window) const
{
    if (window == nullptr)
        return -1;
    for (int pane = 0; pane < 3; ++pane) {
        // An object that FromHandle made may stand for the window, too.
        const CWnd* const own = m_windows[m_order[pane]];
        if (own != nullptr &&
            (own == window || (own->m_hWnd != nullptr && own->m_hWnd == window->m_hWnd)))
            return pane;
    }
    return -1;
}

CWnd* C3PaneWnd::GetNextWnd(CWnd* window, int step, int& wrapped) const
{
    int from = GetPaneIdx(window);
    for (int pane = 0; pane < 3 && from < 0 && window != nullptr; ++pane) {
        if (const CWnd* const own = GetPaneWnd(pane); own != nullptr && own->IsChild(window))
            from = pane;
    }
    wrapped = 0;
    const bool outside = from < 0;
    int pane = outside && step < 0 ? 3 : from;
    for (int i = 0; i < 3; ++i) {
        pane += step < 0 ? -1 : 1;
        if (pane < 0 || pane > 2) {
            pane = pane < 0 ? 2 : 0;
            wrapped = 1;
        }
        if (IsPaneVisible(pane))
            return GetPaneWnd(pane);
    }
    return nullptr;
}

int C3PaneWnd::IsPaneVisible(int pane) const
{
    const SIZE size = SizeOf(GetPaneWnd(pane));
    return size.cx >= tlvn::kPaneVisibleSize && size.cy >= tlvn::kPaneVisibleSize;
}

int C3PaneWnd::IsPaneVisible(CWnd* window) const
{
    return IsPaneVisible(GetPaneIdx(window));
}

// --- layout -----------------------------------------------------------------------------------

SIZE C3PaneWnd::GetClientSize() const
{
    CRect client;
    if (m_hWnd != nullptr)
        GetClientRect(&client);
    return client.Size();
}

tlvn::PaneWindowSizes C3PaneWnd::GetPaneWindowSizes() const
{
    return {SizeOf(GetPaneWnd(0)), SizeOf(GetPaneWnd(2))};
}

void C3PaneWnd::RecalcPanes(int clamp)
{
    Layout(clamp, GetPaneWindowSizes());
}

void C3PaneWnd::Layout(int clamp, const tlvn::PaneWindowSizes& sizes)
{
    if (!m_initialized || m_hWnd == nullptr)
        return;
    InvalidateBorders();
    m_layout = tlvn::ArrangePanes(m_state, GetClientSize(), sizes, clamp != 0);
    MovePanes();
    // A pane that was told of its size may have ended this window.
    if (m_hWnd == nullptr)
        return;
    InvalidateBorders();
    UpdateToolTips();
}

void C3PaneWnd::MovePanes()
{
    constexpr UINT kFlags = SWP_NOZORDER | SWP_NOACTIVATE;
    const CRect places[3] = {m_layout.panes[0], m_layout.panes[1], m_layout.panes[2]};
    HDWP batch = ::BeginDeferWindowPos(3);
    for (int pane = 0; pane < 3 && batch != nullptr; ++pane) {
        const CRect& place = places[pane];
        if (const CWnd* const window = GetPaneWnd(pane); window != nullptr)
            batch = ::DeferWindowPos(batch, window->m_hWnd, nullptr, place.left, place.top,
                                     place.Width(), place.Height(), kFlags);
    }
    if (batch != nullptr) {
        ::EndDeferWindowPos(batch);
        return;
    }
    // The system had no room for the batch.
    for (int pane = 0; pane < 3; ++pane) {
        if (CWnd* const window = GetPaneWnd(pane); window != nullptr)
            window->MoveWindow(&places[pane]);
    }
}

void C3PaneWnd::InvalidateBorders()
{
    if (m_hWnd == nullptr)
        return;
    for (const tlvn::PaneBorder& border : m_layout.borders)
        InvalidateRect(&border.rect);
}

// --- dragging ---------------------------------------------------------------------------------

void C3PaneWnd::MoveVBorderL(int x)
{
    MoveBorder(ON_LEFT_BORDER, x);
}

void C3PaneWnd::MoveVBorderC(int x)
{
    MoveBorder(ON_CENTER_BORDER, x);
}

void C3PaneWnd::MoveHBorderT(int y)
{
    MoveBorder(ON_TOP_BORDER, y);
}

void C3PaneWnd::MoveHBorderM(int y)
{
    MoveBorder(ON_MIDDLE_BORDER, y);
}

void C3PaneWnd::MoveBorder(CursorOn border, int coordinate)
{
    StateOf(m_state, border).position = std::max(coordinate, INT_MIN + 2) - 2;
    RecalcPanes(1);
}

void C3PaneWnd::DragTo(CPoint point)
{
    if (point == m_dragStart && !m_dragMoved)
        return;
    m_dragMoved = true;
    StateOf(m_state, m_dragged).fold = tlvn::kFoldNormal;
    if (m_dragged == ON_LEFT_BORDER)
        MoveVBorderL(point.x);
    else if (m_dragged == ON_CENTER_BORDER)
        MoveVBorderC(point.x);
    else if (m_dragged == ON_TOP_BORDER)
        MoveHBorderT(point.y);
    else
        MoveHBorderM(point.y);
    if (m_hWnd != nullptr)
        UpdateWindow();
}

void C3PaneWnd::EndDrag(bool putBack)
{
    if (m_dragged == ON_NOTHING)
        return;
    const CursorOn dragged = m_dragged;
    // First, because giving the mouse back leads here again.
    m_dragged = ON_NOTHING;
    InvalidateBorders();
    if (GetCapture() == this)
        ::ReleaseCapture();
    if (putBack && m_dragMoved) {
        StateOf(m_state, dragged).fold = m_foldBeforeDrag;
        StateOf(m_state, dragged).position = m_positionBeforeDrag;
        RecalcPanes(1);
    }
}

void C3PaneWnd::OnLButtonDown(UINT flags, CPoint point)
{
    CWnd::OnLButtonDown(flags, point);
    const CursorOn on = HitTest(point);
    if (on == ON_NOTHING)
        return;
    EndDrag(true);
    m_dragged = on;
    m_dragStart = point;
    m_dragMoved = false;
    if (IsBorder(on)) {
        m_foldBeforeDrag = StateOf(m_state, on).fold;
        m_positionBeforeDrag = StateOf(m_state, on).position;
    }
    SetCapture();
    ::SetCursor(GetCursorOn(on));
    InvalidateBorders();
}

void C3PaneWnd::OnMouseMove(UINT flags, CPoint point)
{
    CWnd::OnMouseMove(flags, point);
    if (IsBorder(m_dragged))
        DragTo(point);
}

void C3PaneWnd::OnLButtonUp(UINT flags, CPoint point)
{
    CWnd::OnLButtonUp(flags, point);
    const CursorOn pressed = m_dragged;
    EndDrag(false);
    if (IsButton(pressed) && HitTest(point) == pressed)
        Click(pressed);
}

void C3PaneWnd::OnRButtonDown(UINT flags, CPoint point)
{
    CWnd::OnRButtonDown(flags, point);
    EndDrag(true);
}

void C3PaneWnd::OnCaptureChanged(CWnd* window)
{
    CWnd::OnCaptureChanged(window);
    if (window != this)
        EndDrag(true);
}

// --- the window -------------------------------------------------------------------------------

BOOL C3PaneWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    const auto background = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
    if (!tlvn::RegisterWindowClass(kWindowClass, 0, tlvn::LoadStandardCursor(IDC_ARROW),
                                   background))
        return FALSE;
    cs.lpszClass = kWindowClass;
    // Painting is of borders alone.
    cs.style |= static_cast<LONG>(WS_CLIPCHILDREN);
    return CWnd::PreCreateWindow(cs);
}

int C3PaneWnd::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1) {
        AfxMessageBox("Failed to create 3pane wnd");
        return -1;
    }
    m_leftRightCursor = tlvn::LoadStandardCursor(IDC_SIZEWE);
    m_upDownCursor = tlvn::LoadStandardCursor(IDC_SIZENS);
    m_handCursor = tlvn::LoadStandardCursor(IDC_HAND);
    CreateToolTips();
    return 0;
}

void C3PaneWnd::OnDestroy()
{
    EndDrag(false);
    m_toolTip.DestroyWindow();
    CWnd::OnDestroy();
}

void C3PaneWnd::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    if (type == SIZE_MINIMIZED)
        return;
    RecalcPanes(1);
    // The panes had sizes that went with another client area; those they have now fit this one.
    if (m_layout.HasEmptyPane())
        RecalcPanes(1);
}

// The focus is for a pane: the first that can be seen.
void C3PaneWnd::OnSetFocus(CWnd* oldWindow)
{
    CWnd::OnSetFocus(oldWindow);
    int wrapped = 0;
    if (CWnd* const first = GetNextWnd(nullptr, 1, wrapped); first != nullptr)
        first->SetFocus();
}

HCURSOR C3PaneWnd::GetCursorOn(CursorOn on) const
{
    if (IsButton(on))
        return m_handCursor;
    return IsVerticalBorder(on) ? m_leftRightCursor : m_upDownCursor;
}

BOOL C3PaneWnd::OnSetCursor(CWnd* window, UINT hitTest, UINT message)
{
    POINT point = {};
    ::GetCursorPos(&point);
    ScreenToClient(&point);
    const CursorOn on = HitTest(point);
    // Panes have cursors of their own, and are asked after this window.
    if (window != this || hitTest != HTCLIENT || on == ON_NOTHING)
        return CWnd::OnSetCursor(window, hitTest, message);
    ::SetCursor(GetCursorOn(on));
    return TRUE;
}

void C3PaneWnd::OnSysColorChange()
{
    CWnd::OnSysColorChange();
    Invalidate();
}
