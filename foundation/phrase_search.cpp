#include "foundation/phrase_search.h"

#include "foundation/character_boundary.h"
#include "framework/framework.h"
#include "platform/ascii_run.h"
#include "platform/nls.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

namespace tlvn {

namespace {

// The character, byte or unit at a position, case folded when asked for.
struct Element {
    unsigned value;
    int size;
};

WCHAR LoadUnit(const char* p)
{
    WCHAR unit;
    std::memcpy(&unit, p, sizeof unit);
    return unit;
}

unsigned LoadByte(const char* p)
{
    return static_cast<BYTE>(*p);
}

Element MakeElement(PhraseSearch::Unit unit, bool fold, const char* p, int size)
{
    switch (unit) {
    case PhraseSearch::Byte:
        return {fold ? static_cast<BYTE>(ToLowerAscii(*p)) : LoadByte(p), 1};
    case PhraseSearch::Utf16:
        // An odd byte at the end is no unit; a value above them all equals none.
        if (size < 2)
            return {0x10000, 1};
        return {fold ? ToLowerW(LoadUnit(p)) : LoadUnit(p), 2};
    default: {
        const unsigned c = size == 2 ? LoadByte(p) << 8 | LoadByte(p + 1) : LoadByte(p);
        return {fold ? ToLowerMbc(c) : c, size};
    }
    }
}

// The element that starts at p < end.
Element ElementAt(PhraseSearch::Unit unit, bool fold, const char* p, const char* end)
{
    int size = 1;
    if (unit == PhraseSearch::Character)
        size = CharLength(p, end);
    else if (unit == PhraseSearch::Utf16 && end - p >= 2)
        size = 2;
    return MakeElement(unit, fold, p, size);
}

// Comparing more than this many bytes for each byte of progress, and so many to begin with,
// hands the search over to the failure table.
constexpr INT64 kCostPerByte = 4;
constexpr INT64 kFreeCost = 1 << 14;

// The search with a failure table, over elements given one at a time in the order of the
// search. Knows when the last elements fed are the phrase.
class FailureTable {
public:
    explicit FailureTable(std::vector<unsigned> phrase)
        : m_phrase(std::move(phrase)), m_failure(m_phrase.size(), 0), m_matched(0)
    {
        for (std::size_t i = 1, matched = 0; i < m_phrase.size(); ++i) {
            while (matched > 0 && m_phrase[matched] != m_phrase[i])
                matched = m_failure[matched - 1];
            if (m_phrase[matched] == m_phrase[i])
                ++matched;
            m_failure[i] = matched;
        }
    }

    bool Feed(unsigned value)
    {
        if (m_matched == m_phrase.size())
            m_matched = m_failure[m_matched - 1];
        while (m_matched > 0 && m_phrase[m_matched] != value)
            m_matched = m_failure[m_matched - 1];
        if (m_phrase[m_matched] == value)
            ++m_matched;
        return m_matched == m_phrase.size();
    }

private:
    std::vector<unsigned> m_phrase;
    std::vector<std::size_t> m_failure; // length of the longest border of each prefix
    std::size_t m_matched;
};

} // namespace

// The elements of the phrase, for a failure table.
std::vector<unsigned> PhraseSearch::Elements() const
{
    std::vector<unsigned> elements;
    const char* end = m_phrase + m_length;
    for (const char* p = m_phrase; p < end;) {
        const Element element = ElementAt(m_unit, m_ignoreCase, p, end);
        elements.push_back(element.value);
        p += element.size;
    }
    return elements;
}

PhraseSearch::PhraseSearch(Unit unit, const void* phrase, int length, bool ignoreCase)
    : m_unit(unit), m_phrase(static_cast<const char*>(phrase)), m_length(length),
      m_ignoreCase(ignoreCase), m_endsInLead(false), m_filters{}
{
    if (length > 0)
        SetFilters();
}

void PhraseSearch::SetFilters()
{
    const char* const end = m_phrase + m_length;
    const Element first = ElementAt(m_unit, false, m_phrase, end);
    Element last = first;
    if (m_unit == Character) {
        for (const char* p = m_phrase; p < end; p += last.size)
            last = ElementAt(m_unit, false, p, end);
        m_endsInLead = last.size == 1 && IsLeadByte(end[-1]);
    } else if (m_unit == Byte) {
        last = ElementAt(m_unit, false, end - 1, end);
    }

    const auto setForms = [](Filter& filter, int offset, unsigned lower, unsigned upper) {
        filter = {offset, {static_cast<char>(lower), static_cast<char>(upper)}};
    };
    if (m_unit == Utf16 && m_ignoreCase) {
        // The first unit has two cases; the others may have more.
        const unsigned lower = ToLowerW(static_cast<WCHAR>(first.value));
        const unsigned upper = ToUpperW(static_cast<WCHAR>(first.value));
        setForms(m_filters[0], 0, lower, upper);
        setForms(m_filters[1], 1, lower >> 8, upper >> 8);
        return;
    }
    if (m_unit == Utf16) {
        // High bytes are all alike.
        const int offset = m_length > 2 ? m_length - 2 : 1;
        setForms(m_filters[0], 0, LoadByte(m_phrase), LoadByte(m_phrase));
        setForms(m_filters[1], offset, LoadByte(m_phrase + offset), LoadByte(m_phrase + offset));
        return;
    }
    // So are lead bytes: of a double-byte character the trail byte is taken.
    const auto setFilter = [&](Filter& filter, int offset, unsigned value) {
        const bool folds = m_ignoreCase && (m_unit == Character || value < 0x80);
        setForms(filter, offset, folds ? ToLowerMbc(value) : value,
                 folds ? ToUpperMbc(value) : value);
    };
    setFilter(m_filters[0], first.size - 1, first.value);
    setFilter(m_filters[1], m_length - 1, last.value);
}

bool PhraseSearch::PassesFilters(const char* p) const
{
    for (const Filter& filter : m_filters) {
        const char c = p[filter.offset];
        if (c != filter.forms[0] && c != filter.forms[1])
            return false;
    }
    return true;
}

// Compares the phrase with the text at p, of which `end - p` bytes are at least m_length; adds
// to `cost` the bytes looked at.
bool PhraseSearch::Matches(const char* p, const char* end, INT64& cost) const
{
    if (m_endsInLead && p + m_length < end && IsTrailByte(p[m_length]))
        return false;
    if (!m_ignoreCase) {
        const auto length = static_cast<std::size_t>(m_length);
        const bool equal = std::memcmp(p, m_phrase, length) == 0;
        cost += equal ? 0 : 1 + m_length / 16;
        return equal;
    }
    const char* phraseEnd = m_phrase + m_length;
    int i = 0;
    while (i < m_length) {
        const Element a = ElementAt(m_unit, true, m_phrase + i, phraseEnd);
        const Element b = ElementAt(m_unit, true, p + i, p + m_length);
        if (a.value != b.value)
            break;
        i += a.size;
    }
    cost += 1 + i;
    return i >= m_length;
}

const char* PhraseSearch::FindFirst(const char* from, const char* end) const
{
    if (m_length < 1 || end - from < m_length)
        return nullptr;
    CharacterBoundary boundary(from);
    const char* const lastStart = end - m_length;
    INT64 cost = -kFreeCost;
    const auto accepts = [&](const char* p) {
        if (m_unit == Utf16 && (p - from) % 2 != 0)
            return false;
        if (m_unit == Character && !boundary.IsStart(p))
            return false;
        return Matches(p, end, cost);
    };
    const auto tooCostly = [&](const char* p) { return cost > (p - from) * kCostPerByte; };

    const char* p = from;
#ifdef TLVN_HAS_SSE2
    const auto load = [](const char* at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    };
    const auto passes = [](__m128i bytes, __m128i lower, __m128i upper) {
        return _mm_or_si128(_mm_cmpeq_epi8(bytes, lower), _mm_cmpeq_epi8(bytes, upper));
    };
    const __m128i lower0 = _mm_set1_epi8(m_filters[0].forms[0]);
    const __m128i upper0 = _mm_set1_epi8(m_filters[0].forms[1]);
    const __m128i lower1 = _mm_set1_epi8(m_filters[1].forms[0]);
    const __m128i upper1 = _mm_set1_epi8(m_filters[1].forms[1]);
    for (; lastStart - p >= 16; p += 16) {
        const __m128i hits16 = _mm_and_si128(passes(load(p + m_filters[0].offset), lower0, upper0),
                                             passes(load(p + m_filters[1].offset), lower1, upper1));
        auto hits = static_cast<unsigned>(_mm_movemask_epi8(hits16));
        for (; hits != 0; hits &= hits - 1) {
            const char* candidate = p + std::countr_zero(hits);
            if (accepts(candidate))
                return candidate;
        }
        if (tooCostly(p + 16))
            return FindByTable(from, p + 16, end);
    }
#endif
    for (; p <= lastStart; ++p) {
        if (PassesFilters(p) && accepts(p))
            return p;
        if (tooCostly(p + 1))
            return FindByTable(from, p + 1, end);
    }
    return nullptr;
}

// Goes on with the search that began at `from`, from p on.
const char* PhraseSearch::FindByTable(const char* from, const char* p, const char* end) const
{
    if (m_unit == Utf16)
        p += (p - from) % 2;
    else if (m_unit == Character && p < end && !CharacterBoundary(from).IsStart(p))
        ++p;

    FailureTable table = GuardMemory([this] { return FailureTable(Elements()); });
    while (p < end) {
        const Element element = ElementAt(m_unit, m_ignoreCase, p, end);
        p += element.size;
        if (table.Feed(element.value) && PassesFilters(p - m_length))
            return p - m_length;
    }
    return nullptr;
}

const char* PhraseSearch::FindLast(const char* begin, const char* from, const char* end) const
{
    if (m_length < 1 || end - begin < m_length)
        return nullptr;
    const int step = m_unit == Utf16 ? 2 : 1;
    if (from > end - m_length)
        from -= (from - (end - m_length) + step - 1) / step * step;

    CharacterBoundary boundary(begin);
    const char* const top = from;
    INT64 cost = -kFreeCost;
    for (const char* p = from; p >= begin; p -= step) {
        if (!PassesFilters(p) || (m_unit == Character && !boundary.IsStart(p)))
            continue;
        if (Matches(p, end, cost))
            return p;
        if (cost > (top - p) * kCostPerByte)
            return FindLastByTable(begin, p - step + m_length);
    }
    return nullptr;
}

// The last occurrence that ends at or before `end`, which may lie inside a character: that one
// is then left out.
const char* PhraseSearch::FindLastByTable(const char* begin, const char* end) const
{
    CharacterBoundary boundary(begin);
    if (m_unit == Character && !boundary.IsStart(end))
        --end;

    FailureTable table = GuardMemory([this] {
        std::vector<unsigned> backwards = Elements();
        std::reverse(backwards.begin(), backwards.end());
        return FailureTable(std::move(backwards));
    });
    const char* p = end;
    while (p > begin) {
        int size = 1;
        if (m_unit == Utf16)
            size = p - begin >= 2 ? 2 : 1;
        else if (m_unit == Character && p - begin >= 2 && !boundary.IsStart(p - 1))
            size = 2;
        p -= size;
        if (table.Feed(MakeElement(m_unit, m_ignoreCase, p, size).value) && PassesFilters(p))
            return p;
    }
    return nullptr;
}

} // namespace tlvn
