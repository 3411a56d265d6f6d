#include "foundation/scanner.h"

#include "foundation/multibyte.h"
#include "platform/nls.h"

namespace {

int TextLength(const char* s)
{
    return tlvn::MbsLength(s);
}

int TextLength(const WCHAR* s)
{
    return static_cast<int>(std::char_traits<WCHAR>::length(s));
}

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
    if (len < 0)
        len = TextLength(s);
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
