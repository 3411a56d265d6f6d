// Conversions between the three Japanese codes, by arithmetic alone.
//
// ISO-2022-JP (JIS), Shift_JIS and EUC-JP hold the rows and cells of JIS X 0208 in different
// clothes, so one is turned into another without a table; what lies outside JIS X 0208, such as
// the machine-dependent characters of NEC row 13, passes through the same arithmetic. Nothing
// fails: bytes that do not fit the code are passed on as they are.
//
// Lengths are in bytes, `out` is replaced and must not hold the input. A null text or a length
// below 1 gives an empty result. The memory exception is thrown when there is no memory or
// twice the length exceeds INT_MAX.

#pragma once

#include "foundation/buffer.h"

// Accepts the designations ESC $ @, ESC $ B, ESC $ ( D (read as if it were JIS X 0208),
// ESC ( B, ESC ( J, ESC ( H, ESC ( I, the older ESC K and ESC H, and shift-out/shift-in around
// half-width katakana. Line ends do not end kanji mode.
TLVN_API void ConvertJisToSJis(const char* text, int len, CBuffer& out);

// Writes ESC $ B, ESC ( I and ESC ( B only; every line, and the whole, ends in ASCII.
TLVN_API void ConvertSJisToJis(const char* text, int len, CBuffer& out);

// Accepts JIS X 0208 in two bytes and half-width katakana behind the single shift 8E; copies
// anything else.
TLVN_API void ConvertEucToSJis(const char* text, int len, CBuffer& out);

// Half-width katakana are written behind the single shift 8E.
TLVN_API void ConvertSJisToEuc(const char* text, int len, CBuffer& out);

namespace tlvn {

// Whether all of the text is of the code: characters, designations and controls that the
// conversion above understands, nothing cut off. The conversions themselves pass anything on.
// What the conversions from Shift_JIS pass on of valid text counts as valid, too: byte 80, and
// the lead bytes F0-FC, which have no row, with their trail bytes.
bool IsValidJis(const char* text, int len);
bool IsValidEuc(const char* text, int len);

} // namespace tlvn
