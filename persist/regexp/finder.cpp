#include "persist/regexp/finder.h"

#include "platform/ascii_run.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tlvn::regexp {

namespace {

constexpr std::size_t kLongestStep = 1 << 16;

// The first zero among n units, of which only those up to it are read; else null.
const BYTE* FindZero(const BYTE* p, std::size_t n)
{
    return static_cast<const BYTE*>(std::memchr(p, 0, n));
}
const WCHAR* FindZero(const WCHAR* p, std::size_t n)
{
    for (const WCHAR* const end = p + n; p != end; ++p) {
        if (*p == 0)
            return p;
    }
    return nullptr;
}

#ifdef TLVN_HAS_SSE2

template <int kCount, typename Char>
struct VectorRanges {
    static constexpr int kSize = kCount > 0 ? kCount : 1;
    __m128i low[kSize];
    __m128i width[kSize];

    explicit VectorRanges(const Probe<Char>& probe)
    {
        for (int i = 0; i < kCount; ++i) {
            const UnitRange<Char>& range = probe.ranges[std::min(i, probe.count - 1)];
            low[i] = Filled(range.low);
            width[i] = Filled(static_cast<Char>(range.high - range.low));
        }
    }

    static __m128i Filled(BYTE unit) { return _mm_set1_epi8(static_cast<char>(unit)); }
    static __m128i Filled(WCHAR unit) { return _mm_set1_epi16(static_cast<short>(unit)); }

    // All ones in the places of units within a range: there, what the unit lies above the
    // lowest is nothing above the width.
    __m128i Test(const Char* p) const
    {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i zero = _mm_setzero_si128();
        __m128i within = zero;
        for (int i = 0; i < kCount; ++i) {
            if constexpr (sizeof(Char) == 1) {
                const __m128i above = _mm_subs_epu8(_mm_sub_epi8(units, low[i]), width[i]);
                within = _mm_or_si128(within, _mm_cmpeq_epi8(above, zero));
            } else {
                const __m128i above = _mm_subs_epu16(_mm_sub_epi16(units, low[i]), width[i]);
                within = _mm_or_si128(within, _mm_cmpeq_epi16(above, zero));
            }
        }
        return within;
    }
};

#endif

} // namespace

template <typename Char>
bool GrowingText<Char>::Extend(const Char* p)
{
    if (m_ended)
        return false;
    const Char* const from = std::max(m_known, p);
    const Char* const zero = FindZero(from, m_step);
    m_ended = zero != nullptr;
    m_known = m_ended ? zero : from + m_step;
    m_step = std::min(m_step * 2, kLongestStep);
    return true;
}

template <typename Char>
Probe<Char> MakeProbe(int offset, const std::vector<UnitRange<Char>>& ranges)
{
    // The gaps to keep are the widest; each is told by the range before it.
    std::vector<std::size_t> gaps;
    for (std::size_t i = 0; i + 1 < ranges.size(); ++i)
        gaps.push_back(i);
    const auto width = [&](std::size_t i) { return ranges[i + 1].low - ranges[i].high; };
    const std::size_t kept = std::min<std::size_t>(gaps.size(), kMaxRanges - 1);
    std::partial_sort(gaps.begin(), gaps.begin() + static_cast<std::ptrdiff_t>(kept), gaps.end(),
                      [&](std::size_t a, std::size_t b) { return width(a) > width(b); });
    gaps.resize(kept);
    std::sort(gaps.begin(), gaps.end());

    Probe<Char> probe;
    probe.offset = offset;
    std::size_t first = 0;
    const auto close = [&](std::size_t last) {
        probe.ranges[probe.count++] = {ranges[first].low, ranges[last].high};
        first = last + 1;
    };
    for (const std::size_t gap : gaps)
        close(gap);
    if (!ranges.empty())
        close(ranges.size() - 1);
    return probe;
}

template <typename Char>
Finder<Char>::Finder(const Probe<Char>& first, const Probe<Char>& second)
    : m_first(first), m_second(second), m_reach(std::max(first.offset, second.offset))
{
    using Scanner = const Char* (*)(const Finder&, const Char*, const Char*);
    // By the ranges of the first probe (1, 2, more) and the second (none, 1, 2, more).
    static constexpr Scanner scanners[3][4] = {
        {&Finder::Scan<1, 0>, &Finder::Scan<1, 1>, &Finder::Scan<1, 2>, &Finder::Scan<1, 4>},
        {&Finder::Scan<2, 0>, &Finder::Scan<2, 1>, &Finder::Scan<2, 2>, &Finder::Scan<2, 4>},
        {&Finder::Scan<4, 0>, &Finder::Scan<4, 1>, &Finder::Scan<4, 2>, &Finder::Scan<4, 4>},
    };
    if (m_first.count != 0)
        m_scan = scanners[std::min(m_first.count, 3) - 1][std::min(m_second.count, 3)];
}

template <typename Char>
const Char* Finder<Char>::Find(const Char* p, GrowingText<Char>& text) const
{
    for (;;) {
        if (text.GetKnown() - p > m_reach) {
            const Char* const end = text.GetKnown() - m_reach;
            const Char* const found = m_scan(*this, p, end);
            if (found != nullptr)
                return found;
            p = end;
        }
        if (!text.Extend(p))
            return nullptr;
    }
}

// The first candidate in [p, end), all of whose units that are probed can be read.
template <typename Char>
template <int kFirst, int kSecond>
const Char* Finder<Char>::Scan(const Finder& finder, const Char* p, const Char* end)
{
    const int first = finder.m_first.offset;
    const int second = finder.m_second.offset;
#ifdef TLVN_HAS_SSE2
    constexpr std::ptrdiff_t kUnits = 16 / sizeof(Char);
    const VectorRanges<kFirst, Char> firstRanges(finder.m_first);
    const VectorRanges<kSecond, Char> secondRanges(finder.m_second);
    for (; end - p >= kUnits; p += kUnits) {
        __m128i hits = firstRanges.Test(p + first);
        if constexpr (kSecond > 0)
            hits = _mm_and_si128(hits, secondRanges.Test(p + second));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits));
        if (mask != 0)
            return p + static_cast<std::size_t>(std::countr_zero(mask)) / sizeof(Char);
    }
#endif
    for (; p < end; ++p) {
        if (finder.m_first.Has(p[first]) && (kSecond == 0 || finder.m_second.Has(p[second])))
            return p;
    }
    return nullptr;
}

template class GrowingText<BYTE>;
template class GrowingText<WCHAR>;
template class Finder<BYTE>;
template class Finder<WCHAR>;
template Probe<BYTE> MakeProbe(int, const std::vector<UnitRange<BYTE>>&);
template Probe<WCHAR> MakeProbe(int, const std::vector<UnitRange<WCHAR>>&);

} // namespace tlvn::regexp
