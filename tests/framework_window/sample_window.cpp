#include "tests/framework_window/sample_window.h"

BEGIN_MESSAGE_MAP(CSampleNote, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_NCDESTROY()
ON_WM_SIZE()
ON_WM_SHOWWINDOW()
ON_WM_PAINT()
ON_WM_CHAR()
ON_WM_KEYDOWN()
ON_WM_MOUSEWHEEL()
ON_WM_TIMER()
ON_MESSAGE(kMessagePing, &CSampleNote::OnPing)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CSampleFrame, CWnd)
ON_COMMAND(kCommandCopy, &CSampleFrame::OnCopy)
ON_COMMAND_RANGE(kFirstZoom, kLastZoom, &CSampleFrame::OnZoom)
ON_NOTIFY(1, kNoteId, &CSampleFrame::OnNoteText)
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

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
