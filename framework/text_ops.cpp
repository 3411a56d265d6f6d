#include "framework/text_ops.h"

#include "framework/format.h"
#include "framework/guard_memory.h"
#include "platform/multibyte.h"
#include "platform/string_table.h"

#include <algorithm>
#include <array>
#include <climits>
#include <vector>

namespace tlvn {

namespace {

// One character of narrow text as its value, stepping over it.
unsigned Next(const char*& p, const char* end)
{
    unsigned c = static_cast<BYTE>(*p);
    if (IsDoubleByte(p, end))
        c = c << 8 | static_cast<BYTE>(*++p);
    p++;
    return c;
}

WCHAR Next(const WCHAR*& p, const WCHAR*)
{
    return *p++;
}

template <typename Char>
const Char* EndOf(std::basic_string_view<Char> text)
{
    return text.data() + text.size();
}

template <typename Char, class Fold>
int Compare(std::basic_string_view<Char> a, std::basic_string_view<Char> b, Fold fold)
{
    const Char* pa = a.data();
    const Char* pb = b.data();
    while (pa != EndOf(a) && pb != EndOf(b)) {
        auto ca = Next(pa, EndOf(a));
        auto cb = Next(pb, EndOf(b));
        if (ca == cb)
            continue;
        ca = fold(ca);
        cb = fold(cb);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return static_cast<int>(pa != EndOf(a)) - static_cast<int>(pb != EndOf(b));
}

// A set of characters that is asked for one at a time: single bytes by a table, the rest by
// searching.
class CharacterSet {
public:
    explicit CharacterSet(std::string_view set)
    {
        for (const char* p = set.data(); p != EndOf(set);) {
            const unsigned c = Next(p, EndOf(set));
            if (c < m_single.size())
                m_single[c] = true;
            else
                m_double.push_back(c);
        }
    }
    bool Has(unsigned c) const
    {
        if (c < m_single.size())
            return m_single[c];
        return std::find(m_double.begin(), m_double.end(), c) != m_double.end();
    }

private:
    std::array<bool, 256> m_single{};
    std::vector<unsigned> m_double;
};

class UnitSet {
public:
    explicit UnitSet(WStringView set) : m_set(set) {}
    bool Has(WCHAR c) const { return m_set.find(c) != WStringView::npos; }

private:
    WStringView m_set;
};

template <class Set, typename Char>
int Span(std::basic_string_view<Char> text, std::basic_string_view<Char> set, bool inside)
{
    const Set characters(set);
    const Char* p = text.data();
    while (p != EndOf(text)) {
        const Char* const start = p;
        if (characters.Has(Next(p, EndOf(text))) != inside)
            return static_cast<int>(start - text.data());
    }
    return static_cast<int>(text.size());
}

template <class Set, typename Char>
int Trimmed(std::basic_string_view<Char> text, std::basic_string_view<Char> set)
{
    const Set characters(set);
    const Char* p = text.data();
    const Char* last = p;
    while (p != EndOf(text))
        if (!characters.Has(Next(p, EndOf(text))))
            last = p;
    return static_cast<int>(last - text.data());
}

// A byte below this is never the trail byte of any of the pages.
constexpr unsigned char kFirstTrail = 0x40;

bool IsValidStart(std::size_t size, int start)
{
    return start >= 0 && static_cast<std::size_t>(start) <= size;
}

int IndexOf(std::size_t position)
{
    return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

// Finds by bytes and drops what begins on a trail byte. `scan` follows the characters up to
// each candidate, so that all of it is one pass.
int FindByCharacters(std::string_view text, std::string_view find, int start)
{
    const char* scan = text.data() + start;
    std::size_t candidate = text.find(find, static_cast<std::size_t>(start));
    while (candidate != std::string_view::npos) {
        const char* const at = text.data() + candidate;
        while (scan < at)
            scan += CharLength(scan, EndOf(text));
        if (scan == at)
            return static_cast<int>(candidate);
        candidate = text.find(find, candidate + 1);
    }
    return -1;
}

template <typename Char>
int Replace(std::basic_string<Char>& text, std::basic_string_view<Char> find,
            std::basic_string_view<Char> replacement)
{
    if (find.empty())
        return 0;
    const std::basic_string_view<Char> source = text;
    int found = FindInText(source, find, 0);
    if (found < 0)
        return 0;

    std::basic_string<Char> result;
    int count = 0;
    std::size_t done = 0;
    while (found >= 0) {
        const auto at = static_cast<std::size_t>(found);
        result.append(source, done, at - done).append(replacement);
        if (result.size() > static_cast<std::size_t>(INT_MAX))
            AfxThrowMemoryException();
        done = at + find.size();
        count++;
        found = FindInText(source, find, static_cast<int>(done));
    }
    result.append(source, done);
    if (result.size() > static_cast<std::size_t>(INT_MAX))
        AfxThrowMemoryException();
    text = std::move(result);
    return count;
}

template <typename Char>
std::basic_string<Char> Formatted(const Char* format, std::va_list args)
{
    std::basic_string<Char> result;
    if (format != nullptr)
        GuardMemory([&] { FormatV(result, format, args); });
    return result;
}

} // namespace

int CompareViews(std::string_view a, std::string_view b)
{
    return Compare(a, b, [](unsigned c) { return c; });
}

int CompareViews(WStringView a, WStringView b)
{
    return a.compare(b);
}

int CompareViewsNoCase(std::string_view a, std::string_view b)
{
    return Compare(a, b, ToLowerMbc);
}

int CompareViewsNoCase(WStringView a, WStringView b)
{
    return Compare(a, b, ToLowerW);
}

int CollateViews(std::string_view a, std::string_view b)
{
    return GuardMemory(
        [&] { return CollateTexts(std::string(a).c_str(), std::string(b).c_str()); });
}

int CollateViews(WStringView a, WStringView b)
{
    return GuardMemory([&] { return CollateTexts(NarrowText(a).c_str(), NarrowText(b).c_str()); });
}

int FindInText(std::string_view text, std::string_view find, int start)
{
    if (!IsValidStart(text.size(), start))
        return -1;
    if (find.empty())
        return start;
    if (static_cast<unsigned char>(find[0]) < kFirstTrail)
        return IndexOf(text.find(find, static_cast<std::size_t>(start)));
    return FindByCharacters(text, find, start);
}

int FindInText(WStringView text, WStringView find, int start)
{
    if (!IsValidStart(text.size(), start))
        return -1;
    return IndexOf(text.find(find, static_cast<std::size_t>(start)));
}

int FindInText(std::string_view text, char c, int start)
{
    return FindInText(text, std::string_view(&c, 1), start);
}

int FindInText(WStringView text, WCHAR c, int start)
{
    return FindInText(text, WStringView(&c, 1), start);
}

int FindLastInText(std::string_view text, char c)
{
    if (static_cast<unsigned char>(c) < kFirstTrail)
        return IndexOf(text.rfind(c));
    int found = -1;
    for (const char* p = text.data(); p != EndOf(text); p += CharLength(p, EndOf(text)))
        if (*p == c && !IsDoubleByte(p, EndOf(text)))
            found = static_cast<int>(p - text.data());
    return found;
}

int FindLastInText(WStringView text, WCHAR c)
{
    return IndexOf(text.rfind(c));
}

int SpanOf(std::string_view text, std::string_view set, bool inside)
{
    return GuardMemory([&] { return Span<CharacterSet>(text, set, inside); });
}

int SpanOf(WStringView text, WStringView set, bool inside)
{
    return Span<UnitSet>(text, set, inside);
}

int LengthWithoutTrailing(std::string_view text, std::string_view set)
{
    return GuardMemory([&] { return Trimmed<CharacterSet>(text, set); });
}

int LengthWithoutTrailing(WStringView text, WStringView set)
{
    return static_cast<int>(text.find_last_not_of(set) + 1);
}

int CharLengthAt(std::string_view text, int index)
{
    return CharLength(text.data() + index, EndOf(text));
}

int CharLengthAt(WStringView, int)
{
    return 1;
}

int ReplaceInText(std::string& text, std::string_view find, std::string_view replacement)
{
    return GuardMemory([&] { return Replace(text, find, replacement); });
}

int ReplaceInText(WString& text, WStringView find, WStringView replacement)
{
    return GuardMemory([&] { return Replace(text, find, replacement); });
}

void UpperText(char* text, int length)
{
    ToUpperMbs(text, length);
}

void UpperText(WCHAR* text, int length)
{
    std::transform(text, text + length, text, ToUpperW);
}

void LowerText(char* text, int length)
{
    ToLowerMbs(text, length);
}

void LowerText(WCHAR* text, int length)
{
    std::transform(text, text + length, text, ToLowerW);
}

void ReverseText(char* text, int length)
{
    // Turning each double-byte character round first lets the whole turn put it right again.
    char* const end = text + length;
    for (char* p = text; p != end;) {
        const int bytes = CharLength(p, end);
        std::reverse(p, p + bytes);
        p += bytes;
    }
    std::reverse(text, end);
}

void ReverseText(WCHAR* text, int length)
{
    std::reverse(text, text + length);
}

WString ConvertText(std::string_view text)
{
    return GuardMemory([&] { return WidenText(text); });
}

std::string ConvertText(WStringView text)
{
    return GuardMemory([&] { return NarrowText(text); });
}

std::string FormatText(const char* format, std::va_list args)
{
    return Formatted(format, args);
}

WString FormatText(const WCHAR* format, std::va_list args)
{
    return Formatted(format, args);
}

bool LoadMessage(UINT id, std::string& text)
{
    const WStringView message = FindMessage(id);
    if (message.empty())
        return false;
    text = ConvertText(message);
    return true;
}

bool LoadMessage(UINT id, WString& text)
{
    const WStringView message = FindMessage(id);
    if (message.empty())
        return false;
    GuardMemory([&] { text = message; });
    return true;
}

} // namespace tlvn
