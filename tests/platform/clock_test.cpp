#include "platform/clock.h"
#include "tests/support/test.h"

namespace tlvn {
namespace {

std::tm Fields(int year, int month, int day, int hour, int minute, int second)
{
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    return fields;
}

// No leap year, and fields that carry over.
TEST(Clock, CountsSecondsOfTheCalendar)
{
    constexpr INT64 kTime = 1360027230;
    EXPECT_EQ(FromUtcTime(Fields(1900, 2, 29, 0, 0, 0)), -2203891200); // 1 March
    EXPECT_EQ(FromUtcTime(Fields(2012, 14, 5, 1, 20, 30)), kTime);
    EXPECT_EQ(FromUtcTime(Fields(2013, 3, -23, 1, 20, 30)), kTime);
    EXPECT_EQ(FromUtcTime(Fields(2013, 2, 4, 24, 80, 30)), kTime);
    EXPECT_EQ(FromUtcTime(Fields(2014, -10, 5, 1, 20, 30)), kTime);
}

// Steps through the days of 800 years with a calendar that counts one day at a time.
TEST(Clock, BreaksDownEveryDay)
{
    constexpr int kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int year = 1600, month = 0, day = 1, weekday = 6, yearday = 0;
    for (INT64 time = -11676096000; year < 2400; time += 86400) {
        std::tm utc;
        ASSERT_TRUE(ToUtcTime(time + 86399, utc));
        ASSERT_EQ(std::tuple(utc.tm_year + 1900, utc.tm_mon, utc.tm_mday, utc.tm_wday, utc.tm_yday),
                  std::tuple(year, month, day, weekday, yearday));
        ASSERT_EQ(utc.tm_hour * 3600 + utc.tm_min * 60 + utc.tm_sec, 86399);
        ASSERT_EQ(FromUtcTime(utc), time + 86399);

        const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        weekday = (weekday + 1) % 7;
        yearday++;
        if (++day <= kLengths[month] + (month == 1 && leap))
            continue;
        day = 1;
        if (++month == 12) {
            month = 0;
            yearday = 0;
            year++;
        }
    }
}

// Whatever the zone: the local clock is the bias west of UTC, and leads back to the time.
TEST(Clock, LocalTimeAgreesWithTheBias)
{
    std::mt19937_64 random(3);
    for (int i = 0; i < 2000; i++) {
        const INT64 time = static_cast<INT64>(random() % 4'000'000'000);
        std::tm local;
        ASSERT_TRUE(ToLocalTime(time, local));
        ASSERT_EQ(FromUtcTime(local), time - INT64{60} * GetZoneBias(time));
        ASSERT_EQ(FromLocalTime(local), time);
    }
    EXPECT_GT(GetSystemTime(), 1'700'000'000);
}

} // namespace
} // namespace tlvn
