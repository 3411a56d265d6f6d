#include "framework/time.h"

#include "platform/clock.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

constexpr INT64 kTime = 1360027230; // Tue, 5 Feb 2013 01:20:30 UTC

// Every letter; the name letters must be English whatever the system speaks.
TEST(Time, FormatsInUtc)
{
    const struct {
        INT64 time;
        const char* format;
        const char* expected;
    } cases[] = {
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
        {kTime, "", ""},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(CTime(c.time).FormatGmt(c.format), c.expected) << c.format;
    EXPECT_STREQ(CTime(kTime).FormatGmt(nullptr), "");
    EXPECT_STREQ(CTime(INT64_MAX).FormatGmt("%Y"), "");
    EXPECT_STREQ(CTime(INT64_MAX).Format("%Y"), "");
    // The last year whose distance from 1900 is an int, but not the year itself.
    constexpr INT64 kTooLate = 67768036191000000;
    EXPECT_STREQ(CTime(kTooLate).FormatGmt("%Y"), "");
    EXPECT_EQ(CTime(kTooLate).GetYear(), 0);
    EXPECT_EQ(CTime(INT_MIN, 1, 1, 0, 0, 0), CTime(-1));
    EXPECT_EQ(CTime(2013, INT_MIN, 1, 0, 0, 0), CTime(-1));
}

// Local fields lead back to the time in any zone, and carry over.
TEST(Time, LocalFields)
{
    const CTime time(2013, 2, 5, 10, 20, 30);
    EXPECT_EQ(time.GetYear(), 2013);
    EXPECT_EQ(time.GetMonth(), 2);
    EXPECT_EQ(time.GetDay(), 5);
    EXPECT_EQ(time.GetHour(), 10);
    EXPECT_EQ(time.GetMinute(), 20);
    EXPECT_EQ(time.GetSecond(), 30);
    EXPECT_EQ(time.GetDayOfWeek(), 3);
    EXPECT_STREQ(time.Format("%Y/%m/%d %H:%M:%S"), "2013/02/05 10:20:30");
    EXPECT_EQ(CTime(2013, 1, 36, 9, 80, 30), time);
    const int bias = tlvn::GetZoneBias(time.GetTime());
    EXPECT_EQ(time.GetTime(), kTime + 9 * 3600 + INT64{60} * bias);

    std::tm fields;
    ASSERT_EQ(time.GetLocalTm(&fields), &fields);
    EXPECT_EQ(fields.tm_hour, 10);
    EXPECT_NE(time.GetGmtTm(), nullptr);
    EXPECT_EQ(CTime(INT64_MAX).GetLocalTm(), nullptr);
    EXPECT_EQ(CTime(INT64_MAX).GetYear(), 0);
}

TEST(Time, ArithmeticAndFileTimes)
{
    const CTimeSpan span(1, 2, 3, 4);
    EXPECT_EQ(span.GetTotalSeconds(), 93784);
    EXPECT_EQ(span.GetDays(), 1);
    EXPECT_EQ(span.GetTotalHours(), 26);
    EXPECT_EQ(span.GetHours(), 2);
    EXPECT_EQ(span.GetMinutes(), 3);
    EXPECT_EQ(span.GetSeconds(), 4);
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
