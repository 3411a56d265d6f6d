// The framework: base classes in the shape of the MFC, through the one header that the rest of
// the library and its users include.
//
// Built with TLVN_WITH_MFC, the real MFC takes their place: a program that links the MFC cannot
// have a second CString. The library uses only members that the MFC has, and the few helpers of
// its own at the end of this header.

#pragma once

#ifdef TLVN_WITH_MFC

#include <afxwin.h>

#include <afxtempl.h>

#else

#include "framework/arrays.h"
#include "framework/dc.h"
#include "framework/exception.h"
#include "framework/file.h"
#include "framework/file_exception.h"
#include "framework/gdi_object.h"
#include "framework/geometry.h"
#include "framework/menu.h"
#include "framework/object.h"
#include "framework/string.h"
#include "framework/time.h"
#include "framework/wnd.h"

#endif

#include "framework/guard_memory.h"
#include "framework/window_class.h"
