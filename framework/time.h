// CTime and CTimeSpan: points in time and differences, in seconds.
//
// A CTime holds the seconds since 1970-01-01 00:00 UTC; its fields are given in local time.
//
//   const CTime now = CTime::GetCurrentTime();
//   const CString text = now.Format("%Y/%m/%d %H:%M");
//   const CTime tomorrow = now + CTimeSpan(1, 0, 0, 0);

#pragma once

#include "framework/string.h"

#include <compare>
#include <ctime>

class CTimeSpan {
public:
    constexpr CTimeSpan() noexcept = default;
    // Parts of any sign, added up.
    constexpr CTimeSpan(INT64 seconds) noexcept : m_seconds(seconds) {}
    constexpr CTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept
        : m_seconds(seconds + 60 * (minutes + 60 * (hours + INT64{24} * days)))
    {}

    // The whole span in one unit, towards zero, and what is left of the next larger unit.
    constexpr INT64 GetDays() const noexcept { return m_seconds / 86400; }
    constexpr INT64 GetTotalHours() const noexcept { return m_seconds / 3600; }
    constexpr LONG GetHours() const noexcept { return static_cast<LONG>(GetTotalHours() % 24); }
    constexpr INT64 GetTotalMinutes() const noexcept { return m_seconds / 60; }
    constexpr LONG GetMinutes() const noexcept { return static_cast<LONG>(GetTotalMinutes() % 60); }
    constexpr INT64 GetTotalSeconds() const noexcept { return m_seconds; }
    constexpr LONG GetSeconds() const noexcept { return static_cast<LONG>(m_seconds % 60); }
    constexpr INT64 GetTimeSpan() const noexcept { return m_seconds; }

    // --- arithmetic and order, in seconds ---
    constexpr CTimeSpan operator+(CTimeSpan b) const noexcept { return m_seconds + b.m_seconds; }
    constexpr CTimeSpan operator-(CTimeSpan b) const noexcept { return m_seconds - b.m_seconds; }
    constexpr CTimeSpan& operator+=(CTimeSpan b) noexcept { return *this = *this + b; }
    constexpr CTimeSpan& operator-=(CTimeSpan b) noexcept { return *this = *this - b; }
    constexpr auto operator<=>(const CTimeSpan&) const noexcept = default;

    // %D (days), %H, %M, %S (two digits each) and %%.
    TLVN_API CString Format(const char* format) const;

private:
    INT64 m_seconds = 0;
};

// A point in time.
class CTime {
public:
    constexpr CTime() noexcept = default;
    // Seconds since 1970 UTC.
    constexpr CTime(INT64 time) noexcept : m_time(time) {}
    // Local time; `dst` tells whether it is daylight saving time, below 0 the zone decides.
    // Fields out of range are carried over; a time that cannot be held becomes -1.
    TLVN_API CTime(int year, int month, int day, int hour, int minute, int second, int dst = -1);
    // A time of the Windows file system (100 ns since 1601 UTC), rounded down.
    TLVN_API explicit CTime(const FILETIME& time) noexcept;

    // The time now, and the seconds of this one.
    TLVN_API static CTime GetCurrentTime();
    constexpr INT64 GetTime() const noexcept { return m_time; }

    // Fields of the local time or UTC into `fields`, or into a place of the calling thread
    // that the next call uses again. Null when the time cannot be broken down.
    TLVN_API std::tm* GetLocalTm(std::tm* fields = nullptr) const;
    TLVN_API std::tm* GetGmtTm(std::tm* fields = nullptr) const;

    // Fields of the local time: month and day from 1, day of the week from 1 = Sunday. 0 when
    // the time cannot be broken down.
    TLVN_API int GetYear() const;
    TLVN_API int GetMonth() const;
    TLVN_API int GetDay() const;
    TLVN_API int GetHour() const;
    TLVN_API int GetMinute() const;
    TLVN_API int GetSecond() const;
    TLVN_API int GetDayOfWeek() const;

    // Formats in local time or UTC with the letters of C89's strftime, names in English,
    // whatever the C locale: %c is "Tue Feb  5 10:20:30 2013", %x "02/05/13", %X "10:20:30",
    // %z and %Z the zone as +0900. %#d and the like leave leading zeros out. Empty when the
    // time cannot be broken down.
    TLVN_API CString Format(const char* format) const;
    TLVN_API CString FormatGmt(const char* format) const;

    // --- arithmetic and order, in seconds ---
    constexpr CTimeSpan operator-(CTime b) const noexcept { return m_time - b.m_time; }
    constexpr CTime operator-(CTimeSpan b) const noexcept { return m_time - b.GetTimeSpan(); }
    constexpr CTime operator+(CTimeSpan b) const noexcept { return m_time + b.GetTimeSpan(); }
    constexpr CTime& operator+=(CTimeSpan b) noexcept { return *this = *this + b; }
    constexpr CTime& operator-=(CTimeSpan b) noexcept { return *this = *this - b; }
    constexpr auto operator<=>(const CTime&) const noexcept = default;

private:
    INT64 m_time = 0;
};
