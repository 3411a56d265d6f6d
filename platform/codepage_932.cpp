#include "platform/codepage.h"

#include "platform/ascii_run.h"

namespace tlvn::codepage {
namespace {

// kDecode932: units by lead byte (81-9F, E0-FC in this order) and trail byte (from 40), 0 for
// what is no code. kEncode932: codes by unit, in blocks of 256 units, 0 where there is none.
#include "platform/tables/cp932_table.inc"

constexpr unsigned kLeads = 60;
constexpr unsigned kTrailBase = 0x40;
constexpr unsigned kTrails = 0xC0;

constexpr WCHAR kBadPair = 0x30FB;

constexpr unsigned RowOfLead(BYTE b)
{
    // 81-9F and E0-FC become one range when bit 5 is turned.
    return (b ^ 0x20u) - 0xA1u;
}

WCHAR DecodeSingle(BYTE b, bool& lost)
{
    if (b >= 0xA1 && b <= 0xDF)
        return static_cast<WCHAR>(0xFF61 + (b - 0xA1));
    if (b == 0x80)
        return 0x80;
    lost = true;
    return b == 0xA0 ? WCHAR{0xF8F0} : static_cast<WCHAR>(0xF8F1 + (b - 0xFD));
}

} // namespace

int Decode932(const char* text, int length, WCHAR* out, bool& loss)
{
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + length;
    WCHAR* o = out;
    bool lost = false;
    while (p < end) {
        const BYTE b = *p;
        if (b < 0x80) {
            const int run = WidenAscii(p, end, o);
            p += run;
            o += run;
            continue;
        }
        const unsigned row = RowOfLead(b);
        if (row >= kLeads) {
            *o++ = DecodeSingle(b, lost);
            ++p;
            continue;
        }
        if (end - p < 2 || p[1] == 0) {
            *o++ = kBadPair;
            lost = true;
            ++p;
            continue;
        }
        const unsigned cell = p[1] - kTrailBase;
        WCHAR unit = cell < kTrails ? static_cast<WCHAR>(kDecode932[row * kTrails + cell]) : 0;
        if (unit == 0) {
            unit = kBadPair;
            lost = true;
        }
        *o++ = unit;
        p += 2;
    }
    loss = loss || lost;
    return static_cast<int>(o - out);
}

INT64 Encode932(const WCHAR* text, int length, char* out, char replacement, bool& loss)
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
        const unsigned code = kEncode932[kEncodeBlock932[c >> 8] * 256u + (c & 0xFF)];
        if (code >= 0x100) {
            o[0] = static_cast<BYTE>(code >> 8);
            o[1] = static_cast<BYTE>(code);
            o += 2;
        } else if (code != 0) {
            *o++ = static_cast<BYTE>(code);
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
