// Window classes, creation and destruction.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

WCHAR FoldAscii(WCHAR c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<WCHAR>(c + (u'a' - u'A')) : c;
}

bool EqualNoCase(WStringView a, WStringView b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](WCHAR x, WCHAR y) {
               return FoldAscii(x) == FoldAscii(y);
           });
}

void Link(Window& window, bool atTop)
{
    std::vector<HWND>& siblings = SiblingsOf(window);
    siblings.insert(atTop ? siblings.begin() : siblings.end(), window.handle);
}

void NotifyParents(HWND handle, UINT event)
{
    const HWND first = handle;
    for (const Window* w = FindWindowOf(handle);
         w != nullptr && w->IsChildWindow() && (w->exStyle & WS_EX_NOPARENTNOTIFY) == 0;) {
        const HWND parent = w->parent;
        SendMessageW(parent, WM_PARENTNOTIFY, MAKEWPARAM(event, GetDlgCtrlID(first)),
                     reinterpret_cast<LPARAM>(first));
        w = FindWindowOf(parent);
    }
}

// Takes the window out of all lists and frees it, without a message.
void Unlink(HWND handle)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return;
    std::erase(SiblingsOf(*window), handle);
    ForgetWindowMessages(handle);
    Desktop& desk = Desk();
    if (desk.caret.window == handle)
        desk.caret = {};
    if (desk.focus == handle)
        desk.focus = nullptr;
    if (desk.capture == handle)
        desk.capture = nullptr;
    if (desk.active == handle)
        desk.active = nullptr;
    if (desk.lastClickWindow == handle)
        desk.lastClickWindow = nullptr;
    if (desk.clipboardOwner == handle)
        desk.clipboardOwner = nullptr;
    desk.toolTips.erase(handle);
    if (window->menu != nullptr)
        DestroyMenu(window->menu);
    desk.windows.Remove(handle);
}

// WM_DESTROY goes from the top of the tree downwards ...
void SendDestroy(HWND handle)
{
    Window* window = FindWindowOf(handle);
    if (window == nullptr || window->destroying)
        return;
    window->destroying = true;
    DropFocusWithin(handle);
    SendMessageW(handle, WM_DESTROY, 0, 0);
    window = FindWindowOf(handle);
    if (window == nullptr)
        return;
    const std::vector<HWND> children = window->children;
    for (const HWND child : children)
        SendDestroy(child);
}

// ... and WM_NCDESTROY from the bottom upwards.
void FreeTree(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return;
    const std::vector<HWND> children = window->children;
    for (const HWND child : children)
        FreeTree(child);
    SendMessageW(handle, WM_NCDESTROY, 0, 0);
    Unlink(handle);
}

void CalculateClient(HWND handle)
{
    Window* window = FindWindowOf(handle);
    const POINT origin = ScreenOrigin(*window);
    RECT rect = {origin.x, origin.y, origin.x + Width(window->rect),
                 origin.y + Height(window->rect)};
    SendMessageW(handle, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
    window = FindWindowOf(handle);
    if (window != nullptr)
        window->client = Offset(rect, -origin.x, -origin.y);
}

LRESULT CallHooks(HWND handle, CBT_CREATEWNDW& creation)
{
    // A hook may remove itself while it runs; it is the latest that runs, and passes on by
    // CallNextHookEx.
    if (Desk().hooks.empty())
        return 0;
    return Desk().hooks.back()(HCBT_CREATEWND, reinterpret_cast<WPARAM>(handle),
                               reinterpret_cast<LPARAM>(&creation));
}

} // namespace

std::vector<HWND>& SiblingsOf(const Window& window)
{
    if (window.IsChildWindow()) {
        if (Window* const parent = FindWindowOf(window.parent); parent != nullptr)
            return parent->children;
    }
    return Desk().topLevel;
}

const WindowClass* FindClass(LPCWSTR name)
{
    const bool isAtom = IS_INTRESOURCE(name);
    for (const auto& c : Desk().classes) {
        if (isAtom ? c->atom == reinterpret_cast<UINT_PTR>(name) : EqualNoCase(c->name, name))
            return c.get();
    }
    return nullptr;
}

} // namespace tlvn::headless

using namespace tlvn::headless;

ATOM RegisterClassW(const WNDCLASSW* windowClass)
{
    Desktop& desk = Desk();
    if (windowClass->lpszClassName == nullptr || FindClass(windowClass->lpszClassName) != nullptr)
        return 0;
    auto added = std::make_unique<WindowClass>();
    added->name = windowClass->lpszClassName;
    added->style = windowClass->style;
    added->procedure = windowClass->lpfnWndProc;
    added->cursor = windowClass->hCursor;
    added->background = windowClass->hbrBackground;
    added->atom = static_cast<ATOM>(desk.classes.back()->atom + 1);
    desk.classes.push_back(std::move(added));
    return desk.classes.back()->atom;
}

BOOL UnregisterClassW(LPCWSTR name, HINSTANCE)
{
    Desktop& desk = Desk();
    const WindowClass* const found = FindClass(name);
    if (found == nullptr || found == desk.classes.front().get())
        return FALSE;
    std::vector<HWND> open = desk.topLevel;
    for (std::size_t i = 0; i < open.size(); ++i) {
        const Window* const window = FindWindowOf(open[i]);
        if (window->windowClass == found)
            return FALSE;
        open.insert(open.end(), window->children.begin(), window->children.end());
    }
    std::erase_if(desk.classes, [&](const auto& c) { return c.get() == found; });
    return TRUE;
}

BOOL GetClassInfoW(HINSTANCE, LPCWSTR name, WNDCLASSW* windowClass)
{
    const WindowClass* const found = FindClass(name);
    if (found == nullptr)
        return FALSE;
    *windowClass = {};
    windowClass->style = found->style;
    windowClass->lpfnWndProc = found->procedure;
    windowClass->hCursor = found->cursor;
    windowClass->hbrBackground = found->background;
    windowClass->lpszClassName = found->name.c_str();
    return TRUE;
}

int GetClassNameW(HWND handle, LPWSTR name, int capacity)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr || capacity <= 0)
        return 0;
    const tlvn::WString& text = window->windowClass->name;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
    text.copy(name, length);
    name[length] = 0;
    return static_cast<int>(length);
}

ULONG_PTR GetClassLongPtrW(HWND handle, int index)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return 0;
    switch (index) {
    case GCLP_HBRBACKGROUND:
        return reinterpret_cast<ULONG_PTR>(window->windowClass->background);
    case GCLP_HCURSOR:
        return reinterpret_cast<ULONG_PTR>(window->windowClass->cursor);
    case GCL_STYLE:
        return window->windowClass->style;
    default:
        return 0;
    }
}

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menuOrId, HINSTANCE instance,
                     LPVOID parameter)
{
    Desktop& desk = Desk();
    const WindowClass* const windowClass = FindClass(className);
    const bool child = (style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
    if (windowClass == nullptr || (child && FindWindowOf(parent) == nullptr) ||
        (parent != nullptr && FindWindowOf(parent) == nullptr))
        return nullptr;
    const bool overlapped = (style & (WS_CHILD | WS_POPUP)) == 0;
    if (overlapped)
        style |= WS_CAPTION;
    if (!child)
        style |= WS_CLIPSIBLINGS;
    if (x == CW_USEDEFAULT)
        x = y = 0;
    if (width == CW_USEDEFAULT) {
        width = overlapped ? desk.screen.cx * 3 / 4 : 0;
        height = overlapped ? desk.screen.cy * 3 / 4 : 0;
    }

    auto made = std::make_unique<Window>();
    made->windowClass = windowClass;
    made->procedure = windowClass->procedure;
    made->instance = instance;
    made->inputContext = desk.defaultContext;
    if (child)
        made->parent = parent;
    else if (parent != nullptr)
        made->owner = GetAncestor(parent, GA_ROOT);
    if (child)
        made->id = reinterpret_cast<LONG_PTR>(menuOrId);
    else
        made->menu = menuOrId;
    const HWND handle = desk.windows.Add(std::move(made));
    if (handle == nullptr)
        return nullptr;
    Window* window = FindWindowOf(handle);
    window->handle = handle;
    window->style = style & ~WS_VISIBLE;
    window->exStyle = exStyle;

    CREATESTRUCTW creation = {};
    creation.lpCreateParams = parameter;
    creation.hInstance = instance;
    creation.hMenu = menuOrId;
    creation.hwndParent = parent;
    creation.cx = width;
    creation.cy = height;
    creation.x = x;
    creation.y = y;
    creation.style = static_cast<LONG>(style);
    creation.lpszName = title;
    creation.lpszClass = className;
    creation.dwExStyle = exStyle;
    CBT_CREATEWNDW hooked = {&creation, child ? HWND_BOTTOM : HWND_TOP};
    if (CallHooks(handle, hooked) != 0) {
        desk.windows.Remove(handle);
        return nullptr;
    }
    const LONG left = ClampCoordinate(creation.x);
    const LONG top = ClampCoordinate(creation.y);
    window->rect =
        ClampRect({left, top, left + std::max(creation.cx, 0), top + std::max(creation.cy, 0)});
    window->client = {0, 0, Width(window->rect), Height(window->rect)};
    Link(*window, !child);

    if ((style & WS_THICKFRAME) != 0) {
        MINMAXINFO limits = {};
        limits.ptMaxSize = limits.ptMaxTrackSize = {desk.screen.cx, desk.screen.cy};
        limits.ptMinTrackSize = {GetSystemMetrics(SM_CXMIN), GetSystemMetrics(SM_CYMIN)};
        SendMessageW(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    }
    const LRESULT accepted =
        SendMessageW(handle, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&creation));
    if (FindWindowOf(handle) == nullptr)
        return nullptr;
    if (accepted == 0) {
        SendMessageW(handle, WM_NCDESTROY, 0, 0);
        Unlink(handle);
        return nullptr;
    }
    CalculateClient(handle);
    if (FindWindowOf(handle) == nullptr)
        return nullptr;
    if (SendMessageW(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&creation)) == -1) {
        DestroyWindow(handle);
        return nullptr;
    }
    window = FindWindowOf(handle);
    if (window == nullptr)
        return nullptr;
    if (child) {
        window->sizePending = false;
        const SIZE size = window->ClientSize();
        const POINT origin = {window->rect.left + window->client.left,
                              window->rect.top + window->client.top};
        SendMessageW(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(size.cx, size.cy));
        SendMessageW(handle, WM_MOVE, 0, MAKELPARAM(origin.x, origin.y));
        NotifyParents(handle, WM_CREATE);
    }
    if ((style & WS_VISIBLE) != 0)
        ShowWindow(handle, SW_SHOW);
    return FindWindowOf(handle) != nullptr ? handle : nullptr;
}

BOOL DestroyWindow(HWND handle)
{
    const Window* window = FindWindowOf(handle);
    if (window == nullptr || window->destroying)
        return FALSE;
    if (window->IsChildWindow())
        NotifyParents(handle, WM_DESTROY);
    if (IsWindow(handle) && (FindWindowOf(handle)->style & WS_VISIBLE) != 0) {
        SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                     SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // Windows that this one owns go first.
    const std::vector<HWND> topLevel = Desk().topLevel;
    for (const HWND other : topLevel) {
        const Window* const owned = FindWindowOf(other);
        if (owned != nullptr && owned->owner == handle)
            DestroyWindow(other);
    }
    SendDestroy(handle);
    FreeTree(handle);
    return TRUE;
}

BOOL IsWindow(HWND handle)
{
    return FindWindowOf(handle) != nullptr;
}

LONG_PTR GetWindowLongPtrW(HWND handle, int index)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return 0;
    switch (index) {
    case GWLP_WNDPROC:
        return reinterpret_cast<LONG_PTR>(window->procedure);
    case GWLP_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(window->instance);
    case GWLP_HWNDPARENT:
        return reinterpret_cast<LONG_PTR>(window->IsChildWindow() ? window->parent : window->owner);
    case GWLP_ID:
        return window->id;
    case GWL_STYLE:
        return static_cast<LONG_PTR>(window->style);
    case GWL_EXSTYLE:
        return static_cast<LONG_PTR>(window->exStyle);
    case GWLP_USERDATA:
        return window->userData;
    default:
        return 0;
    }
}

LONG_PTR SetWindowLongPtrW(HWND handle, int index, LONG_PTR value)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return 0;
    const LONG_PTR previous = GetWindowLongPtrW(handle, index);
    switch (index) {
    case GWLP_WNDPROC:
        window->procedure = reinterpret_cast<WNDPROC>(value);
        window->unicode = true;
        break;
    case GWLP_ID:
        window->id = value;
        break;
    case GWL_STYLE:
        window->style = static_cast<DWORD>(value);
        break;
    case GWL_EXSTYLE:
        window->exStyle = static_cast<DWORD>(value);
        break;
    case GWLP_USERDATA:
        window->userData = value;
        break;
    default:
        return 0;
    }
    if (index == GWL_STYLE || index == GWL_EXSTYLE) {
        // STYLESTRUCT: the old styles, the new ones.
        DWORD styles[2] = {static_cast<DWORD>(previous), static_cast<DWORD>(value)};
        SendMessageW(handle, WM_STYLECHANGED, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(styles));
    }
    return previous;
}

LONG_PTR SetWindowLongPtrA(HWND handle, int index, LONG_PTR value)
{
    const LONG_PTR previous = SetWindowLongPtrW(handle, index, value);
    Window* const window = FindWindowOf(handle);
    if (window != nullptr && index == GWLP_WNDPROC)
        window->unicode = false;
    return previous;
}

LONG GetWindowLongW(HWND handle, int index)
{
    return static_cast<LONG>(GetWindowLongPtrW(handle, index));
}

LONG SetWindowLongW(HWND handle, int index, LONG value)
{
    return static_cast<LONG>(SetWindowLongPtrW(handle, index, value));
}

BOOL SetWindowTextW(HWND handle, LPCWSTR text)
{
    return SendMessageW(handle, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int GetWindowTextW(HWND handle, LPWSTR text, int capacity)
{
    if (capacity <= 0)
        return 0;
    text[0] = 0;
    return static_cast<int>(SendMessageW(handle, WM_GETTEXT, static_cast<WPARAM>(capacity),
                                         reinterpret_cast<LPARAM>(text)));
}

int GetWindowTextLengthW(HWND handle)
{
    return static_cast<int>(SendMessageW(handle, WM_GETTEXTLENGTH, 0, 0));
}

DWORD GetWindowThreadProcessId(HWND handle, DWORD* process)
{
    if (FindWindowOf(handle) == nullptr)
        return 0;
    if (process != nullptr)
        *process = GetCurrentProcessId();
    return GetCurrentThreadId();
}

BOOL IsWindowUnicode(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr && window->unicode;
}
