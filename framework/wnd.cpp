#include "framework/wnd.h"

#include "framework/temporary_objects.h"
#include "framework/wnd_internal.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <algorithm>
#include <atomic>

IMPLEMENT_DYNAMIC(CWnd, CObject)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

namespace {

constexpr char kPlainClass[] = "TlvnWnd";

std::atomic<tlvn::MessageBoxProcedure> g_messageBox = nullptr;

// A narrow text, or null, or an atom, widened for the system.
class WideName {
public:
    explicit WideName(LPCSTR name) : m_name(reinterpret_cast<LPCWSTR>(name))
    {
        if (IS_INTRESOURCE(name))
            return;
        m_text = tlvn::WidenText(name);
        m_name = m_text.c_str();
    }
    WideName(const WideName&) = delete;
    WideName& operator=(const WideName&) = delete;
    LPCWSTR Get() const { return m_name; }

private:
    LPCWSTR m_name;
    tlvn::WString m_text;
};

} // namespace

CWnd::~CWnd()
{
    if (m_hWnd != nullptr)
        CWnd::DestroyWindow();
}

BOOL CWnd::SubclassWindow(HWND window)
{
    if (!Attach(window))
        return FALSE;
    m_pfnSuper = tlvn::TakeWindowProcedure(window);
    return TRUE;
}

HWND CWnd::UnsubclassWindow()
{
    if (m_pfnSuper != nullptr)
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    return Detach();
}

BOOL CWnd::Create(LPCSTR className, LPCSTR title, DWORD style, const RECT& rect, CWnd* parent,
                  UINT id, void* parameter)
{
    return CreateEx(0, className, title, style | WS_CHILD, rect, parent, id, parameter);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, LPVOID parameter)
{
    return CreateEx(exStyle, className, title, style, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, parent != nullptr ? parent->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), parameter);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y,
                    int width, int height, HWND parent, HMENU menuOrId, LPVOID parameter)
{
    CREATESTRUCT cs = {};
    cs.dwExStyle = exStyle;
    cs.lpszClass = className;
    cs.lpszName = title;
    cs.style = static_cast<LONG>(style);
    cs.x = x;
    cs.y = y;
    cs.cx = width;
    cs.cy = height;
    cs.hwndParent = parent;
    cs.hMenu = menuOrId;
    cs.hInstance = ::GetModuleHandleW(nullptr);
    cs.lpCreateParams = parameter;
    if (m_hWnd != nullptr || !PreCreateWindow(cs)) {
        PostNcDestroy();
        return FALSE;
    }
    const WideName wideClass(cs.lpszClass);
    const WideName wideTitle(cs.lpszName);
    tlvn::CreationHook hook(this);
    const HWND window = ::CreateWindowExW(cs.dwExStyle, wideClass.Get(), wideTitle.Get(),
                                          static_cast<DWORD>(cs.style), cs.x, cs.y, cs.cx, cs.cy,
                                          cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    // Once the window took its object, a failure has ended with WM_NCDESTROY already.
    if (!hook.WasTaken())
        PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass != nullptr)
        return TRUE;
    cs.lpszClass = kPlainClass;
    return tlvn::RegisterWindowClass(kPlainClass, CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW,
                                     tlvn::LoadStandardCursor(IDC_ARROW),
                                     tlvn::SystemBrush(COLOR_WINDOW));
}

BOOL CWnd::DestroyWindow()
{
    const HWND window = m_hWnd;
    if (window == nullptr)
        return FALSE;
    const bool isPermanent = FromHandlePermanent(window) == this;
    const BOOL destroyed = ::DestroyWindow(window);
    // WM_NCDESTROY detached the object, and may have deleted it. Only an object whose class
    // kept the message from CWnd is still in the map.
    if (isPermanent && FromHandlePermanent(window) == this)
        Detach();
    return destroyed;
}

void CWnd::PostNcDestroy() {}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags)
{
    return tlvn::ModifyWindowStyle(m_hWnd, GWL_STYLE, remove, add, flags);
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT flags)
{
    return tlvn::ModifyWindowStyle(m_hWnd, GWL_EXSTYLE, remove, add, flags);
}

void CWnd::MoveWindow(const RECT* rect, BOOL repaint)
{
    MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}

BOOL CWnd::SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags)
{
    return ::SetWindowPos(m_hWnd, after != nullptr ? after->m_hWnd : HWND_TOP, x, y, width, height,
                          flags);
}

void CWnd::ClientToScreen(RECT* rect) const
{
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(rect), 2);
}

void CWnd::ScreenToClient(RECT* rect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(rect), 2);
}

void CWnd::MapWindowPoints(CWnd* to, POINT* points, UINT count) const
{
    ::MapWindowPoints(m_hWnd, to != nullptr ? to->m_hWnd : nullptr, points, count);
}

void CWnd::SetWindowText(LPCSTR text)
{
    ::SetWindowTextW(m_hWnd, tlvn::WidenText(text != nullptr ? text : "").c_str());
}

CStringW CWnd::GetWideText() const
{
    const int length = ::GetWindowTextLengthW(m_hWnd);
    CStringW text;
    if (length <= 0)
        return text;
    const int copied = ::GetWindowTextW(m_hWnd, text.GetBuffer(length + 1), length + 1);
    text.ReleaseBuffer(copied);
    return text;
}

void CWnd::GetWindowText(CStringW& text) const
{
    text = GetWideText();
}

void CWnd::GetWindowText(CStringA& text) const
{
    text = CStringA(GetWideText());
}

int CWnd::GetWindowText(LPSTR text, int capacity) const
{
    if (text == nullptr || capacity <= 0)
        return 0;
    const CStringA narrow(GetWideText());
    int length = 0;
    // Never half a character.
    while (length < narrow.GetLength()) {
        const char* const at = narrow.GetString() + length;
        const int bytes = tlvn::CharLength(at, narrow.GetString() + narrow.GetLength());
        if (length + bytes > capacity - 1)
            break;
        length += bytes;
    }
    std::copy_n(narrow.GetString(), length, text);
    text[length] = '\0';
    return length;
}

int CWnd::GetWindowTextLength() const
{
    return CStringA(GetWideText()).GetLength();
}

void CWnd::SetFont(CFont* font, BOOL redraw)
{
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font != nullptr ? font->m_hObject : nullptr),
                MAKELPARAM(redraw, 0));
}

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
}

CWnd* CWnd::SetParent(CWnd* parent)
{
    return FromHandle(::SetParent(m_hWnd, parent != nullptr ? parent->m_hWnd : nullptr));
}

CWnd* CWnd::GetOwner() const
{
    return m_hWndOwner != nullptr ? FromHandle(m_hWndOwner) : GetParent();
}

void CWnd::SetOwner(CWnd* owner)
{
    m_hWndOwner = owner != nullptr ? owner->m_hWnd : nullptr;
}

int CWnd::SetDlgCtrlID(int id)
{
    return static_cast<int>(::SetWindowLongPtrW(m_hWnd, GWLP_ID, id));
}

BOOL CWnd::SetMenu(CMenu* menu)
{
    return ::SetMenu(m_hWnd, menu != nullptr ? menu->m_hMenu : nullptr);
}

CPoint CWnd::GetCaretPos()
{
    CPoint point;
    ::GetCaretPos(&point);
    return point;
}

BOOL CWnd::RedrawWindow(const RECT* rect, CRgn* region, UINT flags)
{
    return ::RedrawWindow(m_hWnd, rect, region != nullptr ? static_cast<HRGN>(*region) : nullptr,
                          flags);
}

int CWnd::ReleaseDC(CDC* dc)
{
    const HDC handle = dc->m_hDC;
    tlvn::ForgetTemporaryDc(handle);
    return ::ReleaseDC(m_hWnd, handle);
}

void CWnd::EndPaint(PAINTSTRUCT* paint)
{
    tlvn::ForgetTemporaryDc(paint->hdc);
    ::EndPaint(m_hWnd, paint);
}

BOOL CWnd::SetScrollInfo(int bar, SCROLLINFO* info, BOOL redraw)
{
    info->cbSize = sizeof(*info);
    ::SetScrollInfo(m_hWnd, bar, info, redraw);
    return TRUE;
}

BOOL CWnd::GetScrollInfo(int bar, SCROLLINFO* info, UINT mask)
{
    info->cbSize = sizeof(*info);
    info->fMask = mask;
    return ::GetScrollInfo(m_hWnd, bar, info);
}

int CWnd::GetScrollLimit(int bar)
{
    SCROLLINFO info = {};
    if (!GetScrollInfo(bar, &info, SIF_PAGE | SIF_RANGE))
        return 0;
    return info.nPage > 0 ? info.nMax - (static_cast<int>(info.nPage) - 1) : info.nMax;
}

void CWnd::EnableScrollBarCtrl(int bar, BOOL enable)
{
    ::EnableScrollBar(m_hWnd, static_cast<UINT>(bar), enable ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH);
}

int CWnd::ScrollWindowEx(int dx, int dy, const RECT* rect, const RECT* clip, CRgn* update,
                         RECT* updateRect, UINT flags)
{
    return ::ScrollWindowEx(m_hWnd, dx, dy, rect, clip,
                            update != nullptr ? static_cast<HRGN>(*update) : nullptr, updateRect,
                            flags);
}

int CWnd::MessageBox(LPCSTR text, LPCSTR caption, UINT type)
{
    const WideName wideText(text);
    if (caption != nullptr)
        return tlvn::ShowMessageBox(m_hWnd, wideText.Get(), WideName(caption).Get(), type);
    CStringW title;
    if (CWnd* const top = GetTopLevelParent(); top != nullptr)
        top->GetWindowText(title);
    return tlvn::ShowMessageBox(m_hWnd, wideText.Get(), title.GetString(), type);
}

int AfxMessageBox(LPCSTR text, UINT type, UINT)
{
    const HWND owner = ::GetActiveWindow();
    if (CWnd* const window = CWnd::FromHandle(owner); window != nullptr)
        return window->MessageBox(text, nullptr, type);
    return tlvn::ShowMessageBox(nullptr, WideName(text).Get(), TW(""), type);
}

namespace tlvn {

MessageBoxProcedure SetMessageBoxProcedure(MessageBoxProcedure procedure)
{
    return g_messageBox.exchange(procedure);
}

int ShowMessageBox(HWND owner, const WCHAR* text, const WCHAR* caption, UINT type)
{
    const MessageBoxProcedure procedure = g_messageBox;
    return procedure != nullptr ? procedure(owner, text, caption, type)
                                : ::MessageBoxW(owner, text, caption, type);
}

NarrowCreateStruct::NarrowCreateStruct(LPARAM wide)
{
    const auto& create = *reinterpret_cast<const CREATESTRUCTW*>(wide);
    m_create = {};
    m_create.lpCreateParams = create.lpCreateParams;
    m_create.hInstance = create.hInstance;
    m_create.hMenu = create.hMenu;
    m_create.hwndParent = create.hwndParent;
    m_create.cx = create.cx;
    m_create.cy = create.cy;
    m_create.x = create.x;
    m_create.y = create.y;
    m_create.style = create.style;
    m_create.dwExStyle = create.dwExStyle;
    const auto narrow = [](LPCWSTR text, std::string& storage) {
        if (IS_INTRESOURCE(text))
            return reinterpret_cast<LPCSTR>(text);
        storage = NarrowText(text);
        return storage.c_str();
    };
    m_create.lpszName = narrow(create.lpszName, m_name);
    m_create.lpszClass = narrow(create.lpszClass, m_className);
}

std::string NarrowSetting(LPARAM text)
{
    return text != 0 ? NarrowText(reinterpret_cast<LPCWSTR>(text)) : std::string();
}

CScrollBar* ScrollBarOf(LPARAM window)
{
    return DYNAMIC_DOWNCAST(CScrollBar, CWnd::FromHandlePermanent(reinterpret_cast<HWND>(window)));
}

} // namespace tlvn
