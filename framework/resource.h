// Resources of whichever module of the process has them.

#pragma once

#include "framework/winapi.h"

namespace tlvn {

// The accelerator table of that name (or number, MAKEINTRESOURCE) of the program, or else of the
// first of the loaded modules that has one. Null when none has. Ends with
// DestroyAcceleratorTable.
TLVN_API HACCEL LoadAcceleratorResource(LPCWSTR name);

} // namespace tlvn
