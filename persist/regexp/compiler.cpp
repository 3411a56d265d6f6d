// Syntax tree to program. Each construct has one fixed form, written beside the function that
// emits it; what is repeated by "+" is emitted twice, with the same group numbers and with
// memory slots of its own each time.

#include "persist/regexp/characters.h"
#include "persist/regexp/parser.h"
#include "persist/regexp/program.h"

#include <new>
#include <string>

namespace tlvn::regexp {

namespace {

class Compiler {
public:
    Compiler(const SyntaxTree& tree, std::vector<REInstruction>& code) : m_tree(tree), m_code(code)
    {}

    // False when the program becomes too long. May throw std::bad_alloc.
    bool Compile()
    {
        Emit(REKind::Call, 2);
        Emit(m_tree.atStart ? REKind::Fail : REKind::AdvanceStart);
        m_work.push_back({Step::Visit, m_tree.root, 0, 0});
        while (!m_work.empty()) {
            if (m_code.size() > kMaxRegExpProgram)
                return false;
            const Work work = m_work.back();
            m_work.pop_back();
            Do(work);
        }
        Emit(REKind::MatchFound);
        return true;
    }

    int GetSlotCount() const { return static_cast<int>(m_slots); }

private:
    enum class Step {
        Visit,
        VisitList, // the node and all behind it
        EndGroup,
        SecondHalf, // of an alternation
        EndAlternation,
        StartLoop, // when what is repeated stands in front of the loop once
        EndLoop,
        EndLazyLoop,
        EndNegation,
    };
    // What is left to do, the next on top: the call stack of a recursive compiler.
    struct Work {
        Step step;
        int node;
        std::uint32_t at;   // an instruction
        std::uint32_t slot; // a memory slot
    };

    const Node& At(int node) const { return m_tree.nodes[static_cast<std::size_t>(node)]; }
    std::uint32_t Here() const { return static_cast<std::uint32_t>(m_code.size()); }
    void Emit(REKind kind, std::uint32_t argument = 0) { m_code.push_back({kind, argument}); }
    void Later(Step step, int node, std::uint32_t at = 0, std::uint32_t slot = 0)
    {
        m_work.push_back({step, node, at, slot});
    }

    void Do(const Work& work)
    {
        switch (work.step) {
        case Step::Visit:
            Visit(work.node);
            break;
        case Step::VisitList:
            if (At(work.node).next != kNoNode)
                Later(Step::VisitList, At(work.node).next);
            Later(Step::Visit, work.node);
            break;
        case Step::EndGroup:
            Emit(REKind::GroupEnd, At(work.node).value);
            break;
        case Step::SecondHalf:
            Emit(REKind::Jump);
            m_code[work.at].argument = Here();
            Later(Step::EndAlternation, work.node, Here() - 1);
            Later(Step::Visit, At(At(work.node).first).next);
            break;
        case Step::EndAlternation:
            m_code[work.at].argument = Here();
            break;
        case Step::StartLoop:
            StartLoop(work.node);
            break;
        case Step::EndLoop:
            EndLoop(work);
            break;
        case Step::EndLazyLoop:
            if (!At(work.node).repeat.once)
                Emit(REKind::Jump, work.at);
            m_code[work.at].argument = Here();
            break;
        case Step::EndNegation:
            Emit(REKind::LoadPosition, work.slot);
            Emit(REKind::LoadStackDepth, work.slot + 1);
            Emit(REKind::Return);
            m_code[work.at].argument = Here();
            break;
        }
    }

    void Visit(int index)
    {
        const Node& node = At(index);
        switch (node.kind) {
        case NodeKind::Empty:
            Emit(REKind::Nop);
            break;
        case NodeKind::Symbol:
            Emit(REKind::Symbol, node.value);
            break;
        case NodeKind::Any:
            Emit(REKind::Any);
            break;
        case NodeKind::Range:
        case NodeKind::NotRange:
            EmitRange(node);
            break;
        case NodeKind::BackReference:
            Emit(REKind::BackReference, node.value);
            break;
        case NodeKind::Sequence:
            if (node.first != kNoNode)
                Later(Step::VisitList, node.first);
            break;
        case NodeKind::Group:
            EmitGroup(index);
            break;
        case NodeKind::Parenthesis:
            // Call body, Return, body
            Emit(REKind::Call, Here() + 2);
            Emit(REKind::Return);
            Later(Step::Visit, node.first);
            break;
        case NodeKind::Negation:
            EmitNegation(index);
            break;
        case NodeKind::Alternation:
            // PushPosition, Call X, PopPosition, Jump Y, X, Jump past Y, Y
            Emit(REKind::PushPosition);
            Emit(REKind::Call, Here() + 3);
            Emit(REKind::PopPosition);
            Emit(REKind::Jump);
            Later(Step::SecondHalf, index, Here() - 1);
            Later(Step::Visit, node.first);
            break;
        case NodeKind::Repeat:
            Later(Step::StartLoop, index);
            if (node.repeat.atLeastOnce)
                Later(Step::Visit, node.first);
            break;
        }
    }

    void EmitRange(const Node& node)
    {
        const std::uint32_t behind = Here() + 1 + 2 * node.count;
        Emit(node.kind == NodeKind::Range ? REKind::RangeList : REKind::NotRangeList, behind);
        for (std::uint32_t i = 0; i < node.count; ++i) {
            const RangePair& pair = m_tree.pairs[node.value + i];
            Emit(REKind::Nop, pair.low);
            Emit(REKind::Nop, pair.high);
        }
    }

    // PushGroup, GroupStart, Call body, PopGroup, Return, body, GroupEnd
    void EmitGroup(int index)
    {
        const Node& node = At(index);
        Emit(REKind::PushGroup, node.value);
        Emit(REKind::GroupStart, node.value);
        Emit(REKind::Call, Here() + 3);
        Emit(REKind::PopGroup, node.value);
        Emit(REKind::Return);
        Later(Step::EndGroup, index);
        Later(Step::Visit, node.first);
    }

    // StorePosition, StoreStackDepth, Call X, LoadPosition, LoadStackDepth, Jump past,
    // X, LoadPosition, LoadStackDepth, Return
    void EmitNegation(int index)
    {
        const std::uint32_t slot = m_slots;
        m_slots += 2;
        Emit(REKind::StorePosition, slot);
        Emit(REKind::StoreStackDepth, slot + 1);
        Emit(REKind::Call, Here() + 4);
        Emit(REKind::LoadPosition, slot);
        Emit(REKind::LoadStackDepth, slot + 1);
        Emit(REKind::Jump);
        Later(Step::EndNegation, index, Here() - 1, slot);
        Later(Step::Visit, At(index).first);
    }

    // Greedy: PushMemory, StorePosition, PushPosition, Call X, PopPosition, PopMemory, Jump end,
    // X, FailIfNoProgress, StorePosition and, but for "?", Jump to the start
    // Not greedy: Call past, X and, but for "??", Jump to the start
    void StartLoop(int index)
    {
        const Node& node = At(index);
        const std::uint32_t start = Here();
        if (!node.repeat.greedy) {
            Emit(REKind::Call);
            Later(Step::EndLazyLoop, index, start);
            Later(Step::Visit, node.first);
            return;
        }
        const std::uint32_t slot = m_slots++;
        Emit(REKind::PushMemory, slot);
        Emit(REKind::StorePosition, slot);
        Emit(REKind::PushPosition);
        Emit(REKind::Call, Here() + 4);
        Emit(REKind::PopPosition);
        Emit(REKind::PopMemory, slot);
        Emit(REKind::Jump);
        Later(Step::EndLoop, index, start, slot);
        Later(Step::Visit, node.first);
    }

    void EndLoop(const Work& work)
    {
        Emit(REKind::FailIfNoProgress, work.slot);
        Emit(REKind::StorePosition, work.slot);
        if (!At(work.node).repeat.once)
            Emit(REKind::Jump, work.at);
        m_code[work.at + 6].argument = Here();
    }

    const SyntaxTree& m_tree;
    std::vector<REInstruction>& m_code;
    std::vector<Work> m_work;
    std::uint32_t m_slots = 0;
};

template <typename Char>
std::basic_string<Char> Folded(const Char* pattern)
{
    const FoldTable& fold = GetFoldTable<Char>();
    std::basic_string<Char> copy;
    int length = 0;
    for (; *pattern != 0; pattern += length) {
        const unsigned c = fold.forms[ReadCharacter(pattern, length)];
        if (length == 2)
            copy += static_cast<Char>(c >> 8);
        copy += static_cast<Char>(c);
    }
    return copy;
}

template <typename Char>
REParseError Build(CREProgram<Char>& program, const Char* pattern)
{
    std::basic_string<Char> folded;
    if (program.m_caseSensitive == 0)
        folded = Folded(pattern);
    SyntaxTree tree;
    const REParseError error =
        ParsePattern(program.m_caseSensitive == 0 ? folded.c_str() : pattern, tree);
    if (error != REParseError::None)
        return error;
    Compiler compiler(tree, program.m_code);
    if (!compiler.Compile())
        return REParseError::OutOfMemory;
    program.m_groupCount = tree.groupCount;
    program.m_slotCount = compiler.GetSlotCount();
    return REParseError::None;
}

} // namespace

} // namespace tlvn::regexp

template <typename Char>
REParseError CREProgram<Char>::Parse(const Char* pattern, int caseSensitive)
{
    *this = CREProgram();
    m_caseSensitive = caseSensitive;
    if (pattern == nullptr)
        return m_error = REParseError::InvalidInput;
    try {
        m_error = tlvn::regexp::Build(*this, pattern);
    } catch (const std::bad_alloc&) {
        m_error = REParseError::OutOfMemory;
    }
    if (m_error != REParseError::None)
        m_code = {};
    return m_error;
}

template class CREProgram<char>;
template class CREProgram<WCHAR>;
