#include "mailtext/url_finder.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "foundation/char_type.h"
#include "mailtext/character_set.h"
#include "mailtext/link_text.h"

#include <cstring>
#include <string_view>

using namespace tlvn;

namespace {

constexpr CharacterSet
    kUrl(".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-=^~!$%&*+/?|#@:;,");

enum class Kind { Mailto, Web, Path };

struct Scheme {
    std::string_view text; // in lower case
    Kind kind;
};
constexpr Scheme kSchemes[] = {
    {"mailto:", Kind::Mailto}, {"http:", Kind::Web},  {"https:", Kind::Web},
    {"ftp:", Kind::Web},       {"file:", Kind::Path}, {"gopher:", Kind::Web},
};

template <class Char>
bool IsAscii(Char c)
{
    return static_cast<std::make_unsigned_t<Char>>(c) < 0x80;
}

template <class Char>
bool IsAsciiAlnum(Char c)
{
    return IsAscii(c) && IsAlnum(static_cast<char>(c));
}

// [start, end) is what the URL is recognised by.
template <class Char>
struct Match {
    const Char* start = nullptr; // null for none
    const Char* end = nullptr;
    Kind kind = Kind::Path;
};

// Finds the beginning of the first URL. Every beginning has a ":" or a "\" in it, and none
// overlaps another, so their order is that of these characters.
template <class Char>
class BeginningSearch {
public:
    BeginningSearch(const Char* text, const Char* end) : m_text(text), m_end(end), m_boundary(text)
    {}

    Match<Char> FindFirst()
    {
        constexpr Char kColon = ':';
        constexpr Char kBackslash = '\\';
        for (const Char* p = m_text;; ++p) {
            p = FindEither(p, m_end, kColon, kBackslash);
            if (p == m_end)
                return {};
            const Match<Char> match = *p == kColon ? MatchColon(p) : MatchNetworkPath(p);
            if (match.start != nullptr)
                return match;
        }
    }

private:
    // A scheme or a drive of which the colon is at p.
    Match<Char> MatchColon(const Char* p)
    {
        if (p == m_text || !IsAsciiAlnum(p[-1]))
            return {};
        for (const Scheme& scheme : kSchemes) {
            const Char* const start = FindSchemeStart(scheme.text, p);
            if (start == nullptr)
                continue;
            bool& discarded = m_discarded[&scheme - kSchemes];
            discarded = discarded || FollowsAlnum(start);
            return discarded ? Match<Char>() : Match<Char>{start, p + 1, scheme.kind};
        }
        const Char* const drive = p - 1;
        const bool found = m_end - p > 1 && p[1] == '\\' && IsAlpha(static_cast<char>(*drive)) &&
                           m_boundary.IsStart(drive) && !FollowsAlnum(drive);
        return found ? Match<Char>{drive, p + 2, Kind::Path} : Match<Char>();
    }

    // Where the scheme starts whose last character is at p, or null.
    const Char* FindSchemeStart(std::string_view scheme, const Char* p)
    {
        const auto before = static_cast<std::ptrdiff_t>(scheme.size()) - 1;
        if (p - m_text < before)
            return nullptr;
        const Char* const start = p - before;
        for (std::ptrdiff_t i = before - 1; i >= 0; --i) {
            if (!IsAsciiAlnum(start[i]) ||
                ToLowerAscii(static_cast<char>(start[i])) != scheme[static_cast<std::size_t>(i)])
                return nullptr;
        }
        return m_boundary.IsStart(start) ? start : nullptr;
    }

    // A network path of which the first backslash is at p. A run of more than two backslashes
    // ends in one.
    Match<Char> MatchNetworkPath(const Char* p)
    {
        constexpr Char kBackslash = '\\';
        const bool pair = m_end - p > 2 && p[1] == kBackslash && p[2] != kBackslash;
        if (!pair || !m_boundary.IsStart(p) || FollowsAlnum(p))
            return {};
        typename LinkText<Char>::Boundary boundary(p + 2);
        for (const Char* q = p + 2;; ++q) {
            q = FindEither(q, m_end, kBackslash, kBackslash);
            if (m_end - q < 2)
                return {};
            if (q[1] != kBackslash && boundary.IsStart(q))
                return {p, q + 1, Kind::Path};
        }
    }

    // True when the character before p, where one starts, is an ASCII letter or digit.
    bool FollowsAlnum(const Char* p)
    {
        return p != m_text && IsAsciiAlnum(p[-1]) && m_boundary.IsStart(p - 1);
    }

    const Char* m_text;
    const Char* m_end;
    typename LinkText<Char>::Boundary m_boundary;
    bool m_discarded[std::size(kSchemes)] = {};
};

// The full-width space in narrow text of a code type, found out when first needed.
class FullWidthSpace {
public:
    explicit FullWidthSpace(CodeType codeType) : m_codeType(codeType) {}

    bool IsAt(const char* p, const char* end)
    {
        if (end - p < kLength)
            return false;
        if (!m_known)
            Convert();
        return m_exists && std::memcmp(p, m_bytes, kLength) == 0;
    }

private:
    static constexpr int kLength = 2;

    void Convert()
    {
        constexpr char kShiftJis[] = "\x81\x40";
        constexpr UINT kShiftJisPage = 932;
        m_known = true;
        m_exists = true;
        std::memcpy(m_bytes, kShiftJis, kLength);
        if (CharSetCode2CodePage(m_codeType) == kShiftJisPage)
            return;
        CBuffer converted;
        ConvertToOtherCodeType2(CT_SJIS, kShiftJis, kLength, m_codeType, converted, 0);
        m_exists = converted.GetLength() == kLength;
        if (m_exists)
            std::memcpy(m_bytes, static_cast<const char*>(converted), kLength);
    }

    CodeType m_codeType;
    bool m_known = false;
    bool m_exists = false;
    char m_bytes[kLength] = {};
};

// What the two forms of text have their own ideas of. DoubleLength is the length of the
// double-byte character at p, or 0 when there is another; EndsHost is asked of what is not
// ASCII only.

struct NarrowRules {
    FullWidthSpace space;

    int DoubleLength(const char* p, const char* end) const { return IsDoubleByte(p, end) ? 2 : 0; }
    bool EndsHost(const char* p, const char* end) { return space.IsAt(p, end); }
    bool IsSpaceOrControl(char c) const { return static_cast<BYTE>(c) <= ' ' || c == '\x7F'; }
};

struct WideRules {
    int DoubleLength(const WCHAR* p, const WCHAR* end) const
    {
        if (IsAscii(*p) || (ClassAt(p, end) & CHARTYPE_DOUBLE) == 0)
            return 0;
        const bool pair = end - p > 1 && (p[0] & 0xFC00) == 0xD800 && (p[1] & 0xFC00) == 0xDC00;
        return pair ? 2 : 1;
    }
    bool EndsHost(const WCHAR* p, const WCHAR* end) const
    {
        return ClassAt(p, end) == (CHARTYPE_DOUBLE | CHARTYPE_SPACE);
    }
    bool IsSpaceOrControl(WCHAR c) const
    {
        return IsSpaceW(c) || c < ' ' || (c >= 0x7F && c < 0xA0);
    }

    // The class without what stands before: that decides between the kinds of kana only.
    static int ClassAt(const WCHAR* p, const WCHAR* end)
    {
        const char* const bytes = reinterpret_cast<const char*>(p);
        return GetCharType(bytes, end - p > 1 ? 4 : 2, bytes, CT_UNICODE);
    }
};

// Moves over what takes(p) says is part of the URL; takes answers the number of units, 0 to end.
template <class Char, class Takes>
const Char* Extend(const Char* p, const Char* end, Takes takes)
{
    while (p != end) {
        const int units = takes(p);
        if (units == 0)
            break;
        p += units;
    }
    return p;
}

template <class Char, class Rules>
const Char* ExtendWeb(const Char* p, const Char* end, Rules& rules)
{
    while (p != end && *p == '/')
        ++p;
    p = Extend(p, end, [&](const Char* q) {
        if (IsAscii(*q))
            return *q != '/' && kUrl.Has(*q) ? 1 : 0;
        return rules.EndsHost(q, end) ? 0 : std::max(rules.DoubleLength(q, end), 1);
    });
    if (p == end || *p != '/')
        return p;
    return Extend(p, end, [](const Char* q) { return kUrl.Has(*q) ? 1 : 0; });
}

template <class Char, class Rules>
const Char* ExtendMailto(const Char* p, const Char* end, bool bracketed, Rules& rules)
{
    bool inQuery = false;
    return Extend(p, end, [&](const Char* q) {
        if (kUrl.Has(*q)) {
            inQuery = inQuery || *q == '?';
            return 1;
        }
        const int length = rules.DoubleLength(q, end);
        if (bracketed)
            return *q == '>' ? 0 : std::max(length, 1);
        if (!inQuery)
            return 0;
        return length > 0 ? length : rules.IsSpaceOrControl(*q) ? 0 : 1;
    });
}

// `close` ends the path, or is 0 when only other characters do.
template <class Char, class Rules>
const Char* ExtendPath(const Char* p, const Char* end, Char close, Rules& rules)
{
    return Extend(p, end, [&](const Char* q) {
        if (kUrl.Has(*q) || *q == '\\')
            return 1;
        const int length = rules.DoubleLength(q, end);
        if (length > 0)
            return length;
        return close != 0 && *q != close ? 1 : 0;
    });
}

template <class Char, class Rules>
int FindUrl(const Char* text, int units, Rules rules, int& foundUnits)
{
    const Char* const end = text + units;
    const Match<Char> match = BeginningSearch<Char>(text, end).FindFirst();
    if (match.start == nullptr)
        return -1;
    const Char before = match.start == text ? Char{} : match.start[-1];
    const Char* p = match.end;
    if (match.kind == Kind::Web)
        p = ExtendWeb(p, end, rules);
    else if (match.kind == Kind::Mailto)
        p = ExtendMailto(p, end, before == '<', rules);
    else
        p = ExtendPath(p, end,
                       before == '<'   ? Char{'>'}
                       : before == '"' ? Char{'"'}
                                       : Char{},
                       rules);
    foundUnits = static_cast<int>(p - match.start);
    return static_cast<int>(match.start - text);
}

} // namespace

int FindUrlA(const char* text, int length, CodeType codeType, int& foundLength)
{
    foundLength = 0;
    if (text == nullptr)
        return -1;
    return FindUrl(text, CountLinkUnits(text, length), NarrowRules{FullWidthSpace(codeType)},
                   foundLength);
}

int FindUrlW(const WCHAR* text, int length, int& foundLength)
{
    foundLength = 0;
    if (text == nullptr)
        return -1;
    constexpr int kUnitSize = sizeof(WCHAR);
    const int start = FindUrl(text, CountLinkUnits(text, length), WideRules(), foundLength);
    foundLength *= kUnitSize;
    return start < 0 ? -1 : start * kUnitSize;
}

void AddMailtoParam(const char* name, const char* value, CString& url)
{
    CString added(url.Find('?') < 0 ? '?' : '&');
    added += name;
    added += '=';
    added += value;
    url += added;
}
