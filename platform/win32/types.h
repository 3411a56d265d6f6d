// Windows: the system's own types.

#pragma once

#ifdef UNICODE
#error "TlvnMisc's CString is narrow: build its users without UNICODE, as for an MFC program in the multibyte character set"
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

// A macro of windows.h that would rename CTime::GetCurrentTime.
#undef GetCurrentTime

#define TW(literal) L##literal
