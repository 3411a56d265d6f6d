// The state behind framework/headless: one desktop with its windows, queues and devices.
//
// Not for users of the back end; they call winapi.h and headless.h. Objects are found by
// handles that carry a generation, so that a stale handle finds nothing. Sending a message may
// destroy any window: code that goes on afterwards looks its window up again.

#pragma once

#include "framework/headless/display_list.h"
#include "framework/headless/headless.h"
#include "framework/headless/region.h"
#include "framework/headless/winapi.h"

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tlvn::headless {

// Objects by handle. A handle is (generation << 16 | slot + 1); generations start at 16, which
// keeps handles clear of atoms, system colour brushes and control numbers.
template <class Handle, class Object>
class HandleTable {
public:
    Handle Add(std::unique_ptr<Object> object)
    {
        std::size_t slot = 0;
        if (m_free.empty()) {
            if (m_slots.size() >= 0xFFFE)
                return nullptr;
            slot = m_slots.size();
            m_slots.emplace_back();
        } else {
            slot = m_free.back();
            m_free.pop_back();
        }
        m_slots[slot].object = std::move(object);
        return ToHandle(slot);
    }
    Object* Find(Handle handle) const
    {
        const std::size_t slot = SlotOf(handle);
        return slot < m_slots.size() ? m_slots[slot].object.get() : nullptr;
    }
    std::unique_ptr<Object> Remove(Handle handle)
    {
        const std::size_t slot = SlotOf(handle);
        if (slot >= m_slots.size() || m_slots[slot].object == nullptr)
            return nullptr;
        std::unique_ptr<Object> object = std::move(m_slots[slot].object);
        m_slots[slot].generation =
            m_slots[slot].generation >= 0x7FFF ? 16 : m_slots[slot].generation + 1;
        m_free.push_back(slot);
        return object;
    }
    std::size_t GetCount() const { return m_slots.size() - m_free.size(); }

private:
    struct Slot {
        std::unique_ptr<Object> object;
        unsigned generation = 16;
    };
    Handle ToHandle(std::size_t slot) const
    {
        const UINT_PTR value = static_cast<UINT_PTR>(m_slots[slot].generation) << 16 | (slot + 1);
        return reinterpret_cast<Handle>(value);
    }
    // The slot of a live handle; past the end for any other value.
    std::size_t SlotOf(Handle handle) const
    {
        const UINT_PTR value = reinterpret_cast<UINT_PTR>(handle);
        const std::size_t slot = static_cast<std::size_t>(value & 0xFFFF) - 1;
        if (slot >= m_slots.size() || m_slots[slot].generation != value >> 16)
            return m_slots.size();
        return slot;
    }

    std::vector<Slot> m_slots;
    std::vector<std::size_t> m_free;
};

struct WindowClass {
    WString name;
    UINT style = 0;
    WNDPROC procedure = nullptr;
    HCURSOR cursor = nullptr;
    HBRUSH background = nullptr;
    ATOM atom = 0;
};

struct ScrollBar {
    int least = 0;
    int most = 100;
    int page = 0;
    int position = 0;
    int track = 0;
    bool disabled = false;

    int HighestPosition() const { return std::max(least, most - std::max(page - 1, 0)); }
};

struct Window {
    HWND handle = nullptr;
    const WindowClass* windowClass = nullptr;
    WNDPROC procedure = nullptr;
    HWND parent = nullptr;      // of a child window
    HWND owner = nullptr;       // of a top-level window
    std::vector<HWND> children; // topmost first
    RECT rect = {};   // in the parent's client coordinates; on the screen for top-level ones
    RECT client = {}; // relative to the top left corner of rect
    DWORD style = 0;
    DWORD exStyle = 0;
    HMENU menu = nullptr; // of a top-level window
    LONG_PTR id = 0;      // of a child window
    LONG_PTR userData = 0;
    HINSTANCE instance = nullptr;
    WString text;
    ScrollBar bars[2];  // SB_HORZ, SB_VERT
    Region update;      // to paint, in client coordinates
    bool erase = false; // the update region wants its background erased
    bool framePending = false;
    bool internalPaint = false;
    bool sizePending = true; // top-level windows hear of their size when first shown
    bool redraw = true;      // WM_SETREDRAW
    bool unicode = true;     // its procedure takes characters as units, else as bytes
    bool trackLeave = false;
    bool destroying = false;
    HIMC inputContext = nullptr;
    DisplayList drawing; // window coordinates

    bool IsChildWindow() const { return (style & (WS_CHILD | WS_POPUP)) == WS_CHILD; }
    SIZE ClientSize() const { return {Width(client), Height(client)}; }
};

struct GdiObject {
    enum class Kind { Font, Brush, Pen, Bitmap, Region } kind = Kind::Font;
    bool stock = false;
    LOGFONTW logFont = {};
    CellFont font;
    bool empty = false; // null brush or pen
    COLORREF color = 0;
    int penStyle = 0;
    int penWidth = 1;
    SIZE size = {};      // of a bitmap
    DisplayList drawing; // of a bitmap
    Region region;
};

struct DcState {
    HFONT font = nullptr;
    HBRUSH brush = nullptr;
    HPEN pen = nullptr;
    COLORREF textColor = 0;
    COLORREF backColor = 0xFFFFFF;
    int backMode = OPAQUE;
    UINT align = 0;
    int rop2 = R2_COPYPEN;
    POINT position = {};
    POINT viewport = {};
    bool clipped = false;
    Region clip; // device coordinates (before the surface's origin), when clipped
};

struct DeviceContext {
    HWND window = nullptr;
    HBITMAP bitmap = nullptr; // of a memory context
    bool memory = false;
    POINT origin = {}; // of device coordinates on the surface
    Region visible;    // what can be drawn, in surface coordinates
    DcState state;
    std::vector<DcState> saved;
};

struct MenuItem {
    UINT type = 0;  // MFT_
    UINT state = 0; // MFS_
    UINT id = 0;
    HMENU popup = nullptr;
    ULONG_PTR data = 0;
    WString text;
};
struct Menu {
    std::vector<MenuItem> items;
};
struct AcceleratorTable {
    std::vector<ACCEL> entries;
};
struct InputContext {
    bool open = false;
    COMPOSITIONFORM composition = {};
    CANDIDATEFORM candidate = {};
    LOGFONTW font = {};
    WString compositionText;
    WString resultText;
    LONG cursor = 0;
};
struct Cursor {
    WString name; // of a resource with a name
    int number = 0;
};

struct InputEvent {
    enum class Kind { Key, Button, Move, Wheel } kind = Kind::Key;
    int key = 0; // virtual key of a key or button
    bool down = false;
    bool repeat = false;
    int delta = 0;    // of a wheel
    POINT point = {}; // of the mouse, on the screen
    INT64 time = 0;   // when it was synthesised
};
struct Timer {
    HWND window = nullptr;
    UINT_PTR id = 0;
    DWORD period = 0;
    INT64 due = 0;
    TIMERPROC procedure = nullptr;
};
struct Caret {
    HWND window = nullptr;
    SIZE size = {};
    POINT position = {};
    int hidden = 0; // shown at 0
};
struct ToolTip {
    std::vector<TOOLINFOW> tools;
    std::vector<WString> texts;
};

struct Desktop {
    Desktop();

    HandleTable<HWND, Window> windows;
    std::vector<HWND> topLevel; // topmost first
    std::vector<std::unique_ptr<WindowClass>> classes;
    HWND focus = nullptr;
    HWND active = nullptr;
    HWND capture = nullptr;
    Caret caret;

    std::deque<MSG> posted;
    std::deque<InputEvent> input;
    std::vector<Timer> timers;
    UINT_PTR nextTimerId = 0x7F00;
    bool quitPosted = false;
    int exitCode = 0;
    LONG messageTime = 0;
    DWORD messagePos = 0;
    std::vector<HOOKPROC> hooks; // WH_CBT, latest last

    bool testClock = false;
    INT64 testTime = 0; // milliseconds

    HCURSOR cursor = nullptr;
    std::vector<std::unique_ptr<Cursor>> cursors;
    POINT mouse = {};
    BYTE keyState[256] = {};      // as of the message taken last
    BYTE asyncKeyState[256] = {}; // as of now
    int lastClickButton = 0;
    INT64 lastClickTime = 0;
    POINT lastClickPoint = {};
    HWND lastClickWindow = nullptr;

    HandleTable<HGDIOBJ, GdiObject> gdi;
    HandleTable<HDC, DeviceContext> dcs;
    std::vector<std::unique_ptr<DeviceContext>> spareDcs;
    HGDIOBJ stock[18] = {};
    HBRUSH sysColorBrushes[27] = {};
    HBITMAP noBitmap = nullptr; // the 1 by 1 bitmap of a new memory context

    HandleTable<HMENU, Menu> menus;
    HandleTable<HACCEL, AcceleratorTable> accelerators;
    std::map<WString, std::vector<ACCEL>> acceleratorResources;

    HandleTable<HIMC, InputContext> inputContexts;
    HIMC defaultContext = nullptr;

    std::map<HWND, ToolTip> toolTips;

    bool clipboardOpen = false;
    HWND clipboardWindow = nullptr;
    HWND clipboardOwner = nullptr;
    std::map<UINT, HGLOBAL> clipboard;
    std::vector<WString> clipboardFormats;

    SIZE screen = {1280, 1024};
    UINT wheelLines = 3;
    int windowDpi = 96;
    bool highContrast = false;
    std::vector<MessageBoxRecord> messageBoxes;
    int messageBoxAnswer = 0;
    HMENU shownMenu = nullptr;
    UINT menuAnswer = 0;
};

Desktop& Desk();

inline Window* FindWindowOf(HWND handle)
{
    return Desk().windows.Find(handle);
}
// The object when it is of the kind, else null.
GdiObject* FindGdi(HGDIOBJ handle, GdiObject::Kind kind);
INT64 Now();

// window.cpp
std::vector<HWND>& SiblingsOf(const Window& window);
POINT ScreenOrigin(const Window& window); // of the window's top left corner
POINT ClientScreenOrigin(const Window& window);
// The part of the client area that ancestors do not cut off, in client coordinates.
RECT VisibleClient(const Window& window);
RECT DefaultClient(const Window& window); // from the styles, relative to the window
bool HasVerticalBar(const Window& window);
bool HasHorizontalBar(const Window& window);
void FrameChanged(HWND window);
const WindowClass* FindClass(LPCWSTR name);
LRESULT CALLBACK ToolTipProcedure(HWND, UINT, WPARAM, LPARAM);

// window_focus.cpp
void DropFocusWithin(HWND window); // gives focus, capture and caret of it or below away
void Activate(HWND window, WPARAM how);

// paint.cpp
void InvalidateWindow(Window& window, const Region* region, bool erase);
HWND FindPaintable(); // the first window that waits for WM_PAINT
HDC MakeDc(HWND window, const POINT& origin, const Region& visible);
void FreeDc(HDC dc);
COLORREF BrushColor(HBRUSH brush, bool& empty); // also of (COLOR_... + 1)

// message.cpp
void ForgetWindowMessages(HWND window);
bool TakeInput(MSG& message, HWND window, UINT first, UINT last, bool remove); // input.cpp
MSG MakeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
bool Matches(const MSG& message, HWND window, UINT first, UINT last);

// input.cpp
void TrackLeave(HWND under);
WCHAR CharOfKey(int key, bool shift);

// clipboard.cpp
void ResetClipboard();

} // namespace tlvn::headless
