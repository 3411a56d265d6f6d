#include "platform/codepage.h"

#include "platform/ascii_run.h"

#include <array>
#include <cstddef>

namespace tlvn::codepage {
namespace {

// kDecode932: units by lead byte (81-9F, E0-FC in this order) and trail byte (from 40), 0 for
// what is no code. kEncode932: codes by unit, in blocks of 256 units, the first byte low, 0 where
// there is none.
#include "platform/tables/cp932_table.inc"

constexpr unsigned kLeads = 60;
constexpr unsigned kTrailBase = 0x40;
constexpr unsigned kTrails = 0xC0;

constexpr WCHAR kBadPair = 0x30FB;

constexpr int kPairsAtOnce = 8;
constexpr int kPairBytes = 2 * kPairsAtOnce;

// The same tables with one load for a character: by lead byte x 256 + trail byte, and by unit.
constexpr auto kUnitOfPair = [] {
    std::array<WCHAR, 0x10000> units{};
    for (unsigned row = 0; row < kLeads; ++row) {
        const unsigned lead = (row + 0xA1) ^ 0x20;
        for (unsigned cell = 0; cell < kTrails; ++cell)
            units[lead << 8 | (cell + kTrailBase)] = kDecode932[row * kTrails + cell];
    }
    return units;
}();
constexpr auto kCodeOfUnit = [] {
    std::array<std::uint16_t, 0x10000> codes{};
    for (unsigned high = 0; high < 0x100; ++high) {
        for (unsigned low = 0; low < 0x100 && kEncodeBlock932[high] != 0; ++low)
            codes[high << 8 | low] = kEncode932[kEncodeBlock932[high] * 256u + low];
    }
    return codes;
}();

constexpr bool IsLead(BYTE b)
{
    return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
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

// One character at p < end that is not ASCII; returns its length in bytes.
int DecodeOne(const BYTE* p, const BYTE* end, WCHAR& unit, bool& lost)
{
    if (!IsLead(*p)) {
        unit = DecodeSingle(*p, lost);
        return 1;
    }
    const bool pair = end - p >= 2 && p[1] != 0;
    unit = pair ? kUnitOfPair[static_cast<unsigned>(p[0] << 8 | p[1])] : WCHAR{0};
    if (unit == 0) {
        unit = kBadPair;
        lost = true;
    }
    return pair ? 2 : 1;
}

// Decodes the double-byte characters at the start of the kPairBytes bytes at p, up to the first
// that is none, and returns how many there were.
inline int DecodePairs(const BYTE* p, WCHAR* out)
{
    for (int i = 0; i < kPairsAtOnce; ++i, p += 2) {
        const WCHAR unit = kUnitOfPair[static_cast<unsigned>(p[0] << 8 | p[1])];
        if (unit == 0)
            return i;
        out[i] = unit;
    }
    return kPairsAtOnce;
}

// The same for the units of two bytes at the start of the kPairsAtOnce units at p.
inline int EncodePairs(const WCHAR* p, BYTE* out)
{
    for (int i = 0; i < kPairsAtOnce; ++i, out += 2) {
        const unsigned code = kCodeOfUnit[p[i]];
        if (code < 0x100)
            return i;
        out[0] = static_cast<BYTE>(code);
        out[1] = static_cast<BYTE>(code >> 8);
    }
    return kPairsAtOnce;
}

} // namespace

int Decode932(const char* text, int length, WCHAR* out, bool& loss)
{
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + length;
    WCHAR* o = out;
    bool lost = false;
    while (p < end) {
        const BYTE* const before = p;
        while (end - p >= kPairBytes) {
            const int count = DecodePairs(p, o);
            if (count < kPairsAtOnce) {
                p += 2 * count;
                o += count;
                break;
            }
            p += kPairBytes;
            o += kPairsAtOnce;
        }
        const int run = WidenAscii(p, end, o);
        p += run;
        o += run;
        if (p < end && (p == before || end - p < kPairBytes))
            p += DecodeOne(p, end, *o++, lost);
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
        const WCHAR* const before = p;
        while (end - p >= kPairsAtOnce) {
            const int count = EncodePairs(p, o);
            if (count < kPairsAtOnce) {
                p += count;
                o += 2 * count;
                break;
            }
            p += kPairsAtOnce;
            o += kPairBytes;
        }
        const int run = NarrowAscii(p, end, o);
        p += run;
        o += run;
        if (p == end || (p != before && end - p >= kPairsAtOnce))
            continue;
        const unsigned code = kCodeOfUnit[*p++];
        if (code == 0) {
            lost = true;
            if (replacement != '\0')
                *o++ = static_cast<BYTE>(replacement);
            continue;
        }
        *o++ = static_cast<BYTE>(code);
        if (code >= 0x100)
            *o++ = static_cast<BYTE>(code >> 8);
    }
    loss = loss || lost;
    return o - start;
}

} // namespace tlvn::codepage
