#include "mailtext/base64.h"

#include <array>
#include <climits>
#include <cstring>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr signed char kOutside = -1;

// Values of the alphabet's bytes. "=" takes its place in a group with the value 0.
constexpr std::array<signed char, 256> MakeValues()
{
    std::array<signed char, 256> values{};
    values.fill(kOutside);
    for (int i = 0; i < 64; ++i)
        values[static_cast<BYTE>(kAlphabet[i])] = static_cast<signed char>(i);
    values['='] = 0;
    return values;
}
constexpr auto kValues = MakeValues();

// The same for whole groups: the four tables hold a byte's value shifted to each of the four
// places, with the top bit set for "=" and every byte outside the alphabet, so that one test
// tells whether a group is plain.
constexpr std::uint32_t kNotPlain = 0x80000000;
struct PlaceTables {
    std::uint32_t place[4][256];
};
constexpr PlaceTables MakePlaceTables()
{
    PlaceTables tables{};
    for (int i = 0; i < 4; ++i) {
        for (int b = 0; b < 256; ++b) {
            const signed char value = kValues[static_cast<std::size_t>(b)];
            tables.place[i][b] = value == kOutside || b == '='
                                     ? kNotPlain
                                     : static_cast<std::uint32_t>(value) << (18 - 6 * i);
        }
    }
    return tables;
}
constexpr PlaceTables kPlaces = MakePlaceTables();

// Two characters for each value of twelve bits.
struct PairTable {
    char pair[4096][2];
};
constexpr PairTable MakePairTable()
{
    PairTable table{};
    for (int i = 0; i < 4096; ++i) {
        table.pair[i][0] = kAlphabet[i >> 6];
        table.pair[i][1] = kAlphabet[i & 63];
    }
    return table;
}
constexpr PairTable kPairs = MakePairTable();

// Collects the next group, skipping what is outside the alphabet. False at the end of the text.
bool ReadGroup(const BYTE*& p, const BYTE* end, BYTE (&group)[4])
{
    for (int count = 0; count < 4;) {
        if (p == end)
            return false;
        const BYTE b = *p++;
        if (kValues[b] != kOutside)
            group[count++] = b;
    }
    return true;
}

inline char* PutGroup(const BYTE* data, char* out)
{
    const unsigned bits = static_cast<unsigned>(data[0] << 16 | data[1] << 8 | data[2]);
    std::memcpy(out, kPairs.pair[bits >> 12], 2);
    std::memcpy(out + 2, kPairs.pair[bits & 4095], 2);
    return out + 4;
}

// The characters of `len` bytes in one line.
char* PutLine(const BYTE* data, int len, char* out)
{
    const BYTE* const end = data + len;
    for (; end - data >= 3; data += 3)
        out = PutGroup(data, out);
    if (data == end)
        return out;
    const BYTE last[3] = {data[0], end - data == 2 ? data[1] : BYTE{0}, 0};
    out = PutGroup(last, out);
    out[-1] = '=';
    if (end - data == 1)
        out[-2] = '=';
    return out;
}

char* PutLineEnd(char* out)
{
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

} // namespace

int DecodeBase64(const char* text, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || *text == '\0')
        return 1;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX - 3)
        AfxThrowMemoryException();
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + length;
    char* const start = out.GetBuffer((static_cast<int>(length) + 3) / 4 * 3);
    char* o = start;
    for (;;) {
        while (end - p >= 4) {
            const std::uint32_t bits = kPlaces.place[0][p[0]] | kPlaces.place[1][p[1]] |
                                       kPlaces.place[2][p[2]] | kPlaces.place[3][p[3]];
            if (bits >= kNotPlain)
                break;
            o[0] = static_cast<char>(bits >> 16);
            o[1] = static_cast<char>(bits >> 8);
            o[2] = static_cast<char>(bits);
            o += 3;
            p += 4;
        }
        BYTE group[4];
        if (!ReadGroup(p, end, group))
            break;
        const unsigned bits =
            static_cast<unsigned>(kValues[group[0]] << 18 | kValues[group[1]] << 12 |
                                  kValues[group[2]] << 6 | kValues[group[3]]);
        *o++ = static_cast<char>(bits >> 16);
        if (group[2] == '=')
            break;
        *o++ = static_cast<char>(bits >> 8);
        if (group[3] == '=')
            break;
        *o++ = static_cast<char>(bits);
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
    return 1;
}

void EncodeBase64(const unsigned char* data, int len, int lineLen, CBuffer& out)
{
    out.Empty();
    if (data == nullptr || len < 1)
        return;
    const INT64 characters = (INT64{len} + 2) / 3 * 4;
    const INT64 lineEnds = lineLen > 0 ? (characters - 1) / lineLen * 2 + 2 : 0;
    if (characters + lineEnds > INT_MAX - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(characters + lineEnds));
    char* o = start;
    if (lineLen <= 0) {
        o = PutLine(data, len, o);
    } else if (lineLen % 4 == 0) {
        const int lineBytes = lineLen / 4 * 3;
        for (int pos = 0; pos < len; pos += lineBytes) {
            o = PutLine(data + pos, len - pos < lineBytes ? len - pos : lineBytes, o);
            o = PutLineEnd(o);
            if (len - pos <= lineBytes)
                break;
        }
    } else {
        // Line ends fall inside groups: the text is made at the end of the space and moved to
        // the front line by line.
        const char* text = start + lineEnds;
        PutLine(data, len, start + lineEnds);
        for (INT64 left = characters; left > 0;) {
            const std::size_t size = static_cast<std::size_t>(left < lineLen ? left : lineLen);
            std::memmove(o, text, size);
            o = PutLineEnd(o + size);
            text += size;
            left -= static_cast<INT64>(size);
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
}

void ExtractBase64Text(const char* p, int len, CBuffer& out)
{
    out.Empty();
    if (p == nullptr || len < 1)
        return;
    const char* const end = p + len;
    const auto isMember = [](char c) {
        return c == '\0' || (c != '=' && kValues[static_cast<BYTE>(c)] != kOutside);
    };
    while (p != end && !isMember(*p))
        ++p;
    const char* const start = p;
    while (p != end && isMember(*p))
        ++p;
    while (p != end && *p == '=')
        ++p;
    out.Set(start, static_cast<int>(p - start));
}
