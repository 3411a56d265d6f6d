// The system's own list of MIME charset names.

#pragma once

#include "platform/types.h"

namespace tlvn {

// The code page in which mail so labelled is read ("ISO-2022-JP" gives 50220), or 0 when the
// system does not know the name or has no such list. On Windows the component system has to be
// initialised on the calling thread; POSIX has no such list.
TLVN_API UINT AskCharsetCodePage(const char* name);

} // namespace tlvn
