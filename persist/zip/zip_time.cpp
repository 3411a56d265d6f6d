#include "persist/zip/zip_time.h"

#include "platform/clock.h"

#include <chrono>

namespace tlvn {

namespace {

constexpr INT64 kSecondsFrom1601 = 11644473600; // to 1970
constexpr DWORD kFirstDosTime = 0x00210000;     // 1980-01-01 00:00:00
constexpr DWORD kLastDosTime = 0xFF9FBF7D;      // 2107-12-31 23:59:58

} // namespace

FILETIME ToFileTime(INT64 time)
{
    if (time < -kSecondsFrom1601)
        return {};
    const UINT64 ticks = static_cast<UINT64>(time + kSecondsFrom1601) * 10000000;
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

FILETIME DosToFileTime(DWORD dos)
{
    std::tm local = {};
    local.tm_year = static_cast<int>(dos >> 25) + 80;
    local.tm_mon = static_cast<int>(dos >> 21 & 15) - 1;
    local.tm_mday = static_cast<int>(dos >> 16 & 31);
    local.tm_hour = static_cast<int>(dos >> 11 & 31);
    local.tm_min = static_cast<int>(dos >> 5 & 63);
    local.tm_sec = static_cast<int>(dos & 31) * 2;
    local.tm_isdst = -1;
    const std::chrono::year_month_day date(std::chrono::year(local.tm_year + 1900),
                                           std::chrono::month(dos >> 21 & 15),
                                           std::chrono::day(dos >> 16 & 31));
    const bool valid = date.ok() && local.tm_hour < 24 && local.tm_min < 60 && local.tm_sec < 60;
    const INT64 time = valid ? FromLocalTime(local) : -1;
    return time < 0 ? FILETIME{} : ToFileTime(time);
}

DWORD ToDosTime(INT64 time)
{
    std::tm local = {};
    if (!ToLocalTime(time, local) || local.tm_year < 80)
        return kFirstDosTime;
    if (local.tm_year > 207)
        return kLastDosTime;
    return static_cast<DWORD>(local.tm_year - 80) << 25 |
           static_cast<DWORD>(local.tm_mon + 1) << 21 | static_cast<DWORD>(local.tm_mday) << 16 |
           static_cast<DWORD>(local.tm_hour) << 11 | static_cast<DWORD>(local.tm_min) << 5 |
           static_cast<DWORD>(local.tm_sec) / 2;
}

void ApplyZipTimes(const BYTE* extra, unsigned size, FILETIME& modified, FILETIME& accessed,
                   FILETIME& created)
{
    const ZipExtra field = FindZipExtra(extra, size, kZipTimeExtra);
    if (field.size == 0)
        return;
    const unsigned flags = field.data[0];
    unsigned position = 1;
    FILETIME* const times[] = {&modified, &accessed, &created};
    for (unsigned i = 0; i < 3; ++i) {
        if ((flags >> i & 1) == 0)
            continue;
        if (field.size - position < 4)
            return;
        *times[i] = ToFileTime(static_cast<LONG>(GetZip32(field.data + position)));
        position += 4;
    }
}

} // namespace tlvn
