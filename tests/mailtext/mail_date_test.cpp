#include "mailtext/mail_date.h"

#include "platform/clock.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

constexpr INT64 kTime = 1360027230; // 5 February 2013, 10:20:30 in Japan

INT64 Utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    return tlvn::FromUtcTime(fields);
}

INT64 Local(int year, int month, int day, int hour, int minute, int second)
{
    return CTime(year, month, day, hour, minute, second).GetTime();
}

} // namespace

TEST(MailDate, ReadsHeaders)
{
    const struct {
        const char* text;
        INT64 time;
    } cases[] = {
        {"Tue, 5 Feb 2013 10:20:30 +0900", kTime},
        {"5 Feb 13 10:20:30 JST", kTime},
        {"Feb 5 2013 10:20 GMT", Utc(2013, 2, 5, 10, 20)},
        {"nonsense, 5 fEB 2013 10:20:30 +0900 (JST)",
         kTime}, // the day of the week is not looked at
        {"5 2 2013 10:20:30 +0900", kTime},
        {"32 2 2013 10:20:30 +0900", -1}, // 32 is a month then
        {"Feb 32 2013 10:20:30", -1},
        {"0 Feb 2013 10:20:30", -1},
        {"5 Foo 2013 10:20:30", -1},
        {"5 February 2013 10:20:30", -1},
        {"5 13 2013 10:20:30", -1},
        {"\t5  Feb\r\n 2013 10:20:30\t+0900", kTime},
        // Years.
        {"5 Feb 113 10:20:30 JST", kTime},
        {"5 Feb 49 0:0:0", Utc(2049, 2, 5)},
        {"5 Feb 50 0:0:0", -1}, // 1950
        {"5 Feb 99 0:0:0", Utc(1999, 2, 5)},
        {"5 Feb 070 0:0:0", Utc(1970, 2, 5)},
        {"5 Feb 999 0:0:0", Utc(2899, 2, 5)},
        {"5 Feb 1000 0:0:0", -1},
        {"5 Feb 9999 0:0:0", Utc(9999, 2, 5)},
        {"31 Dec 9999 23:59:59 -2400", Utc(9999, 12, 31, 23, 59, 59) + 86400},
        {"5 Feb 10000 0:0:0", -1},
        {"5 Feb 99999999999999999999 0:0:0", -1},
        {"5 Feb -1 0:0:0", -1},
        {"19 Jan 2038 03:14:08 GMT", 2147483648},
        {"1 Jan 1970 0:0:0", 0},
        {"31 Dec 1969 23:59:59", -1},
        {"31 Dec 1969 23:59:59 -0100", 3599},
        {"1 Jan 1970 0:0:0 +0001", -1},
        // Leap days and fields out of range.
        {"29 Feb 2000 0:0:0", Utc(2000, 2, 29)},
        {"29 Feb 2100 0:0:0", -1},
        {"29 Feb 2013 0:0:0", -1},
        {"31 Apr 2013 0:0:0", -1},
        {"5 Feb 2013 24:0:0", -1},
        {"5 Feb 2013 10:60:0", -1},
        {"5 Feb 2013 10:0:60", -1},
        {"5 Feb 2013 -1:0:0", -1},
        // Texts cut short.
        {"5 Feb 2013 10", -1},
        {"5 Feb 2013 10:", -1},
        {"5 Feb 2013", -1},
        {"5 Feb", -1},
        {"5", -1},
        {",", -1},
        {"", -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetRFC822Time(c.text), c.time) << c.text;
    EXPECT_EQ(GetRFC822Time(nullptr), -1);
}

TEST(MailDate, KnowsZones)
{
    const struct {
        const char* zone;
        int minutes; // east of UTC
    } cases[] = {
        {"", 0},         {"+0900", 540}, {"-0330", -210}, {"+900", 540}, {"-330", -210},
        {"+09", 0},      {"+00900", 0},  {"+09:00", 0},   {"+", 0},      {"-0000", 0},
        {"+0975", 615},  {"+a900", 0},   {"UT", 0},       {"GMT", 0},    {"EST", -300},
        {"EDT", -240},   {"CST", -360},  {"CDT", -300},   {"MST", -420}, {"MDT", -360},
        {"PST", -480},   {"PDT", -420},  {"JST", 540},    {"jst", 0},    {"CET", 0},
        {"JST+0900", 0}, {"Z", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetRFC822Time((std::string("5 Feb 2013 10:20:30 ") + c.zone).c_str()),
                  Utc(2013, 2, 5, 10, 20, 30) - c.minutes * 60)
            << c.zone;
}

TEST(MailDate, ReadsTheFixedForm)
{
    EXPECT_EQ(GetAsciiTime("Tue Feb  5 10:20:30 2013"), Local(2013, 2, 5, 10, 20, 30));
    EXPECT_EQ(GetAsciiTime("x Jul 5 1:2:3 2013\n"), Local(2013, 7, 5, 1, 2, 3));
    EXPECT_EQ(GetAsciiTime("Sun Feb 31 25:0:0 2013"), Local(2013, 3, 4, 1, 0, 0)); // carried over
    for (const char* text :
         {"Tue feb  5 10:20:30 2013", "Tue Feb 0 10:20:30 2013", "Tue Feb 32 10:20:30 2013",
          "Tue Feb 5 10:20:30", "Tue Feb 5 10:20 2013", "Tue Feb 5", "Tue Feb", "Tue", "",
          "Tue Feb 5 10:20:30 1013", "Tue Feb 5 10:20:30 -999999999999"})
        EXPECT_EQ(GetAsciiTime(text), -1) << text;
    EXPECT_EQ(GetAsciiTime(nullptr), -1);
}

TEST(MailDate, TellsTheForms)
{
    const struct {
        const char* text;
        int form;
    } cases[] = {
        {"Tue, 5 Feb 2013 10:20:30 +0900", 2},
        {"tue, 5 Feb 2013", 0},
        {"5 Feb, 2013", 0},
        {"Tue Feb  5 10:20:30 2013", 1},
        {"5 Feb 2013", 2},
        {"tue Feb 5", 2},
        {"", 2},
        {nullptr, 0},
        {"Tu", 2},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetTimeTextFormat(c.text), c.form);
}

// In whatever zone the test runs.
TEST(MailDate, WritesWhatItReads)
{
    std::mt19937_64 random(8);
    for (int round = 0; round < 2000; ++round) {
        const INT64 time = 86400 + static_cast<INT64>(random() % (Utc(9999, 1, 1) - 86400));
        const CTime t(time);
        const std::string text = GetRFC822TimeText(t).GetString();
        ASSERT_EQ(GetRFC822Time(text.c_str()), time) << text;
        ASSERT_EQ(text.size(), 31u);
        ASSERT_EQ(text.substr(0, 5), t.Format("%a, ").GetString());
        const std::string imap = GetImap4TimeText(t).GetString();
        ASSERT_EQ(imap, text.substr(5, 2) + "-" + text.substr(8, 3) + "-" + text.substr(12));
    }
    EXPECT_EQ(GetRFC822TimeText(CTime(INT64_MAX)), "");
    EXPECT_EQ(GetImap4TimeText(CTime(INT64_MAX)), "");
}

TEST(MailDate, ShowsTimesInTheLocale)
{
    const CTime t(Local(2013, 2, 5, 10, 20, 30));
    char out[64];
    EXPECT_EQ(GetLocalTimeText(t, "yyyy'/'MM'/'dd", "HH':'mm", out, sizeof out), out);
    EXPECT_STREQ(out, "2013/02/05 10:20");
    GetLocalTimeText(t, "yyyy", "HH", out, 8); // fits exactly
    EXPECT_STREQ(out, "2013 10");
    GetLocalTimeText(t, "yyyy", "HH", out, 7);
    EXPECT_STREQ(out, " --");
    GetLocalTimeText(t, "yyyy", "HH", out, 3);
    EXPECT_STREQ(out, " -");
    GetLocalTimeText(CTime(-1), nullptr, nullptr, out, sizeof out);
    EXPECT_STREQ(out, " --");
    GetLocalDateText(CTime(-1), out, sizeof out);
    EXPECT_STREQ(out, " --");
    // A formatter would show the last date it knows instead.
    GetLocalDateText(CTime(67767976233532799), out, sizeof out);
    EXPECT_STREQ(out, " --");
    GetLocalDateText(t, out, sizeof out);
    EXPECT_NE(std::string(out).find('5'), std::string::npos) << out;
    GetLocalTimeText(t, nullptr, nullptr, out, sizeof out);
    EXPECT_NE(std::string(out).find("20"), std::string::npos) << out;
    EXPECT_EQ(std::string(out).find('?'), std::string::npos) << out;
    EXPECT_EQ(GetLocalDateText(t, nullptr, 10), nullptr);
    out[0] = 'x';
    GetLocalDateText(t, out, 0);
    EXPECT_EQ(out[0], 'x');
}

TEST(MailDate, ReadsAndWritesPlainDates)
{
    CString text("left over");
    EXPECT_STREQ(GetDateString(CTime(Local(2013, 2, 5, 10, 20, 30)), text), "2013/02/05");
    for (const INT64 none : {INT64{0}, INT64{-1}, INT64_MAX})
        EXPECT_STREQ(GetDateString(CTime(none), text), "");

    const struct {
        const char* text;
        INT64 time;
    } cases[] = {
        {"2013/02/05", Local(2013, 2, 5, 23, 0, 0)},
        {"2013/2\n5/x", Local(2013, 2, 5, 23, 0, 0)},
        {"2013/2/29", Local(2013, 3, 1, 23, 0, 0)},
        {"2013/2", 0},
        {"", 0},
        {"x/y/z", 0},
        {"1969/1/1", 0},
        {"999999999999/1/1", 0},
    };
    for (const auto& c : cases) {
        CTime t(99);
        EXPECT_EQ(GetStringDate(c.text, t), c.time) << c.text;
        EXPECT_EQ(t.GetTime(), c.time) << c.text;
    }
    CTime t(99);
    EXPECT_EQ(GetStringDate(nullptr, t), 0);
    EXPECT_EQ(t.GetTime(), 0);
}

TEST(MailDate, DaysBeginAtFour)
{
    const INT64 day = Local(2013, 2, 5, 4, 0, 0);
    const struct {
        INT64 last;
        int days;
        INT64 now;
        bool passed;
    } cases[] = {
        {day, 1, day + 86399, false},
        {day, 1, day + 86400, true},
        {day + 86399, 1, day + 86400, true}, // 03:59:59 counts for the day before
        {day - 1, 1, day, true},
        {day - 1, 2, day, false},
        {day, 2, day + 2 * 86400, true},
        {day, 0, day, true},
        {day, 1, day - 100 * 86400, false}, // the clock was put back
        {-1, 1, day, true},
        {-100, 1, day, true},
        {14399, INT_MAX, day, true},
        {14400, INT_MAX, day, false},
        {INT64_MAX, 1, day, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tlvn::HasDayIntervalPassed(c.last, c.days, c.now), c.passed)
            << c.last - day << ' ' << c.days << ' ' << c.now - day;
    EXPECT_EQ(CheckDayInterval(tlvn::GetSystemTime(), 2), 0);
    EXPECT_EQ(CheckDayInterval(tlvn::GetSystemTime() - 3 * 86400, 2), 1);
}
