// Finds the places of a text where something may stand, by looking at one or two units of each.
//
// A probe says at which distance from the place a unit has to lie in one of a few ranges. Both
// probes are tried at sixteen bytes' worth of places at once where SSE2 is there. What is found
// is a candidate: it can start in the middle of a double-byte character, and what lies between
// the probes has not been seen.
//
// The end of the text is not known in advance, and a match may be near: it is looked for a
// stretch at a time, each twice as long as the one before.

#pragma once

#include "platform/types.h"

#include <cstddef>
#include <vector>

namespace tlvn::regexp {

// A terminated text, of which more and more is known to hold no terminator.
template <typename Char>
class GrowingText {
public:
    explicit GrowingText(const Char* text) : m_known(text) {}

    // No terminator lies before this.
    const Char* GetKnown() const { return m_known; }
    // Goes on behind the known part, or behind `p` when that is farther on and no terminator
    // lies before it. False when the known part ends at the terminator.
    bool Extend(const Char* p);

private:
    const Char* m_known;
    std::size_t m_step = 256;
    bool m_ended = false;
};

template <typename Char>
struct UnitRange {
    Char low, high;
};

constexpr int kMaxRanges = 4;

template <typename Char>
struct Probe {
    int offset = 0;
    int count = 0; // of ranges; 0: no probe
    UnitRange<Char> ranges[kMaxRanges] = {};

    bool Has(Char unit) const
    {
        for (int i = 0; i < count; ++i) {
            if (unit >= ranges[i].low && unit <= ranges[i].high)
                return true;
        }
        return false;
    }
};

// Ranges in ascending order, made no more than kMaxRanges by closing the smallest gaps.
template <typename Char>
Probe<Char> MakeProbe(int offset, const std::vector<UnitRange<Char>>& ranges);

// Units are unsigned: BYTE or WCHAR.
template <typename Char>
class Finder {
public:
    Finder() = default;
    // The second probe may be none.
    Finder(const Probe<Char>& first, const Probe<Char>& second);

    bool IsSet() const { return m_first.count != 0; }
    // The first candidate at or behind p, or null.
    const Char* Find(const Char* p, GrowingText<Char>& text) const;

private:
    Probe<Char> m_first;
    Probe<Char> m_second;
    int m_reach = 0; // the greater distance
    const Char* (*m_scan)(const Finder&, const Char* p, const Char* end) = nullptr;

    template <int kFirst, int kSecond>
    static const Char* Scan(const Finder& finder, const Char* p, const Char* end);
};

extern template class GrowingText<BYTE>;
extern template class GrowingText<WCHAR>;
extern template class Finder<BYTE>;
extern template class Finder<WCHAR>;

} // namespace tlvn::regexp
