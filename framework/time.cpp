#include "framework/time.h"

#include "platform/clock.h"

#include <climits>
#include <cstdlib>

namespace {

constexpr const char* kMonths[] = {"January",   "February", "March",    "April",
                                   "May",       "June",     "July",     "August",
                                   "September", "October",  "November", "December"};
constexpr const char* kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};
constexpr int kAbbreviation = 3;

// Formats one time, letter by letter.
class TimeFormatter {
public:
    // `bias` is in minutes west of UTC.
    TimeFormatter(const std::tm& fields, int bias) : m_fields(fields), m_bias(bias) {}

    CString Run(const char* format)
    {
        m_out.Empty();
        Write(format);
        return m_out;
    }

private:
    void Write(const char* format)
    {
        for (const char* p = format; *p != '\0'; p++) {
            if (*p != '%') {
                m_out.AppendChar(*p);
                continue;
            }
            const char* const directive = p++;
            const bool plain = *p == '#';
            if (plain)
                p++;
            if (!WriteField(*p, plain))
                m_out.Append(directive, static_cast<int>(p - directive) + (*p != '\0'));
            if (*p == '\0')
                return;
        }
    }

    void Number(int value, int digits, bool plain)
    {
        m_out.AppendFormat("%0*d", plain ? 1 : digits, value);
    }

    // False when the letter is not known.
    bool WriteField(char letter, bool plain)
    {
        const std::tm& t = m_fields;
        const INT64 year = INT64{t.tm_year} + 1900;
        switch (letter) {
        case 'a':
            m_out.Append(kWeekdays[t.tm_wday], kAbbreviation);
            break;
        case 'A':
            m_out.Append(kWeekdays[t.tm_wday]);
            break;
        case 'b':
            m_out.Append(kMonths[t.tm_mon], kAbbreviation);
            break;
        case 'B':
            m_out.Append(kMonths[t.tm_mon]);
            break;
        case 'c':
            Write("%a %b ");
            m_out.AppendFormat("%2d ", t.tm_mday);
            Write("%H:%M:%S %Y");
            break;
        case 'd':
            Number(t.tm_mday, 2, plain);
            break;
        case 'H':
            Number(t.tm_hour, 2, plain);
            break;
        case 'I':
            Number((t.tm_hour + 11) % 12 + 1, 2, plain);
            break;
        case 'j':
            Number(t.tm_yday + 1, 3, plain);
            break;
        case 'm':
            Number(t.tm_mon + 1, 2, plain);
            break;
        case 'M':
            Number(t.tm_min, 2, plain);
            break;
        case 'p':
            m_out.Append(t.tm_hour < 12 ? "AM" : "PM");
            break;
        case 'S':
            Number(t.tm_sec, 2, plain);
            break;
        case 'U':
            Number((t.tm_yday + 7 - t.tm_wday) / 7, 2, plain);
            break;
        case 'w':
            Number(t.tm_wday, 1, plain);
            break;
        case 'W':
            Number((t.tm_yday + 7 - (t.tm_wday + 6) % 7) / 7, 2, plain);
            break;
        case 'x':
            Write("%m/%d/%y");
            break;
        case 'X':
            Write("%H:%M:%S");
            break;
        case 'y':
            Number(static_cast<int>((year % 100 + 100) % 100), 2, plain);
            break;
        case 'Y':
            m_out.AppendFormat("%0*I64d", plain ? 1 : 4, year);
            break;
        case 'z':
        case 'Z':
            m_out.AppendFormat("%c%02d%02d", m_bias <= 0 ? '+' : '-', std::abs(m_bias) / 60,
                               std::abs(m_bias) % 60);
            break;
        case '%':
            m_out.AppendChar('%');
            break;
        default:
            return false;
        }
        return true;
    }

    std::tm m_fields;
    int m_bias;
    CString m_out;
};

std::tm* CallersFields(std::tm* fields)
{
    static thread_local std::tm shared;
    return fields != nullptr ? fields : &shared;
}

// One local field of a time, or 0.
template <class Get>
int LocalField(INT64 time, Get get)
{
    std::tm local;
    return tlvn::ToLocalTime(time, local) ? get(local) : 0;
}

constexpr INT64 kTicksPerSecond = 10'000'000;      // of a FILETIME
constexpr INT64 kEpochInFileTime = 11'644'473'600; // seconds from 1601 to 1970

} // namespace

CString CTimeSpan::Format(const char* format) const
{
    CString result;
    if (format == nullptr)
        return result;
    for (const char* p = format; *p != '\0'; p++) {
        if (*p != '%') {
            result.AppendChar(*p);
            continue;
        }
        p++;
        switch (*p) {
        case 'D':
            result.AppendFormat("%I64d", GetDays());
            break;
        case 'H':
            result.AppendFormat("%02d", static_cast<int>(GetHours()));
            break;
        case 'M':
            result.AppendFormat("%02d", static_cast<int>(GetMinutes()));
            break;
        case 'S':
            result.AppendFormat("%02d", static_cast<int>(GetSeconds()));
            break;
        case '%':
            result.AppendChar('%');
            break;
        case '\0':
            result.AppendChar('%');
            return result;
        default:
            result.Append(p - 1, 2);
            break;
        }
    }
    return result;
}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst)
{
    constexpr int kFirstYear = 1900;
    if (year < INT_MIN + kFirstYear || month == INT_MIN) {
        m_time = -1;
        return;
    }
    std::tm local{};
    local.tm_year = year - kFirstYear;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = dst;
    m_time = tlvn::FromLocalTime(local);
}

CTime::CTime(const FILETIME& time) noexcept
{
    const UINT64 ticks = UINT64{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    m_time = static_cast<INT64>(ticks / kTicksPerSecond) - kEpochInFileTime;
}

CTime CTime::GetCurrentTime()
{
    return tlvn::GetSystemTime();
}

std::tm* CTime::GetLocalTm(std::tm* fields) const
{
    std::tm* const result = CallersFields(fields);
    return tlvn::ToLocalTime(m_time, *result) ? result : nullptr;
}

std::tm* CTime::GetGmtTm(std::tm* fields) const
{
    std::tm* const result = CallersFields(fields);
    return tlvn::ToUtcTime(m_time, *result) ? result : nullptr;
}

int CTime::GetYear() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_year + 1900; });
}

int CTime::GetMonth() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_mon + 1; });
}

int CTime::GetDay() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_mday; });
}

int CTime::GetHour() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_hour; });
}

int CTime::GetMinute() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_min; });
}

int CTime::GetSecond() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_sec; });
}

int CTime::GetDayOfWeek() const
{
    return LocalField(m_time, [](const std::tm& t) { return t.tm_wday + 1; });
}

CString CTime::Format(const char* format) const
{
    std::tm local;
    if (format == nullptr || !tlvn::ToLocalTime(m_time, local))
        return CString();
    return TimeFormatter(local, tlvn::GetZoneBias(m_time)).Run(format);
}

CString CTime::FormatGmt(const char* format) const
{
    std::tm utc;
    if (format == nullptr || !tlvn::ToUtcTime(m_time, utc))
        return CString();
    return TimeFormatter(utc, 0).Run(format);
}
