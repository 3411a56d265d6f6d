// Making a file name of any text.

#pragma once

#include "framework/framework.h"

namespace tlvn {

// Replaces in place what a Windows file name cannot hold: control characters and "*:<>?|, and
// unless `path` is set the separators \ and / too. The replacement is `replacement`, or "_" when
// that is 0. Text is in the multibyte code page; double-byte characters stay. What a name may not
// be as a whole (a device, a dot at its end) is left alone.
void SuitToFileName(CStringA& name, char replacement, int path);

} // namespace tlvn
