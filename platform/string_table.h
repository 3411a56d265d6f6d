// The library's messages, by number. The texts are those of resources/strings.def.

#pragma once

#include "platform/nls.h"

namespace tlvn {

// The message with that number, or an empty view when there is none. Valid for the life of
// the process.
TLVN_API WStringView FindMessage(UINT id);

} // namespace tlvn
