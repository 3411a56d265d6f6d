// Clock and time zone.
//
// Times are seconds since 1970-01-01 00:00 UTC; broken-down times are struct tm of the C
// standard, in local time or UTC. The C locale is not consulted.

#pragma once

#include "platform/types.h"

#include <ctime>

namespace tlvn {

TLVN_API INT64 GetSystemTime();
TLVN_API DWORD GetTickMilliseconds(); // since an arbitrary start; wraps after 49.7 days

// False when the year does not fit (the result is then unchanged).
TLVN_API bool ToLocalTime(INT64 time, std::tm& local);
TLVN_API bool ToUtcTime(INT64 time, std::tm& utc);

// Local fields, normalised, to a time; -1 when not representable. tm_isdst below 0 lets the
// zone's rules decide on daylight saving.
TLVN_API INT64 FromLocalTime(std::tm local);
// UTC fields, normalised, to a time.
TLVN_API INT64 FromUtcTime(std::tm utc);

// Minutes west of UTC of the local zone at `time`, daylight saving included; 0 when the zone
// is not known.
TLVN_API int GetZoneBias(INT64 time);

} // namespace tlvn
