// Dates of mails in zones that are set for the test, which the native system allows.

#include "mailtext/mail_date.h"

#include "tests/support/test.h"

#include <clocale>
#include <cstdlib>

namespace {

class ZoneScope {
public:
    explicit ZoneScope(const char* zone) { setenv("TZ", zone, 1); }
    ~ZoneScope()
    {
        if (m_hadZone)
            setenv("TZ", m_previous.c_str(), 1);
        else
            unsetenv("TZ");
    }

private:
    bool m_hadZone = std::getenv("TZ") != nullptr;
    std::string m_previous = m_hadZone ? std::getenv("TZ") : "";
};

// The rules of the zones are written out: no data of the system's is needed.
constexpr char kTokyo[] = "JST-9";
constexpr char kNewYork[] = "EST5EDT,M3.2.0,M11.1.0";
constexpr char kNewfoundland[] = "NST3:30NDT,M3.2.0,M11.1.0";
constexpr char kAdelaide[] = "ACST-9:30ACDT,M10.1.0,M4.1.0/3";

} // namespace

// Both sides of each change, east and west, half hours.
TEST(MailDateZones, AreWritten)
{
    const std::tuple<const char*, INT64, const char*> cases[] = {
        {"UTC0", 1360027230, "Tue, 05 Feb 2013 01:20:30 +0000"},
        {kTokyo, 1360027230, "Tue, 05 Feb 2013 10:20:30 +0900"},
        {kNewYork, 1362898799, "Sun, 10 Mar 2013 01:59:59 -0500"},
        {kNewYork, 1362898800, "Sun, 10 Mar 2013 03:00:00 -0400"},
        {kNewYork, 1383458399, "Sun, 03 Nov 2013 01:59:59 -0400"},
        {kNewYork, 1383458400, "Sun, 03 Nov 2013 01:00:00 -0500"},
        {kNewfoundland, 1360027230, "Mon, 04 Feb 2013 21:50:30 -0330"},
        {kNewfoundland, 1373000000, "Fri, 05 Jul 2013 02:23:20 -0230"},
        {kAdelaide, 1360027230, "Tue, 05 Feb 2013 11:50:30 +1030"},
        {kAdelaide, 1373000000, "Fri, 05 Jul 2013 14:23:20 +0930"},
    };
    // No locale of the C library has a say.
    for (const char* locale : {"ja_JP.UTF-8", "de_DE.UTF-8", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, locale) != nullptr)
            break;
    }
    for (const auto& [zone, time, text] : cases) {
        const ZoneScope scope(zone);
        EXPECT_EQ(GetRFC822TimeText(CTime(time)), text);
        EXPECT_EQ(GetRFC822Time(text), time);
        std::string imap(text + 5);
        imap[2] = imap[6] = '-';
        EXPECT_EQ(GetImap4TimeText(CTime(time)), imap.c_str());
    }
    std::setlocale(LC_ALL, "C");
}

// A day that a change makes an hour longer or shorter still begins at four.
TEST(MailDateZones, DecideOnLocalTimes)
{
    const ZoneScope zone(kNewYork);
    EXPECT_EQ(GetAsciiTime("Sat Mar  9 12:00:00 2013"), 1362848400);
    EXPECT_EQ(GetAsciiTime("Sun Mar 10 12:00:00 2013"), 1362931200);
    CTime t;
    EXPECT_EQ(GetStringDate("2013/3/9", t), 1362888000);
    EXPECT_EQ(GetStringDate("2013/3/10", t), 1362970800);
    // 04:00 on 9 March to 04:00 on 10 March are 23 hours.
    EXPECT_FALSE(tlvn::HasDayIntervalPassed(1362848400, 1, 1362819600 + 86399));
    EXPECT_TRUE(tlvn::HasDayIntervalPassed(1362848400, 1, 1362819600 + 86400));
}
