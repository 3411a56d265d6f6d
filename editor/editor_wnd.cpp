#include "editor/editor_wnd.h"

#include "charcode/charset.h"
#include "editor/char_widths.h"
#include "editor/line_wrap.h"
#include "editor/row_pixels.h"
#include "framework/display_settings.h"

namespace {

const char kWindowClass[] = "TolvanEditorWndClass";

// WM_DPICHANGED_AFTERPARENT, which older headers do not have.
constexpr UINT kDpiChangedMessage = 0x02E3;

} // namespace

IMPLEMENT_DYNAMIC(CEditorWnd, CWnd)

BEGIN_MESSAGE_MAP(CEditorWnd, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_WM_NCPAINT()
ON_WM_ERASEBKGND()
ON_WM_SIZE()
ON_WM_VSCROLL()
ON_WM_HSCROLL()
ON_WM_MOUSEWHEEL()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_SETCURSOR()
ON_WM_CAPTURECHANGED()
ON_WM_CANCELMODE()
ON_WM_TIMER()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_GETDLGCODE()
ON_WM_SYSCOLORCHANGE()
ON_WM_SETTINGCHANGE()
ON_MESSAGE(kDpiChangedMessage, &CEditorWnd::OnDpiChanged)
ON_MESSAGE(WM_GETTEXT, &CEditorWnd::OnGetText)
ON_MESSAGE(WM_GETTEXTLENGTH, &CEditorWnd::OnGetTextLength)
ON_MESSAGE(EM_GETSEL, &CEditorWnd::OnGetSel)
ON_MESSAGE(EM_SETSEL, &CEditorWnd::OnSetSel)
ON_WM_CHAR()
ON_MESSAGE(WM_COPY, &CEditorWnd::OnCopy)
ON_MESSAGE(WM_CUT, &CEditorWnd::OnCut)
ON_MESSAGE(WM_PASTE, &CEditorWnd::OnPaste)
ON_MESSAGE(WM_CLEAR, &CEditorWnd::OnClear)
ON_MESSAGE(WM_UNDO, &CEditorWnd::OnUndo)
ON_MESSAGE(EM_UNDO, &CEditorWnd::OnUndo)
ON_MESSAGE(EM_CANUNDO, &CEditorWnd::OnCanUndo)
ON_MESSAGE(EM_REPLACESEL, &CEditorWnd::OnReplaceSel)
ON_MESSAGE(WM_IME_CHAR, &CEditorWnd::OnImeChar)
ON_MESSAGE(WM_IME_STARTCOMPOSITION, &CEditorWnd::OnImeStartComposition)
ON_MESSAGE(WM_IME_COMPOSITION, &CEditorWnd::OnImeComposition)
ON_MESSAGE(WM_IME_ENDCOMPOSITION, &CEditorWnd::OnImeEndComposition)
ON_MESSAGE(WM_IME_REQUEST, &CEditorWnd::OnImeRequest)
END_MESSAGE_MAP()

CEditorWnd::CEditorWnd()
    : m_widths(std::make_unique<tlvn::CharWidths>()), m_pixels(std::make_unique<tlvn::RowPixels>())
{
    m_model.SetChangeListener([this](const tlvn::TextChange& change) { OnTextChange(change); });
}

CEditorWnd::~CEditorWnd()
{
    DestroyWindow();
    ClearTextViewRangeArray(m_found);
    FreeBuffer();
}

int CEditorWnd::CreateEditorWnd(DWORD exStyle, DWORD style, const CRect& rect, CWnd* parent,
                                UINT id, const CEditorMetrics& metrics, const CEditorColor& colors)
{
    m_metrics = metrics;
    m_colors = colors;
    m_scrollStyle = style & (WS_VSCROLL | WS_HSCROLL);
    m_model.SetFreeCursor(m_metrics.GetFreeCursor() != 0);
    tlvn::RegisterWindowClass(kWindowClass, CS_DBLCLKS, tlvn::LoadStandardCursor(IDC_IBEAM));
    if (CreateEx(exStyle, kWindowClass, nullptr, style, rect, parent, id))
        return 1;
    AfxMessageBox("Failed to create editor window");
    return 0;
}

int CEditorWnd::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1)
        return -1;
    m_textCursor = tlvn::LoadStandardCursor(IDC_IBEAM);
    m_arrowCursor = tlvn::LoadStandardCursor(IDC_ARROW);
    m_linkCursor = tlvn::LoadStandardCursor(IDC_HAND);
    UpdateDrawColors();
    SelectRulerFont();
    SetCurrentFont();
    if (GetDoc().GetLineCount() == 0)
        m_model.Append("", 0);
    if (m_readOnly != 0)
        m_inputContext = ::ImmAssociateContext(m_hWnd, nullptr);
    FollowDocumentSize();
    return 0;
}

void CEditorWnd::OnDestroy()
{
    EndDrag();
    DestroyCaretIfMade();
    FreeBuffer();
    m_scroll[SB_HORZ] = m_scroll[SB_VERT] = {};
    CWnd::OnDestroy();
}

void CEditorWnd::SetEditorNotifyProc(EditorNotifyProc procedure, DWORD user)
{
    m_notify = procedure;
    m_notifyUser = user;
}

void CEditorWnd::Notify(EditorNotify what)
{
    if (m_notify != nullptr)
        m_notify(this, what, m_notifyUser);
}

// --- state ---------------------------------------------------------------------------------

void CEditorWnd::SetReadOnly(int on)
{
    on = on != 0;
    if (m_readOnly == on)
        return;
    m_readOnly = on;
    if (!HasWindow())
        return;
    if (on != 0) {
        m_inputContext = ::ImmAssociateContext(m_hWnd, nullptr);
    } else {
        ::ImmAssociateContext(m_hWnd, m_inputContext);
        m_inputContext = nullptr;
    }
    if (!IsCaretUsed())
        DestroyCaretIfMade();
    else if (::GetFocus() == m_hWnd)
        CreateCaretIfUsed();
    InvalidateColIndicator(GetCaretColumn());
}

void CEditorWnd::SetInsertMode(int on)
{
    on = on != 0;
    if (m_insertMode == on)
        return;
    m_insertMode = on;
    if (m_caretMade) {
        DestroyCaretIfMade();
        CreateCaretIfUsed();
    }
    Notify(EditorNotifyInsertMode);
}

void CEditorWnd::SetForPrint(int on)
{
    const bool forPrint = on != 0;
    if (m_forPrint == forPrint)
        return;
    m_forPrint = forPrint;
    UpdateAutoTurn();
    if (HasWindow())
        Invalidate(FALSE);
}

void CEditorWnd::OnSetFocus(CWnd*)
{
    CreateCaretIfUsed();
    InvalidateColIndicator(GetCaretColumn());
}

// The selection stays, and stays visible.
void CEditorWnd::OnKillFocus(CWnd*)
{
    m_typedHalf = 0;
    DestroyCaretIfMade();
    InvalidateColIndicator(GetCaretColumn());
}

UINT CEditorWnd::OnGetDlgCode()
{
    const UINT always = DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_HASSETSEL;
    return m_readOnly != 0 ? always : always | DLGC_WANTALLKEYS | DLGC_WANTTAB;
}

// --- display settings ----------------------------------------------------------------------

void CEditorWnd::OnSysColorChange()
{
    UpdateDrawColors();
    Invalidate(FALSE);
}

void CEditorWnd::OnSettingChange(UINT, LPCSTR)
{
    UpdateDrawColors();
    Invalidate(FALSE);
}

LRESULT CEditorWnd::OnDpiChanged(WPARAM, LPARAM)
{
    SelectRulerFont();
    SetCurrentFont();
    FollowDocumentSize();
    if (m_caretMade) {
        DestroyCaretIfMade();
        CreateCaretIfUsed();
    }
    Invalidate(FALSE);
    return 0;
}
