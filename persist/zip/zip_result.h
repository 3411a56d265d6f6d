// Result codes of the zip archives, and their messages.

#pragma once

#include "platform/types.h"

namespace tlvn {

enum ZipResult : DWORD {
    kZipOk = 0,
    kZipNoDuplicate = 0x100,
    kZipNoFile = 0x200,
    kZipNoMemory = 0x300,
    kZipWriteFailed = 0x400,
    kZipNotFound = 0x500,
    kZipMore = 0x600,
    kZipCorrupt = 0x700,
    kZipReadFailed = 0x800,
    kZipPassword = 0x1000,
    kZipArguments = 0x10000,
    kZipNotMemory = 0x20000,
    kZipMemorySize = 0x30000,
    kZipFailedBefore = 0x40000,
    kZipEnded = 0x50000,
    kZipMissized = 0x60000,
    kZipPartlyUnzipped = 0x70000,
    kZipWrongKind = 0x80000,
    kZipNotInitialised = 0x1000000,
    kZipSeek = 0x2000000,
    kZipNoChange = 0x4000000,
    kZipData = 0x5000000,
};

// Number of the message in the string table; an unknown code has one of its own.
TLVN_API UINT ZipMessageId(DWORD result);

// The result of the last operation of any archive in the process. Of use to a single thread only.
TLVN_API DWORD GetLastZipResult();
void SetLastZipResult(DWORD result);

} // namespace tlvn
