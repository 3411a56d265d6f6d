// printf-like formatting that is independent of the C locale, for both widths.
//
//   %[flags][width][.precision][size]type
//
// flags - + space # 0; width and precision a number or *; size h, l, ll, I (pointer-sized), I32,
// I64, w, z, j, t; types d i u o x X c C s S p e E f F g G a A %.
//
// %s and %c take the format's own width of text, %S and %C the other one; h (narrow) and l or w
// (wide) before any of the four decide outright. Text of the other width is converted by the
// multibyte code page. A null text is "(null)". The precision of a text counts bytes or units of
// the argument; a narrow one is not cut inside a double-byte character.
//
// The sizes are those of Windows on every system: l is the 32 bits of a LONG or DWORD,
// I64 and ll 64 bits, %p is as many upper-case hexadecimal digits as a pointer has.
//
// The decimal point is '.', an exponent has two digits or more. A directive of an unknown type
// stands for itself. %n takes its argument and writes nothing.

#pragma once

#include "platform/nls.h"

#include <cstdarg>
#include <string>

namespace tlvn {

// The arguments may point into `out`, which is replaced at the end. Lack of memory throws
// std::bad_alloc, a result above INT_MAX characters std::length_error.
TLVN_API void FormatV(std::string& out, const char* format, std::va_list args);
TLVN_API void FormatV(WString& out, const WCHAR* format, std::va_list args);

} // namespace tlvn
