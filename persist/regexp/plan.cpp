#include "persist/regexp/plan.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <unordered_set>

namespace tlvn::regexp {

namespace {

constexpr std::size_t kMostSets = 32; // 8 KB each
constexpr std::size_t kMostStartSteps = 1 << 14;
constexpr std::size_t kMostRestSteps = 256; // for each of many loops
constexpr std::size_t kMostNeededProgram = 4096;
constexpr std::size_t kMostNeededRuns = 16;
constexpr std::size_t kLongestLiteral = 16;

bool IsList(REKind kind)
{
    return kind == REKind::RangeList || kind == REKind::NotRangeList;
}

// What can come first, from an instruction on, before the position moves.
struct Beginnings {
    CharacterSet set;   // in folded form
    bool known = true;  // false: anything
    bool empty = false; // a match (or a negation) can end without another character
};

// The ranges that a set consists of, among the values below `limit`.
template <typename Unit>
std::vector<UnitRange<Unit>> RangesOf(const CharacterSet& set, unsigned limit)
{
    std::vector<UnitRange<Unit>> ranges;
    for (unsigned low = set.Next(1); low < limit;) {
        const unsigned behind = std::min(set.NextMissing(low), limit);
        ranges.push_back({static_cast<Unit>(low), static_cast<Unit>(behind - 1)});
        low = set.Next(behind);
    }
    return ranges;
}

// Probes that most units pass only cost time.
template <typename Unit>
bool IsSelective(const Probe<Unit>& probe)
{
    unsigned covered = 0;
    for (int i = 0; i < probe.count; ++i)
        covered += probe.ranges[i].high - probe.ranges[i].low + 1U;
    return probe.count > 0 && covered < (sizeof(Unit) == 1 ? 0xC0U : 0xC000U);
}

// How common a unit is in Japanese mail, roughly; higher is more common.
int Commonness(unsigned unit, char)
{
    if (unit >= 0x81 && unit <= 0x83)
        return 3; // lead bytes of punctuation and kana
    return unit < 0x80 ? (unit == ' ' || (unit >= 'a' && unit <= 'z') ? 2 : 1) : 0;
}
int Commonness(unsigned unit, WCHAR)
{
    if (unit >= 0x3000 && unit < 0x3100)
        return 3;
    return unit < 0x80 ? (unit == ' ' || (unit >= 'a' && unit <= 'z') ? 2 : 1) : 0;
}

template <typename Char>
class Planner {
public:
    using Unit = typename Plan<Char>::Unit;

    Planner(const CREProgram<Char>& program, Plan<Char>& plan)
        : m_code(program.m_code), m_plan(plan)
    {
        for (std::uint32_t i = 0; i < Size(); i = Behind(i))
            Note(i);
    }

    void MakeOperations()
    {
        m_plan.m_operations.reserve(m_code.size());
        for (const REInstruction& instruction : m_code)
            m_plan.m_operations.push_back(
                {static_cast<std::uint16_t>(instruction.kind), kNoSet, instruction.argument});
        for (std::uint32_t i = 0; i < Size(); i = Behind(i))
            Improve(i);
    }

    void FindStarts()
    {
        // A failed attempt can leave groups set behind a negation, for a later one to refer to.
        if (m_code[1].kind == REKind::Fail || (m_refersBack && m_negates))
            return;
        const Beginnings first = BeginningsFrom(2, kMostStartSteps);
        if (!first.known || first.empty)
            return;
        const CharacterSet set = Raw(first.set);
        m_plan.m_startSet = AddSet(set);
        if (m_plan.m_startSet == kNoSet)
            return;
        const Literal<Char> prefix = MakeLiteral(PrefixSymbols());
        m_plan.m_starts = prefix.units.size() > 1 ? prefix.finder : StartFinder(set);
        FindNeeded();
    }

private:
    std::uint32_t Size() const { return static_cast<std::uint32_t>(m_code.size()); }
    REKind KindAt(std::uint32_t i) const { return m_code[i].kind; }
    std::uint32_t ArgumentAt(std::uint32_t i) const { return m_code[i].argument; }
    bool Is(std::uint32_t i, REKind kind, std::uint32_t argument) const
    {
        return KindAt(i) == kind && ArgumentAt(i) == argument;
    }
    // The instruction that follows in the list.
    std::uint32_t Behind(std::uint32_t i) const
    {
        if (IsList(KindAt(i)))
            return ArgumentAt(i);
        const bool bitmap = KindAt(i) == REKind::RangeBitmap || KindAt(i) == REKind::NotRangeBitmap;
        return bitmap ? i + 1 + kBitmapInstructions : i + 1;
    }

    void Note(std::uint32_t i)
    {
        switch (KindAt(i)) {
        case REKind::BackReference:
            m_refersBack = true;
            break;
        case REKind::StoreStackDepth:
            m_negates = true;
            break;
        case REKind::Call: {
            // All but the loops that are not greedy take up a failure with one of these.
            const REKind next = KindAt(i + 1);
            if (i != 0 && next != REKind::PopPosition && next != REKind::PopGroup &&
                next != REKind::Return && next != REKind::LoadPosition)
                m_hasLazyLoop = true;
            break;
        }
        default:
            break;
        }
    }

    // The characters that the instruction takes, folded; none when it takes no character.
    std::optional<CharacterSet> SetAt(std::uint32_t i) const
    {
        std::optional<CharacterSet> set(std::in_place);
        switch (KindAt(i)) {
        case REKind::Symbol:
            if (ArgumentAt(i) != 0)
                set->Add(ArgumentAt(i), ArgumentAt(i));
            return set;
        case REKind::Any:
            set->Invert();
            return set;
        case REKind::RangeList:
        case REKind::NotRangeList:
            for (std::uint32_t pair = i + 1; pair < ArgumentAt(i); pair += 2)
                set->Add(ArgumentAt(pair), ArgumentAt(pair + 1));
            if (KindAt(i) == REKind::NotRangeList)
                set->Invert();
            return set;
        default:
            return std::nullopt;
        }
    }

    CharacterSet Raw(const CharacterSet& folded) const
    {
        return m_plan.m_fold != nullptr ? folded.Unfolded(*m_plan.m_fold) : folded;
    }

    // The number of an equal set of the plan, or kNoSet when it has too many.
    std::uint16_t AddSet(const CharacterSet& set)
    {
        std::vector<CharacterSet>& sets = m_plan.m_sets;
        const auto found = std::find(sets.begin(), sets.end(), set);
        if (found != sets.end())
            return static_cast<std::uint16_t>(found - sets.begin());
        if (sets.size() >= kMostSets)
            return kNoSet;
        sets.push_back(set);
        return static_cast<std::uint16_t>(sets.size() - 1);
    }

    void Improve(std::uint32_t i)
    {
        Operation& operation = m_plan.m_operations[i];
        switch (KindAt(i)) {
        case REKind::Symbol:
            if (sizeof(Char) > 1 ||
                (ArgumentAt(i) < 0x100 && !IsLeadByte(static_cast<char>(ArgumentAt(i)))))
                operation.kind = kUnitSymbol;
            break;
        case REKind::RangeList:
        case REKind::NotRangeList:
            if (m_plan.m_sets.size() < kMostSets)
                operation.set = AddSet(Raw(*SetAt(i)));
            if (operation.set != kNoSet)
                operation.kind = kSet;
            break;
        case REKind::PushMemory:
            ImproveLoop(i);
            break;
        default:
            break;
        }
    }

    // PushMemory, StorePosition, PushPosition, Call X, PopPosition, PopMemory, Jump end, X,
    // FailIfNoProgress, StorePosition, [Jump start], where X is one character in any brackets.
    void ImproveLoop(std::uint32_t start)
    {
        std::uint32_t x = start + 7;
        while (KindAt(x) == REKind::Call && KindAt(x + 1) == REKind::Return)
            x = ArgumentAt(x);
        const std::uint32_t behind = Behind(x);
        const std::uint32_t end = ArgumentAt(start + 6);
        if (!Is(behind, REKind::FailIfNoProgress, ArgumentAt(start)) ||
            m_plan.m_sets.size() >= kMostSets)
            return;
        const std::optional<CharacterSet> set = SetAt(x);
        if (!set || set->Has(0))
            return;

        CharacterLoop loop = {end, AddSet(Raw(*set)), kNoSet, end == behind + 2, true};
        if (loop.set == kNoSet)
            return;
        if (EndsMatch(end)) {
            loop.retries = false;
        } else if (!m_refersBack && !m_hasLazyLoop) {
            const Beginnings rest = BeginningsFrom(end, kMostRestSteps);
            if (rest.known && !rest.empty) {
                loop.retries = rest.set.Meets(*set);
                if (loop.retries && m_plan.m_sets.size() < kMostSets)
                    loop.retrySet = AddSet(Raw(rest.set));
            }
        }
        m_plan.m_operations[start] = {kCharacterLoop, kNoSet,
                                      static_cast<std::uint32_t>(m_plan.m_loops.size())};
        m_plan.m_loops.push_back(loop);
    }

    // True when nothing stands between the instruction and the end that can fail.
    bool EndsMatch(std::uint32_t i) const
    {
        while (KindAt(i) == REKind::GroupEnd || KindAt(i) == REKind::Nop)
            ++i;
        return KindAt(i) == REKind::MatchFound;
    }

    Beginnings BeginningsFrom(std::uint32_t start, std::size_t mostSteps) const
    {
        Beginnings result;
        std::unordered_set<std::uint32_t> seen;
        std::vector<std::uint32_t> open{start};
        while (!open.empty() && result.known) {
            const std::uint32_t i = open.back();
            open.pop_back();
            if (!seen.insert(i).second)
                continue;
            if (seen.size() > mostSteps)
                result.known = false;
            if (const std::optional<CharacterSet> set = SetAt(i)) {
                result.set.Add(*set);
                continue;
            }
            switch (KindAt(i)) {
            case REKind::Jump:
                open.push_back(ArgumentAt(i));
                break;
            case REKind::Call:
                open.push_back(i + 1); // there a failure goes on
                if (KindAt(i - 1) != REKind::StoreStackDepth)
                    open.push_back(ArgumentAt(i));
                break;
            case REKind::Return:
                break;
            case REKind::LoadPosition:
                if (KindAt(i + 2) == REKind::Return)
                    result.empty = true; // what must not match has matched
                else
                    open.push_back(i + 1);
                break;
            case REKind::MatchFound:
                result.empty = true;
                break;
            case REKind::BackReference:
            case REKind::RangeBitmap:
            case REKind::NotRangeBitmap:
                result.known = false;
                break;
            default:
                open.push_back(i + 1);
                break;
            }
        }
        return result;
    }

    // The literal characters with which every match begins, in any brackets.
    std::vector<std::uint32_t> PrefixSymbols() const
    {
        std::vector<std::uint32_t> symbols;
        std::uint32_t i = 2;
        while (symbols.size() < kLongestLiteral) {
            switch (KindAt(i)) {
            case REKind::Symbol:
                if (ArgumentAt(i) == 0)
                    return symbols;
                symbols.push_back(ArgumentAt(i));
                ++i;
                break;
            case REKind::Nop:
            case REKind::PushGroup:
            case REKind::GroupStart:
            case REKind::GroupEnd:
                ++i;
                break;
            case REKind::Call:
                if (KindAt(i + 1) != REKind::Return && KindAt(i + 1) != REKind::PopGroup)
                    return symbols;
                i = ArgumentAt(i);
                break;
            default:
                return symbols;
            }
        }
        return symbols;
    }

    // The forms of a folded character in the text.
    std::vector<unsigned> FormsOf(std::uint32_t symbol) const
    {
        if (m_plan.m_fold == nullptr)
            return {symbol};
        std::vector<unsigned> forms;
        if (m_plan.m_fold->forms[symbol] == symbol)
            forms.push_back(symbol);
        for (const unsigned value : m_plan.m_fold->changed) {
            if (m_plan.m_fold->forms[value] == symbol)
                forms.push_back(value);
        }
        return forms;
    }

    static int LengthOf(unsigned value) { return sizeof(Char) == 1 && value > 0xFF ? 2 : 1; }

    Literal<Char> MakeLiteral(const std::vector<std::uint32_t>& symbols) const
    {
        Literal<Char> literal;
        for (const std::uint32_t symbol : symbols) {
            const std::vector<unsigned> forms = FormsOf(symbol);
            if (forms.empty() || literal.units.size() + 2 > kLongestLiteral)
                break;
            const int length = LengthOf(forms.front());
            if (std::any_of(forms.begin(), forms.end(),
                            [&](unsigned form) { return LengthOf(form) != length; }))
                break;
            for (int unit = 0; unit < length; ++unit) {
                std::vector<Unit> alternatives;
                for (const unsigned form : forms)
                    alternatives.push_back(static_cast<Unit>(unit + 1 < length ? form >> 8 : form));
                std::sort(alternatives.begin(), alternatives.end());
                alternatives.erase(std::unique(alternatives.begin(), alternatives.end()),
                                   alternatives.end());
                literal.units.push_back(std::move(alternatives));
            }
        }
        if (!literal.units.empty())
            literal.finder = LiteralFinder(literal);
        return literal;
    }

    // Looks for the two least common units.
    static Finder<Unit> LiteralFinder(const Literal<Char>& literal)
    {
        const auto rank = [&](std::size_t i) {
            int sum = 0;
            for (const Unit unit : literal.units[i])
                sum += 1 + Commonness(unit, Char());
            return sum;
        };
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < literal.units.size(); ++i)
            order.push_back(i);
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return rank(a) < rank(b); });
        const auto probe = [&](std::size_t i) {
            std::vector<UnitRange<Unit>> ranges;
            for (const Unit unit : literal.units[i])
                ranges.push_back({unit, unit});
            return MakeProbe<Unit>(static_cast<int>(i), ranges);
        };
        return {probe(order[0]), order.size() > 1 ? probe(order[1]) : Probe<Unit>()};
    }

    // By the first unit, and the second when all characters have one.
    static Finder<Unit> StartFinder(const CharacterSet& set)
    {
        if constexpr (sizeof(Char) > 1) {
            const auto probe = MakeProbe(0, RangesOf<Unit>(set, 0x10000));
            return IsSelective(probe) ? Finder<Unit>(probe, {}) : Finder<Unit>();
        } else {
            CharacterSet first;
            CharacterSet second;
            const bool hasSingle = set.Next(1) < 0x100;
            for (unsigned value = set.Next(1); value < 0x10000; value = set.Next(value + 1)) {
                if (!IsCharacter(value, char()))
                    continue;
                const unsigned unit = value < 0x100 ? value : value >> 8;
                first.Add(unit, unit);
                second.Add(value & 0xFF, value & 0xFF);
            }
            const auto one = MakeProbe(0, RangesOf<Unit>(first, 0x100));
            const auto two = MakeProbe(1, RangesOf<Unit>(second, 0x100));
            if (!IsSelective(one))
                return {};
            return Finder<Unit>(one, hasSingle ? Probe<Unit>() : two);
        }
    }

    // True when no way to the end avoids the instruction.
    bool IsNeeded(std::uint32_t avoided) const
    {
        std::vector<bool> seen(m_code.size());
        std::vector<std::uint32_t> open{2};
        while (!open.empty()) {
            const std::uint32_t i = open.back();
            open.pop_back();
            if (i == avoided || seen[i])
                continue;
            seen[i] = true;
            switch (KindAt(i)) {
            case REKind::MatchFound:
                return false;
            case REKind::Return:
                break;
            case REKind::Jump:
                open.push_back(ArgumentAt(i));
                break;
            case REKind::Call:
                open.push_back(ArgumentAt(i));
                open.push_back(i + 1);
                break;
            default:
                open.push_back(Behind(i));
                break;
            }
        }
        return true;
    }

    // The longest literal that every match contains. Symbols in a row match in a row, for
    // nothing jumps between them.
    void FindNeeded()
    {
        if (m_code.size() > kMostNeededProgram)
            return;
        std::vector<bool> isTarget(m_code.size());
        for (std::uint32_t i = 0; i < Size(); i = Behind(i)) {
            if (KindAt(i) == REKind::Jump || KindAt(i) == REKind::Call) {
                isTarget[ArgumentAt(i)] = true;
                isTarget[i + 1] = true;
            }
        }
        std::vector<std::uint32_t> longest;
        std::size_t runs = 0;
        for (std::uint32_t i = 2; i < Size() && runs < kMostNeededRuns;) {
            const std::uint32_t start = i;
            std::vector<std::uint32_t> run;
            while (KindAt(i) == REKind::Symbol && ArgumentAt(i) != 0 &&
                   (i == start || !isTarget[i]))
                run.push_back(ArgumentAt(i++));
            if (run.empty()) {
                i = Behind(i);
                continue;
            }
            ++runs;
            if (run.size() > longest.size() && IsNeeded(start))
                longest = run;
        }
        if (!longest.empty() && longest != PrefixSymbols())
            m_plan.m_needed = MakeLiteral(longest);
    }

    const std::vector<REInstruction>& m_code;
    Plan<Char>& m_plan;
    bool m_refersBack = false;
    bool m_negates = false;
    bool m_hasLazyLoop = false;
};

} // namespace

void CharacterSet::Add(unsigned low, unsigned high)
{
    for (unsigned word = low / 64; word <= high / 64; ++word) {
        const unsigned first = word == low / 64 ? low % 64 : 0;
        const unsigned last = word == high / 64 ? high % 64 : 63;
        m_words[word] |= ~std::uint64_t{0} << first & ~std::uint64_t{0} >> (63 - last);
    }
    m_words[0] &= ~std::uint64_t{1};
}

void CharacterSet::Add(const CharacterSet& other)
{
    for (std::size_t i = 0; i < m_words.size(); ++i)
        m_words[i] |= other.m_words[i];
}

void CharacterSet::Invert()
{
    for (std::uint64_t& word : m_words)
        word = ~word;
    m_words[0] &= ~std::uint64_t{1};
}

bool CharacterSet::Meets(const CharacterSet& other) const
{
    for (std::size_t i = 0; i < m_words.size(); ++i) {
        if ((m_words[i] & other.m_words[i]) != 0)
            return true;
    }
    return false;
}

CharacterSet CharacterSet::Unfolded(const FoldTable& fold) const
{
    CharacterSet raw = *this;
    for (const unsigned value : fold.changed) {
        const std::uint64_t bit = std::uint64_t{1} << value % 64;
        if (Has(fold.forms[value]))
            raw.m_words[value / 64] |= bit;
        else
            raw.m_words[value / 64] &= ~bit;
    }
    return raw;
}

unsigned CharacterSet::NextBit(unsigned value, std::uint64_t inverted) const
{
    unsigned shift = value % 64;
    for (unsigned word = value / 64; word < m_words.size(); ++word, shift = 0) {
        const std::uint64_t bits = (m_words[word] ^ inverted) >> shift;
        if (bits != 0)
            return word * 64 + shift + static_cast<unsigned>(std::countr_zero(bits));
    }
    return 0x10000;
}

template <typename Char>
const typename Literal<Char>::Unit* Literal<Char>::Find(const Unit* p,
                                                        GrowingText<Unit>& text) const
{
    for (;; ++p) {
        p = finder.Find(p, text);
        if (p == nullptr)
            return nullptr;
        std::size_t i = 0;
        while (i < units.size() && std::binary_search(units[i].begin(), units[i].end(), p[i]))
            ++i;
        if (i == units.size())
            return p;
    }
}

template <typename Char>
Plan<Char>::Plan(const CREProgram<Char>& program)
    : m_page(GetMultibytePage()),
      m_fold(program.m_caseSensitive != 0 ? nullptr : &GetFoldTable<Char>())
{
    Planner<Char> planner(program, *this);
    planner.FindStarts();
    planner.MakeOperations();
}

template struct Literal<char>;
template struct Literal<WCHAR>;
template class Plan<char>;
template class Plan<WCHAR>;

} // namespace tlvn::regexp
