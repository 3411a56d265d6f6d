// How messages reach CWnd objects: window procedure, message maps, default handlers, loop.

#include "framework/exception.h"
#include "framework/handle_map.h"
#include "framework/temporary_objects.h"
#include "framework/wnd.h"
#include "framework/wnd_internal.h"
#include "platform/nls.h"

#include <exception>
#include <new>

namespace {

using WindowMap = tlvn::HandleMap<CWnd, HWND>;

WindowMap& Windows()
{
    static WindowMap* const map = new WindowMap;
    return *map;
}

// A temporary object only refers to its window.
class ReferenceWnd : public CWnd {
public:
    explicit ReferenceWnd(HWND window) { m_hWnd = window; }
    ~ReferenceWnd() override { m_hWnd = nullptr; }
    ReferenceWnd(const ReferenceWnd&) = delete;
    ReferenceWnd& operator=(const ReferenceWnd&) = delete;
};

thread_local const tlvn::MessageCall* t_current = nullptr; // what Default() passes on
thread_local int t_depth = 0;                              // messages being handled
thread_local tlvn::CreationHook* t_creation = nullptr;

} // namespace

// The window procedure's way to the members it calls.
struct CWndAccess {
    static LRESULT Call(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        return window.CallWindowProc(message, wParam, lParam);
    }
    static void SetSuper(CWnd& window, WNDPROC procedure) { window.m_pfnSuper = procedure; }
};

namespace tlvn {
namespace {

// The answer to a message whose handler failed.
LRESULT ReportFailure(HWND window, UINT message, const WString& text)
{
    ShowMessageBox(window, text.c_str(), TW(""), MB_OK | MB_ICONSTOP);
    if (message == WM_CREATE)
        return -1;
    if (message == WM_PAINT)
        ::ValidateRect(window, nullptr);
    return 0;
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* const object = CWnd::FromHandlePermanent(window);
    if (object == nullptr)
        return ::DefWindowProcW(window, message, wParam, lParam);
    // An exception must not pass through the system's frames.
    try {
        return CWndAccess::Call(*object, message, wParam, lParam);
    } catch (CException* e) {
        char text[512];
        const bool hasText = e->GetErrorMessage(text, sizeof(text)) != 0;
        e->Delete();
        return ReportFailure(window, message, hasText ? WidenText(text) : WString());
    } catch (const std::exception& e) {
        return ReportFailure(window, message, WidenText(e.what()));
    }
}

} // namespace

WNDPROC TakeWindowProcedure(HWND window)
{
    const LONG_PTR previous =
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowProcedure));
    const auto procedure = reinterpret_cast<WNDPROC>(previous);
    return procedure != &WindowProcedure ? procedure : nullptr;
}

CreationHook::CreationHook(CWnd* object)
    : m_object(object),
      m_hook(::SetWindowsHookExW(WH_CBT, &Procedure, nullptr, ::GetCurrentThreadId())),
      m_outer(t_creation)
{
    t_creation = this;
}

CreationHook::~CreationHook()
{
    t_creation = m_outer;
    if (m_hook != nullptr)
        ::UnhookWindowsHookEx(m_hook);
}

LRESULT CALLBACK CreationHook::Procedure(int code, WPARAM wParam, LPARAM lParam)
{
    CreationHook* const creation = t_creation;
    if (code != HCBT_CREATEWND || creation == nullptr || creation->m_taken)
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    const HWND window = reinterpret_cast<HWND>(wParam);
    creation->m_taken = true;
    creation->m_object->Attach(window);
    CWndAccess::SetSuper(*creation->m_object, TakeWindowProcedure(window));
    // Windows that the new one makes in turn are none of this hook's business.
    ::UnhookWindowsHookEx(creation->m_hook);
    creation->m_hook = nullptr;
    return 0;
}

BOOL ModifyWindowStyle(HWND window, int index, DWORD remove, DWORD add, UINT flags)
{
    const DWORD before = static_cast<DWORD>(::GetWindowLongW(window, index));
    const DWORD after = (before & ~remove) | add;
    if (before == after)
        return FALSE;
    ::SetWindowLongW(window, index, static_cast<LONG>(after));
    if (flags != 0) {
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    }
    return TRUE;
}

bool PreTranslateForTree(MSG* message)
{
    for (HWND window = message->hwnd; window != nullptr; window = ::GetParent(window)) {
        CWnd* const object = CWnd::FromHandlePermanent(window);
        if (object != nullptr && object->PreTranslateMessage(message))
            return true;
    }
    return false;
}

namespace {

void Handle(MSG& message)
{
    if (PreTranslateForTree(&message))
        return;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

} // namespace

bool PumpMessage()
{
    MSG message;
    if (!::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE))
        DeleteTemporaryObjects();
    if (::GetMessageW(&message, nullptr, 0, 0) <= 0)
        return false;
    Handle(message);
    return true;
}

bool PumpPendingMessages()
{
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        Handle(message);
    }
    DeleteTemporaryObjects();
    return true;
}

int RunMessageLoop()
{
    MSG message;
    for (;;) {
        if (!::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE))
            DeleteTemporaryObjects();
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0)
            return static_cast<int>(message.wParam);
        Handle(message);
    }
}

void DeleteTemporaryObjects()
{
    // Handlers up the stack may hold such objects.
    if (t_depth != 0)
        return;
    ForgetTemporaryWindows();
    ForgetTemporaryMenus();
    ForgetTemporaryDcs();
    ForgetTemporaryGdiObjects();
}

void ForgetTemporaryWindows()
{
    Windows().ForgetAll();
}

} // namespace tlvn

BOOL CWnd::Attach(HWND window)
{
    if (m_hWnd != nullptr || window == nullptr)
        return FALSE;
    m_hWnd = window;
    Windows().Add(window, this);
    return TRUE;
}

HWND CWnd::Detach()
{
    const HWND window = m_hWnd;
    if (window != nullptr)
        Windows().Remove(window, this);
    m_hWnd = nullptr;
    return window;
}

CWnd* CWnd::FromHandlePermanent(HWND window)
{
    return Windows().FindPermanent(window);
}

CWnd* CWnd::FromHandle(HWND window)
{
    if (window == nullptr)
        return nullptr;
    return Windows().FindOrMake(window, [&] { return new ReferenceWnd(window); });
}

LRESULT CWnd::CallWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const tlvn::MessageCall call = {message, wParam, lParam, 0};
    struct Scope {
        explicit Scope(const tlvn::MessageCall* current) : outer(t_current)
        {
            t_current = current;
            ++t_depth;
        }
        ~Scope()
        {
            t_current = outer;
            --t_depth;
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        const tlvn::MessageCall* outer;
    } scope(&call);
    return WindowProc(message, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result))
        return result;
    return DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        *result = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY)
        return lParam != 0 && OnNotify(wParam, lParam, result);
    return Dispatch(0, 0, message, wParam, lParam, result);
}

bool CWnd::Dispatch(UINT code, UINT id, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const bool isCommand = message == WM_COMMAND || message == WM_NOTIFY;
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr;
         map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn != nullptr; ++entry) {
            if (entry->nMessage != message)
                continue;
            if (isCommand && (entry->nCode != code || id < entry->nID || id > entry->nLastID))
                continue;
            tlvn::MessageCall call = {message, wParam, lParam, 0};
            if (!entry->pfn(this, call))
                continue;
            *result = call.result;
            return true;
        }
    }
    return false;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    // Menus send code 0 and accelerators 1, both without a window; controls send their own.
    const UINT code = lParam != 0 ? HIWORD(wParam) : 0;
    LRESULT result = 0;
    return Dispatch(code, LOWORD(wParam), WM_COMMAND, wParam, lParam, &result);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto* const header = reinterpret_cast<const NMHDR*>(lParam);
    return Dispatch(header->code, static_cast<UINT>(header->idFrom), WM_NOTIFY, wParam, lParam,
                    result);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper != nullptr)
        return ::CallWindowProcW(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    if (t_current == nullptr)
        return 0;
    return DefWindowProc(t_current->message, t_current->wParam, t_current->lParam);
}

// The end of every map: CWnd itself handles only the end of its window.
const AFX_MSGMAP* CWnd::GetMessageMap() const
{
    return GetThisMessageMap();
}

const AFX_MSGMAP* CWnd::GetThisMessageMap()
{
    using ThisClass = CWnd;
    static const AFX_MSGMAP_ENTRY entries[] = {ON_WM_NCDESTROY(){0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

void CWnd::OnNcDestroy()
{
    Default();
    if (m_pfnSuper != nullptr && ::IsWindow(m_hWnd))
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    Detach();
    PostNcDestroy();
}

// clang-format off
int CWnd::OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
void CWnd::OnDestroy() { Default(); }
void CWnd::OnClose() { Default(); }
BOOL CWnd::OnQueryEndSession() { return static_cast<BOOL>(Default()); }
void CWnd::OnEndSession(BOOL) { Default(); }
void CWnd::OnPaint() { Default(); }
BOOL CWnd::OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
void CWnd::OnSize(UINT, int, int) { Default(); }
void CWnd::OnMove(int, int) { Default(); }
void CWnd::OnWindowPosChanged(WINDOWPOS*) { Default(); }
void CWnd::OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
void CWnd::OnActivate(UINT, CWnd*, BOOL) { Default(); }
void CWnd::OnSetFocus(CWnd*) { Default(); }
void CWnd::OnKillFocus(CWnd*) { Default(); }
void CWnd::OnEnable(BOOL) { Default(); }
void CWnd::OnShowWindow(BOOL, UINT) { Default(); }
void CWnd::OnChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnLButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnLButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnLButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnRButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnRButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnMouseMove(UINT, CPoint) { Default(); }
void CWnd::OnMouseLeave() { Default(); }
// The map passes the message on when the handler does not take it.
BOOL CWnd::OnMouseWheel(UINT, short, CPoint) { return FALSE; }
BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
void CWnd::OnCaptureChanged(CWnd*) { Default(); }
void CWnd::OnCancelMode() { Default(); }
int CWnd::OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
void CWnd::OnContextMenu(CWnd*, CPoint) { Default(); }
void CWnd::OnVScroll(UINT, UINT, CScrollBar*) { Default(); }
void CWnd::OnHScroll(UINT, UINT, CScrollBar*) { Default(); }
void CWnd::OnTimer(UINT_PTR) { Default(); }
void CWnd::OnNcPaint() { Default(); }
void CWnd::OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) { Default(); }
UINT CWnd::OnGetDlgCode() { return static_cast<UINT>(Default()); }
void CWnd::OnSysColorChange() { Default(); }
void CWnd::OnSettingChange(UINT, LPCSTR) { Default(); }
void CWnd::OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
// clang-format on
