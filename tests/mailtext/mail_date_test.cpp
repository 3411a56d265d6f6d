#include "mailtext/mail_date.h"

#include "platform/clock.h"
#include "tests/support/test.h"

namespace {

constexpr INT64 kTime = 1360027230; // 5 February 2013, 10:20:30 in Japan

INT64 Utc(int year, int month, int day, int seconds = 0)
{
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    return tlvn::FromUtcTime(fields) + seconds;
}

INT64 Local(int year, int month, int day, int hour, int minute, int second)
{
    return CTime(year, month, day, hour, minute, second).GetTime();
}

} // namespace

// The day of the week is not looked at; years of two and three digits; zones beyond the ends.
TEST(MailDate, ReadsHeaders)
{
    const std::pair<const char*, INT64> cases[] = {
        {"Tue, 5 Feb 2013 10:20:30 +0900", kTime},
        {"Feb 5 2013 10:20 GMT", Utc(2013, 2, 5, 37200)},
        {"nonsense, 5 fEB 13 10:20:30 +0900 (JST)", kTime},
        {"\t5  2\r\n 2013 10:20:30\t+0900", kTime},
        {"5 Feb 113 10:20:30 JST", kTime},
        {"5 Feb 49 0:0:0", Utc(2049, 2, 5)},
        {"5 Feb 070 0:0:0", Utc(1970, 2, 5)},
        {"5 Feb 999 0:0:0", Utc(2899, 2, 5)},
        {"31 Dec 9999 23:59:59 -2400", Utc(9999, 12, 31, 2 * 86400 - 1)},
        {"19 Jan 2038 03:14:08 GMT", 2147483648},
        {"1 Jan 1970 0:0:0", 0},
        {"31 Dec 1969 23:59:59 -0100", 3599},
        {"29 Feb 2000 0:0:0", Utc(2000, 2, 29)},
    };
    for (const auto& [text, time] : cases)
        EXPECT_EQ(GetRFC822Time(text), time) << text;

    // Days and months that are none (32 is a month), years and times out of range, texts cut short.
    for (const char* date :
         {"32 2 2013", "Feb 32 2013", "0 Feb 2013", "5 February 2013", "5 13 2013", "5 Feb 50",
          "5 Feb 1000", "5 Feb 10000", "5 Feb 9999999999", "5 Feb -1", "31 Dec 1969", "29 Feb 2100",
          "31 Apr 2013", "", ","})
        EXPECT_EQ(GetRFC822Time((std::string(date) + " 0:0:0").c_str()), -1) << date;
    for (const char* time : {"24:0:0", "10:60:0", "10:0:60", "-1:0:0", "10:", ""})
        EXPECT_EQ(GetRFC822Time((std::string("5 Feb 2013 ") + time).c_str()), -1) << time;
    EXPECT_EQ(GetRFC822Time("1 Jan 1970 0:0:0 +0001"), -1);
    EXPECT_EQ(GetRFC822Time(nullptr), -1);
}

TEST(MailDate, KnowsZones)
{
    const std::pair<const char*, int> cases[] = {
        // Minutes east of UTC.
        {"", 0},       {"+0900", 540}, {"-0330", -210}, {"+900", 540}, {"+09", 0},    {"+00900", 0},
        {"+09:00", 0}, {"+", 0},       {"+0975", 615},  {"+a900", 0},  {"EST", -300}, {"EDT", -240},
        {"CST", -360}, {"CDT", -300},  {"MST", -420},   {"MDT", -360}, {"PST", -480}, {"PDT", -420},
        {"JST", 540},  {"jst", 0},     {"JST+0900", 0}, {"Z", 0},
    };
    for (const auto& [zone, minutes] : cases)
        EXPECT_EQ(GetRFC822Time((std::string("5 Feb 2013 10:20:30 ") + zone).c_str()),
                  Utc(2013, 2, 5, 37230 - minutes * 60))
            << zone;
}

TEST(MailDate, ReadsTheFixedForm)
{
    EXPECT_EQ(GetAsciiTime("Tue Feb  5 10:20:30 2013"), Local(2013, 2, 5, 10, 20, 30));
    EXPECT_EQ(GetAsciiTime("Sun Feb 31 25:0:0 2013"), Local(2013, 3, 4, 1, 0, 0)); // carried over
    for (const char* text :
         {"Tue feb  5 10:20:30 2013", "Tue Feb 0 10:20:30 2013", "Tue Feb 32 10:20:30 2013",
          "Tue Feb 5 10:20:30", "Tue Feb 5 10:20 2013", "Tue", "Tue Feb 5 10:20:30 1013",
          "Tue Feb 5 10:20:30 -999999999999"})
        EXPECT_EQ(GetAsciiTime(text), -1) << text;
    EXPECT_EQ(GetAsciiTime(nullptr), -1);
}

TEST(MailDate, TellsTheForms)
{
    const std::pair<const char*, int> cases[] = {
        {"Tue, 5 Feb 2013 10:20:30 +0900", 2}, {"tue, 5 Feb 2013", 0}, {"5 Feb, 2013", 0},
        {"Tue Feb  5 10:20:30 2013", 1},       {"tue Feb 5", 2},       {nullptr, 0},
    };
    for (const auto& [text, form] : cases)
        EXPECT_EQ(GetTimeTextFormat(text), form);
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
        ASSERT_EQ(text.substr(0, 5), t.Format("%a, ").GetString());
        const std::string imap = GetImap4TimeText(t).GetString();
        ASSERT_EQ(imap, text.substr(5, 2) + "-" + text.substr(8, 3) + "-" + text.substr(12));
    }
    EXPECT_EQ(GetRFC822TimeText(CTime(INT64_MAX)), "");
}

// Every directive; quoted letters are none. Then the room of the text: it fits exactly, or not.
TEST(MailDate, ShowsTimesInTheLocale)
{
    const std::tuple<const char*, const char*, int, const char*> cases[] = {
        {"yyyy'/'MM'/'dd", "HH':'mm':'ss", 64, "2013/02/05 04:05:06"},
        {"d.M.yy", "H:m:s", 64, "5.2.13 4:5:6"},
        {"'d''M'd", "hh'h'mm", 64, "d'M5 04h05"},
        {"yyyy", "HH", 8, "2013 04"},
        {"yyyy", "HH", 7, " --"},
        {"yyyy", "HH", 3, " -"},
    };
    const CTime t(Local(2013, 2, 5, 4, 5, 6));
    char out[64];
    for (const auto& [date, time, size, text] : cases) {
        EXPECT_EQ(GetLocalTimeText(t, date, time, out, size), out);
        EXPECT_STREQ(out, text);
    }
    // Of the second a formatter would show the last date it knows instead.
    for (const INT64 none : {INT64{-1}, INT64{67767976233532799}}) {
        GetLocalDateText(CTime(none), out, sizeof out);
        EXPECT_STREQ(out, " --");
    }
    GetLocalTimeText(t, nullptr, nullptr, out, sizeof out); // as the locale likes them
    EXPECT_GE(std::count(out, out + std::strlen(out), '5'), 2) << out;
    EXPECT_EQ(GetLocalDateText(t, nullptr, 10), nullptr);
}

TEST(MailDate, ReadsAndWritesPlainDates)
{
    CString text("left over");
    EXPECT_STREQ(GetDateString(CTime(Local(2013, 2, 5, 10, 20, 30)), text), "2013/02/05");
    for (const INT64 none : {INT64{0}, INT64{-1}, INT64_MAX})
        EXPECT_STREQ(GetDateString(CTime(none), text), "");

    const std::pair<const char*, INT64> cases[] = {
        {"2013/2\n5/x", Local(2013, 2, 5, 23, 0, 0)},
        {"2013/2/29", Local(2013, 3, 1, 23, 0, 0)},
        {"2013/2", 0},
        {"", 0},
        {"1969/1/1", 0},
        {"999999999999/1/1", 0},
        {nullptr, 0},
    };
    for (const auto& [date, time] : cases) {
        CTime t(99);
        EXPECT_EQ(GetStringDate(date, t), time) << time;
        EXPECT_EQ(t.GetTime(), time) << time;
    }
}

TEST(MailDate, DaysBeginAtFour)
{
    const INT64 day = Local(2013, 2, 5, 4, 0, 0);
    const std::tuple<INT64, int, INT64, bool> cases[] = {
        {day, 1, day + 86399, false},
        {day, 1, day + 86400, true},
        {day - 1, 1, day, true}, // 03:59:59 counts for the day before
        {day - 1, 2, day, false},
        {day, 0, day, true},
        {day, 1, day - 100 * 86400, false}, // the clock was put back
        {-100, 1, day, true},
        {14400, INT_MAX, day, false},
        {INT64_MAX, 1, day, true},
    };
    for (const auto& [last, days, now, passed] : cases)
        EXPECT_EQ(tlvn::HasDayIntervalPassed(last, days, now), passed) << last << ' ' << days;
    EXPECT_EQ(CheckDayInterval(tlvn::GetSystemTime() - 3 * 86400, 2), 1);
}
