#include "mailtext/mail_date.h"

#include "platform/clock.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string_view>

using namespace tlvn;

namespace {

constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::string_view kWeekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr int kNameLength = 3;

struct Zone {
    std::string_view name;
    int hours; // east of UTC
};
constexpr Zone kZones[] = {
    {"UT", 0},   {"GMT", 0},  {"EST", -5}, {"EDT", -4}, {"CST", -6}, {"CDT", -5},
    {"MST", -7}, {"MDT", -6}, {"PST", -8}, {"PDT", -7}, {"JST", 9},
};

constexpr INT64 kDay = 86400;
constexpr INT64 kDayStart = 4 * 3600; // when days begin, after midnight
constexpr char kNoTime[] = " --";
constexpr int kFirstYear = 1601; // of the system's file times
constexpr int kLastYear = 9999;

// The fields of a text, in order.
class Fields {
public:
    explicit Fields(const char* text) : m_next(text) {}

    // The next run of characters other than white space; false at the end.
    bool ReadToken(std::string_view& token)
    {
        SkipSpace();
        const char* const start = m_next;
        while (*m_next != '\0' && !IsSpace(*m_next))
            ++m_next;
        token = {start, static_cast<std::size_t>(m_next - start)};
        return !token.empty();
    }

    // What stands before the next ":", which is skipped; false when there is none.
    bool ReadToColon(std::string_view& token)
    {
        const char* const colon = std::strchr(m_next, ':');
        if (colon == nullptr)
            return false;
        token = {m_next, static_cast<std::size_t>(colon - m_next)};
        m_next = colon + 1;
        return true;
    }

    // The next run of characters other than "/" and line feeds; false at the end.
    bool ReadDatePart(std::string_view& token)
    {
        m_next += std::strspn(m_next, "/\n");
        const std::size_t length = std::strcspn(m_next, "/\n");
        token = {m_next, length};
        m_next += length;
        return length > 0;
    }

private:
    void SkipSpace()
    {
        while (IsSpace(*m_next))
            ++m_next;
    }

    const char* m_next;
};

// The number at the start of a text, behind white space and a sign, or 0; no further from 0 than
// any field could sensibly be.
int ReadNumber(std::string_view text)
{
    constexpr int kLimit = 100'000'000;
    std::size_t i = 0;
    while (i < text.size() && IsSpace(text[i]))
        ++i;
    const bool signedNumber = i < text.size() && (text[i] == '-' || text[i] == '+');
    const bool negative = signedNumber && text[i] == '-';
    if (signedNumber)
        ++i;
    int value = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i)
        value = std::min(value * 10 + (text[i] - '0'), kLimit);
    return negative ? -value : value;
}

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToLowerAscii(x) == ToLowerAscii(y); });
}

// 1 to 12 for the name of a month, else what the text is as a number.
int ReadMonth(std::string_view text)
{
    if (text.size() == kNameLength) {
        for (int i = 0; i < 12; ++i) {
            if (EqualsNoCase(text, kMonths[i]))
                return i + 1;
        }
    }
    return ReadNumber(text);
}

bool IsDayOfMonth(int day)
{
    return day >= 1 && day <= 31;
}

bool BeginsWithWeekday(const char* text)
{
    return std::any_of(std::begin(kWeekdays), std::end(kWeekdays), [&](std::string_view name) {
        return std::strncmp(text, name.data(), name.size()) == 0;
    });
}

// Seconds east of UTC.
int ReadZone(std::string_view zone)
{
    if (zone[0] == '+' || zone[0] == '-') {
        const std::string_view digits = zone.substr(1);
        if ((digits.size() != 3 && digits.size() != 4) ||
            !std::all_of(digits.begin(), digits.end(), IsDigit))
            return 0;
        const int hours = ReadNumber(digits.substr(0, digits.size() - 2));
        const int minutes = ReadNumber(digits.substr(digits.size() - 2));
        const int offset = (hours * 60 + minutes) * 60;
        return zone[0] == '-' ? -offset : offset;
    }
    for (const Zone& known : kZones) {
        if (zone == known.name)
            return known.hours * 3600;
    }
    return 0;
}

int DaysInMonth(int year, int month)
{
    if (month == 2)
        return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

// A date and time of the calendar, month and day from 1.
struct DateTime {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;

    // Whether the system would make a file time of it.
    bool Exists() const
    {
        return year >= kFirstYear && month >= 1 && month <= 12 && day >= 1 &&
               day <= DaysInMonth(year, month) && hour >= 0 && hour <= 23 && minute >= 0 &&
               minute <= 59 && second >= 0 && second <= 59;
    }

    std::tm ToTm() const
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
};

// Local time, fields carried over; -1 for years that no date of a mail has.
INT64 FromLocal(const DateTime& date)
{
    return date.year > kLastYear ? -1 : std::max<INT64>(FromLocalTime(date.ToTm()), -1);
}

// The sign of the zone at a time and its distance from UTC.
struct ZoneText {
    explicit ZoneText(INT64 time)
    {
        const int bias = GetZoneBias(time);
        sign = bias <= 0 ? '+' : '-';
        hours = std::abs(bias) / 60;
        minutes = std::abs(bias) % 60;
    }

    char sign;
    int hours;
    int minutes;
};

// Locales write no-break blanks, which the code page need not have, where a blank does.
CString Narrowed(WString text)
{
    std::replace(text.begin(), text.end(), TW('\x202F'), TW(' '));
    std::replace(text.begin(), text.end(), TW('\x00A0'), TW(' '));
    const std::string narrow = NarrowText(text);
    return CString(narrow.data(), static_cast<int>(narrow.size()));
}

// The years that the system's calendar has; beyond them a formatter shows another date.
bool HasCalendarDate(INT64 time)
{
    std::tm local;
    return ToLocalTime(time, local) && local.tm_year >= 1601 - 1900 &&
           local.tm_year <= 30827 - 1900;
}

using Formatter = bool (*)(INT64 time, const WCHAR* format, WString& out);

// What `formatter` makes of the time, a null format being the locale's own.
bool FormatNarrow(Formatter formatter, INT64 time, const char* format, CString& out)
{
    if (!HasCalendarDate(time))
        return false;
    return GuardMemory([&] {
        WString text;
        const WString wideFormat = WidenText(format == nullptr ? "" : format);
        if (!formatter(time, format == nullptr ? nullptr : wideFormat.c_str(), text))
            return false;
        out = Narrowed(text);
        return true;
    });
}

// Copies the text, or " --" when there is none or too much of it.
char* PutTimeText(bool formatted, const CString& text, char* out, int size)
{
    if (out == nullptr || size < 1)
        return out;
    const bool fits = formatted && text.GetLength() < size;
    const char* const source = fits ? static_cast<const char*>(text) : kNoTime;
    const std::size_t length = std::min(std::strlen(source), static_cast<std::size_t>(size - 1));
    std::memcpy(out, source, length);
    out[length] = '\0';
    return out;
}

} // namespace

INT64 GetRFC822Time(const char* text)
{
    if (text == nullptr || *text == '\0')
        return -1;
    const char* const comma = std::strchr(text, ',');
    Fields fields(comma != nullptr ? comma + 1 : text);
    std::string_view first;
    std::string_view second;
    std::string_view token;
    if (!fields.ReadToken(first) || !fields.ReadToken(second))
        return -1;

    DateTime date;
    const bool dayFirst = IsDayOfMonth(ReadNumber(first));
    date.day = ReadNumber(dayFirst ? first : second);
    date.month = ReadMonth(dayFirst ? second : first);
    if (!IsDayOfMonth(date.day))
        return -1;

    if (!fields.ReadToken(token))
        return -1;
    date.year = ReadNumber(token);
    if (date.year < 0 || date.year > kLastYear)
        return -1;
    if (date.year < 50)
        date.year += 2000;
    else if (date.year < 1000)
        date.year += 1900;

    if (!fields.ReadToColon(token))
        return -1;
    date.hour = ReadNumber(token);
    if (!fields.ReadToken(token))
        return -1;
    date.minute = ReadNumber(token);
    const std::size_t colon = token.find(':');
    if (colon != token.npos)
        date.second = ReadNumber(token.substr(colon + 1));

    const int offset = fields.ReadToken(token) ? ReadZone(token) : 0;
    if (!date.Exists())
        return -1;
    return std::max<INT64>(FromUtcTime(date.ToTm()) - offset, -1);
}

INT64 GetAsciiTime(const char* text)
{
    if (text == nullptr)
        return -1;
    Fields fields(text);
    std::string_view token;
    if (!fields.ReadToken(token) || !fields.ReadToken(token))
        return -1;
    DateTime date;
    const auto month = std::find(std::begin(kMonths), std::end(kMonths), token);
    if (month == std::end(kMonths))
        return -1;
    date.month = static_cast<int>(month - std::begin(kMonths)) + 1;
    if (!fields.ReadToken(token))
        return -1;
    date.day = ReadNumber(token);
    if (!IsDayOfMonth(date.day))
        return -1;
    if (!fields.ReadToColon(token))
        return -1;
    date.hour = ReadNumber(token);
    if (!fields.ReadToColon(token))
        return -1;
    date.minute = ReadNumber(token);
    if (!fields.ReadToken(token))
        return -1;
    date.second = ReadNumber(token);
    if (!fields.ReadToken(token))
        return -1;
    date.year = ReadNumber(token);
    return FromLocal(date);
}

int GetTimeTextFormat(const char* text)
{
    if (text == nullptr)
        return 0;
    const bool weekday = BeginsWithWeekday(text);
    if (std::strchr(text, ',') != nullptr)
        return weekday ? 2 : 0;
    return weekday ? 1 : 2;
}

CString GetRFC822TimeText(const CTime& t)
{
    CString text;
    std::tm local;
    if (t.GetLocalTm(&local) == nullptr)
        return text;
    const ZoneText zone(t.GetTime());
    text.Format("%s, %02d %s %04d %02d:%02d:%02d %c%02d%02d", kWeekdays[local.tm_wday].data(),
                local.tm_mday, kMonths[local.tm_mon].data(), local.tm_year + 1900, local.tm_hour,
                local.tm_min, local.tm_sec, zone.sign, zone.hours, zone.minutes);
    return text;
}

CString GetImap4TimeText(const CTime& t)
{
    CString text;
    std::tm local;
    if (t.GetLocalTm(&local) == nullptr)
        return text;
    const ZoneText zone(t.GetTime());
    text.Format("%02d-%s-%04d %02d:%02d:%02d %c%02d%02d", local.tm_mday,
                kMonths[local.tm_mon].data(), local.tm_year + 1900, local.tm_hour, local.tm_min,
                local.tm_sec, zone.sign, zone.hours, zone.minutes);
    return text;
}

char* GetLocalTimeText(const CTime& t, const char* dateFormat, const char* timeFormat, char* out,
                       int size)
{
    CString date;
    CString time;
    const bool formatted = t.GetTime() != -1 &&
                           FormatNarrow(FormatLocalDate, t.GetTime(), dateFormat, date) &&
                           FormatNarrow(FormatLocalTime, t.GetTime(), timeFormat, time);
    return PutTimeText(formatted, date + " " + time, out, size);
}

char* GetLocalDateText(const CTime& t, char* out, int size)
{
    CString date;
    const bool formatted =
        t.GetTime() != -1 && FormatNarrow(FormatLocalDate, t.GetTime(), nullptr, date);
    return PutTimeText(formatted, date, out, size);
}

const char* GetDateString(const CTime& t, CString& out)
{
    out.Empty();
    if (t.GetTime() != 0 && t.GetTime() != -1)
        out = t.Format("%Y/%m/%d");
    return out;
}

INT64 GetStringDate(const char* text, CTime& out)
{
    out = CTime(0);
    if (text == nullptr)
        return 0;
    Fields fields(text);
    int parts[3];
    for (int& part : parts) {
        std::string_view token;
        if (!fields.ReadDatePart(token))
            return 0;
        part = ReadNumber(token);
    }
    DateTime date;
    date.year = parts[0];
    date.month = parts[1];
    date.day = parts[2];
    date.hour = 23;
    out = CTime(std::max<INT64>(FromLocal(date), 0));
    return out.GetTime();
}

int CheckDayInterval(INT64 last, int days)
{
    return HasDayIntervalPassed(last, days, GetSystemTime()) ? 1 : 0;
}

namespace tlvn {

bool HasDayIntervalPassed(INT64 last, int days, INT64 now)
{
    std::tm start;
    if (last < kDayStart || !ToLocalTime(last - kDayStart, start))
        return true;
    start.tm_hour = static_cast<int>(kDayStart / 3600);
    start.tm_min = 0;
    start.tm_sec = 0;
    start.tm_isdst = -1;
    return now - FromLocalTime(start) >= days * kDay;
}

} // namespace tlvn
