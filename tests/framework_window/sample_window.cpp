#include "tests/framework_window/sample_window.h"

BEGIN_MESSAGE_MAP(CSampleNote, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_NCDESTROY()
ON_WM_SIZE()
ON_WM_SHOWWINDOW()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_CHAR()
ON_WM_KEYDOWN()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_MOUSEMOVE()
ON_WM_MOUSEWHEEL()
ON_WM_VSCROLL()
ON_WM_TIMER()
ON_WM_CAPTURECHANGED()
ON_MESSAGE(kMessagePing, &CSampleNote::OnPing)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CSampleFrame, CWnd)
ON_COMMAND(kCommandCopy, &CSampleFrame::OnCopy)
ON_COMMAND_RANGE(kFirstZoom, kLastZoom, &CSampleFrame::OnZoom)
ON_NOTIFY(1, kNoteId, &CSampleFrame::OnNoteText)
ON_WM_SETFOCUS()
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

int CSampleNote::OnCreate(LPCREATESTRUCT create)
{
    log.push_back(std::string("create ") + create->lpszName);
    if (CWnd::OnCreate(create) == -1 || failCreation)
        return -1;
    LOGFONTW description = {};
    description.lfHeight = LineHeight();
    description.lfCharSet = DEFAULT_CHARSET;
    font.CreateFontIndirect(&description);
    return 0;
}

void CSampleNote::OnDestroy()
{
    log.push_back("destroy");
    CWnd::OnDestroy();
}

void CSampleNote::OnNcDestroy()
{
    log.push_back("ncdestroy");
    CWnd::OnNcDestroy();
}

void CSampleNote::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    log.push_back("size " + std::to_string(width) + "x" + std::to_string(height));
}

void CSampleNote::OnShowWindow(BOOL show, UINT)
{
    log.push_back(show ? "show" : "hide");
}

BOOL CSampleNote::OnEraseBkgnd(CDC* dc)
{
    CRect rect;
    GetClientRect(&rect);
    dc->FillSolidRect(&rect, RGB(255, 255, 240));
    return TRUE;
}

void CSampleNote::OnPaint()
{
    ++paintCount;
    if (throwWhilePainting)
        AfxThrowMemoryException();
    CPaintDC dc(this);
    CFont* const oldFont = dc.SelectObject(&font);
    dc.SetBkMode(TRANSPARENT);
    for (int i = top; i < static_cast<int>(lines.size()); ++i) {
        const int y = (i - top) * LineHeight();
        if (y + LineHeight() <= dc.m_ps.rcPaint.top || y >= dc.m_ps.rcPaint.bottom)
            continue;
        dc.SetTextColor(i % 2 == 0 ? RGB(0, 0, 0) : RGB(0, 0, 200));
        dc.TextOut(4, y, lines[static_cast<std::size_t>(i)]);
    }
    dc.SelectObject(oldFont);
}

void CSampleNote::OnSetFocus(CWnd* oldWindow)
{
    CWnd::OnSetFocus(oldWindow);
    log.push_back("setfocus");
    CreateSolidCaret(2, LineHeight());
    SetCaretPos(CPoint(4, 0));
    ShowCaret();
}

void CSampleNote::OnKillFocus(CWnd* newWindow)
{
    CWnd::OnKillFocus(newWindow);
    log.push_back("killfocus");
    HideCaret();
    ::DestroyCaret();
}

void CSampleNote::OnChar(UINT character, UINT, UINT)
{
    log.push_back("char " + std::to_string(character));
}

void CSampleNote::OnKeyDown(UINT key, UINT, UINT)
{
    log.push_back("key " + std::to_string(key) + (::GetKeyState(VK_SHIFT) < 0 ? " shift" : ""));
}

void CSampleNote::OnLButtonDown(UINT, CPoint point)
{
    log.push_back("down " + std::to_string(point.x) + "," + std::to_string(point.y));
    SetCapture();
}

void CSampleNote::OnLButtonUp(UINT, CPoint point)
{
    log.push_back("up " + std::to_string(point.x) + "," + std::to_string(point.y));
    ::ReleaseCapture();
}

void CSampleNote::OnLButtonDblClk(UINT, CPoint)
{
    log.push_back("double");
}

void CSampleNote::OnMouseMove(UINT, CPoint point)
{
    if (GetCapture() == this)
        log.push_back("drag " + std::to_string(point.x) + "," + std::to_string(point.y));
}

BOOL CSampleNote::OnMouseWheel(UINT, short delta, CPoint)
{
    log.push_back("wheel " + std::to_string(delta));
    return delta < 0; // turning up is for the parent
}

void CSampleNote::ScrollTo(int line)
{
    SCROLLINFO info = {};
    info.fMask = SIF_POS;
    info.nPos = line;
    SetScrollInfo(SB_VERT, &info);
    const int moved = GetScrollPos(SB_VERT) - top;
    top += moved;
    ScrollWindow(0, -moved * LineHeight());
}

void CSampleNote::OnVScroll(UINT code, UINT, CScrollBar* scrollBar)
{
    if (scrollBar != nullptr)
        return;
    if (code == SB_LINEDOWN)
        ScrollTo(top + 1);
    else if (code == SB_LINEUP)
        ScrollTo(top - 1);
}

void CSampleNote::OnTimer(UINT_PTR id)
{
    log.push_back("timer " + std::to_string(id));
}

void CSampleNote::OnCaptureChanged(CWnd*)
{
    log.push_back("capturechanged");
}

LRESULT CSampleNote::OnPing(WPARAM wParam, LPARAM lParam)
{
    return static_cast<LRESULT>(wParam) * 10 + lParam;
}

BOOL CSampleNote::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_KEYDOWN && message->wParam == VK_F5) {
        ++translated;
        return TRUE;
    }
    return CWnd::PreTranslateMessage(message);
}

void CSampleFrame::OnCopy()
{
    log.push_back("copy");
}

void CSampleFrame::OnZoom(UINT command)
{
    log.push_back("zoom " + std::to_string(command - kFirstZoom));
}

void CSampleFrame::OnNoteText(NMHDR*, LRESULT* result)
{
    log.push_back("notify");
    *result = 42;
}

void CSampleFrame::OnSetFocus(CWnd* oldWindow)
{
    CWnd::OnSetFocus(oldWindow);
    log.push_back("setfocus");
}

BOOL CSampleFrame::OnMouseWheel(UINT, short delta, CPoint)
{
    log.push_back("wheel " + std::to_string(delta));
    return TRUE;
}

SampleWindows::SampleWindows()
{
    // A popup window, not activated: no window manager has a say in its size, and without one
    // Wine takes two seconds to end an active window.
    frame.CreateEx(0, nullptr, "frame", WS_POPUP | WS_CLIPCHILDREN, 10, 10, 400, 300, nullptr,
                   nullptr);
    frame.ShowWindow(SW_SHOWNOACTIVATE);
    note.Create(nullptr, "note", WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &frame, kNoteId);
    tlvn::PumpPendingMessages();
}

SampleWindows::~SampleWindows()
{
    frame.DestroyWindow();
    tlvn::PumpPendingMessages();
}
