// What a test or a tool may do with the windows in memory beyond the Windows API: synthesise
// input, set the clock, see what was drawn and asked.
//
//   tlvn::headless::Reset();
//   ... create a window, show it ...
//   tlvn::headless::SendKey(VK_SHIFT, true);
//   tlvn::headless::SendKeyPress(VK_DOWN);
//   tlvn::headless::SendKey(VK_SHIFT, false);
//   tlvn::PumpPendingMessages();                    // wnd.h: the input is taken here
//   for (const auto& line : tlvn::headless::GetDrawnTexts(window)) ...
//
// Synthesised input waits in the queue, as a user's does: which window gets it is decided when
// it is taken out, and GetKeyState follows the message taken last.

#pragma once

#include "framework/headless/display_list.h"
#include "framework/headless/winapi.h"

#include <string>
#include <vector>

namespace tlvn {

// Writes the window with its frame, children, scroll bars and caret as a picture in SVG 1.1,
// painting first what waits to be painted. `svg` is replaced. False when it is no window.
TLVN_API bool WriteWindowSvg(HWND window, std::string& svg);

namespace headless {

// Destroys every window, empties queues and clipboard, and gives all settings their initial
// values. Graphics objects and menus that the program still holds stay valid.
TLVN_API void Reset();

// --- clock ---------------------------------------------------------------------------------
// Stops the real clock: time passes by AdvanceClock only. Reset lets it run again.
TLVN_API void UseTestClock();
// Lets `milliseconds` pass on the test clock, dispatching each WM_TIMER that falls due at its
// time.
TLVN_API void AdvanceClock(DWORD milliseconds);

// --- input ---------------------------------------------------------------------------------
TLVN_API void SendKey(int virtualKey, bool down);
TLVN_API void SendKeyPress(int virtualKey); // down and up
// Committed text, as from an input method: WM_CHAR to the focus, unit by unit.
TLVN_API void SendText(WStringView text);
// The state that GetKeyState and GetAsyncKeyState report, without a message.
TLVN_API void SetKeyDown(int virtualKey, bool down);
// Points are screen coordinates. Buttons are VK_LBUTTON, VK_RBUTTON, VK_MBUTTON.
TLVN_API void SendMouseMove(POINT point);
TLVN_API void SendMouseButton(int button, bool down);
TLVN_API void SendMouseClick(POINT point, int button = VK_LBUTTON);
TLVN_API void SendMouseWheel(int delta);
// What the input method holds for a window, and the messages that tell of it.
TLVN_API void SetCompositionText(HWND window, WStringView composing);
TLVN_API void CommitCompositionText(HWND window, WStringView result);

// --- drawing -------------------------------------------------------------------------------
struct DrawnText {
    POINT position; // client coordinates of the first character's top left corner
    WString text;
    COLORREF color;
    bool underline;
    RECT visible; // the part that clipping left, in client coordinates
};
// Texts that stand in the window, in the order of their drawing.
TLVN_API std::vector<DrawnText> GetDrawnTexts(HWND window);
// All operations, in window coordinates; null when it is no window.
TLVN_API const DisplayList* GetDrawing(HWND window);
// The background colour that a client pixel was given last; CLR_INVALID when none was.
TLVN_API COLORREF GetDrawnColor(HWND window, int x, int y);
struct CaretState {
    HWND window; // null without a caret
    RECT rect;   // client coordinates
    bool visible;
};
TLVN_API CaretState GetCaretState();

// --- answers and settings --------------------------------------------------------------------
struct MessageBoxRecord {
    HWND owner;
    WString text;
    WString caption;
    UINT type;
};
// The boxes asked for since Reset. They answer at once: SetMessageBoxAnswer's value, or else
// the default button.
TLVN_API const std::vector<MessageBoxRecord>& GetMessageBoxes();
TLVN_API void SetMessageBoxAnswer(int answer);
// The command that the next popup menus answer, 0 for none; and the menu shown last.
TLVN_API void SetPopupMenuAnswer(UINT command);
TLVN_API HMENU GetShownMenu();
// Text of a tool in a tool-tip window, asking its owner when it is given on demand.
TLVN_API WString GetToolTipText(HWND toolTip, HWND owner, UINT_PTR id);
TLVN_API void SetScreenSize(int width, int height);
TLVN_API void SetWheelLines(UINT lines); // SPI_GETWHEELSCROLLLINES, 3 at first
// What display_settings.h reports. No message is sent.
TLVN_API void SetWindowDpi(int dpi);
TLVN_API void SetHighContrast(bool on);
// What LoadAcceleratorsW finds under the name.
TLVN_API void AddAcceleratorResource(const WCHAR* name, const ACCEL* entries, int count);

} // namespace headless
} // namespace tlvn
