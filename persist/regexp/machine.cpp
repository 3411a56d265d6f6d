#include "persist/regexp/machine.h"

#include <algorithm>
#include <new>

using namespace tlvn;
using namespace tlvn::regexp;

namespace {

constexpr std::size_t kFirstCapacity = 256;
constexpr std::size_t kKeptCapacity = 1 << 16;

// On the stack, in the place of an instruction index: take the loop's run one character
// shorter. The bounds of a stretch of characters of one length lie below.
constexpr std::uintptr_t kRetryLoop = std::uintptr_t{1} << 30;
static_assert(kRetryLoop > 2 * kMaxRegExpProgram);

constexpr auto KindOf(REKind kind)
{
    return static_cast<std::uint16_t>(kind);
}

template <typename Char>
class Machine {
public:
    using Word = CREStack::Word;

    Machine(const CREProgram<Char>& program, CREMatchContext<Char>& context, const Char* text)
        : m_code(program.m_code), m_context(context), m_plan(*context.m_plan),
          m_stack(context.m_stack),
          m_fold(m_plan.m_fold != nullptr ? m_plan.m_fold->forms.data() : nullptr),
          m_known(Units(text)), m_position(text)
    {}

    // True with the bounds of the match in the context.
    bool Run()
    {
        m_start = NextStart(m_position);
        if (m_start == nullptr)
            return false;
        m_position = m_start;
        const Operation* const operations = m_plan.m_operations.data();
        std::uint32_t next = 0;
        for (;;) {
            if (next == 0)
                m_context.m_matchStart = m_position;
            const Operation& operation = operations[next];
            switch (Step(operation, next)) {
            case Outcome::Next:
                ++next;
                break;
            case Outcome::Jump:
                next = m_target;
                break;
            case Outcome::Fail:
                TakeUp();
                next = m_target;
                break;
            case Outcome::Match:
                return End(true);
            case Outcome::NoMatch:
                return End(false);
            }
        }
    }

private:
    using Unit = typename Plan<Char>::Unit;
    enum class Outcome { Next, Jump, Fail, Match, NoMatch };

    static const Unit* Units(const Char* p) { return reinterpret_cast<const Unit*>(p); }
    static const Char* Characters(const Unit* p) { return reinterpret_cast<const Char*>(p); }
    static Word ToWord(const Char* p) { return reinterpret_cast<Word>(p); }
    static const Char* ToPosition(Word word) { return reinterpret_cast<const Char*>(word); }
    unsigned Folded(unsigned value) const { return m_fold != nullptr ? m_fold[value] : value; }

    bool End(bool matched)
    {
        m_context.m_matchEnd = m_position;
        return matched;
    }

    Outcome JumpTo(std::uint32_t target)
    {
        m_target = target;
        return Outcome::Jump;
    }

    Outcome Pushed(bool done) const { return done ? Outcome::Next : Outcome::NoMatch; }

    inline Outcome Step(const Operation& operation, std::uint32_t index)
    {
        switch (operation.kind) {
        case KindOf(REKind::Nop):
            return Outcome::Next;

        case kUnitSymbol:
            if (Folded(static_cast<Unit>(*m_position)) != operation.argument)
                return Outcome::Fail;
            ++m_position;
            return Outcome::Next;
        case KindOf(REKind::Symbol): {
            int length = 0;
            if (Folded(ReadCharacter(m_position, length)) != operation.argument)
                return Outcome::Fail;
            m_position += length;
            return Outcome::Next;
        }
        case KindOf(REKind::Any): {
            int length = 0;
            if (ReadCharacter(m_position, length) == 0)
                return Outcome::Fail;
            m_position += length;
            return Outcome::Next;
        }
        case kSet: {
            int length = 0;
            if (!m_plan.m_sets[operation.set].Has(ReadCharacter(m_position, length)))
                return Outcome::Fail;
            m_position += length;
            return JumpTo(operation.argument);
        }
        case KindOf(REKind::RangeList):
        case KindOf(REKind::NotRangeList):
            return TakeFromList(operation, index);
        case KindOf(REKind::RangeBitmap):
        case KindOf(REKind::NotRangeBitmap):
            return TakeFromBitmap(operation, index);
        case kCharacterLoop:
            return PassRun(m_plan.m_loops[operation.argument], operation.argument);
        case KindOf(REKind::BackReference):
            return CompareGroup(m_context.m_groups[operation.argument]);

        case KindOf(REKind::Jump):
            return JumpTo(operation.argument);
        case KindOf(REKind::Call):
            m_target = operation.argument;
            return m_stack.Push(index + 1) ? Outcome::Jump : Outcome::NoMatch;
        case KindOf(REKind::Return):
            return Outcome::Fail; // both go on at the index on top of the stack
        case KindOf(REKind::PushPosition):
            return Pushed(m_stack.Push(ToWord(m_position)));
        case KindOf(REKind::PopPosition):
            m_position = ToPosition(m_stack.Pop());
            return Outcome::Next;

        case KindOf(REKind::PushMemory):
            return Pushed(m_stack.Push(m_context.m_slots[operation.argument]));
        case KindOf(REKind::PopMemory):
            m_context.m_slots[operation.argument] = m_stack.Pop();
            return Outcome::Next;
        case KindOf(REKind::StorePosition):
            m_context.m_slots[operation.argument] = ToWord(m_position);
            return Outcome::Next;
        case KindOf(REKind::LoadPosition):
            m_position = ToPosition(m_context.m_slots[operation.argument]);
            return Outcome::Next;
        case KindOf(REKind::StoreStackDepth):
            m_context.m_slots[operation.argument] = m_stack.GetDepth();
            return Outcome::Next;
        case KindOf(REKind::LoadStackDepth):
            m_stack.SetDepth(m_context.m_slots[operation.argument]);
            return Outcome::Next;
        case KindOf(REKind::FailIfNoProgress):
            return m_context.m_slots[operation.argument] == ToWord(m_position) ? Outcome::Fail
                                                                               : Outcome::Next;

        case KindOf(REKind::GroupStart):
            m_context.m_groups[operation.argument].start = m_position;
            return Outcome::Next;
        case KindOf(REKind::GroupEnd):
            m_context.m_groups[operation.argument].end = m_position;
            return Outcome::Next;
        case KindOf(REKind::PushGroup): {
            const auto& group = m_context.m_groups[operation.argument];
            return Pushed(m_stack.Push(ToWord(group.start)) && m_stack.Push(ToWord(group.end)));
        }
        case KindOf(REKind::PopGroup): {
            auto& group = m_context.m_groups[operation.argument];
            group.end = ToPosition(m_stack.Pop());
            group.start = ToPosition(m_stack.Pop());
            return Outcome::Next;
        }

        case KindOf(REKind::AdvanceStart):
            return AdvanceStart();
        case KindOf(REKind::MatchFound):
            return Outcome::Match;
        default: // Fail
            return Outcome::NoMatch;
        }
    }

    // Goes on where the top of the stack says.
    void TakeUp()
    {
        for (;;) {
            const Word index = m_stack.Pop();
            if (index < kRetryLoop) {
                m_target = static_cast<std::uint32_t>(index);
                return;
            }
            if (ShortenRun(index))
                return;
        }
    }

    Outcome TakeFromList(const Operation& operation, std::uint32_t index)
    {
        int length = 0;
        const unsigned c = Folded(ReadCharacter(m_position, length));
        if (c == 0)
            return Outcome::Fail;
        bool within = false;
        for (std::uint32_t i = index + 1; i < operation.argument && !within; i += 2)
            within = c >= m_code[i].argument && c <= m_code[i + 1].argument;
        if (within != (operation.kind == KindOf(REKind::RangeList)))
            return Outcome::Fail;
        m_position += length;
        return JumpTo(operation.argument);
    }

    Outcome TakeFromBitmap(const Operation& operation, std::uint32_t index)
    {
        int length = 0;
        if (ReadCharacter(m_position, length) == 0)
            return Outcome::Fail;
        const unsigned unit = Folded(static_cast<Unit>(*m_position));
        bool within = false;
        if (unit < 0x100) {
            const REInstruction& cell = m_code[index + 1 + unit / 64];
            const std::uint32_t bits =
                unit % 64 < 32 ? static_cast<std::uint32_t>(cell.kind) : cell.argument;
            within = (bits >> unit % 32 & 1) != 0;
        }
        if (within != (operation.kind == KindOf(REKind::RangeBitmap)))
            return Outcome::Fail;
        m_position += length;
        return JumpTo(index + 1 + kBitmapInstructions);
    }

    Outcome PassRun(const CharacterLoop& loop, std::uint32_t number)
    {
        const CharacterSet& set = m_plan.m_sets[loop.set];
        const Char* p = m_position;
        const Char* stretch = p;
        int stretchLength = 0;
        for (;;) {
            int length = 0;
            if (!set.Has(ReadCharacter(p, length)))
                break;
            if (length != stretchLength) {
                if (loop.retries && p != stretch && !PushRun(stretch, p, number, stretchLength))
                    return Outcome::NoMatch;
                stretch = p;
                stretchLength = length;
            }
            p += length;
            if (loop.once)
                break;
        }
        if (loop.retries && p != stretch && !PushRun(stretch, p, number, stretchLength))
            return Outcome::NoMatch;
        m_position = p;
        return JumpTo(loop.end);
    }

    bool PushRun(const Char* start, const Char* end, std::uint32_t loop, int length)
    {
        const Word retry = kRetryLoop + loop * 2 + static_cast<Word>(length - 1);
        return m_stack.Push(ToWord(start)) && m_stack.Push(ToWord(end)) && m_stack.Push(retry);
    }

    // False when no shorter run is worth trying.
    bool ShortenRun(Word retry)
    {
        const CharacterLoop& loop = m_plan.m_loops[(retry - kRetryLoop) / 2];
        const auto length = static_cast<int>((retry - kRetryLoop) % 2) + 1;
        const Char* end = ToPosition(m_stack.Pop());
        const Char* const start = ToPosition(m_stack.Pop());
        do {
            end -= length;
            int ignored = 0;
            if (loop.retrySet != kNoSet &&
                !m_plan.m_sets[loop.retrySet].Has(ReadCharacter(end, ignored)))
                continue;
            m_position = end;
            m_target = loop.end;
            if (end != start) { // into the room that the pops have left
                m_stack.Push(ToWord(start));
                m_stack.Push(ToWord(end));
                m_stack.Push(retry);
            }
            return true;
        } while (end != start);
        return false;
    }

    // A group that is not set, or whose end is still that of an earlier time, is empty.
    Outcome CompareGroup(const typename CREMatchContext<Char>::Group& group)
    {
        if (group.end <= group.start || group.start == nullptr)
            return Outcome::Next;
        const auto length = group.end - group.start;
        const Char* a = group.start;
        const Char* b = m_position;
        // As many characters as the group has units, as far as both texts go.
        for (auto left = length; left > 0; --left) {
            int aLength = 0;
            int bLength = 0;
            const unsigned c = Folded(ReadCharacter(a, aLength));
            if (c != Folded(ReadCharacter(b, bLength)))
                return Outcome::Fail;
            if (c == 0)
                break;
            a += aLength;
            b += bLength;
        }
        m_position += length;
        return Outcome::Next;
    }

    Outcome AdvanceStart()
    {
        int length = 0;
        if (ReadCharacter(m_start, length) == 0)
            return Outcome::NoMatch;
        m_start = NextStart(m_start + length);
        if (m_start == nullptr)
            return Outcome::NoMatch;
        m_position = m_start;
        m_stack.Clear();
        return JumpTo(0);
    }

    // The first character at or behind p with which a match may begin, or null.
    const Char* NextStart(const Char* p)
    {
        if (m_plan.m_startSet == kNoSet)
            return *p != 0 ? p : nullptr;
        const CharacterSet& set = m_plan.m_sets[m_plan.m_startSet];
        const Char* boundary = p; // nothing from here on has been passed yet
        for (;;) {
            const Char* candidate = p;
            if (m_plan.m_starts.IsSet()) {
                candidate = Characters(m_plan.m_starts.Find(Units(p), m_known));
                if (candidate == nullptr)
                    return nullptr;
                if (IsInside(boundary, candidate)) {
                    boundary = p = candidate + 1;
                    continue;
                }
                boundary = candidate;
            }
            int length = 0;
            const unsigned c = ReadCharacter(candidate, length);
            if (c == 0)
                return nullptr;
            if (set.Has(c))
                return IsNeededAhead(candidate) ? candidate : nullptr;
            boundary = p = candidate + length;
        }
    }

    static bool IsInside(const char* boundary, const char* p)
    {
        return p > boundary && IsTrailByte(*p) && IsLeadByte(p[-1]) &&
               IsInsideCharacter(boundary, p, p + 1);
    }
    static bool IsInside(const WCHAR*, const WCHAR*) { return false; }

    bool IsNeededAhead(const Char* p)
    {
        if (m_plan.m_needed.units.empty())
            return true;
        if (m_needed == nullptr || m_needed < Units(p))
            m_needed = m_plan.m_needed.Find(Units(p), m_known);
        return m_needed != nullptr;
    }

    const std::vector<REInstruction>& m_code;
    CREMatchContext<Char>& m_context;
    const Plan<Char>& m_plan;
    CREStack& m_stack;
    const std::uint16_t* const m_fold; // null when case counts
    GrowingText<Unit> m_known;
    const Unit* m_needed = nullptr; // the next place of the plan's needed literal
    const Char* m_position;
    const Char* m_start = nullptr; // of the attempt
    std::uint32_t m_target = 0;    // the instruction to go on at
};

} // namespace

CREStack::CREStack()
    : m_words(new Word[kFirstCapacity]), m_top(m_words.get()), m_end(m_top + kFirstCapacity)
{}

bool CREStack::Grow()
{
    const std::size_t depth = GetDepth();
    const std::size_t capacity = 2 * depth + 2;
    std::unique_ptr<Word[]> words(new (std::nothrow) Word[capacity]);
    if (words == nullptr)
        return false;
    std::copy_n(m_words.get(), depth, words.get());
    m_words = std::move(words);
    m_top = m_words.get() + depth;
    m_end = m_words.get() + capacity;
    return true;
}

void CREStack::Shrink()
{
    Clear();
    if (static_cast<std::size_t>(m_end - m_top) <= kKeptCapacity)
        return;
    std::unique_ptr<Word[]> words(new (std::nothrow) Word[kFirstCapacity]);
    if (words == nullptr)
        return;
    m_words = std::move(words);
    m_top = m_words.get();
    m_end = m_top + kFirstCapacity;
}

template <typename Char>
CREMatchContext<Char>::CREMatchContext(const CREProgram<Char>& program)
    : m_groupCount(program.m_groupCount), m_slots(static_cast<std::size_t>(program.m_slotCount)),
      m_groups(static_cast<std::size_t>(program.m_groupCount)),
      m_plan(std::make_unique<Plan<Char>>(program))
{}

template <typename Char>
bool RunRegExp(const CREProgram<Char>& program, CREMatchContext<Char>& context, const Char* text)
{
    if (text == nullptr)
        return false;
    try {
        if (!context.m_plan->IsCurrent())
            context.m_plan = std::make_unique<Plan<Char>>(program);
    } catch (const std::bad_alloc&) {
        return false;
    }
    std::fill(context.m_slots.begin(), context.m_slots.end(), CREStack::Word{0});
    std::fill(context.m_groups.begin(), context.m_groups.end(),
              typename CREMatchContext<Char>::Group{nullptr, nullptr});
    context.m_stack.Clear();
    const bool found = Machine<Char>(program, context, text).Run();
    context.m_stack.Shrink();
    return found;
}

bool tlvn::RunInstructions(const std::vector<REInstruction>& code, const char* text, int& start,
                           int& end)
{
    CREProgram<char> program;
    program.m_code = code;
    program.m_caseSensitive = 1;
    CREMatchContext<char> context(program);
    if (!RunRegExp(program, context, text))
        return false;
    start = static_cast<int>(context.m_matchStart - text);
    end = static_cast<int>(context.m_matchEnd - text);
    return true;
}

template class CREMatchContext<char>;
template class CREMatchContext<WCHAR>;
template bool RunRegExp(const CREProgram<char>&, CREMatchContext<char>&, const char*);
template bool RunRegExp(const CREProgram<WCHAR>&, CREMatchContext<WCHAR>&, const WCHAR*);
