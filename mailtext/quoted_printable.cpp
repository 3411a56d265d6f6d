#include "mailtext/quoted_printable.h"

#include "mailtext/hex_digit.h"

#include <climits>
#include <cstring>

using tlvn::HexValue;
using tlvn::kHexDigits;

namespace {

constexpr int kMaxColumn = 75;

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}
bool IsLineEnd(char c)
{
    return c == '\r' || c == '\n' || c == '\0';
}
// Bytes that decode to themselves whatever follows them.
bool IsPlain(char c)
{
    return c != '=' && !IsBlank(c) && c != '\0';
}

const char* SkipBlanks(const char* p)
{
    while (IsBlank(*p))
        ++p;
    return p;
}

const char* SkipLineEnd(const char* p)
{
    if (p[0] == '\r' && p[1] == '\n')
        return p + 2;
    return *p == '\0' ? p : p + 1;
}

char* PutBytes(char* out, const char* bytes, const char* end)
{
    const auto size = static_cast<std::size_t>(end - bytes);
    std::memcpy(out, bytes, size);
    return out + size;
}

// Writes encoded characters, breaking lines before they get too long.
class LineWriter {
public:
    explicit LineWriter(char* out) : m_next(out) {}

    void PutPlain(BYTE b)
    {
        MakeRoom(1);
        *m_next++ = static_cast<char>(b);
    }
    void PutEscaped(BYTE b)
    {
        MakeRoom(3);
        m_next[0] = '=';
        m_next[1] = kHexDigits[b >> 4];
        m_next[2] = kHexDigits[b & 15];
        m_next += 3;
    }
    void PutLineEnd()
    {
        m_next[0] = '\r';
        m_next[1] = '\n';
        m_next += 2;
        m_column = 0;
    }
    char* Next() const { return m_next; }

private:
    void MakeRoom(int characters)
    {
        if (m_column + characters > kMaxColumn) {
            *m_next++ = '=';
            PutLineEnd();
        }
        m_column += characters;
    }

    char* m_next;
    int m_column = 0;
};

} // namespace

int DecodeQuotedPrintable(const char* text, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || *text == '\0')
        return 1;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(length));
    char* o = start;
    const char* p = text;
    while (*p != '\0') {
        const char* const run = p;
        while (IsPlain(*p))
            ++p;
        o = PutBytes(o, run, p);
        if (*p == '=') {
            const char* const behind = SkipBlanks(p + 1);
            if (IsLineEnd(*behind)) {
                p = SkipLineEnd(behind);
                continue;
            }
            const int high = HexValue(p[1]);
            const int low = high < 0 ? -1 : HexValue(p[2]);
            if (low < 0) {
                *o++ = *p++;
            } else {
                *o++ = static_cast<char>(high << 4 | low);
                p += 3;
            }
        } else if (IsBlank(*p)) {
            const char* const behind = SkipBlanks(p);
            if (!IsLineEnd(*behind))
                o = PutBytes(o, p, behind);
            p = behind;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
    return 1;
}

void EncodeQuotedPrintable(const unsigned char* data, int len, int keepLineBreaks, CBuffer& out)
{
    out.Empty();
    if (data == nullptr || len < 1)
        return;
    // Escapes only, and a soft line break of three characters for every line of at least 73.
    const INT64 escaped = INT64{len} * 3;
    const INT64 most = escaped + escaped / (kMaxColumn - 2) * 3;
    if (most > INT_MAX - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(most));
    LineWriter writer(start);
    for (int i = 0; i < len; ++i) {
        const BYTE b = data[i];
        if (b > ' ' && b <= '~' && b != '=') {
            writer.PutPlain(b);
        } else if (b == ' ' || b == '\t') {
            const bool last = i + 1 == len || data[i + 1] == '\r' || data[i + 1] == '\n';
            if (last)
                writer.PutEscaped(b);
            else
                writer.PutPlain(b);
        } else if (keepLineBreaks != 0 && (b == '\r' || b == '\n')) {
            if (b == '\r' && i + 1 < len && data[i + 1] == '\n')
                ++i;
            writer.PutLineEnd();
        } else {
            writer.PutEscaped(b);
        }
    }
    out.ReleaseBuffer(static_cast<int>(writer.Next() - start));
}

int IsQuotedPrintable(const char* text)
{
    if (text == nullptr || *text == '\0')
        return 0;
    INT64 escapes = 0;
    const char* p = text;
    for (; *p != '\0'; ++p) {
        if (static_cast<BYTE>(*p) >= 0x80)
            return 0;
        if (*p == '=' && HexValue(p[1]) >= 0 && HexValue(p[2]) >= 0)
            ++escapes;
    }
    return 3 * escapes >= 3 * INT64{p - text} / 10;
}
