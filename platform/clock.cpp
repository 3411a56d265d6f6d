// The calendar in UTC, the same on every system.

#include "platform/clock.h"

#include <climits>

namespace tlvn {

namespace {

constexpr INT64 kSecondsPerDay = 86400;
// Days are counted within eras of 400 years that begin on 1 March, so that the leap day is the
// last of its year.
constexpr INT64 kDaysPerEra = 146097;
// Days from 0000-03-01 to 1970-01-01.
constexpr INT64 kDaysToEpoch = 719468;

constexpr INT64 FloorDivide(INT64 a, INT64 b)
{
    return a / b - (a % b < 0 ? 1 : 0);
}

// Days since 1970-01-01 of the first of a month, 0 being January.
constexpr INT64 DaysOfMonth(INT64 year, int month)
{
    const INT64 y = month < 2 ? year - 1 : year;
    const INT64 era = FloorDivide(y, 400);
    const INT64 yearOfEra = y - era * 400;
    const INT64 monthFromMarch = (month + 10) % 12;
    const INT64 dayOfYear = (153 * monthFromMarch + 2) / 5;
    return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear -
           kDaysToEpoch;
}

} // namespace

bool ToUtcTime(INT64 time, std::tm& utc)
{
    const INT64 day = FloorDivide(time, kSecondsPerDay);
    const int second = static_cast<int>((time % kSecondsPerDay + kSecondsPerDay) % kSecondsPerDay);

    const INT64 shifted = day + kDaysToEpoch;
    const INT64 era = FloorDivide(shifted, kDaysPerEra);
    const INT64 dayOfEra = shifted - era * kDaysPerEra;
    const INT64 yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const INT64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const INT64 monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int month = static_cast<int>((monthFromMarch + 2) % 12);
    const INT64 year = yearOfEra + era * 400 + (month < 2 ? 1 : 0);
    if (year - 1900 < INT_MIN || year > INT_MAX)
        return false;

    std::tm result{};
    result.tm_sec = second % 60;
    result.tm_min = second / 60 % 60;
    result.tm_hour = second / 3600;
    result.tm_mday = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    result.tm_mon = month;
    result.tm_year = static_cast<int>(year - 1900);
    const INT64 weekday = (day + 4) % 7; // 1970-01-01 was a Thursday
    result.tm_wday = static_cast<int>(weekday < 0 ? weekday + 7 : weekday);
    result.tm_yday = static_cast<int>(day - DaysOfMonth(year, 0));
    utc = result;
    return true;
}

INT64 FromUtcTime(std::tm utc)
{
    const INT64 year = INT64{utc.tm_year} + 1900 + FloorDivide(utc.tm_mon, 12);
    const int month = static_cast<int>(utc.tm_mon - FloorDivide(utc.tm_mon, 12) * 12);
    const INT64 day = DaysOfMonth(year, month) + utc.tm_mday - 1;
    return day * kSecondsPerDay + INT64{utc.tm_hour} * 3600 + INT64{utc.tm_min} * 60 + utc.tm_sec;
}

} // namespace tlvn
