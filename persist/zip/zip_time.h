// The times of zip entries: DOS date and time in the local zone, and the "extended timestamp"
// extra field with seconds since 1970 in UTC. Times here are such seconds.

#pragma once

#include "persist/zip/zip_format.h"

namespace tlvn {

// Zero for times before 1601.
FILETIME ToFileTime(INT64 time);

// A DOS date (high half) and time (low half) as UTC; zero when the fields make no date.
FILETIME DosToFileTime(DWORD dos);
// The reverse; times outside 1980 to 2107 become the first or the last one.
DWORD ToDosTime(INT64 time);

// Replaces those of the times that the extra area's timestamp field carries. In a central header
// the field carries only the modification, whatever its flags say.
void ApplyZipTimes(const BYTE* extra, unsigned size, FILETIME& modified, FILETIME& accessed,
                   FILETIME& created);

} // namespace tlvn
