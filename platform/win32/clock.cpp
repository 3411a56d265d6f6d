#include "platform/clock.h"

namespace tlvn {

namespace {

constexpr INT64 kTicksPerSecond = 10'000'000;      // of a FILETIME
constexpr INT64 kEpochInFileTime = 11'644'473'600; // seconds from 1601 to 1970
constexpr INT64 kLastTime = 910'670'515'199;       // the last second of the year 30827

bool ToSystemTime(INT64 time, SYSTEMTIME& result)
{
    if (time < -kEpochInFileTime || time > kLastTime)
        return false;
    const auto ticks = static_cast<UINT64>((time + kEpochInFileTime) * kTicksPerSecond);
    const FILETIME fileTime = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    return FileTimeToSystemTime(&fileTime, &result) != FALSE;
}

INT64 FromSystemTime(const SYSTEMTIME& time)
{
    std::tm fields{};
    fields.tm_year = time.wYear - 1900;
    fields.tm_mon = time.wMonth - 1;
    fields.tm_mday = time.wDay;
    fields.tm_hour = time.wHour;
    fields.tm_min = time.wMinute;
    fields.tm_sec = time.wSecond;
    return FromUtcTime(fields);
}

// The local clock's reading at `time`, as if it were UTC.
bool ShiftToLocal(INT64 time, INT64& shifted)
{
    SYSTEMTIME utc;
    SYSTEMTIME local;
    if (!ToSystemTime(time, utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local))
        return false;
    shifted = FromSystemTime(local);
    return true;
}

struct Zone {
    bool known = false;
    bool hasDaylight = false;
    LONG standardBias = 0; // minutes west of UTC
    LONG daylightBias = 0;
};

Zone GetZone()
{
    TIME_ZONE_INFORMATION information;
    Zone zone;
    if (GetTimeZoneInformation(&information) == TIME_ZONE_ID_INVALID)
        return zone;
    zone.known = true;
    zone.hasDaylight = information.DaylightDate.wMonth != 0;
    zone.standardBias =
        information.Bias + (information.StandardDate.wMonth != 0 ? information.StandardBias : 0);
    zone.daylightBias = information.Bias + information.DaylightBias;
    return zone;
}

} // namespace

INT64 GetSystemTime()
{
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const UINT64 ticks = UINT64{now.dwHighDateTime} << 32 | now.dwLowDateTime;
    return static_cast<INT64>(ticks) / kTicksPerSecond - kEpochInFileTime;
}

DWORD GetTickMilliseconds()
{
    return GetTickCount();
}

bool ToLocalTime(INT64 time, std::tm& local)
{
    INT64 shifted;
    if (!ShiftToLocal(time, shifted) || !ToUtcTime(shifted, local))
        return false;
    const Zone zone = GetZone();
    local.tm_isdst = zone.hasDaylight && zone.daylightBias != zone.standardBias &&
                     (time - shifted) / 60 == zone.daylightBias;
    return true;
}

INT64 FromLocalTime(std::tm local)
{
    const INT64 shifted = FromUtcTime(local);
    SYSTEMTIME fields;
    if (!ToSystemTime(shifted, fields))
        return -1;
    if (local.tm_isdst >= 0) {
        const Zone zone = GetZone();
        const bool daylight = local.tm_isdst > 0 && zone.hasDaylight;
        return shifted + INT64{60} * (daylight ? zone.daylightBias : zone.standardBias);
    }
    SYSTEMTIME utc;
    if (!TzSpecificLocalTimeToSystemTime(nullptr, &fields, &utc))
        return -1;
    return FromSystemTime(utc);
}

int GetZoneBias(INT64 time)
{
    INT64 shifted;
    return ShiftToLocal(time, shifted) ? static_cast<int>((time - shifted) / 60) : 0;
}

} // namespace tlvn
