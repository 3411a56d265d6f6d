// Message maps: which member function of a window class handles which message.
//
//   class CNote : public CWnd {
//       DECLARE_MESSAGE_MAP()
//   protected:
//       afx_msg void OnPaint();
//       afx_msg void OnLButtonDown(UINT flags, CPoint point);
//       afx_msg void OnCopy();
//   };
//
//   BEGIN_MESSAGE_MAP(CNote, CWnd)
//       ON_WM_PAINT()
//       ON_WM_LBUTTONDOWN()
//       ON_COMMAND(ID_COPY, &CNote::OnCopy)
//   END_MESSAGE_MAP()
//
// An entry calls its handler through the handler's own type, so that a wrong signature does not
// compile. The handlers' signatures are those of CWnd's members of the same name (wnd.h).

#pragma once

#include "framework/winapi.h"

class CWnd;

#define afx_msg

namespace tlvn {

// A message on its way to a handler, and what the handler answered.
struct MessageCall {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
};

} // namespace tlvn

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;
    UINT nCode; // notification code of WM_COMMAND and WM_NOTIFY
    UINT nID;   // first and last control or command of these
    UINT nLastID;
    // False when the handler declined and the search goes on. Null in the last entry.
    bool (*pfn)(CWnd* target, tlvn::MessageCall& call);
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                                                                      \
protected:                                                                                         \
    static const AFX_MSGMAP* GetThisMessageMap();                                                  \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                              \
    {                                                                                              \
        return GetThisMessageMap();                                                                \
    }                                                                                              \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                \
    {                                                                                              \
        using ThisClass = theClass;                                                                \
        using TheBaseClass = baseClass;                                                            \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                          \
    {                                                                                              \
        0, 0, 0, 0, nullptr                                                                        \
    }                                                                                              \
    }                                                                                              \
    ;                                                                                              \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                     \
    return &map;                                                                                   \
    }

// `self` is the window, `call` the message.
#define TLVN_MESSAGE_ENTRY(message, code, first, last, ...)                                        \
    {message, static_cast<UINT>(code), static_cast<UINT>(first), static_cast<UINT>(last),          \
     [](CWnd* target, [[maybe_unused]] ::tlvn::MessageCall& call) -> bool {                        \
         ThisClass& self = *static_cast<ThisClass*>(target);                                       \
         __VA_ARGS__                                                                               \
     }},
#define TLVN_ON_WM(message, ...) TLVN_MESSAGE_ENTRY(message, 0, 0, 0, __VA_ARGS__; return true;)

// The parts of a message, in the order of the handlers' parameters.
#define TLVN_KEY_ARGUMENTS static_cast<UINT>(call.wParam), LOWORD(call.lParam), HIWORD(call.lParam)
#define TLVN_MOUSE_ARGUMENTS static_cast<UINT>(call.wParam), CPoint(call.lParam)
#define TLVN_WINDOW_ARGUMENT(value) CWnd::FromHandle(reinterpret_cast<HWND>(value))

#define ON_WM_CREATE()                                                                             \
    TLVN_ON_WM(WM_CREATE, ::tlvn::NarrowCreateStruct create(call.lParam);                          \
               call.result = self.OnCreate(create.Get()))
#define ON_WM_DESTROY() TLVN_ON_WM(WM_DESTROY, self.OnDestroy())
#define ON_WM_NCDESTROY() TLVN_ON_WM(WM_NCDESTROY, self.OnNcDestroy())
#define ON_WM_CLOSE() TLVN_ON_WM(WM_CLOSE, self.OnClose())
#define ON_WM_QUERYENDSESSION()                                                                    \
    TLVN_ON_WM(WM_QUERYENDSESSION, call.result = self.OnQueryEndSession())
#define ON_WM_ENDSESSION() TLVN_ON_WM(WM_ENDSESSION, self.OnEndSession(call.wParam != 0))
#define ON_WM_PAINT() TLVN_ON_WM(WM_PAINT, self.OnPaint())
#define ON_WM_ERASEBKGND()                                                                         \
    TLVN_ON_WM(WM_ERASEBKGND, ::tlvn::BorrowedDC dc(reinterpret_cast<HDC>(call.wParam));           \
               call.result = self.OnEraseBkgnd(&dc))
#define ON_WM_SIZE()                                                                               \
    TLVN_ON_WM(WM_SIZE, self.OnSize(static_cast<UINT>(call.wParam), LOWORD(call.lParam),           \
                                    HIWORD(call.lParam)))
#define ON_WM_MOVE() TLVN_ON_WM(WM_MOVE, const CPoint at(call.lParam); self.OnMove(at.x, at.y))
#define ON_WM_WINDOWPOSCHANGED()                                                                   \
    TLVN_ON_WM(WM_WINDOWPOSCHANGED,                                                                \
               self.OnWindowPosChanged(reinterpret_cast<WINDOWPOS*>(call.lParam)))
#define ON_WM_GETMINMAXINFO()                                                                      \
    TLVN_ON_WM(WM_GETMINMAXINFO, self.OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(call.lParam)))
#define ON_WM_ACTIVATE()                                                                           \
    TLVN_ON_WM(WM_ACTIVATE,                                                                        \
               self.OnActivate(LOWORD(call.wParam), TLVN_WINDOW_ARGUMENT(call.lParam),             \
                               HIWORD(call.wParam)))
#define ON_WM_SETFOCUS() TLVN_ON_WM(WM_SETFOCUS, self.OnSetFocus(TLVN_WINDOW_ARGUMENT(call.wParam)))
#define ON_WM_KILLFOCUS()                                                                          \
    TLVN_ON_WM(WM_KILLFOCUS, self.OnKillFocus(TLVN_WINDOW_ARGUMENT(call.wParam)))
#define ON_WM_ENABLE() TLVN_ON_WM(WM_ENABLE, self.OnEnable(static_cast<BOOL>(call.wParam)))
#define ON_WM_SHOWWINDOW()                                                                         \
    TLVN_ON_WM(WM_SHOWWINDOW,                                                                      \
               self.OnShowWindow(static_cast<BOOL>(call.wParam), static_cast<UINT>(call.lParam)))
#define ON_WM_CHAR() TLVN_ON_WM(WM_CHAR, self.OnChar(TLVN_KEY_ARGUMENTS))
#define ON_WM_KEYDOWN() TLVN_ON_WM(WM_KEYDOWN, self.OnKeyDown(TLVN_KEY_ARGUMENTS))
#define ON_WM_KEYUP() TLVN_ON_WM(WM_KEYUP, self.OnKeyUp(TLVN_KEY_ARGUMENTS))
#define ON_WM_SYSKEYDOWN() TLVN_ON_WM(WM_SYSKEYDOWN, self.OnSysKeyDown(TLVN_KEY_ARGUMENTS))
#define ON_WM_SYSKEYUP() TLVN_ON_WM(WM_SYSKEYUP, self.OnSysKeyUp(TLVN_KEY_ARGUMENTS))
#define ON_WM_SYSCHAR() TLVN_ON_WM(WM_SYSCHAR, self.OnSysChar(TLVN_KEY_ARGUMENTS))
#define ON_WM_LBUTTONDOWN() TLVN_ON_WM(WM_LBUTTONDOWN, self.OnLButtonDown(TLVN_MOUSE_ARGUMENTS))
#define ON_WM_LBUTTONUP() TLVN_ON_WM(WM_LBUTTONUP, self.OnLButtonUp(TLVN_MOUSE_ARGUMENTS))
#define ON_WM_LBUTTONDBLCLK()                                                                      \
    TLVN_ON_WM(WM_LBUTTONDBLCLK, self.OnLButtonDblClk(TLVN_MOUSE_ARGUMENTS))
#define ON_WM_RBUTTONDOWN() TLVN_ON_WM(WM_RBUTTONDOWN, self.OnRButtonDown(TLVN_MOUSE_ARGUMENTS))
#define ON_WM_RBUTTONUP() TLVN_ON_WM(WM_RBUTTONUP, self.OnRButtonUp(TLVN_MOUSE_ARGUMENTS))
#define ON_WM_MOUSEMOVE() TLVN_ON_WM(WM_MOUSEMOVE, self.OnMouseMove(TLVN_MOUSE_ARGUMENTS))
#define ON_WM_MOUSELEAVE() TLVN_ON_WM(WM_MOUSELEAVE, self.OnMouseLeave())
// A wheel that the handler does not take goes on to the parent.
#define ON_WM_MOUSEWHEEL()                                                                         \
    TLVN_MESSAGE_ENTRY(WM_MOUSEWHEEL, 0, 0, 0,                                                     \
                       call.result = self.OnMouseWheel(LOWORD(call.wParam),                        \
                                                       static_cast<short>(HIWORD(call.wParam)),    \
                                                       CPoint(call.lParam));                       \
                       return call.result != 0;)
#define ON_WM_SETCURSOR()                                                                          \
    TLVN_ON_WM(WM_SETCURSOR,                                                                       \
               call.result = self.OnSetCursor(TLVN_WINDOW_ARGUMENT(call.wParam),                   \
                                              LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_CAPTURECHANGED()                                                                     \
    TLVN_ON_WM(WM_CAPTURECHANGED, self.OnCaptureChanged(TLVN_WINDOW_ARGUMENT(call.lParam)))
#define ON_WM_CANCELMODE() TLVN_ON_WM(WM_CANCELMODE, self.OnCancelMode())
#define ON_WM_MOUSEACTIVATE()                                                                      \
    TLVN_ON_WM(WM_MOUSEACTIVATE,                                                                   \
               call.result = self.OnMouseActivate(TLVN_WINDOW_ARGUMENT(call.wParam),               \
                                                  LOWORD(call.lParam), HIWORD(call.lParam)))
#define ON_WM_CONTEXTMENU()                                                                        \
    TLVN_ON_WM(WM_CONTEXTMENU,                                                                     \
               self.OnContextMenu(TLVN_WINDOW_ARGUMENT(call.wParam), CPoint(call.lParam)))
#define ON_WM_VSCROLL()                                                                            \
    TLVN_ON_WM(WM_VSCROLL, self.OnVScroll(LOWORD(call.wParam), HIWORD(call.wParam),                \
                                          ::tlvn::ScrollBarOf(call.lParam)))
#define ON_WM_HSCROLL()                                                                            \
    TLVN_ON_WM(WM_HSCROLL, self.OnHScroll(LOWORD(call.wParam), HIWORD(call.wParam),                \
                                          ::tlvn::ScrollBarOf(call.lParam)))
#define ON_WM_TIMER() TLVN_ON_WM(WM_TIMER, self.OnTimer(static_cast<UINT_PTR>(call.wParam)))
#define ON_WM_NCPAINT() TLVN_ON_WM(WM_NCPAINT, self.OnNcPaint())
#define ON_WM_NCCALCSIZE()                                                                         \
    TLVN_ON_WM(WM_NCCALCSIZE,                                                                      \
               self.OnNcCalcSize(static_cast<BOOL>(call.wParam),                                   \
                                 reinterpret_cast<NCCALCSIZE_PARAMS*>(call.lParam)))
#define ON_WM_GETDLGCODE() TLVN_ON_WM(WM_GETDLGCODE, call.result = self.OnGetDlgCode())
#define ON_WM_SYSCOLORCHANGE() TLVN_ON_WM(WM_SYSCOLORCHANGE, self.OnSysColorChange())
#define ON_WM_SETTINGCHANGE()                                                                      \
    TLVN_ON_WM(WM_SETTINGCHANGE, self.OnSettingChange(static_cast<UINT>(call.wParam),              \
                                                      ::tlvn::NarrowSetting(call.lParam).c_str()))
#define ON_WM_INITMENUPOPUP()                                                                      \
    TLVN_ON_WM(WM_INITMENUPOPUP,                                                                   \
               self.OnInitMenuPopup(CMenu::FromHandle(reinterpret_cast<HMENU>(call.wParam)),       \
                                    LOWORD(call.lParam), HIWORD(call.lParam)))

// Handlers named in the map, as pointers to members (&CName::OnSomething):
//   LRESULT (WPARAM, LPARAM)
#define ON_MESSAGE(message, memberFxn)                                                             \
    TLVN_ON_WM(message, call.result = (self.*(memberFxn))(call.wParam, call.lParam))
//   void ()
#define ON_COMMAND(id, memberFxn) ON_CONTROL(0, id, memberFxn)
#define ON_CONTROL(code, id, memberFxn)                                                            \
    TLVN_MESSAGE_ENTRY(WM_COMMAND, code, id, id, (self.*(memberFxn))(); return true;)
//   void (UINT command)
#define ON_COMMAND_RANGE(first, last, memberFxn)                                                   \
    TLVN_MESSAGE_ENTRY(WM_COMMAND, 0, first, last, (self.*(memberFxn))(LOWORD(call.wParam));       \
                       return true;)
//   void (NMHDR*, LRESULT*)
#define ON_NOTIFY(code, id, memberFxn)                                                             \
    TLVN_MESSAGE_ENTRY(WM_NOTIFY, code, id, id,                                                    \
                       (self.*(memberFxn))(reinterpret_cast<NMHDR*>(call.lParam), &call.result);   \
                       return true;)
//   BOOL (UINT id, NMHDR*, LRESULT*); FALSE lets the search go on
#define ON_NOTIFY_EX(code, id, memberFxn) ON_NOTIFY_EX_RANGE(code, id, id, memberFxn)
#define ON_NOTIFY_EX_RANGE(code, first, last, memberFxn)                                           \
    TLVN_MESSAGE_ENTRY(WM_NOTIFY, code, first, last,                                               \
                       return (self.*(memberFxn))(static_cast<UINT>(call.wParam),                  \
                                                  reinterpret_cast<NMHDR*>(call.lParam),           \
                                                  &call.result) != 0;)
