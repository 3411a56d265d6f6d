#include "mailtext/binhex.h"

#include "foundation/text_search.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>

namespace {

constexpr char kTitle[] = "(This file must be converted with BinHex 4.0)";
constexpr char kAlphabet[] = "!\"#$%&'()*+,-012345689@ABCDEFGHIJKLMNPQRSTUVXYZ[`abcdefhijklmpqr";
static_assert(sizeof kAlphabet == 64 + 1);

constexpr BYTE kRunMarker = 0x90;
constexpr int kIncrement = 1024;

// The header: a length byte, the name, then the version, the type, the creator, the flags, the
// lengths of the data and the resource fork, a checksum.
constexpr int kMaxHeader = 255 + 22;
constexpr int kHeaderBesideName = 22;
constexpr int kDataLengthBehindName = 1 + 1 + 4 + 4 + 2;

constexpr std::array<signed char, 256> MakeValues()
{
    std::array<signed char, 256> values{};
    values.fill(-1);
    for (int i = 0; i < 64; ++i)
        values[static_cast<BYTE>(kAlphabet[i])] = static_cast<signed char>(i);
    return values;
}
constexpr auto kValues = MakeValues();

// The bytes of the characters in [p, end), into `packed`.
void Unarmour(const char* p, const char* end, CBuffer& packed)
{
    char* const start = packed.GetBuffer(static_cast<int>(end - p));
    char* o = start;
    unsigned bits = 0;
    int count = 0; // of bits not yet written
    for (; p != end; ++p) {
        const signed char value = kValues[static_cast<BYTE>(*p)];
        if (value < 0)
            continue;
        bits = bits << 6 | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            *o++ = static_cast<char>(bits >> count);
        }
    }
    packed.ReleaseBuffer(static_cast<int>(o - start));
}

// Unpacks run lengths: calls put(byte, count) for each run, until that answers false. A byte, a
// marker (90) and a count stand for the byte so many times, a marker and 0 for a byte 90. A
// marker that has no byte before it or none behind it is a byte like others.
template <class Put>
void Unpack(const CBuffer& packed, Put put)
{
    const int size = packed.GetLength();
    BYTE last = 0;
    for (int i = 0; i < size; ++i) {
        const BYTE b = static_cast<BYTE>(packed[i]);
        int times = 1;
        if (b != kRunMarker || i == 0 || i + 1 == size) {
            last = b;
        } else if (packed[++i] == 0) {
            last = kRunMarker;
        } else {
            times = static_cast<BYTE>(packed[i]) - 1;
        }
        if (times > 0 && !put(last, times))
            return;
    }
}

} // namespace

int DecodeBinHex(const char* text, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || *text == '\0')
        return 1;
    const char* const title = mbsnnstr(text, -1, kTitle, -1, 1);
    const char* const open = title != nullptr ? std::strchr(title + sizeof kTitle - 1, ':') : title;
    const char* const close = open != nullptr ? std::strchr(open + 1, ':') : open;
    if (close == nullptr)
        return 0;
    if (close - open > INT_MAX - kIncrement)
        AfxThrowMemoryException();

    CBuffer packed;
    Unarmour(open + 1, close, packed);

    BYTE header[kMaxHeader] = {};
    INT64 total = 0;
    Unpack(packed, [&](BYTE b, int times) {
        for (int i = 0; i < times && total + i < kMaxHeader; ++i)
            header[total + i] = b;
        total += times;
        return true;
    });
    const int headerSize = header[0] + kHeaderBesideName;
    const BYTE* const field = header + header[0] + kDataLengthBehindName;
    const INT64 stated =
        INT64{field[0]} << 24 | INT64{field[1]} << 16 | INT64{field[2]} << 8 | INT64{field[3]};
    const INT64 size = std::clamp<INT64>(total - headerSize, 0, stated);
    if (size > INT_MAX - kIncrement)
        AfxThrowMemoryException();

    out.SetIncrSize(kIncrement);
    out.SetAllocSize(static_cast<int>(close - open));
    char* const start = out.GetBuffer(static_cast<int>(size));
    INT64 done = -headerSize; // bytes of the data fork written; below 0 in the header
    Unpack(packed, [&](BYTE b, int times) {
        const INT64 from = std::max<INT64>(done, 0);
        done += times;
        const INT64 to = std::min(done, size);
        if (to > from)
            std::memset(start + from, b, static_cast<std::size_t>(to - from));
        return done < size;
    });
    out.ReleaseBuffer(static_cast<int>(size));
    return 1;
}
