#include "mailtext/uuencode.h"

#include "platform/multibyte.h"

#include <algorithm>
#include <climits>
#include <cstring>

using namespace tlvn;

namespace {

constexpr char kBegin[] = "begin ";
constexpr int kBeginLength = 6;
constexpr int kModeLength = 3;
constexpr int kLineBytes = 45;
constexpr char kTrailer[] = "`\r\nend\r\n";

bool IsLineBreak(char c)
{
    return c == '\r' || c == '\n';
}

// The lines of a text, without those that are empty.
class Lines {
public:
    explicit Lines(const char* text) : m_next(text) {}

    // False behind the last line.
    bool Read(const char*& line, int& length)
    {
        while (IsLineBreak(*m_next))
            ++m_next;
        if (*m_next == '\0')
            return false;
        line = m_next;
        while (*m_next != '\0' && !IsLineBreak(*m_next))
            ++m_next;
        length = static_cast<int>(m_next - line);
        return true;
    }

private:
    const char* m_next;
};

unsigned ValueOf(char c)
{
    return c == '`' ? 0 : static_cast<unsigned>(static_cast<BYTE>(c) - ' ') & 0xFF;
}

char CharacterOf(unsigned value)
{
    return value == 0 ? '`' : static_cast<char>(value + ' ');
}

const char* OrDefault(const char* text, const char* otherwise)
{
    return text == nullptr || *text == '\0' ? otherwise : text;
}

char* PutText(char* out, const char* text, std::size_t length)
{
    std::memcpy(out, text, length);
    return out + length;
}

// One line of data: the length character, then four characters for each three bytes.
char* PutLine(const BYTE* data, int len, char* out)
{
    *out++ = static_cast<char>(len + ' ');
    for (int i = 0; i < len; i += 3) {
        const unsigned bits = static_cast<unsigned>(
            data[i] << 16 | (i + 1 < len ? data[i + 1] << 8 : 0) | (i + 2 < len ? data[i + 2] : 0));
        for (int shift = 18; shift >= 0; shift -= 6)
            *out++ = CharacterOf(bits >> shift & 63);
    }
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

// The `count` bytes that a line's characters stand for. A character missing at the end of the
// last group counts as 0.
char* DecodeLine(const char* p, const char* end, int count, char* out)
{
    while (count > 0) {
        unsigned bits = 0;
        for (int i = 0; i < 4; ++i)
            bits = bits << 6 | (p < end ? ValueOf(*p++) : 0);
        for (int shift = 16; shift >= 0 && count > 0; shift -= 8, --count)
            *out++ = static_cast<char>(bits >> shift);
    }
    return out;
}

} // namespace

int DecodeUuencodeBegin(const char* line, CStringA* mode, CStringA* name)
{
    if (mode != nullptr)
        mode->Empty();
    if (name != nullptr)
        name->Empty();
    if (line == nullptr || CompareAsciiNNoCase(line, kBegin, kBeginLength) != 0)
        return 0;
    const char* p = line + kBeginLength;
    while (*p == ' ')
        ++p;
    const char* const digits = p;
    for (int i = 0; i < kModeLength; ++i, ++p) {
        if (*p < '0' || *p > '7')
            return 0;
    }
    if (*p != ' ')
        return 0;
    while (*p == ' ')
        ++p;
    const char* const first = p;
    while (*p != '\0' && !IsLineBreak(*p))
        ++p;
    CStringA found(first, static_cast<int>(p - first));
    found.Trim();
    if (found.IsEmpty())
        return 0;
    if (mode != nullptr)
        *mode = CStringA(digits, kModeLength);
    if (name != nullptr)
        *name = found;
    return 1;
}

int DecodeUuencode(const char* text, CStringA* mode, CStringA* name, CBuffer* out)
{
    if (mode != nullptr)
        mode->Empty();
    if (name != nullptr)
        name->Empty();
    if (out != nullptr)
        out->Empty();
    if (text == nullptr || *text == '\0')
        return 1;
    const std::size_t textLength = std::strlen(text);
    if (textLength > INT_MAX - 64)
        AfxThrowMemoryException();

    Lines lines(text);
    const char* line = nullptr;
    int length = 0;
    if (!lines.Read(line, length) || !DecodeUuencodeBegin(line, mode, name))
        return 0;
    if (out == nullptr)
        return 1;

    char* const start = out->GetBuffer(static_cast<int>(textLength));
    char* o = start;
    bool complete = false;
    while (lines.Read(line, length)) {
        const int count = static_cast<BYTE>(line[0]) - ' ';
        if (line[0] == '`' || count <= 0) {
            complete =
                lines.Read(line, length) && length == 3 && CompareAsciiNNoCase(line, "end", 3) == 0;
            break;
        }
        if (length < count * 4 / 3 + 1)
            break;
        o = DecodeLine(line + 1, line + length, count, o);
    }
    out->ReleaseBuffer(static_cast<int>(o - start));
    return complete;
}

void EncodeUuencode(const char* mode, const char* name, const unsigned char* data, int len,
                    CBuffer& out)
{
    out.Empty();
    mode = OrDefault(mode, "644");
    name = OrDefault(name, "dummy");
    if (data == nullptr || len < 0)
        len = 0;
    const std::size_t modeLength = std::strlen(mode);
    const std::size_t nameLength = std::strlen(name);
    const std::size_t fullLines = static_cast<std::size_t>(len / kLineBytes);
    const std::size_t rest = static_cast<std::size_t>(len % kLineBytes);
    constexpr std::size_t kLineLength = 1 + kLineBytes / 3 * 4 + 2;
    const std::size_t size = kBeginLength + modeLength + 1 + nameLength + 2 +
                             fullLines * kLineLength + (rest > 0 ? 1 + (rest + 2) / 3 * 4 + 2 : 0) +
                             sizeof(kTrailer) - 1;
    if (size > INT_MAX - 64)
        AfxThrowMemoryException();
    const std::size_t reserved =
        std::min<std::size_t>(2 * static_cast<std::size_t>(len), INT_MAX - 64);
    char* const start = out.GetBuffer(static_cast<int>(std::max(size, reserved)));
    char* o = PutText(start, kBegin, kBeginLength);
    o = PutText(o, mode, modeLength);
    *o++ = ' ';
    o = PutText(o, name, nameLength);
    o = PutText(o, "\r\n", 2);
    for (int pos = 0; pos < len; pos += kLineBytes)
        o = PutLine(data + pos, len - pos < kLineBytes ? len - pos : kLineBytes, o);
    o = PutText(o, kTrailer, sizeof(kTrailer) - 1);
    out.ReleaseBuffer(static_cast<int>(o - start));
}
