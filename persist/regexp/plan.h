// A program made ready to run: the same instructions at the same indices, with what is known
// about them beside.
//
// - Classes have a table of one bit for each character, by the characters as they stand in the
//   text, so that case costs nothing.
// - A loop over one character ("[0-9]+") is one instruction that passes the whole run; what it
//   leaves on the stack stands for all the positions of the run, or is nothing when what
//   follows the loop cannot begin with a character of the run.
// - An attempt is only made where a character stands with which a match can begin, and only as
//   long as the longest literal text that every match contains is still ahead.
//
// None of this changes what matches: where it could (a loop that is not greedy goes on from
// wherever the last failure left the position, a negation leaves groups set) it is left out.
//
// A plan of narrow text holds for the code page in force when it was made.

#pragma once

#include "persist/regexp/characters.h"
#include "persist/regexp/finder.h"
#include "persist/regexp/program.h"

#include <type_traits>
#include <vector>

namespace tlvn::regexp {

// A set of characters. The terminator, 0, is never in it.
class CharacterSet {
public:
    bool Has(unsigned value) const { return (m_words[value / 64] >> value % 64 & 1) != 0; }
    // The first value at or behind `value` that is in it, or that is not; 0x10000 for none.
    unsigned Next(unsigned value) const { return NextBit(value, 0); }
    unsigned NextMissing(unsigned value) const { return NextBit(value, ~std::uint64_t{0}); }
    void Add(unsigned low, unsigned high);
    void Add(const CharacterSet& other);
    void Invert(); // but for the terminator
    bool Meets(const CharacterSet& other) const;
    // The characters of which the folded form is in this set.
    CharacterSet Unfolded(const FoldTable& fold) const;
    bool operator==(const CharacterSet&) const = default;

private:
    unsigned NextBit(unsigned value, std::uint64_t inverted) const;

    std::array<std::uint64_t, 0x10000 / 64> m_words{};
};

// Kinds of instruction that only a plan has, in the place of others.
constexpr std::uint16_t kUnitSymbol = 64; // a Symbol that is one unit and never half of two
constexpr std::uint16_t kSet = 65;        // a RangeList or NotRangeList; argument: what is behind
constexpr std::uint16_t kCharacterLoop = 66; // a PushMemory; argument: a loop

struct Operation {
    std::uint16_t kind;
    std::uint16_t set;
    std::uint32_t argument;
};

// A greedy loop over one character.
struct CharacterLoop {
    std::uint32_t end; // the instruction behind it
    std::uint16_t set;
    std::uint16_t retrySet; // with what the rest can begin; kNoSet: with anything
    bool once;
    bool retries; // the rest may match at an earlier end
};
constexpr std::uint16_t kNoSet = 0xFFFF;

// Text of which each unit is one of a few, and a place to look for it.
template <typename Char>
struct Literal {
    using Unit = std::conditional_t<sizeof(Char) == 1, BYTE, WCHAR>;

    std::vector<std::vector<Unit>> units; // the alternatives, ascending
    Finder<Unit> finder;

    // The first occurrence of all units, or null.
    const Unit* Find(const Unit* p, GrowingText<Unit>& text) const;
};

template <typename Char>
class Plan {
public:
    using Unit = typename Literal<Char>::Unit;

    explicit Plan(const CREProgram<Char>& program);

    // False when the code page has changed.
    bool IsCurrent() const { return sizeof(Char) > 1 || m_page == GetMultibytePage(); }

    UINT m_page;
    const FoldTable* m_fold = nullptr; // null when case counts
    std::vector<Operation> m_operations;
    std::vector<CharacterSet> m_sets;
    std::vector<CharacterLoop> m_loops;
    std::uint16_t m_startSet = kNoSet; // with what a match can begin
    Finder<Unit> m_starts;             // may not be set
    Literal<Char> m_needed;            // may be empty
};

extern template class Plan<char>;
extern template class Plan<WCHAR>;

} // namespace tlvn::regexp
