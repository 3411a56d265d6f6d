#include "framework/time.h"

#include "platform/clock.h"
#include "tests/support/test.h"

namespace {

constexpr INT64 kTime = 1360027230; // Tue, 5 Feb 2013 01:20:30 UTC

// Every letter; the name letters must be English whatever the system speaks.
TEST(Time, FormatsInUtc)
{
    // The last year whose distance from 1900 is an int, but not the year itself.
    constexpr INT64 kTooLate = 67768036191000000;
    const std::tuple<INT64, const char*, const char*> cases[] = {
        {kTime, "%a %A %b %B", "Tue Tuesday Feb February"},
        {kTime, "%d %H %I %j %m %M %p %S %w %y %Y", "05 01 01 036 02 20 AM 30 2 13 2013"},
        {kTime, "%#d %#H %#j %#m %#M", "5 1 36 2 20"},
        {kTime, "%c|%x|%X", "Tue Feb  5 01:20:30 2013|02/05/13|01:20:30"},
        {kTime, "%U %W %z %Z %%", "05 05 +0000 +0000 %"},
        {kTime, "100% %q %", "100% %q %"},
        {0, "%I %p", "12 AM"},
        {43200, "%I %p", "12 PM"},
        {1356998400, "%U %W", "00 00"}, // Tue, 1 Jan 2013
        {1357430400, "%U %W", "01 00"}, // Sun, 6 Jan 2013
        {1357516800, "%U %W", "01 01"}, // Mon, 7 Jan 2013
        {-1, "%Y/%m/%d %H:%M:%S", "1969/12/31 23:59:59"},
        {INT64_MAX, "%Y", ""},
        {INT64_MIN, "%Y", ""},
        {kTooLate, "%Y", ""},
    };
    for (const auto& [time, format, expected] : cases)
        EXPECT_STREQ(CTime(time).FormatGmt(format), expected) << format;
    EXPECT_STREQ(CTime(kTime).FormatGmt(nullptr), "");
    EXPECT_STREQ(CTime(INT64_MAX).Format("%Y"), "");
    EXPECT_EQ(CTime(kTooLate).GetYear(), 0);
    EXPECT_EQ(CTime(INT_MIN, 1, 1, 0, 0, 0), CTime(-1));
    EXPECT_EQ(CTime(2013, INT_MIN, 1, 0, 0, 0), CTime(-1));
}

// Local fields lead back to the time in any zone, and carry over.
TEST(Time, LocalFields)
{
    const CTime time(2013, 2, 5, 10, 20, 30);
    const int fieldsOfTime[] = {time.GetYear(),     time.GetMonth(),  time.GetDay(),
                                time.GetHour(),     time.GetMinute(), time.GetSecond(),
                                time.GetDayOfWeek()};
    EXPECT_EQ(testing::PrintToString(fieldsOfTime), "{ 2013, 2, 5, 10, 20, 30, 3 }");
    EXPECT_STREQ(time.Format("%Y/%m/%d %H:%M:%S"), "2013/02/05 10:20:30");
    EXPECT_EQ(CTime(2013, 1, 36, 9, 80, 30), time);
    const int bias = tlvn::GetZoneBias(time.GetTime());
    EXPECT_EQ(time.GetTime(), kTime + 9 * 3600 + INT64{60} * bias);

    std::tm fields;
    ASSERT_EQ(time.GetLocalTm(&fields), &fields);
    EXPECT_EQ(fields.tm_hour, 10);
    EXPECT_EQ(CTime(INT64_MAX).GetLocalTm(), nullptr);
}

TEST(Time, ArithmeticAndFileTimes)
{
    const CTimeSpan span(1, 2, 3, 4);
    EXPECT_EQ(span.GetTotalSeconds(), 93784);
    EXPECT_EQ(span.GetTotalHours(), 26);
    EXPECT_STREQ(span.Format("%D %H:%M:%S %% %x %"), "1 02:03:04 % %x %");
    CTime time(kTime);
    time += span;
    EXPECT_EQ(time - CTime(kTime), span);
    EXPECT_TRUE(time > CTime(kTime) && CTime(kTime) == time - span && CTimeSpan(-1) < CTimeSpan());
    // 1970 in ticks since 1601, and one tick less.
    EXPECT_EQ(CTime(FILETIME{0xD53E8000, 0x019DB1DE}).GetTime(), 0);
    EXPECT_EQ(CTime(FILETIME{0xD53E7FFF, 0x019DB1DE}).GetTime(), -1);
    EXPECT_LE(tlvn::GetSystemTime() - CTime::GetCurrentTime().GetTime(), 5);
}

} // namespace
