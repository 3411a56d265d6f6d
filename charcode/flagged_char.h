// The characters of Shift_JIS text that do not survive the way to other mail systems: half-width
// katakana, and characters that stand in no standard, which each machine has as it pleases. The
// editor flags them, the address checks refuse them.
//
// Text is Shift_JIS whatever the multibyte code page; positions and lengths are in bytes, a len
// below 0 means up to the terminating zero. A lead byte (81-9F, E0-FC) with a trail byte (40-7E,
// 80-FC) is one character and is stepped over whole: no trail byte passes for a katakana, and a
// lead byte without a trail byte is a character of its own, flagged by neither.
//
// Half-width katakana: the bytes A1-DF, with their punctuation and voicing marks.
// Machine-dependent: NEC row 13 (8740-879C), the NEC-selected IBM extensions (ED40-EEFC), the IBM
// extensions (FA40-FC4B) and the user-defined characters (F040-F9FC).
//
//   int pos = FindHankakuKatakana(text, len);
//   if (pos >= 0)
//       Mark(pos, GetHankakuKatakanaLen(text + pos, len - pos));
//
// Given a length, time is in proportion to what is passed over.

#pragma once

#include "platform/types.h"

// Position of the first such character, or -1, also for a null text. A character starts at `text`.
TLVN_API int FindHankakuKatakana(const char* text, int len);
TLVN_API int FindMachineDependChar(const char* text, int len);

// Length of the run of such characters at the start of the text; 0 when it starts with another,
// is empty or null.
TLVN_API int GetHankakuKatakanaLen(const char* text, int len);
TLVN_API int GetMachineDependCharLen(const char* text, int len);
