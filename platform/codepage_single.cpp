#include "platform/codepage.h"

#include "platform/ascii_run.h"

namespace tlvn::codepage {
namespace {

#include "platform/tables/single_byte_table.inc"

// What stands for a byte without a character: a private-use unit or, in US-ASCII, the
// character of the lower seven bits.
constexpr bool IsHole(WCHAR c)
{
    return c < 0x80 || (c >= 0xE000 && c <= 0xF8FF);
}

} // namespace

const SingleBytePage* FindSingleBytePage(UINT codePage)
{
    for (const SingleBytePage& page : kSingleBytePages) {
        if (page.codePage == codePage)
            return &page;
    }
    return nullptr;
}

int DecodeSingleByte(const SingleBytePage& page, const char* text, int length, WCHAR* out,
                     bool& loss)
{
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + length;
    WCHAR* o = out;
    bool lost = false;
    while (p < end) {
        if (*p < 0x80) {
            const int run = WidenAscii(p, end, o);
            p += run;
            o += run;
            continue;
        }
        const WCHAR c = page.decode[*p++ - 0x80];
        lost = lost || IsHole(c);
        *o++ = c;
    }
    loss = loss || lost;
    return length;
}

INT64 EncodeSingleByte(const SingleBytePage& page, const WCHAR* text, int length, char* out,
                       char replacement, bool& loss)
{
    const WCHAR* p = text;
    const WCHAR* const end = p + length;
    BYTE* const start = reinterpret_cast<BYTE*>(out);
    BYTE* o = start;
    bool lost = false;
    while (p < end) {
        const unsigned c = *p;
        if (c < 0x80) {
            const int run = NarrowAscii(p, end, o);
            p += run;
            o += run;
            continue;
        }
        ++p;
        const BYTE code = page.encode[page.encodeBlock[c >> 8] * 256u + (c & 0xFF)];
        if (code != 0) {
            *o++ = code;
        } else {
            lost = true;
            if (replacement != '\0')
                *o++ = static_cast<BYTE>(replacement);
        }
    }
    loss = loss || lost;
    return o - start;
}

} // namespace tlvn::codepage
