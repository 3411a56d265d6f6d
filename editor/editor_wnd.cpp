#include "editor/editor_wnd.h"

#include "charcode/charset.h"

#include <algorithm>

namespace {

const char kWindowClass[] = "TolvanEditorWndClass";

// Pixels between the edges of the window and the text.
constexpr int kMargin = 8;

} // namespace

IMPLEMENT_DYNAMIC(CEditorWnd, CWnd)

BEGIN_MESSAGE_MAP(CEditorWnd, CWnd)
ON_WM_CREATE()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_SIZE()
ON_WM_VSCROLL()
ON_WM_HSCROLL()
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

CEditorWnd::CEditorWnd()
    : m_charHeight(1), m_charWidth(1), m_columns(0), m_topLine(0), m_leftColumn(0), m_wheelRest(0),
      m_scrollStyle(0)
{}

CEditorWnd::~CEditorWnd()
{
    DestroyWindow();
}

int CEditorWnd::CreateEditorWnd(DWORD exStyle, DWORD style, const CRect& rect, CWnd* parent,
                                UINT id, const CEditorMetrics& metrics, const CEditorColor& colors)
{
    m_metrics = metrics;
    m_colors = colors;
    m_scrollStyle = style & (WS_VSCROLL | WS_HSCROLL);
    tlvn::RegisterWindowClass(kWindowClass, CS_DBLCLKS, tlvn::LoadStandardCursor(IDC_IBEAM));
    return CreateEx(exStyle, kWindowClass, nullptr, style, rect, parent, id) ? 1 : 0;
}

int CEditorWnd::SetDocument(CodeType codeType, const char* text, int length)
{
    m_document.Set(codeType, text, length);
    m_topLine = 0;
    m_leftColumn = 0;
    SetCurrentFont();
    MeasureDocument();
    return 1;
}

void CEditorWnd::InsertHeaderText(const char* text, int length)
{
    m_document.SetHeader(text, length);
    MeasureDocument();
}

int CEditorWnd::GetLogicalLineCt(int withHeader) const
{
    return m_document.GetLineCount() - (withHeader != 0 ? 0 : m_document.GetHeaderLineCount());
}

int CEditorWnd::GetVisibleLineCt() const
{
    CRect client;
    GetClientRect(&client);
    return (client.Height() + m_metrics.GetLineSpace() - kMargin) / GetLineHeight();
}

int CEditorWnd::GetVisibleColCt() const
{
    CRect client;
    GetClientRect(&client);
    return (client.Width() - kMargin) / m_charWidth;
}

void CEditorWnd::ScrollToVertPos(int line)
{
    const int last = m_document.GetLineCount() - std::max(GetVisibleLineCt(), 1);
    line = std::clamp(line, 0, std::max(last, 0));
    if (line == m_topLine)
        return;
    m_topLine = line;
    UpdateScrollBars();
    Invalidate(FALSE);
}

void CEditorWnd::ScrollToHorzPos(int column)
{
    column = std::clamp(column, 0, std::max(m_columns - GetVisibleColCt(), 0));
    if (column == m_leftColumn)
        return;
    m_leftColumn = column;
    UpdateScrollBars();
    Invalidate(FALSE);
}

int CEditorWnd::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1)
        return -1;
    SetCurrentFont();
    MeasureDocument();
    return 0;
}

void CEditorWnd::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    const CRect painted(dc.m_ps.rcPaint);
    CFont* oldFont = dc.SelectObject(&m_font);
    dc.SetBkMode(TRANSPARENT);

    const int top = kMargin;
    if (painted.top < top)
        dc.FillSolidRect(CRect(0, 0, client.right, top), m_document.GetHeaderLineCount() > m_topLine
                                                             ? m_colors.GetHeaderBackColor()
                                                             : m_colors.GetBackColor());
    int line = m_topLine + std::max<int>(painted.top - top, 0) / GetLineHeight();
    int y = top + (line - m_topLine) * GetLineHeight();
    for (; y < painted.bottom && line < m_document.GetLineCount(); ++line, y += GetLineHeight())
        DrawLine(dc, line, y, client);
    if (y < painted.bottom)
        dc.FillSolidRect(CRect(0, y, client.right, painted.bottom), m_colors.GetBackColor());

    dc.SelectObject(oldFont);
}

// Row by row the background and the text are drawn; nothing shines through in between because
// OnEraseBkgnd draws nothing.
void CEditorWnd::DrawLine(CDC& dc, int line, int y, const CRect& client)
{
    const bool header = line < m_document.GetHeaderLineCount();
    dc.FillSolidRect(CRect(0, y, client.right, y + GetLineHeight()),
                     header ? m_colors.GetHeaderBackColor() : m_colors.GetBackColor());
    dc.SetTextColor(m_colors.GetTextColor());

    // No unit is narrower than a column, so more units than columns never show.
    const int columns = m_leftColumn + GetVisibleColCt() + 1;
    tlvn::WString units;
    m_document.GetLineUnits(line, columns, units);

    const int origin = kMargin - m_leftColumn * m_charWidth;
    const int tabWidth = m_metrics.GetTabColumn() * m_charWidth;
    int x = origin;
    tlvn::WStringView rest(units);
    while (!rest.empty() && x < client.right) {
        const auto run = rest.substr(0, rest.find(WCHAR('\t')));
        const int length = static_cast<int>(run.size());
        if (length > 0) {
            ::ExtTextOutW(dc.m_hDC, x, y, 0, nullptr, run.data(), static_cast<UINT>(length),
                          nullptr);
        }
        if (run.size() == rest.size())
            break;
        SIZE extent{};
        ::GetTextExtentPoint32W(dc.m_hDC, run.data(), length, &extent);
        x += extent.cx;
        x = origin + ((x - origin) / tabWidth + 1) * tabWidth;
        rest.remove_prefix(run.size() + 1);
    }
}

// Painting covers every pixel.
BOOL CEditorWnd::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void CEditorWnd::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    UpdateScrollBars();
    ScrollToVertPos(m_topLine);
    ScrollToHorzPos(m_leftColumn);
    Invalidate(FALSE);
}

void CEditorWnd::OnVScroll(UINT code, UINT, CScrollBar*)
{
    const int page = std::max(GetVisibleLineCt() - 2, 1);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    switch (code) {
    case SB_LINEUP:
        return ScrollToVertPos(m_topLine - 1);
    case SB_LINEDOWN:
        return ScrollToVertPos(m_topLine + 1);
    case SB_PAGEUP:
        return ScrollToVertPos(m_topLine - page);
    case SB_PAGEDOWN:
        return ScrollToVertPos(m_topLine + page);
    case SB_TOP:
        return ScrollToVertPos(0);
    case SB_BOTTOM:
        return ScrollToVertPos(m_document.GetLineCount());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        // The message carries 16 bits of the position only.
        GetScrollInfo(SB_VERT, &info, SIF_TRACKPOS);
        return ScrollToVertPos(info.nTrackPos);
    default:
        return;
    }
}

void CEditorWnd::OnHScroll(UINT code, UINT, CScrollBar*)
{
    const int page = std::max(GetVisibleColCt() - 2, 1);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    switch (code) {
    case SB_LINELEFT:
        return ScrollToHorzPos(m_leftColumn - 1);
    case SB_LINERIGHT:
        return ScrollToHorzPos(m_leftColumn + 1);
    case SB_PAGELEFT:
        return ScrollToHorzPos(m_leftColumn - page);
    case SB_PAGERIGHT:
        return ScrollToHorzPos(m_leftColumn + page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        GetScrollInfo(SB_HORZ, &info, SIF_TRACKPOS);
        return ScrollToHorzPos(info.nTrackPos);
    default:
        return;
    }
}

BOOL CEditorWnd::OnMouseWheel(UINT, short delta, CPoint)
{
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    if (lines == WHEEL_PAGESCROLL)
        lines = static_cast<UINT>(std::max(GetVisibleLineCt() - 2, 1));
    m_wheelRest += delta * static_cast<int>(lines);
    ScrollToVertPos(m_topLine - m_wheelRest / WHEEL_DELTA);
    m_wheelRest %= WHEEL_DELTA;
    return TRUE;
}

void CEditorWnd::SetCurrentFont()
{
    if (m_hWnd == nullptr)
        return;
    CClientDC dc(this);
    const LOGFONTW font = m_metrics.GetFont().MakeLogFont(
        dc.GetDeviceCaps(LOGPIXELSY), CharSetCode2FontCharSet(m_document.GetCodeType()));
    m_font.DeleteObject();
    m_font.Attach(::CreateFontIndirectW(&font));

    CFont* oldFont = dc.SelectObject(&m_font);
    TEXTMETRICW metric{};
    ::GetTextMetricsW(dc.m_hDC, &metric);
    // Fonts whose half-width and full-width cells differ do not agree on what tmAveCharWidth is.
    static const WCHAR letters[] = TW("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    constexpr int count = 52;
    SIZE extent{};
    ::GetTextExtentPoint32W(dc.m_hDC, letters, count, &extent);
    dc.SelectObject(oldFont);
    m_charHeight = std::max<int>(metric.tmHeight, 1);
    m_charWidth = std::max<int>((extent.cx + count / 2) / count, 1);
}

void CEditorWnd::MeasureDocument()
{
    m_columns = 0;
    for (int line = 0; line < m_document.GetLineCount(); ++line)
        m_columns = std::max(m_columns, m_document.CountColumns(line));
    if (m_hWnd == nullptr)
        return;
    UpdateScrollBars();
    Invalidate(FALSE);
}

void CEditorWnd::UpdateScrollBars()
{
    const auto update = [this](int bar, int count, int page, int pos) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
        info.nMax = std::max(count - 1, 0);
        info.nPage = static_cast<UINT>(std::max(page, 1));
        info.nPos = pos;
        SetScrollInfo(bar, &info, TRUE);
    };
    if ((m_scrollStyle & WS_VSCROLL) != 0)
        update(SB_VERT, m_document.GetLineCount(), GetVisibleLineCt(), m_topLine);
    if ((m_scrollStyle & WS_HSCROLL) != 0)
        update(SB_HORZ, m_columns, GetVisibleColCt(), m_leftColumn);
}
