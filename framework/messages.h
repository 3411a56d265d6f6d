// Numbers of the framework's messages in resources/strings.def.

#pragma once

#include "platform/types.h"

namespace tlvn {

constexpr UINT kMessageOutOfMemory = 100;
constexpr UINT kMessageNotSupported = 101;
constexpr UINT kMessageInvalidArgument = 102;
// The name given to a file that has none.
constexpr UINT kMessageUnnamedFile = 103;
// Followed by one message for each cause of CFileException and of CArchiveException, in the
// order of their values.
constexpr UINT kMessageFileCause = 110;
constexpr UINT kMessageArchiveCause = 130;

} // namespace tlvn
