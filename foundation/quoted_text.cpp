#include "foundation/quoted_text.h"

#include "foundation/text_length.h"
#include "platform/multibyte.h"

#include <string>

namespace {

bool NeedsBackslash(char c)
{
    return c == '\\' || c == '"';
}

// Position behind the character at pos < len.
int Next(const char* text, int len, int pos)
{
    return pos + tlvn::CharLength(text + pos, text + len);
}

// True when a backslash stands before pos that is not the trail byte of a character.
bool FollowsBackslash(const char* text, int len, int pos)
{
    return pos > 0 && text[pos - 1] == '\\' &&
           !tlvn::IsInsideCharacter(text, text + pos - 1, text + len);
}

void Assign(CStringA& s, const std::string& text)
{
    if (text.size() > INT_MAX)
        AfxThrowMemoryException();
    s = CStringA(text.data(), static_cast<int>(text.size()));
}

// [first, end) of s without the backslashes for which `drops` says so, given the character after
// it ('\0' at the end).
template <class Drops>
std::string WithoutBackslashes(const char* s, int first, int end, Drops drops)
{
    return tlvn::GuardMemory([&] {
        std::string out;
        out.reserve(static_cast<std::size_t>(end - first));
        for (int i = first; i < end;) {
            if (s[i] == '\\' && drops(i + 1 < end ? s[i + 1] : '\0') && ++i == end)
                break;
            const int next = Next(s, end, i);
            out.append(s + i, static_cast<std::size_t>(next - i));
            i = next;
        }
        return out;
    });
}

} // namespace

void EnquoteText(CStringA& s)
{
    const char* const text = s;
    const int len = s.GetLength();
    const std::string quoted = tlvn::GuardMemory([&] {
        std::string out(1, '"');
        for (int i = 0; i < len;) {
            if (NeedsBackslash(text[i]))
                out += '\\';
            const int next = Next(text, len, i);
            out.append(text + i, static_cast<std::size_t>(next - i));
            i = next;
        }
        return out += '"';
    });
    Assign(s, quoted);
}

void DequoteText(CStringA& s)
{
    const char* const text = s;
    int end = s.GetLength();
    const int first = end > 0 && text[0] == '"' ? 1 : 0;
    if (end > first && text[end - 1] == '"' && !FollowsBackslash(text, end, end - 1))
        --end;
    Assign(s, WithoutBackslashes(text, first, end, NeedsBackslash));
}

int GetEnquotedLength(const char* s)
{
    if (s == nullptr || *s != '"')
        return -1;
    const int len = tlvn::TextLength(s);
    for (int i = 1; i < len; i = Next(s, len, i)) {
        if (s[i] == '"')
            return i + 1;
        if (s[i] == '\\' && ++i == len)
            break;
    }
    return -1;
}

void GetQuotedToken(CStringA& s)
{
    Assign(s, WithoutBackslashes(s, 0, s.GetLength(), [](char) { return true; }));
}

int GetParenthesisToken(const char* text, CStringA& inner, CStringA& rest)
{
    const CStringA whole(text);
    const char* const p = whole;
    const int len = whole.GetLength();
    int depth = 0;
    int open = 0;
    for (int i = 0; i < len; i = Next(p, len, i)) {
        if (p[i] == '(') {
            ++depth;
            open = i;
        } else if (p[i] == ')' && depth > 0 && --depth == 0) {
            inner = CStringA(p + open + 1, i - open - 1);
            rest = CStringA(p, open);
            rest.Append(p + i + 1, len - i - 1);
            return open;
        }
    }
    rest = whole;
    inner.Empty();
    return -1;
}

int GetCorrespondParen(const char* text, int len, int openPos, int noQuotes)
{
    if (text == nullptr || openPos < 0)
        return -1;
    len = tlvn::TextLength(text, len);
    if (openPos >= len)
        return -1;
    int depth = 1;
    bool quoted = false;
    for (int i = openPos + 1; i < len; i = Next(text, len, i)) {
        const char c = text[i];
        if (c == '"' && noQuotes == 0)
            quoted = !quoted;
        else if (c == '(' && !quoted)
            ++depth;
        else if (c == ')' && !quoted && --depth == 0)
            return i;
    }
    return -1;
}

int FindDelimiter(const char* text, int start, char delim, int quotes, int escapeMode)
{
    if (text == nullptr || start < 0)
        return -1;
    const int len = tlvn::TextLength(text);
    if (start >= len)
        return -1;

    bool quoted = false;
    bool afterBackslash = FollowsBackslash(text, len, start);
    for (int i = start; i < len;) {
        const char c = text[i];
        if (quoted && c == '\\' && escapeMode == 1) {
            const int skipped = i + 1;
            if (skipped >= len)
                break;
            afterBackslash = text[skipped] == '\\';
            i = Next(text, len, skipped);
            continue;
        }
        if (c == '"' && quotes != 0 && (escapeMode == 0 || !afterBackslash))
            quoted = !quoted;
        else if (c == delim && !quoted && !tlvn::IsDoubleByte(text + i, text + len))
            return i;
        afterBackslash = c == '\\';
        i = Next(text, len, i);
    }
    return -1;
}
