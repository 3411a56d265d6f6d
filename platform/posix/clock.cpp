#include "platform/clock.h"

#include <climits>
#include <ctime>

namespace tlvn {

INT64 GetSystemTime()
{
    return std::time(nullptr);
}

DWORD GetTickMilliseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<DWORD>(now.tv_sec * 1000 + now.tv_nsec / 1'000'000);
}

bool ToLocalTime(INT64 time, std::tm& local)
{
    tzset();
    const std::time_t seconds = time;
    std::tm result{};
    if (localtime_r(&seconds, &result) == nullptr)
        return false;
    if (result.tm_year > INT_MAX - 1900)
        return false;
    local = result;
    return true;
}

INT64 FromLocalTime(std::tm local)
{
    return std::mktime(&local);
}

int GetZoneBias(INT64 time)
{
    std::tm local;
    return ToLocalTime(time, local) ? static_cast<int>(-local.tm_gmtoff / 60) : 0;
}

} // namespace tlvn
