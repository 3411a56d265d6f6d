#include "mailtext/imap_utf7.h"

#include <array>
#include <climits>
#include <cstring>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+,";

constexpr std::array<signed char, 256> MakeValues()
{
    std::array<signed char, 256> values{};
    values.fill(-1);
    for (int i = 0; i < 64; ++i)
        values[static_cast<BYTE>(kAlphabet[i])] = static_cast<signed char>(i);
    return values;
}
constexpr auto kValues = MakeValues();

constexpr bool IsPlain(WCHAR c)
{
    return c >= 0x20 && c <= 0x7E;
}

// Characters that `units` units take in Base64.
constexpr INT64 EncodedLength(INT64 units)
{
    return (units * 8 + 2) / 3;
}

// Decodes [p, end) up to the first byte outside the alphabet. `out` has room for a unit of each
// 16 bits. Returns the end of what was written.
WCHAR* DecodeRun(const char* p, const char* end, WCHAR* out)
{
    unsigned bits = 0;
    int count = 0; // of bits not yet written
    for (; p != end; ++p) {
        const signed char value = kValues[static_cast<BYTE>(*p)];
        if (value < 0)
            break;
        bits = bits << 6 | static_cast<unsigned>(value);
        count += 6;
        if (count >= 16) {
            count -= 16;
            *out++ = static_cast<WCHAR>(bits >> count & 0xFFFF);
        }
    }
    return out;
}

char* EncodeRun(const WCHAR* p, const WCHAR* end, char* out)
{
    unsigned bits = 0;
    int count = 0; // of bits not yet written
    for (; p != end; ++p) {
        bits = bits << 16 | static_cast<unsigned>(*p);
        for (count += 16; count >= 6;) {
            count -= 6;
            *out++ = kAlphabet[bits >> count & 63];
        }
    }
    if (count > 0)
        *out++ = kAlphabet[bits << (6 - count) & 63];
    return out;
}

// Bytes that [p, end) takes in modified UTF-7.
INT64 Utf7Length(const WCHAR* p, const WCHAR* end)
{
    INT64 length = 0;
    while (p != end) {
        if (IsPlain(*p)) {
            length += *p++ == '&' ? 2 : 1;
            continue;
        }
        const WCHAR* const run = p;
        while (p != end && !IsPlain(*p))
            ++p;
        length += EncodedLength(p - run) + 2;
    }
    return length;
}

int CheckedLength(INT64 length)
{
    if (length > INT_MAX - 64)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

} // namespace

int DecodeImap4Base64(const char* text, CStringW& out)
{
    out.Empty();
    if (text == nullptr)
        return 1;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX)
        AfxThrowMemoryException();
    WCHAR* const start = out.GetBuffer(static_cast<int>(length / 8 * 3 + 3));
    out.ReleaseBufferSetLength(static_cast<int>(DecodeRun(text, text + length, start) - start));
    return 1;
}

void EncodeImap4Base64(const WCHAR* text, int len, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || len < 1)
        return;
    const int length = CheckedLength(EncodedLength(len));
    char* const start = out.GetBuffer(length);
    EncodeRun(text, text + len, start);
    out.ReleaseBuffer(length);
}

int DecodeImap4UTF7(const char* text, int len, CStringW& out)
{
    out.Empty();
    if (text == nullptr || len < 1)
        return 1;
    const char* const end = text + len;
    WCHAR* const start = out.GetBuffer(len);
    WCHAR* o = start;
    for (const char* p = text; p != end;) {
        if (*p != '&') {
            *o++ = static_cast<BYTE>(*p++);
            continue;
        }
        const char* const run = ++p;
        if (run == end)
            break;
        const void* const hyphen = std::memchr(run, '-', static_cast<std::size_t>(end - run));
        p = hyphen != nullptr ? static_cast<const char*>(hyphen) : end;
        if (p == run)
            *o++ = '&';
        else
            o = DecodeRun(run, p, o);
        if (p != end)
            ++p;
    }
    out.ReleaseBufferSetLength(static_cast<int>(o - start));
    return 1;
}

void EncodeImap4UTF7(const WCHAR* text, int len, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || len < 1)
        return;
    const WCHAR* const end = text + len;
    const int length = CheckedLength(Utf7Length(text, end));
    char* o = out.GetBuffer(length);
    for (const WCHAR* p = text; p != end;) {
        if (IsPlain(*p)) {
            *o++ = static_cast<char>(*p);
            if (*p++ == '&')
                *o++ = '-';
            continue;
        }
        const WCHAR* const run = p;
        while (p != end && !IsPlain(*p))
            ++p;
        *o++ = '&';
        o = EncodeRun(run, p, o);
        *o++ = '-';
    }
    out.ReleaseBuffer(length);
}
