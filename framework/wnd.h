// CWnd: a window with a message map, or a reference to one that others made.
//
// A class derives from CWnd, handles messages through its map (message_map.h) and is created
// with Create or CreateEx:
//
//   CNote note;
//   note.Create(nullptr, "note", WS_CHILD | WS_VISIBLE, rect, &parent, ID_NOTE);
//
// A handler calls its base class's handler of the same name, or Default(), for the system's own
// treatment. DestroyWindow (also called by the destructor) ends the window; PostNcDestroy is
// the last call an object gets and may delete it. An object of a window that others made comes
// from FromHandle.
//
// Narrow texts are in the multibyte code page; the windows themselves are Unicode windows. An
// exception that leaves a handler is caught at the window procedure: the message counts as
// failed (creation fails, painting is validated) and its text is shown in a message box.

#pragma once

#include "framework/dc.h"
#include "framework/geometry.h"
#include "framework/menu.h"
#include "framework/message_map.h"
#include "framework/object.h"
#include "framework/string.h"
#include "framework/winapi.h"
#include "framework/window_class.h"

#include <string>

class CScrollBar;

class TLVN_API CWnd : public CObject {
    DECLARE_DYNAMIC(CWnd)
public:
    CWnd() = default;
    ~CWnd() override;

    // The window; null before it is created and after its end.
    HWND m_hWnd = nullptr;

    // --- handles ---------------------------------------------------------------------------
    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }
    // The object attached to the window, or a temporary one (see handle_map.h); null for null.
    static CWnd* FromHandle(HWND window);
    static CWnd* FromHandlePermanent(HWND window);
    // Names this object the window's, or ends that, without touching the window procedure.
    BOOL Attach(HWND window);
    HWND Detach();
    // Attaches and takes the window's messages; UnsubclassWindow gives both back.
    BOOL SubclassWindow(HWND window);
    HWND UnsubclassWindow();

    // --- creation and destruction ------------------------------------------------------------
    // A null class name means a plain class of the library. `id` is the control number.
    virtual BOOL Create(LPCSTR className, LPCSTR title, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, void* parameter = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id, LPVOID parameter = nullptr);
    // For top-level windows `menuOrId` is the menu.
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y,
                  int width, int height, HWND parent, HMENU menuOrId, LPVOID parameter = nullptr);
    virtual BOOL DestroyWindow();
    // May change what the window is created with; FALSE stops the creation.
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);

    // --- messages ----------------------------------------------------------------------------
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::PostMessageW(m_hWnd, message, wParam, lParam);
    }
    // TRUE when the message was dealt with and is not dispatched. Called for the window a
    // message is for and then its parents.
    virtual BOOL PreTranslateMessage(MSG* message);

    // --- place and state -----------------------------------------------------------------------
    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_EXSTYLE)); }
    // FALSE when nothing changed. With flags, SetWindowPos is called with them and with
    // SWP_NOSIZE, NOMOVE, NOZORDER and NOACTIVATE.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE)
    {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    void MoveWindow(const RECT* rect, BOOL repaint = TRUE);
    BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags);
    void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
    void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
    void ClientToScreen(POINT* point) const { ::ClientToScreen(m_hWnd, point); }
    void ClientToScreen(RECT* rect) const;
    void ScreenToClient(POINT* point) const { ::ScreenToClient(m_hWnd, point); }
    void ScreenToClient(RECT* rect) const;
    void MapWindowPoints(CWnd* to, POINT* points, UINT count) const;

    void SetWindowText(LPCSTR text);
    void SetWindowText(LPCWSTR text) { ::SetWindowTextW(m_hWnd, text); }
    // Bytes copied, without the terminator.
    int GetWindowText(LPSTR text, int capacity) const;
    void GetWindowText(CStringA& text) const;
    void GetWindowText(CStringW& text) const;
    int GetWindowTextLength() const; // bytes
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const;

    // --- relations ---------------------------------------------------------------------------
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* SetParent(CWnd* parent);
    // The window set by SetOwner, or the parent.
    CWnd* GetOwner() const;
    void SetOwner(CWnd* owner);
    CWnd* GetTopLevelParent() const { return FromHandle(::GetAncestor(m_hWnd, GA_ROOT)); }
    CWnd* GetWindow(UINT relation) const { return FromHandle(::GetWindow(m_hWnd, relation)); }
    CWnd* GetTopWindow() const { return GetWindow(GW_CHILD); }
    BOOL IsChild(const CWnd* window) const { return ::IsChild(m_hWnd, window->m_hWnd); }
    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    int SetDlgCtrlID(int id);
    static CWnd* WindowFromPoint(POINT point) { return FromHandle(::WindowFromPoint(point)); }
    CMenu* GetMenu() const { return CMenu::FromHandle(::GetMenu(m_hWnd)); }
    // The window owns the menu from now on: Detach it from its CMenu.
    BOOL SetMenu(CMenu* menu);
    void DrawMenuBar() { ::DrawMenuBar(m_hWnd); }

    // --- focus, mouse, caret, timers -------------------------------------------------------
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
    void CreateSolidCaret(int width, int height) { ::CreateCaret(m_hWnd, nullptr, width, height); }
    static void SetCaretPos(POINT point) { ::SetCaretPos(point.x, point.y); }
    static CPoint GetCaretPos();
    void ShowCaret() { ::ShowCaret(m_hWnd); }
    void HideCaret() { ::HideCaret(m_hWnd); }
    // Without a procedure the window gets WM_TIMER with the number every `milliseconds`.
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC procedure = nullptr)
    {
        return ::SetTimer(m_hWnd, id, milliseconds, procedure);
    }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }
    BOOL OpenClipboard() { return ::OpenClipboard(m_hWnd); }

    // --- painting ------------------------------------------------------------------------------
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(const RECT* rect, BOOL erase = TRUE)
    {
        ::InvalidateRect(m_hWnd, rect, erase);
    }
    void ValidateRect(const RECT* rect) { ::ValidateRect(m_hWnd, rect); }
    BOOL GetUpdateRect(RECT* rect, BOOL erase = FALSE)
    {
        return ::GetUpdateRect(m_hWnd, rect, erase);
    }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    BOOL RedrawWindow(const RECT* rect = nullptr, CRgn* region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    void SetRedraw(BOOL redraw = TRUE)
    {
        SendMessage(WM_SETREDRAW, static_cast<WPARAM>(redraw), 0);
    }
    // Contexts that go back with ReleaseDC and EndPaint, which end the object too.
    CDC* GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
    CDC* GetWindowDC() { return CDC::FromHandle(::GetWindowDC(m_hWnd)); }
    int ReleaseDC(CDC* dc);
    CDC* BeginPaint(PAINTSTRUCT* paint) { return CDC::FromHandle(::BeginPaint(m_hWnd, paint)); }
    void EndPaint(PAINTSTRUCT* paint);

    // --- scroll bars -----------------------------------------------------------------------------
    BOOL SetScrollInfo(int bar, SCROLLINFO* info, BOOL redraw = TRUE);
    BOOL GetScrollInfo(int bar, SCROLLINFO* info, UINT mask = SIF_ALL);
    int SetScrollPos(int bar, int position, BOOL redraw = TRUE)
    {
        return ::SetScrollPos(m_hWnd, bar, position, redraw);
    }
    int GetScrollPos(int bar) const { return ::GetScrollPos(m_hWnd, bar); }
    void SetScrollRange(int bar, int least, int most, BOOL redraw = TRUE)
    {
        ::SetScrollRange(m_hWnd, bar, least, most, redraw);
    }
    void GetScrollRange(int bar, int* least, int* most) const
    {
        ::GetScrollRange(m_hWnd, bar, least, most);
    }
    // The highest position a scroll bar can take.
    int GetScrollLimit(int bar);
    void ShowScrollBar(UINT bar, BOOL show = TRUE)
    {
        ::ShowScrollBar(m_hWnd, static_cast<int>(bar), show);
    }
    void EnableScrollBarCtrl(int bar, BOOL enable = TRUE);
    void ScrollWindow(int dx, int dy, const RECT* rect = nullptr, const RECT* clip = nullptr)
    {
        ::ScrollWindow(m_hWnd, dx, dy, rect, clip);
    }
    int ScrollWindowEx(int dx, int dy, const RECT* rect, const RECT* clip, CRgn* update,
                       RECT* updateRect, UINT flags);

    // The answer is IDOK, IDYES and so on. Without a caption the box bears the title of the
    // top-level window. See tlvn::SetMessageBoxProcedure.
    int MessageBox(LPCSTR text, LPCSTR caption = nullptr, UINT type = MB_OK);

    // --- the handlers of the message map ------------------------------------------------------
protected:
    // The system's treatment of the message that is being handled.
    LRESULT Default();

    afx_msg int OnCreate(LPCREATESTRUCT create); // -1 makes the creation fail
    afx_msg void OnDestroy();
    afx_msg void OnNcDestroy();
    afx_msg void OnClose();
    afx_msg BOOL OnQueryEndSession(); // FALSE keeps the system from ending the session
    afx_msg void OnEndSession(BOOL ending);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnMove(int x, int y);
    afx_msg void OnWindowPosChanged(WINDOWPOS* position);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* limits);
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnSetFocus(CWnd* oldWindow);
    afx_msg void OnKillFocus(CWnd* newWindow);
    afx_msg void OnEnable(BOOL enable);
    afx_msg void OnShowWindow(BOOL show, UINT status);
    afx_msg void OnChar(UINT character, UINT repeat, UINT flags);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnKeyUp(UINT key, UINT repeat, UINT flags);
    afx_msg void OnSysKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnSysKeyUp(UINT key, UINT repeat, UINT flags);
    afx_msg void OnSysChar(UINT character, UINT repeat, UINT flags);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnRButtonDown(UINT flags, CPoint point);
    afx_msg void OnRButtonUp(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    afx_msg BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    afx_msg void OnCaptureChanged(CWnd* window);
    afx_msg void OnCancelMode();
    afx_msg int OnMouseActivate(CWnd* topLevel, UINT hitTest, UINT message);
    afx_msg void OnContextMenu(CWnd* window, CPoint point);
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* scrollBar);
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* scrollBar);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnNcPaint();
    afx_msg void OnNcCalcSize(BOOL calcValidRects, NCCALCSIZE_PARAMS* params);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnSysColorChange();
    afx_msg void OnSettingChange(UINT flags, LPCSTR section);
    afx_msg void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);

    // Every message comes here; what no map handles goes to DefWindowProc.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // TRUE when the command or notification was handled; by the message map at first.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    // The last call: the window is gone. The object may delete itself.
    virtual void PostNcDestroy();
    virtual const AFX_MSGMAP* GetMessageMap() const;
    static const AFX_MSGMAP* GetThisMessageMap();

private:
    friend struct CWndAccess;

    LRESULT CallWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    bool Dispatch(UINT code, UINT id, UINT mapMessage, WPARAM wParam, LPARAM lParam,
                  LRESULT* result);
    CStringW GetWideText() const;

    HWND m_hWndOwner = nullptr;
    WNDPROC m_pfnSuper = nullptr; // the procedure this object took the place of
};

// A scroll bar that is a window of its own, as the sender of WM_VSCROLL and WM_HSCROLL.
class TLVN_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
};

// A message box without an owner window.
TLVN_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT helpId = 0);

namespace tlvn {

// The next message of the thread, offered to PreTranslateMessage, translated and dispatched.
// Waits for one; false for WM_QUIT.
TLVN_API bool PumpMessage();
// The same for every message there is, without waiting. False when WM_QUIT came (it is then
// posted again).
TLVN_API bool PumpPendingMessages();
// Until WM_QUIT; its exit code.
TLVN_API int RunMessageLoop();
// Offers the message to the PreTranslateMessage of its window and the window's parents.
TLVN_API bool PreTranslateForTree(MSG* message);
// Frees this thread's temporary objects, unless a message is being handled. The message
// functions above do so when there is nothing to do.
TLVN_API void DeleteTemporaryObjects();

// Every message box of the library is shown by this procedure. A null one means the system's.
// Gives the procedure that was set before.
using MessageBoxProcedure = int (*)(HWND owner, const WCHAR* text, const WCHAR* caption, UINT type);
TLVN_API MessageBoxProcedure SetMessageBoxProcedure(MessageBoxProcedure procedure);
TLVN_API int ShowMessageBox(HWND owner, const WCHAR* text, const WCHAR* caption, UINT type);

// Used by the entries of message maps.

// The CREATESTRUCTW of WM_CREATE with narrow texts.
class TLVN_API NarrowCreateStruct {
public:
    // By the message's lParam.
    explicit NarrowCreateStruct(LPARAM wide);
    // Good as long as the object.
    LPCREATESTRUCT Get() { return &m_create; }

private:
    std::string m_name;
    std::string m_className;
    CREATESTRUCT m_create;
};
// The parameters of messages as handlers take them: the name of a setting, a scroll bar.
TLVN_API std::string NarrowSetting(LPARAM text);
TLVN_API CScrollBar* ScrollBarOf(LPARAM window);

// A context that belongs to whoever sent the message.
class TLVN_API BorrowedDC : public CDC {
public:
    // The context is not released.
    explicit BorrowedDC(HDC dc) { SetBorrowed(dc); }
    ~BorrowedDC() override { SetBorrowed(nullptr); }
    BorrowedDC(const BorrowedDC&) = delete;
    BorrowedDC& operator=(const BorrowedDC&) = delete;
};

} // namespace tlvn
