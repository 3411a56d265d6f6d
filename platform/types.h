// Integer, handle and text types with the Windows names and sizes on every system.
//
// WCHAR is one UTF-16 unit. A literal of it is written TW("...") or TW('x'). TLVN_API marks what
// the library exports.

#pragma once

#ifdef _WIN32
#include "platform/win32/export.h"
#include "platform/win32/types.h"
#else
#include "platform/posix/export.h"
#include "platform/posix/types.h"
#endif

#include <cstddef>
#include <cstdint>

static_assert(sizeof(WCHAR) == 2 && sizeof(DWORD) == 4 && sizeof(LONG) == 4 && sizeof(INT64) == 8);
