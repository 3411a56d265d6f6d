// What the user sees of the borders: the buttons and their tool tips.

#include "platform/string_table.h"
#include "ui/three_pane_wnd.h"

#include <cstddef>
#include <iterator>

namespace {

// Tool tips of the buttons, in resources/strings.def.
constexpr UINT kMessageFoldLeft = 3400;
constexpr UINT kMessageFoldRight = 3401;
constexpr UINT kMessageFoldUp = 3402;
constexpr UINT kMessageFoldDown = 3403;
constexpr UINT kMessageUnfold = 3404;

// The fold state that belongs to a button.
int FoldOf(const tlvn::PaneState& state, CursorOn button)
{
    switch (button) {
    case ON_LEFT_BUTTON1:
    case ON_LEFT_BUTTON2:
        return state.across.fold;
    case ON_CENTER_BUTTON1:
    case ON_CENTER_BUTTON2:
        return state.across.fold2;
    case ON_TOP_BUTTON1:
    case ON_TOP_BUTTON2:
        return state.down.fold;
    default:
        return state.down.fold2;
    }
}

// Without the last members, which older common controls do not know.
constexpr UINT kToolInfoSize = static_cast<UINT>(offsetof(TOOLINFOW, lParam));

TOOLINFOW ToolOf(HWND owner, int button)
{
    TOOLINFOW tool = {};
    tool.cbSize = kToolInfoSize;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = owner;
    tool.uId = static_cast<UINT_PTR>(button);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    return tool;
}

} // namespace

void C3PaneWnd::OnPaint()
{
    CPaintDC dc(this);
    for (const tlvn::PaneBorder& border : m_layout.borders) {
        for (const int i : {0, 1})
            DrawButton(dc, border, i);
    }
}

void C3PaneWnd::DrawButton(CDC& dc, const tlvn::PaneBorder& border, int index)
{
    const CRect button = border.Button(index);
    if (button.IsRectEmpty() || !dc.RectVisible(&button))
        return;
    const CursorOn kind = border.ButtonKind(index);
    const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW);
    const bool pressed = m_dragged == kind;
    dc.Draw3dRect(&button, pressed ? shadow : light, pressed ? light : shadow);

    tlvn::PaneState clicked = m_state;
    const bool enabled = tlvn::ClickPaneButton(clicked, kind);
    // A button that does nothing shows the way of its kind.
    const bool forward = enabled ? FoldOf(clicked, kind) > FoldOf(m_state, kind) : index == 1;
    const COLORREF color = ::GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);

    // A triangle of three lines of 5, 3 and 1 pixels, in the three pixels between the edges.
    const CPoint centre = button.CenterPoint();
    for (int i = 0; i < 3; ++i) {
        const int along = (forward ? i : 2 - i) - 1;
        const int half = 2 - i;
        CRect line(centre.x + along, centre.y - half, centre.x + along + 1, centre.y + half + 1);
        if (!border.IsVertical())
            line =
                CRect(centre.x - half, centre.y + along, centre.x + half + 1, centre.y + along + 1);
        line.IntersectRect(&line, &button);
        dc.FillSolidRect(&line, color);
    }
}

// --- tool tips --------------------------------------------------------------------------------

// A frame without tool tips is still a frame: failing to make them fails nothing.
void C3PaneWnd::CreateToolTips()
{
    INITCOMMONCONTROLSEX controls = {sizeof(INITCOMMONCONTROLSEX), ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    if (!m_toolTip.CreateEx(WS_EX_TOPMOST, "tooltips_class32", nullptr,
                            WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, m_hWnd, nullptr))
        return;
    for (int button = ON_LEFT_BUTTON1; button <= ON_MIDDLE_BUTTON2; ++button) {
        TOOLINFOW tool = ToolOf(m_hWnd, button);
        m_toolTip.SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void C3PaneWnd::UpdateToolTips()
{
    if (m_toolTip.m_hWnd == nullptr)
        return;
    for (int button = ON_LEFT_BUTTON1; button <= ON_MIDDLE_BUTTON2; ++button) {
        TOOLINFOW tool = ToolOf(m_hWnd, button);
        for (const tlvn::PaneBorder& border : m_layout.borders) {
            for (const int i : {0, 1}) {
                if (border.ButtonKind(i) == button)
                    tool.rect = border.Button(i);
            }
        }
        m_toolTip.SendMessage(TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

UINT C3PaneWnd::GetButtonMessage(CursorOn button) const
{
    tlvn::PaneState clicked = m_state;
    if (!tlvn::ClickPaneButton(clicked, button))
        return 0;
    switch (FoldOf(clicked, button)) {
    case tlvn::kFoldMin:
        return button <= ON_CENTER_BUTTON2 ? kMessageFoldLeft : kMessageFoldUp;
    case tlvn::kFoldMax:
        return button <= ON_CENTER_BUTTON2 ? kMessageFoldRight : kMessageFoldDown;
    default:
        return kMessageUnfold;
    }
}

BOOL C3PaneWnd::OnToolTipNeedText(UINT id, NMHDR* header, LRESULT* result)
{
    auto* const info = reinterpret_cast<NMTTDISPINFOW*>(header);
    const UINT message = GetButtonMessage(static_cast<CursorOn>(id));
    const tlvn::WStringView text = message != 0 ? tlvn::FindMessage(message) : tlvn::WStringView();
    const std::size_t length = text.copy(info->szText, std::size(info->szText) - 1);
    info->szText[length] = 0;
    info->lpszText = info->szText;
    *result = 0;
    return TRUE;
}
