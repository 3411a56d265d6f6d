// POSIX: the Windows types that public signatures use, with their Windows sizes.

#pragma once

#include <cstdint>

using BOOL = int;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using UINT = unsigned int;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using INT64 = std::int64_t;
using UINT64 = std::uint64_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using WCHAR = char16_t;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using TCHAR = char;
using LPTSTR = TCHAR*;
using LPCTSTR = const TCHAR*;
using COLORREF = DWORD;
using LCID = DWORD;
using HANDLE = void*;
using ATOM = WORD;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define CALLBACK
#define WINAPI
#define TW(literal) u##literal

#define TLVN_DECLARE_HANDLE(name)                                                                  \
    struct name##__;                                                                               \
    using name = name##__*
TLVN_DECLARE_HANDLE(HWND);
TLVN_DECLARE_HANDLE(HDC);
TLVN_DECLARE_HANDLE(HFONT);
TLVN_DECLARE_HANDLE(HBRUSH);
TLVN_DECLARE_HANDLE(HPEN);
TLVN_DECLARE_HANDLE(HBITMAP);
TLVN_DECLARE_HANDLE(HRGN);
TLVN_DECLARE_HANDLE(HMENU);
TLVN_DECLARE_HANDLE(HICON);
TLVN_DECLARE_HANDLE(HACCEL);
TLVN_DECLARE_HANDLE(HINSTANCE);
TLVN_DECLARE_HANDLE(HIMC);
TLVN_DECLARE_HANDLE(HHOOK);
TLVN_DECLARE_HANDLE(HDWP);
#undef TLVN_DECLARE_HANDLE
using HCURSOR = HICON;
using HMODULE = HINSTANCE;
using HGDIOBJ = void*;
using HGLOBAL = void*;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

constexpr COLORREF RGB(int red, int green, int blue)
{
    return static_cast<COLORREF>((red & 255) | (green & 255) << 8 | (blue & 255) << 16);
}
