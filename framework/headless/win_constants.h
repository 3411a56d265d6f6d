// Constants of the Windows API (see winapi.h), with the values of Windows.

#pragma once

#include "platform/types.h"

// Messages
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_MOVE = 0x0003;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_ACTIVATE = 0x0006;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_ENABLE = 0x000A;
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT WM_SETTEXT = 0x000C;
constexpr UINT WM_GETTEXT = 0x000D;
constexpr UINT WM_GETTEXTLENGTH = 0x000E;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUERYENDSESSION = 0x0011;
constexpr UINT WM_ENDSESSION = 0x0016;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_SETTINGCHANGE = 0x001A;
constexpr UINT WM_ACTIVATEAPP = 0x001C;
constexpr UINT WM_CANCELMODE = 0x001F;
constexpr UINT WM_SETCURSOR = 0x0020;
constexpr UINT WM_MOUSEACTIVATE = 0x0021;
constexpr UINT WM_GETMINMAXINFO = 0x0024;
constexpr UINT WM_SETFONT = 0x0030;
constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_WINDOWPOSCHANGING = 0x0046;
constexpr UINT WM_WINDOWPOSCHANGED = 0x0047;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_INPUTLANGCHANGE = 0x0051;
constexpr UINT WM_CONTEXTMENU = 0x007B;
constexpr UINT WM_STYLECHANGING = 0x007C;
constexpr UINT WM_STYLECHANGED = 0x007D;
constexpr UINT WM_NCCREATE = 0x0081;
constexpr UINT WM_NCDESTROY = 0x0082;
constexpr UINT WM_NCCALCSIZE = 0x0083;
constexpr UINT WM_NCHITTEST = 0x0084;
constexpr UINT WM_NCPAINT = 0x0085;
constexpr UINT WM_NCACTIVATE = 0x0086;
constexpr UINT WM_GETDLGCODE = 0x0087;
constexpr UINT WM_NCMOUSEMOVE = 0x00A0;
constexpr UINT WM_NCLBUTTONDOWN = 0x00A1;
constexpr UINT WM_NCLBUTTONUP = 0x00A2;
constexpr UINT EM_GETSEL = 0x00B0;
constexpr UINT EM_SETSEL = 0x00B1;
constexpr UINT EM_REPLACESEL = 0x00C2;
constexpr UINT EM_CANUNDO = 0x00C6;
constexpr UINT EM_UNDO = 0x00C7;
constexpr UINT WM_KEYFIRST = 0x0100;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_DEADCHAR = 0x0103;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_SYSKEYUP = 0x0105;
constexpr UINT WM_SYSCHAR = 0x0106;
constexpr UINT WM_UNICHAR = 0x0109;
constexpr UINT WM_KEYLAST = 0x0109;
constexpr UINT WM_IME_STARTCOMPOSITION = 0x010D;
constexpr UINT WM_IME_ENDCOMPOSITION = 0x010E;
constexpr UINT WM_IME_COMPOSITION = 0x010F;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_SYSCOMMAND = 0x0112;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT WM_INITMENU = 0x0116;
constexpr UINT WM_INITMENUPOPUP = 0x0117;
constexpr UINT WM_MOUSEFIRST = 0x0200;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_RBUTTONDBLCLK = 0x0206;
constexpr UINT WM_MBUTTONDOWN = 0x0207;
constexpr UINT WM_MBUTTONUP = 0x0208;
constexpr UINT WM_MBUTTONDBLCLK = 0x0209;
constexpr UINT WM_MOUSEWHEEL = 0x020A;
constexpr UINT WM_MOUSEHWHEEL = 0x020E;
constexpr UINT WM_MOUSELAST = 0x020E;
constexpr UINT WM_PARENTNOTIFY = 0x0210;
constexpr UINT WM_CAPTURECHANGED = 0x0215;
constexpr UINT WM_IME_SETCONTEXT = 0x0281;
constexpr UINT WM_IME_NOTIFY = 0x0282;
constexpr UINT WM_IME_CHAR = 0x0286;
constexpr UINT WM_IME_REQUEST = 0x0288;
constexpr UINT WM_MOUSELEAVE = 0x02A3;
constexpr UINT WM_CUT = 0x0300;
constexpr UINT WM_COPY = 0x0301;
constexpr UINT WM_PASTE = 0x0302;
constexpr UINT WM_CLEAR = 0x0303;
constexpr UINT WM_UNDO = 0x0304;
constexpr UINT WM_USER = 0x0400;
constexpr UINT WM_APP = 0x8000;

// Window styles
constexpr DWORD WS_OVERLAPPED = 0x00000000;
constexpr DWORD WS_POPUP = 0x80000000;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_MINIMIZE = 0x20000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
constexpr DWORD WS_MAXIMIZE = 0x01000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD WS_DLGFRAME = 0x00400000;
constexpr DWORD WS_VSCROLL = 0x00200000;
constexpr DWORD WS_HSCROLL = 0x00100000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_THICKFRAME = 0x00040000;
constexpr DWORD WS_GROUP = 0x00020000;
constexpr DWORD WS_TABSTOP = 0x00010000;
constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;
constexpr DWORD WS_OVERLAPPEDWINDOW = 0x00CF0000;
constexpr DWORD WS_POPUPWINDOW = 0x80880000;
constexpr DWORD WS_EX_NOPARENTNOTIFY = 0x00000004;
constexpr DWORD WS_EX_TOPMOST = 0x00000008;
constexpr DWORD WS_EX_TRANSPARENT = 0x00000020;
constexpr DWORD WS_EX_TOOLWINDOW = 0x00000080;
constexpr DWORD WS_EX_WINDOWEDGE = 0x00000100;
constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200;
constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000;
constexpr DWORD WS_EX_STATICEDGE = 0x00020000;
constexpr DWORD WS_EX_APPWINDOW = 0x00040000;

// Class styles
constexpr UINT CS_VREDRAW = 1;
constexpr UINT CS_HREDRAW = 2;
constexpr UINT CS_DBLCLKS = 8;
constexpr UINT CS_OWNDC = 0x20;
constexpr UINT CS_PARENTDC = 0x80;
constexpr UINT CS_SAVEBITS = 0x800;

// Window words, relations and creation
constexpr int GWLP_WNDPROC = -4;
constexpr int GWLP_HINSTANCE = -6;
constexpr int GWLP_HWNDPARENT = -8;
constexpr int GWLP_ID = -12;
constexpr int GWL_STYLE = -16;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWLP_USERDATA = -21;
constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000);
constexpr int GCLP_HBRBACKGROUND = -10;
constexpr int GCLP_HCURSOR = -12;
constexpr int GCL_STYLE = -26;

// GetWindow, GetAncestor
constexpr UINT GW_HWNDFIRST = 0;
constexpr UINT GW_HWNDLAST = 1;
constexpr UINT GW_HWNDNEXT = 2;
constexpr UINT GW_HWNDPREV = 3;
constexpr UINT GW_OWNER = 4;
constexpr UINT GW_CHILD = 5;
constexpr UINT GA_PARENT = 1;
constexpr UINT GA_ROOT = 2;
constexpr UINT GA_ROOTOWNER = 3;

// ShowWindow
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_NORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_SHOWNA = 8;
constexpr int SW_RESTORE = 9;
constexpr int SW_SHOWDEFAULT = 10;

// SetWindowPos
constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOZORDER = 0x0004;
constexpr UINT SWP_NOREDRAW = 0x0008;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_FRAMECHANGED = 0x0020;
constexpr UINT SWP_DRAWFRAME = 0x0020;
constexpr UINT SWP_SHOWWINDOW = 0x0040;
constexpr UINT SWP_HIDEWINDOW = 0x0080;
constexpr UINT SWP_NOCOPYBITS = 0x0100;
constexpr UINT SWP_NOOWNERZORDER = 0x0200;
constexpr UINT SWP_NOSENDCHANGING = 0x0400;
constexpr UINT SWP_NOCLIENTSIZE = 0x0800;
constexpr UINT SWP_NOCLIENTMOVE = 0x1000;

// RedrawWindow, ScrollWindowEx, DCs
constexpr UINT RDW_INVALIDATE = 0x0001;
constexpr UINT RDW_INTERNALPAINT = 0x0002;
constexpr UINT RDW_ERASE = 0x0004;
constexpr UINT RDW_VALIDATE = 0x0008;
constexpr UINT RDW_NOINTERNALPAINT = 0x0010;
constexpr UINT RDW_NOERASE = 0x0020;
constexpr UINT RDW_NOCHILDREN = 0x0040;
constexpr UINT RDW_ALLCHILDREN = 0x0080;
constexpr UINT RDW_UPDATENOW = 0x0100;
constexpr UINT RDW_ERASENOW = 0x0200;
constexpr UINT RDW_FRAME = 0x0400;
constexpr UINT RDW_NOFRAME = 0x0800;
constexpr UINT SW_SCROLLCHILDREN = 1;
constexpr UINT SW_INVALIDATE = 2;
constexpr UINT SW_ERASE = 4;

// WM_SIZE, WM_ACTIVATE
constexpr WPARAM SIZE_RESTORED = 0;
constexpr WPARAM SIZE_MINIMIZED = 1;
constexpr WPARAM SIZE_MAXIMIZED = 2;
constexpr WPARAM WA_INACTIVE = 0;
constexpr WPARAM WA_ACTIVE = 1;
constexpr WPARAM WA_CLICKACTIVE = 2;

// Hit test and activation codes
constexpr int HTERROR = -2;
constexpr int HTTRANSPARENT = -1;
constexpr int HTNOWHERE = 0;
constexpr int HTCLIENT = 1;
constexpr int HTCAPTION = 2;
constexpr int HTMENU = 5;
constexpr int HTHSCROLL = 6;
constexpr int HTVSCROLL = 7;
constexpr int HTBORDER = 18;
constexpr int MA_ACTIVATE = 1;
constexpr int MA_ACTIVATEANDEAT = 2;
constexpr int MA_NOACTIVATE = 3;
constexpr int MA_NOACTIVATEANDEAT = 4;

// WM_GETDLGCODE, PeekMessage
constexpr UINT DLGC_WANTARROWS = 1;
constexpr UINT DLGC_WANTTAB = 2;
constexpr UINT DLGC_WANTALLKEYS = 4;
constexpr UINT DLGC_WANTMESSAGE = 4;
constexpr UINT DLGC_HASSETSEL = 8;
constexpr UINT DLGC_WANTCHARS = 0x80;
constexpr UINT PM_NOREMOVE = 0;
constexpr UINT PM_REMOVE = 1;
constexpr UINT PM_NOYIELD = 2;

// Mouse key flags
constexpr WPARAM MK_LBUTTON = 1;
constexpr WPARAM MK_RBUTTON = 2;
constexpr WPARAM MK_SHIFT = 4;
constexpr WPARAM MK_CONTROL = 8;
constexpr WPARAM MK_MBUTTON = 16;

// Wheel
constexpr int WHEEL_DELTA = 120;

// Wheel setting
constexpr UINT WHEEL_PAGESCROLL = 0xFFFFFFFF;

// Scroll bars
constexpr int SB_HORZ = 0;
constexpr int SB_VERT = 1;
constexpr int SB_CTL = 2;
constexpr int SB_BOTH = 3;
constexpr int SB_LINEUP = 0;
constexpr int SB_LINELEFT = 0;
constexpr int SB_LINEDOWN = 1;
constexpr int SB_LINERIGHT = 1;
constexpr int SB_PAGEUP = 2;
constexpr int SB_PAGELEFT = 2;
constexpr int SB_PAGEDOWN = 3;
constexpr int SB_PAGERIGHT = 3;
constexpr int SB_THUMBPOSITION = 4;
constexpr int SB_THUMBTRACK = 5;
constexpr int SB_TOP = 6;
constexpr int SB_LEFT = 6;
constexpr int SB_BOTTOM = 7;
constexpr int SB_RIGHT = 7;
constexpr int SB_ENDSCROLL = 8;

// Scroll information
constexpr UINT SIF_RANGE = 1;
constexpr UINT SIF_PAGE = 2;
constexpr UINT SIF_POS = 4;
constexpr UINT SIF_DISABLENOSCROLL = 8;
constexpr UINT SIF_TRACKPOS = 16;
constexpr UINT SIF_ALL = 23;
constexpr UINT ESB_ENABLE_BOTH = 0;
constexpr UINT ESB_DISABLE_BOTH = 3;

// Virtual keys
constexpr int VK_LBUTTON = 0x01;
constexpr int VK_RBUTTON = 0x02;
constexpr int VK_CANCEL = 0x03;
constexpr int VK_MBUTTON = 0x04;
constexpr int VK_BACK = 0x08;
constexpr int VK_TAB = 0x09;
constexpr int VK_CLEAR = 0x0C;
constexpr int VK_RETURN = 0x0D;
constexpr int VK_SHIFT = 0x10;
constexpr int VK_CONTROL = 0x11;
constexpr int VK_MENU = 0x12;
constexpr int VK_PAUSE = 0x13;
constexpr int VK_CAPITAL = 0x14;
constexpr int VK_KANJI = 0x19;
constexpr int VK_ESCAPE = 0x1B;
constexpr int VK_SPACE = 0x20;
constexpr int VK_PRIOR = 0x21;
constexpr int VK_NEXT = 0x22;
constexpr int VK_END = 0x23;
constexpr int VK_HOME = 0x24;
constexpr int VK_LEFT = 0x25;
constexpr int VK_UP = 0x26;
constexpr int VK_RIGHT = 0x27;
constexpr int VK_DOWN = 0x28;
constexpr int VK_INSERT = 0x2D;
constexpr int VK_DELETE = 0x2E;
constexpr int VK_LWIN = 0x5B;
constexpr int VK_APPS = 0x5D;
constexpr int VK_NUMPAD0 = 0x60;
constexpr int VK_NUMPAD9 = 0x69;
constexpr int VK_MULTIPLY = 0x6A;
constexpr int VK_ADD = 0x6B;
constexpr int VK_SEPARATOR = 0x6C;
constexpr int VK_SUBTRACT = 0x6D;
constexpr int VK_DECIMAL = 0x6E;
constexpr int VK_DIVIDE = 0x6F;
constexpr int VK_F1 = 0x70;
constexpr int VK_F2 = 0x71;
constexpr int VK_F3 = 0x72;
constexpr int VK_F4 = 0x73;
constexpr int VK_F5 = 0x74;
constexpr int VK_F6 = 0x75;
constexpr int VK_F7 = 0x76;
constexpr int VK_F8 = 0x77;
constexpr int VK_F9 = 0x78;
constexpr int VK_F10 = 0x79;
constexpr int VK_F11 = 0x7A;
constexpr int VK_F12 = 0x7B;
constexpr int VK_NUMLOCK = 0x90;
constexpr int VK_SCROLL = 0x91;
constexpr int VK_LSHIFT = 0xA0;
constexpr int VK_RSHIFT = 0xA1;
constexpr int VK_LCONTROL = 0xA2;
constexpr int VK_RCONTROL = 0xA3;
constexpr int VK_LMENU = 0xA4;
constexpr int VK_RMENU = 0xA5;
constexpr int VK_OEM_1 = 0xBA;
constexpr int VK_OEM_PLUS = 0xBB;
constexpr int VK_OEM_COMMA = 0xBC;
constexpr int VK_OEM_MINUS = 0xBD;
constexpr int VK_OEM_PERIOD = 0xBE;
constexpr int VK_OEM_2 = 0xBF;
constexpr int VK_OEM_3 = 0xC0;
constexpr int VK_OEM_4 = 0xDB;
constexpr int VK_OEM_5 = 0xDC;
constexpr int VK_OEM_6 = 0xDD;
constexpr int VK_OEM_7 = 0xDE;
constexpr int VK_OEM_102 = 0xE2;
constexpr int VK_PROCESSKEY = 0xE5;

// Accelerator flags
constexpr BYTE FVIRTKEY = 1;
constexpr BYTE FNOINVERT = 2;
constexpr BYTE FSHIFT = 4;
constexpr BYTE FCONTROL = 8;
constexpr BYTE FALT = 16;

// MapVirtualKey
constexpr UINT MAPVK_VK_TO_VSC = 0;
constexpr UINT MAPVK_VSC_TO_VK = 1;
constexpr UINT MAPVK_VK_TO_CHAR = 2;

// Clipboard and memory
constexpr UINT CF_TEXT = 1;
constexpr UINT CF_BITMAP = 2;
constexpr UINT CF_OEMTEXT = 7;
constexpr UINT CF_UNICODETEXT = 13;
constexpr UINT CF_LOCALE = 16;
constexpr UINT CF_PRIVATEFIRST = 0x200;
constexpr UINT GMEM_FIXED = 0;
constexpr UINT GMEM_MOVEABLE = 2;
constexpr UINT GMEM_ZEROINIT = 0x40;
constexpr UINT GMEM_DDESHARE = 0x2000;
constexpr UINT GHND = 0x42;

// Menus
constexpr UINT MF_INSERT = 0;
constexpr UINT MF_BYCOMMAND = 0;
constexpr UINT MF_BYPOSITION = 0x400;
constexpr UINT MF_SEPARATOR = 0x800;
constexpr UINT MF_ENABLED = 0;
constexpr UINT MF_GRAYED = 1;
constexpr UINT MF_DISABLED = 2;
constexpr UINT MF_UNCHECKED = 0;
constexpr UINT MF_CHECKED = 8;
constexpr UINT MF_STRING = 0;
constexpr UINT MF_BITMAP = 4;
constexpr UINT MF_OWNERDRAW = 0x100;
constexpr UINT MF_POPUP = 0x10;
constexpr UINT MF_MENUBREAK = 0x40;
constexpr UINT MF_DEFAULT = 0x1000;
constexpr UINT MFT_STRING = 0;
constexpr UINT MFT_SEPARATOR = 0x800;
constexpr UINT MFS_ENABLED = 0;
constexpr UINT MFS_GRAYED = 3;
constexpr UINT MFS_CHECKED = 8;
constexpr UINT MIIM_STATE = 1;
constexpr UINT MIIM_ID = 2;
constexpr UINT MIIM_SUBMENU = 4;
constexpr UINT MIIM_TYPE = 16;
constexpr UINT MIIM_DATA = 32;
constexpr UINT MIIM_STRING = 64;
constexpr UINT MIIM_FTYPE = 256;
constexpr UINT TPM_LEFTBUTTON = 0;
constexpr UINT TPM_RIGHTBUTTON = 2;
constexpr UINT TPM_LEFTALIGN = 0;
constexpr UINT TPM_NONOTIFY = 0x80;
constexpr UINT TPM_RETURNCMD = 0x100;

// Message boxes
constexpr UINT MB_OK = 0;
constexpr UINT MB_OKCANCEL = 1;
constexpr UINT MB_ABORTRETRYIGNORE = 2;
constexpr UINT MB_YESNOCANCEL = 3;
constexpr UINT MB_YESNO = 4;
constexpr UINT MB_RETRYCANCEL = 5;
constexpr UINT MB_ICONHAND = 0x10;
constexpr UINT MB_ICONERROR = 0x10;
constexpr UINT MB_ICONSTOP = 0x10;
constexpr UINT MB_ICONQUESTION = 0x20;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONWARNING = 0x30;
constexpr UINT MB_ICONASTERISK = 0x40;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr UINT MB_DEFBUTTON1 = 0;
constexpr UINT MB_DEFBUTTON2 = 0x100;
constexpr UINT MB_DEFBUTTON3 = 0x200;
constexpr UINT MB_TYPEMASK = 0xF;

// Message box answers
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// System colours
constexpr int COLOR_SCROLLBAR = 0;
constexpr int COLOR_BACKGROUND = 1;
constexpr int COLOR_ACTIVECAPTION = 2;
constexpr int COLOR_INACTIVECAPTION = 3;
constexpr int COLOR_MENU = 4;
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWFRAME = 6;
constexpr int COLOR_MENUTEXT = 7;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_CAPTIONTEXT = 9;
constexpr int COLOR_ACTIVEBORDER = 10;
constexpr int COLOR_INACTIVEBORDER = 11;
constexpr int COLOR_APPWORKSPACE = 12;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_BTNFACE = 15;
constexpr int COLOR_3DFACE = 15;
constexpr int COLOR_BTNSHADOW = 16;
constexpr int COLOR_3DSHADOW = 16;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_BTNTEXT = 18;
constexpr int COLOR_INACTIVECAPTIONTEXT = 19;
constexpr int COLOR_BTNHIGHLIGHT = 20;
constexpr int COLOR_3DHILIGHT = 20;
constexpr int COLOR_3DHIGHLIGHT = 20;
constexpr int COLOR_3DDKSHADOW = 21;
constexpr int COLOR_3DLIGHT = 22;
constexpr int COLOR_INFOTEXT = 23;
constexpr int COLOR_INFOBK = 24;
constexpr int COLOR_HOTLIGHT = 26;

// System metrics
constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
constexpr int SM_CXVSCROLL = 2;
constexpr int SM_CYHSCROLL = 3;
constexpr int SM_CYCAPTION = 4;
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYBORDER = 6;
constexpr int SM_CYMENU = 15;
constexpr int SM_CYVSCROLL = 20;
constexpr int SM_CXHSCROLL = 21;
constexpr int SM_CXMIN = 28;
constexpr int SM_CYMIN = 29;
constexpr int SM_CXFRAME = 32;
constexpr int SM_CYFRAME = 33;
constexpr int SM_CXDOUBLECLK = 36;
constexpr int SM_CYDOUBLECLK = 37;
constexpr int SM_CXEDGE = 45;
constexpr int SM_CYEDGE = 46;
constexpr int SM_CXDRAG = 68;
constexpr int SM_CYDRAG = 69;

// System parameters
constexpr UINT SPI_GETWHEELSCROLLLINES = 104;
constexpr UINT SPI_SETWHEELSCROLLLINES = 105;
constexpr UINT SPI_GETWHEELSCROLLCHARS = 108;

// Device contexts
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;
constexpr int R2_BLACK = 1;
constexpr int R2_NOT = 6;
constexpr int R2_XORPEN = 7;
constexpr int R2_COPYPEN = 13;
constexpr int LOGPIXELSX = 88;
constexpr int LOGPIXELSY = 90;
constexpr int BITSPIXEL = 12;
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr int TECHNOLOGY = 2;
constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int HOLLOW_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int OEM_FIXED_FONT = 10;
constexpr int ANSI_FIXED_FONT = 11;
constexpr int ANSI_VAR_FONT = 12;
constexpr int SYSTEM_FONT = 13;
constexpr int DEVICE_DEFAULT_FONT = 14;
constexpr int SYSTEM_FIXED_FONT = 16;
constexpr int DEFAULT_GUI_FONT = 17;
constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_NULL = 5;
constexpr int BS_SOLID = 0;
constexpr int BS_NULL = 1;
constexpr int RGN_AND = 1;
constexpr int RGN_OR = 2;
constexpr int RGN_XOR = 3;
constexpr int RGN_DIFF = 4;
constexpr int RGN_COPY = 5;
constexpr int ERROR = 0;
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2;
constexpr int COMPLEXREGION = 3;
constexpr int OBJ_PEN = 1;
constexpr int OBJ_BRUSH = 2;
constexpr int OBJ_FONT = 6;
constexpr int OBJ_BITMAP = 7;
constexpr int FW_DONTCARE = 0;
constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;

// Text alignment and output
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;
constexpr UINT TA_NOUPDATECP = 0;
constexpr UINT TA_UPDATECP = 1;
constexpr UINT ETO_OPAQUE = 2;
constexpr UINT ETO_CLIPPED = 4;

// Raster operations
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr DWORD PATCOPY = 0x00F00021;
constexpr DWORD PATINVERT = 0x005A0049;
constexpr DWORD DSTINVERT = 0x00550009;
constexpr DWORD BLACKNESS = 0x00000042;
constexpr DWORD WHITENESS = 0x00FF0062;

// No colour
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

// Fonts
constexpr BYTE ANSI_CHARSET = 0;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr BYTE SYMBOL_CHARSET = 2;
constexpr BYTE SHIFTJIS_CHARSET = 128;
constexpr BYTE HANGUL_CHARSET = 129;
constexpr BYTE GB2312_CHARSET = 134;
constexpr BYTE CHINESEBIG5_CHARSET = 136;
constexpr BYTE OEM_CHARSET = 255;
constexpr BYTE OUT_DEFAULT_PRECIS = 0;
constexpr BYTE CLIP_DEFAULT_PRECIS = 0;
constexpr BYTE DEFAULT_QUALITY = 0;
constexpr BYTE DEFAULT_PITCH = 0;
constexpr BYTE FIXED_PITCH = 1;
constexpr BYTE VARIABLE_PITCH = 2;
constexpr BYTE FF_DONTCARE = 0;
constexpr BYTE FF_MODERN = 0x30;
constexpr BYTE TMPF_FIXED_PITCH = 1;

// Hooks
constexpr int WH_CBT = 5;
constexpr int HCBT_CREATEWND = 3;

// Mouse tracking
constexpr DWORD TME_HOVER = 1;
constexpr DWORD TME_LEAVE = 2;
constexpr DWORD TME_CANCEL = 0x80000000;

// Tool tips
constexpr DWORD ICC_BAR_CLASSES = 4;
constexpr UINT TTF_IDISHWND = 1;
constexpr UINT TTF_SUBCLASS = 16;
constexpr UINT TTM_ACTIVATE = WM_USER + 1;
constexpr UINT TTM_SETDELAYTIME = WM_USER + 3;
constexpr UINT TTM_RELAYEVENT = WM_USER + 7;
constexpr UINT TTM_GETTOOLCOUNT = WM_USER + 13;
constexpr UINT TTM_SETMAXTIPWIDTH = WM_USER + 24;
constexpr UINT TTM_POP = WM_USER + 28;
constexpr UINT TTM_UPDATE = WM_USER + 29;
constexpr UINT TTM_ADDTOOLW = WM_USER + 50;
constexpr UINT TTM_DELTOOLW = WM_USER + 51;
constexpr UINT TTM_NEWTOOLRECTW = WM_USER + 52;
constexpr UINT TTM_GETTEXTW = WM_USER + 56;
constexpr UINT TTM_UPDATETIPTEXTW = WM_USER + 57;
constexpr UINT TTN_GETDISPINFOW = static_cast<UINT>(-530);
constexpr UINT TTN_NEEDTEXTW = TTN_GETDISPINFOW;
constexpr UINT TTS_ALWAYSTIP = 1;
constexpr UINT TTS_NOPREFIX = 2;

// Input methods
constexpr DWORD GCS_COMPSTR = 0x0008;
constexpr DWORD GCS_COMPATTR = 0x0010;
constexpr DWORD GCS_CURSORPOS = 0x0080;
constexpr DWORD GCS_RESULTSTR = 0x0800;
constexpr DWORD CFS_DEFAULT = 0;
constexpr DWORD CFS_RECT = 1;
constexpr DWORD CFS_POINT = 2;
constexpr DWORD CFS_FORCE_POSITION = 0x20;
constexpr DWORD CFS_CANDIDATEPOS = 0x40;
constexpr DWORD CFS_EXCLUDE = 0x80;
constexpr DWORD NI_COMPOSITIONSTR = 0x15;
constexpr DWORD CPS_COMPLETE = 1;
constexpr DWORD CPS_CONVERT = 2;
constexpr DWORD CPS_REVERT = 3;
constexpr DWORD CPS_CANCEL = 4;
constexpr DWORD IMR_COMPOSITIONWINDOW = 1;
constexpr DWORD IMR_CANDIDATEWINDOW = 2;
constexpr DWORD IMR_COMPOSITIONFONT = 3;
constexpr DWORD IMR_RECONVERTSTRING = 4;
constexpr DWORD IMR_CONFIRMRECONVERTSTRING = 5;
constexpr DWORD IMR_QUERYCHARPOSITION = 6;
constexpr DWORD IMR_DOCUMENTFEED = 7;
constexpr DWORD ISC_SHOWUICOMPOSITIONWINDOW = 0x80000000;
constexpr DWORD IACE_DEFAULT = 0x10;

template <class T>
constexpr WORD LOWORD(T value)
{
    return static_cast<WORD>(static_cast<UINT64>(value) & 0xFFFF);
}
template <class T>
constexpr WORD HIWORD(T value)
{
    return static_cast<WORD>(static_cast<UINT64>(value) >> 16 & 0xFFFF);
}
template <class Low, class High>
constexpr LONG MAKELONG(Low low, High high)
{
    return static_cast<LONG>(static_cast<DWORD>(LOWORD(low)) | static_cast<DWORD>(LOWORD(high))
                                                                   << 16);
}
template <class Low, class High>
constexpr LPARAM MAKELPARAM(Low low, High high)
{
    return static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high)));
}
template <class Low, class High>
constexpr WPARAM MAKEWPARAM(Low low, High high)
{
    return static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high)));
}
constexpr SHORT GET_WHEEL_DELTA_WPARAM(WPARAM wParam)
{
    return static_cast<SHORT>(HIWORD(wParam));
}
constexpr BYTE GetRValue(COLORREF color)
{
    return static_cast<BYTE>(color);
}
constexpr BYTE GetGValue(COLORREF color)
{
    return static_cast<BYTE>(color >> 8);
}
constexpr BYTE GetBValue(COLORREF color)
{
    return static_cast<BYTE>(color >> 16);
}

// Resource numbers and atoms travel as pointers below 0x10000.
inline LPCWSTR MAKEINTRESOURCEW(int number)
{
    return reinterpret_cast<LPCWSTR>(static_cast<UINT_PTR>(static_cast<WORD>(number)));
}
inline bool IS_INTRESOURCE(const void* name)
{
    return reinterpret_cast<UINT_PTR>(name) < 0x10000;
}
inline const LPCWSTR IDC_ARROW = MAKEINTRESOURCEW(32512);
inline const LPCWSTR IDC_IBEAM = MAKEINTRESOURCEW(32513);
inline const LPCWSTR IDC_WAIT = MAKEINTRESOURCEW(32514);
inline const LPCWSTR IDC_SIZEWE = MAKEINTRESOURCEW(32644);
inline const LPCWSTR IDC_SIZENS = MAKEINTRESOURCEW(32645);
inline const LPCWSTR IDC_HAND = MAKEINTRESOURCEW(32649);

inline const HWND HWND_TOP = nullptr;
inline const HWND HWND_BOTTOM = reinterpret_cast<HWND>(1);
inline const HWND HWND_TOPMOST = reinterpret_cast<HWND>(-1);
inline const HWND HWND_NOTOPMOST = reinterpret_cast<HWND>(-2);

inline constexpr const WCHAR* TOOLTIPS_CLASSW = u"tooltips_class32";
inline const LPWSTR LPSTR_TEXTCALLBACKW = reinterpret_cast<LPWSTR>(-1);
