#include "mailtext/hex.h"

#include "mailtext/hex_digit.h"
#include "platform/multibyte.h"

#include <climits>
#include <cstring>

using namespace tlvn;

namespace {

// How a byte is written: as it is, as a blank's "+", or escaped.
enum class Form { Plain, Plus, Escaped };

// `formOf` tells the form of each byte.
template <class FormOf>
const char* Encode(const char* text, CBuffer& out, FormOf formOf)
{
    out.Empty();
    if (text == nullptr)
        return out;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX / 3 - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(length) * 3);
    char* o = start;
    for (const char* p = text; p != text + length; ++p) {
        const Form form = formOf(*p);
        if (form == Form::Escaped) {
            const BYTE b = static_cast<BYTE>(*p);
            *o++ = '%';
            *o++ = kHexDigits[b >> 4];
            *o++ = kHexDigits[b & 15];
        } else {
            *o++ = form == Form::Plus ? '+' : *p;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
    return out;
}

} // namespace

int DecodeHex(char c)
{
    const int value = HexValue(c);
    return value < 0 ? 0 : value;
}

void DecodeHex(const char* text, CBuffer& out)
{
    out.Empty();
    if (text == nullptr)
        return;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(length));
    char* o = start;
    for (const char* p = text; p != text + length;) {
        // The terminator is no digit: nothing behind it is looked at.
        if (*p == '%' && HexValue(p[1]) >= 0 && HexValue(p[2]) >= 0) {
            *o++ = static_cast<char>(HexValue(p[1]) << 4 | HexValue(p[2]));
            p += 3;
        } else {
            *o++ = *p++;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
}

const char* EncodeHex(const char* text, int encodeAll, CBuffer& out)
{
    return Encode(text, out, [all = encodeAll != 0](char c) {
        return !all && IsAlnum(c) ? Form::Plain : Form::Escaped;
    });
}

const char* EncodeUrlEncode(const char* text, CBuffer& out)
{
    return Encode(text, out, [](char c) {
        if (c == ' ')
            return Form::Plus;
        return IsAlnum(c) || c == '-' || c == '.' || c == '_' ? Form::Plain : Form::Escaped;
    });
}
