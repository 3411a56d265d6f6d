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
// the argument; a narrow one is not cut inside a double-byte character. %lc and %lu take a 32-bit
// value as everywhere on Windows: the size l is that of a C++ long on the system at hand.
//
// The decimal point is '.'. A percent sign with an unknown type stands for itself. %n is not
// supported and writes nothing.

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
