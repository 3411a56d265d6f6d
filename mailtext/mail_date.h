// The dates of mails: reading those of header fields, writing those of headers and of IMAP
// commands, showing them, and telling when a day is over.
//
//   INT64 time = GetRFC822Time("Tue, 5 Feb 2013 10:20:30 +0900");     // 1360027230
//   CString text = GetRFC822TimeText(CTime(time));                    // in local time
//
// Times are seconds since 1970-01-01 00:00 UTC; -1 means no time. Names of days and months are
// English whatever the locale; only GetLocalTimeText and GetLocalDateText follow the user's. A
// number is read as far as it is one ("5th" is 5, "x" is 0). White space parts what is parted by
// blanks. Nothing is thrown except for lack of memory.

#pragma once

#include "framework/framework.h"

// Reads the date of a header field (RFC 5322, section 3.3, with much that is older). The day of
// the week is skipped up to its ",". Day and month come in any order; a month is a name in any
// case or a number; a year below 50 counts from 2000, one below 1000 from 1900; the seconds and
// the zone may be missing. The zone is "+0900", "+900" or one of UT, GMT, EST, EDT, CST, CDT, MST,
// MDT, PST, PDT and JST; anything else is UTC. Returns the time, or -1 for a text of another
// shape, a date that does not exist, and a time before 1970.
TLVN_API INT64 GetRFC822Time(const char* text);

// Reads the date of the C library's asctime, "Tue Feb  5 10:20:30 2013", as local time. The name
// of the month must be written just so; fields out of range are carried over, except the day.
// Returns the time, or -1 for another shape, a year above 9999 and a time before 1970.
TLVN_API INT64 GetAsciiTime(const char* text);

// Which of the two a text is: 2 for the header form, 1 for the other, 0 for neither; judged by
// the name of a day at the start and a "," anywhere. 0 for null.
TLVN_API int GetTimeTextFormat(const char* text);

// The local time with its zone, as headers and IMAP have it: "Tue, 05 Feb 2013 10:20:30 +0900"
// and "05-Feb-2013 10:20:30 +0900". Empty when there is no local time.
TLVN_API CString GetRFC822TimeText(const CTime& t);
TLVN_API CString GetImap4TimeText(const CTime& t);

// Date and time in the user's locale, parted by a blank, into the `size` bytes at out, which is
// returned. The formats are those of the Windows functions GetDateFormat and GetTimeFormat, null
// for the locale's own. " --" (as much of it as has room) for no time, for a format that fails
// and when there is not enough room. The second gives the date alone, in the locale's format.
TLVN_API char* GetLocalTimeText(const CTime& t, const char* dateFormat, const char* timeFormat,
                                char* out, int size);
TLVN_API char* GetLocalDateText(const CTime& t, char* out, int size);

// The local date as "2013/02/05", empty for the times 0 and -1. Returns the text of `out`.
TLVN_API const char* GetDateString(const CTime& t, CString& out);

// Reads year, month and day parted by "/" or line feeds: 23:00:00 of that day in local time.
// Returns the time, or 0 when one is missing, for a year above 9999 and a time before 1970; `out`
// receives the same.
TLVN_API INT64 GetStringDate(const char* text, CTime& out);

// 1 when `days` days have passed since the time `last`, or that is no time; else 0. A day begins
// at 04:00 local time: what was done in the small hours counts for the day before.
TLVN_API int CheckDayInterval(INT64 last, int days);

namespace tlvn {

// The same at another time than now.
TLVN_API bool HasDayIntervalPassed(INT64 last, int days, INT64 now);

} // namespace tlvn
