// Functions of the Windows API (see winapi.h), with their documented meaning.

#pragma once

#include "framework/headless/win_structures.h"

// Windows
TLVN_API ATOM RegisterClassW(const WNDCLASSW* windowClass);
TLVN_API BOOL UnregisterClassW(LPCWSTR name, HINSTANCE instance);
TLVN_API BOOL GetClassInfoW(HINSTANCE instance, LPCWSTR name, WNDCLASSW* windowClass);
TLVN_API int GetClassNameW(HWND window, LPWSTR name, int capacity);
TLVN_API ULONG_PTR GetClassLongPtrW(HWND window, int index);
TLVN_API HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x,
                              int y, int width, int height, HWND parent, HMENU menuOrId,
                              HINSTANCE instance, LPVOID parameter);
TLVN_API BOOL DestroyWindow(HWND window);
TLVN_API BOOL IsWindow(HWND window);
TLVN_API BOOL IsWindowVisible(HWND window);
TLVN_API BOOL IsWindowEnabled(HWND window);
TLVN_API BOOL IsIconic(HWND window);
TLVN_API BOOL IsZoomed(HWND window);
TLVN_API BOOL IsChild(HWND ancestor, HWND window);
TLVN_API BOOL EnableWindow(HWND window, BOOL enable);
TLVN_API BOOL ShowWindow(HWND window, int command);
TLVN_API BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height,
                           UINT flags);
TLVN_API BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
TLVN_API HDWP BeginDeferWindowPos(int count);
TLVN_API HDWP DeferWindowPos(HDWP batch, HWND window, HWND after, int x, int y, int width,
                             int height, UINT flags);
TLVN_API BOOL EndDeferWindowPos(HDWP batch);
TLVN_API BOOL AdjustWindowRectEx(LPRECT rect, DWORD style, BOOL menu, DWORD exStyle);
TLVN_API BOOL GetClientRect(HWND window, LPRECT rect);
TLVN_API BOOL GetWindowRect(HWND window, LPRECT rect);
TLVN_API BOOL ClientToScreen(HWND window, LPPOINT point);
TLVN_API BOOL ScreenToClient(HWND window, LPPOINT point);
TLVN_API int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count);
TLVN_API HWND GetParent(HWND window);
TLVN_API HWND SetParent(HWND window, HWND parent);
TLVN_API HWND GetAncestor(HWND window, UINT kind);
TLVN_API HWND GetWindow(HWND window, UINT relation);
TLVN_API HWND GetDlgItem(HWND window, int id);
TLVN_API int GetDlgCtrlID(HWND window);
TLVN_API BOOL EnumChildWindows(HWND window, WNDENUMPROC procedure, LPARAM value);
TLVN_API HWND WindowFromPoint(POINT point);
TLVN_API LONG_PTR GetWindowLongPtrW(HWND window, int index);
TLVN_API LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
// With GWLP_WNDPROC it makes an ANSI window: characters come to it as bytes.
TLVN_API LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
TLVN_API LONG GetWindowLongW(HWND window, int index);
TLVN_API LONG SetWindowLongW(HWND window, int index, LONG value);
TLVN_API BOOL SetWindowTextW(HWND window, LPCWSTR text);
TLVN_API int GetWindowTextW(HWND window, LPWSTR text, int capacity);
TLVN_API int GetWindowTextLengthW(HWND window);
TLVN_API HWND SetFocus(HWND window);
TLVN_API HWND GetFocus();
TLVN_API HWND SetActiveWindow(HWND window);
TLVN_API HWND GetActiveWindow();
TLVN_API BOOL SetForegroundWindow(HWND window);
TLVN_API HWND GetForegroundWindow();
TLVN_API HWND SetCapture(HWND window);
TLVN_API HWND GetCapture();
TLVN_API BOOL ReleaseCapture();
TLVN_API DWORD GetWindowThreadProcessId(HWND window, DWORD* process);
TLVN_API DWORD GetCurrentThreadId();
TLVN_API DWORD GetCurrentProcessId();
TLVN_API HMODULE GetModuleHandleW(LPCWSTR name);

// Messages, timers, hooks
TLVN_API LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
TLVN_API LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                                 LPARAM lParam);
TLVN_API LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
TLVN_API BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
TLVN_API void PostQuitMessage(int exitCode);
// With nothing queued and no timer of the running clock to wait for, no message can ever come:
// the result is then that of WM_QUIT, so that a message loop ends.
TLVN_API BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
TLVN_API BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT flags);
TLVN_API BOOL TranslateMessage(const MSG* message);
TLVN_API LRESULT DispatchMessageW(const MSG* message);
TLVN_API BOOL IsWindowUnicode(HWND window);
TLVN_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
TLVN_API BOOL KillTimer(HWND window, UINT_PTR id);
TLVN_API DWORD GetTickCount();
TLVN_API LONG GetMessageTime();
TLVN_API DWORD GetMessagePos();
TLVN_API HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread);
TLVN_API BOOL UnhookWindowsHookEx(HHOOK hook);
TLVN_API LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);
TLVN_API int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);
TLVN_API BOOL MessageBeep(UINT type);

// Scroll bars of windows (SB_HORZ, SB_VERT, SB_BOTH)
TLVN_API int SetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL redraw);
TLVN_API BOOL GetScrollInfo(HWND window, int bar, LPSCROLLINFO info);
TLVN_API int SetScrollPos(HWND window, int bar, int position, BOOL redraw);
TLVN_API int GetScrollPos(HWND window, int bar);
TLVN_API BOOL SetScrollRange(HWND window, int bar, int least, int most, BOOL redraw);
TLVN_API BOOL GetScrollRange(HWND window, int bar, int* least, int* most);
TLVN_API BOOL ShowScrollBar(HWND window, int bar, BOOL show);
TLVN_API BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows);
TLVN_API int ScrollWindowEx(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip,
                            HRGN update, LPRECT updateRect, UINT flags);
TLVN_API BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip);

// Caret, cursor, keyboard, mouse
TLVN_API BOOL CreateCaret(HWND window, HBITMAP shape, int width, int height);
TLVN_API BOOL DestroyCaret();
TLVN_API BOOL SetCaretPos(int x, int y);
TLVN_API BOOL GetCaretPos(LPPOINT point);
TLVN_API BOOL ShowCaret(HWND window);
TLVN_API BOOL HideCaret(HWND window);
TLVN_API UINT GetCaretBlinkTime();
TLVN_API HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name);
TLVN_API HCURSOR SetCursor(HCURSOR cursor);
TLVN_API HCURSOR GetCursor();
TLVN_API BOOL GetCursorPos(LPPOINT point);
TLVN_API BOOL SetCursorPos(int x, int y);
TLVN_API SHORT GetKeyState(int key);
TLVN_API SHORT GetAsyncKeyState(int key);
TLVN_API BOOL GetKeyboardState(BYTE* state);
TLVN_API BOOL SetKeyboardState(BYTE* state);
TLVN_API UINT MapVirtualKeyW(UINT code, UINT kind);
TLVN_API int GetKeyNameTextW(LONG lParam, LPWSTR name, int capacity);
TLVN_API UINT GetDoubleClickTime();
TLVN_API BOOL TrackMouseEvent(TRACKMOUSEEVENT* event);
TLVN_API int GetSystemMetrics(int index);
TLVN_API DWORD GetSysColor(int index);
TLVN_API BOOL SystemParametersInfoW(UINT action, UINT value, LPVOID data, UINT flags);

// Painting
TLVN_API BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
TLVN_API BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase);
TLVN_API BOOL ValidateRect(HWND window, const RECT* rect);
TLVN_API BOOL ValidateRgn(HWND window, HRGN region);
TLVN_API BOOL UpdateWindow(HWND window);
TLVN_API BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags);
TLVN_API BOOL GetUpdateRect(HWND window, LPRECT rect, BOOL erase);
TLVN_API int GetUpdateRgn(HWND window, HRGN region, BOOL erase);
TLVN_API HDC BeginPaint(HWND window, LPPAINTSTRUCT paint);
TLVN_API BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
TLVN_API HDC GetDC(HWND window);
TLVN_API HDC GetWindowDC(HWND window);
TLVN_API int ReleaseDC(HWND window, HDC dc);
TLVN_API HWND WindowFromDC(HDC dc);

// Graphics objects
TLVN_API HGDIOBJ GetStockObject(int index);
TLVN_API BOOL DeleteObject(HGDIOBJ object);
TLVN_API int GetObjectW(HGDIOBJ object, int size, LPVOID data);
TLVN_API HFONT CreateFontIndirectW(const LOGFONTW* font);
TLVN_API HBRUSH CreateSolidBrush(COLORREF color);
TLVN_API HBRUSH GetSysColorBrush(int index);
TLVN_API HPEN CreatePen(int style, int width, COLORREF color);
TLVN_API HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height);
TLVN_API HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bits, const void* data);
TLVN_API HRGN CreateRectRgn(int left, int top, int right, int bottom);
TLVN_API HRGN CreateRectRgnIndirect(const RECT* rect);
TLVN_API int CombineRgn(HRGN result, HRGN a, HRGN b, int mode);
TLVN_API BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom);
TLVN_API int GetRgnBox(HRGN region, LPRECT rect);
TLVN_API int OffsetRgn(HRGN region, int dx, int dy);
TLVN_API BOOL PtInRegion(HRGN region, int x, int y);
TLVN_API BOOL EqualRgn(HRGN a, HRGN b);

// Device contexts
TLVN_API HDC CreateCompatibleDC(HDC dc);
TLVN_API BOOL DeleteDC(HDC dc);
TLVN_API int SaveDC(HDC dc);
TLVN_API BOOL RestoreDC(HDC dc, int level);
TLVN_API HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
TLVN_API HGDIOBJ GetCurrentObject(HDC dc, UINT kind);
TLVN_API int GetDeviceCaps(HDC dc, int index);
TLVN_API COLORREF SetTextColor(HDC dc, COLORREF color);
TLVN_API COLORREF GetTextColor(HDC dc);
TLVN_API COLORREF SetBkColor(HDC dc, COLORREF color);
TLVN_API COLORREF GetBkColor(HDC dc);
TLVN_API int SetBkMode(HDC dc, int mode);
TLVN_API int GetBkMode(HDC dc);
TLVN_API UINT SetTextAlign(HDC dc, UINT align);
TLVN_API UINT GetTextAlign(HDC dc);
TLVN_API int SetROP2(HDC dc, int mode);
TLVN_API BOOL SetViewportOrgEx(HDC dc, int x, int y, LPPOINT previous);
TLVN_API BOOL GetViewportOrgEx(HDC dc, LPPOINT origin);
TLVN_API int SelectClipRgn(HDC dc, HRGN region);
TLVN_API int IntersectClipRect(HDC dc, int left, int top, int right, int bottom);
TLVN_API int ExcludeClipRect(HDC dc, int left, int top, int right, int bottom);
TLVN_API int GetClipBox(HDC dc, LPRECT rect);
TLVN_API BOOL RectVisible(HDC dc, const RECT* rect);
TLVN_API BOOL GetTextMetricsW(HDC dc, TEXTMETRICW* metrics);
TLVN_API BOOL GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, LPSIZE size);
TLVN_API BOOL GetTextExtentExPointW(HDC dc, LPCWSTR text, int length, int limit, int* fit,
                                    int* advances, LPSIZE size);
TLVN_API BOOL GetCharWidth32W(HDC dc, UINT first, UINT last, int* widths);
TLVN_API BOOL TextOutW(HDC dc, int x, int y, LPCWSTR text, int length);
TLVN_API BOOL ExtTextOutW(HDC dc, int x, int y, UINT options, const RECT* rect, LPCWSTR text,
                          UINT length, const int* advances);
TLVN_API int FillRect(HDC dc, const RECT* rect, HBRUSH brush);
TLVN_API int FrameRect(HDC dc, const RECT* rect, HBRUSH brush);
TLVN_API BOOL InvertRect(HDC dc, const RECT* rect);
TLVN_API BOOL DrawFocusRect(HDC dc, const RECT* rect);
TLVN_API BOOL PatBlt(HDC dc, int x, int y, int width, int height, DWORD operation);
TLVN_API BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX,
                     int sourceY, DWORD operation);
TLVN_API BOOL MoveToEx(HDC dc, int x, int y, LPPOINT previous);
TLVN_API BOOL LineTo(HDC dc, int x, int y);
TLVN_API BOOL Polyline(HDC dc, const POINT* points, int count);
TLVN_API BOOL Polygon(HDC dc, const POINT* points, int count);
TLVN_API BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
TLVN_API COLORREF SetPixel(HDC dc, int x, int y, COLORREF color);
TLVN_API COLORREF GetPixel(HDC dc, int x, int y);

// Menus and accelerators
TLVN_API HMENU CreateMenu();
TLVN_API HMENU CreatePopupMenu();
TLVN_API BOOL DestroyMenu(HMENU menu);
TLVN_API BOOL IsMenu(HMENU menu);
TLVN_API BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR id, LPCWSTR text);
TLVN_API BOOL InsertMenuW(HMENU menu, UINT position, UINT flags, UINT_PTR id, LPCWSTR text);
TLVN_API BOOL ModifyMenuW(HMENU menu, UINT position, UINT flags, UINT_PTR id, LPCWSTR text);
TLVN_API BOOL DeleteMenu(HMENU menu, UINT position, UINT flags);
TLVN_API BOOL RemoveMenu(HMENU menu, UINT position, UINT flags);
TLVN_API int GetMenuItemCount(HMENU menu);
TLVN_API UINT GetMenuItemID(HMENU menu, int position);
TLVN_API HMENU GetSubMenu(HMENU menu, int position);
TLVN_API int GetMenuStringW(HMENU menu, UINT item, LPWSTR text, int capacity, UINT flags);
TLVN_API UINT GetMenuState(HMENU menu, UINT item, UINT flags);
TLVN_API DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags);
TLVN_API BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags);
TLVN_API BOOL GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOW* info);
TLVN_API BOOL SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOW* info);
TLVN_API BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND owner,
                             const RECT* rect);
TLVN_API HMENU GetMenu(HWND window);
TLVN_API BOOL SetMenu(HWND window, HMENU menu);
TLVN_API BOOL DrawMenuBar(HWND window);
TLVN_API HACCEL CreateAcceleratorTableW(LPACCEL entries, int count);
TLVN_API int CopyAcceleratorTableW(HACCEL table, LPACCEL entries, int capacity);
TLVN_API BOOL DestroyAcceleratorTable(HACCEL table);
TLVN_API HACCEL LoadAcceleratorsW(HINSTANCE instance, LPCWSTR name);
TLVN_API int TranslateAcceleratorW(HWND window, HACCEL table, LPMSG message);

// Common controls
TLVN_API BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* controls);

// Clipboard and global memory
TLVN_API BOOL OpenClipboard(HWND window);
TLVN_API BOOL CloseClipboard();
TLVN_API BOOL EmptyClipboard();
TLVN_API HANDLE SetClipboardData(UINT format, HANDLE data);
TLVN_API HANDLE GetClipboardData(UINT format);
TLVN_API BOOL IsClipboardFormatAvailable(UINT format);
TLVN_API UINT EnumClipboardFormats(UINT format);
TLVN_API HWND GetClipboardOwner();
TLVN_API UINT RegisterClipboardFormatW(LPCWSTR name);
TLVN_API HGLOBAL GlobalAlloc(UINT flags, std::size_t size);
TLVN_API HGLOBAL GlobalFree(HGLOBAL memory);
TLVN_API LPVOID GlobalLock(HGLOBAL memory);
TLVN_API BOOL GlobalUnlock(HGLOBAL memory);
TLVN_API std::size_t GlobalSize(HGLOBAL memory);

// Input methods
TLVN_API HIMC ImmCreateContext();
TLVN_API BOOL ImmDestroyContext(HIMC context);
TLVN_API HIMC ImmGetContext(HWND window);
TLVN_API BOOL ImmReleaseContext(HWND window, HIMC context);
TLVN_API HIMC ImmAssociateContext(HWND window, HIMC context);
TLVN_API BOOL ImmSetCompositionWindow(HIMC context, COMPOSITIONFORM* form);
TLVN_API BOOL ImmGetCompositionWindow(HIMC context, COMPOSITIONFORM* form);
TLVN_API BOOL ImmSetCandidateWindow(HIMC context, CANDIDATEFORM* form);
TLVN_API BOOL ImmSetCompositionFontW(HIMC context, LOGFONTW* font);
TLVN_API BOOL ImmGetCompositionFontW(HIMC context, LOGFONTW* font);
TLVN_API LONG ImmGetCompositionStringW(HIMC context, DWORD index, LPVOID data, DWORD size);
TLVN_API BOOL ImmNotifyIME(HIMC context, DWORD action, DWORD index, DWORD value);
TLVN_API BOOL ImmGetOpenStatus(HIMC context);
TLVN_API BOOL ImmSetOpenStatus(HIMC context, BOOL open);
