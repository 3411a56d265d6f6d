#include "foundation/scanner.h"

#include "foundation/allocation.h"
#include "foundation/multibyte.h"
#include "foundation/text_length.h"
#include "platform/nls.h"

namespace {

bool IsWhite(char c)
{
    return tlvn::IsSpace(c);
}

bool IsWhite(WCHAR c)
{
    return tlvn::IsSpaceW(c);
}

// Moves over double-byte characters, and over single ones as long as they are white space (or
// are not, as `overSpace` says).
template <class Char>
int Skip(const Char* s, int len, int& pos, bool overSpace)
{
    if (s == nullptr || pos < 0)
        return 0;
    len = tlvn::TextLength(s, len);
    while (pos < len) {
        if (IsTLead(s, pos, len)) {
            pos += 2;
            continue;
        }
        if (IsWhite(s[pos]) != overSpace)
            return 1;
        ++pos;
    }
    pos = len;
    return 0;
}

template <class Char>
bool IsLineEnd(Char c)
{
    return c == '\r' || c == '\n';
}

template <class Char>
int IsHead(const Char* s, int len, int pos)
{
    if (s == nullptr || pos < 0)
        return 0;
    if (pos == 0)
        return 1;
    return pos <= tlvn::TextLength(s, len) && IsLineEnd(s[pos - 1]) ? 1 : 0;
}

template <class Char>
int IsTail(const Char* s, int len, int pos)
{
    if (s == nullptr || pos < 0)
        return 0;
    len = tlvn::TextLength(s, len);
    return pos == len || (pos < len && IsLineEnd(s[pos])) ? 1 : 0;
}

template <class Char>
int IsOneOf(Char c, const Char* set)
{
    if (set == nullptr)
        return 0;
    for (; *set != 0; ++set) {
        if (*set == c)
            return 1;
    }
    return 0;
}

} // namespace

int SkipSpace(const char* s, int len, int& pos)
{
    return Skip(s, len, pos, true);
}

int SkipSpace(const WCHAR* s, int len, int& pos)
{
    return Skip(s, len, pos, true);
}

int SkipNotSpace(const char* s, int len, int& pos)
{
    return Skip(s, len, pos, false);
}

int SkipNotSpace(const WCHAR* s, int len, int& pos)
{
    return Skip(s, len, pos, false);
}

int IsLineHead(const char* s, int len, int pos)
{
    return IsHead(s, len, pos);
}

int IsLineHead(const WCHAR* s, int len, int pos)
{
    return IsHead(s, len, pos);
}

int IsLineTail(const char* s, int len, int pos)
{
    return IsTail(s, len, pos);
}

int IsLineTail(const WCHAR* s, int len, int pos)
{
    return IsTail(s, len, pos);
}

int ispbrk(char c, const char* set)
{
    return IsOneOf(c, set);
}

int istpbrk(char c, const char* set)
{
    if (set == nullptr || c == '\0')
        return 0;
    return tlvn::FindMbc(set, static_cast<BYTE>(c)) != nullptr ? 1 : 0;
}

int iswpbrk(WCHAR c, const WCHAR* set)
{
    return IsOneOf(c, set);
}

int CountMoji(const char* s, int len)
{
    if (s == nullptr)
        return 0;
    const char* const end = s + tlvn::TextLength(s, len);
    int count = 0;
    for (; s < end; s += tlvn::CharLength(s, end))
        ++count;
    return count;
}

int CountMoji(const void* s, int len, CodeType ct)
{
    if (!IsCodeTypeUnicode(ct))
        return CountMoji(static_cast<const char*>(s), len);
    if (s == nullptr)
        return 0;
    return (len >= 0 ? len : tv_wcsnlen(static_cast<const WCHAR*>(s), INT_MAX)) / 2;
}

int TruncateEx(CStringA& s, int len)
{
    if (len < 0 || s.GetLength() <= len)
        return 0;
    const char* const text = s;
    if (tlvn::IsInsideCharacter(text, text + len, text + s.GetLength()))
        --len;
    s.Truncate(len);
    return 1;
}

int TruncateEx(CStringW& s, int len)
{
    if (len < 0 || s.GetLength() <= len)
        return 0;
    s.Truncate(len);
    return 1;
}
