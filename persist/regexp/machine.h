// The backtracking machine that runs a compiled regular expression over a text.
//
//   CREMatchContext<char> context(program);
//   if (RunRegExp(program, context, text))
//       ...                               // [context.m_matchStart, context.m_matchEnd)
//
// The machine tries every start from left to right and takes alternatives and repetitions in
// the order of their priority. What it may have to come back to lies on a stack of its own, of
// words that are instruction indices, positions and bounds of groups; a failure takes the index
// on top. When the stack cannot grow there is no match.
//
// A context is used by one thread at a time. Of a narrow program, the code page in force must
// be the one it was compiled under.

#pragma once

#include "persist/regexp/plan.h"
#include "persist/regexp/program.h"

#include <cstdint>
#include <memory>
#include <vector>

class CREStack {
public:
    using Word = std::uintptr_t;

    CREStack();

    void Clear() { m_top = m_words.get(); }
    std::size_t GetDepth() const { return static_cast<std::size_t>(m_top - m_words.get()); }
    // Drops what lies above a depth that the stack had.
    void SetDepth(std::size_t depth) { m_top = m_words.get() + depth; }
    // False when there is no memory for the word.
    bool Push(Word word)
    {
        if (m_top == m_end && !Grow())
            return false;
        *m_top++ = word;
        return true;
    }
    Word Pop() { return *--m_top; }
    // Gives back what a deep match has taken.
    void Shrink();

private:
    bool Grow();

    std::unique_ptr<Word[]> m_words;
    Word* m_top;
    Word* m_end;
};

template <typename Char>
class CREMatchContext {
public:
    struct Group {
        const Char* start;
        const Char* end;
    };

    // Throws std::bad_alloc.
    explicit CREMatchContext(const CREProgram<Char>& program);

    int m_groupCount;
    const Char* m_matchStart = nullptr;
    const Char* m_matchEnd = nullptr;
    std::vector<CREStack::Word> m_slots;
    std::vector<Group> m_groups;
    CREStack m_stack;
    std::unique_ptr<tlvn::regexp::Plan<Char>> m_plan;
};

// Looks for the first match in a terminated text.
template <typename Char>
bool RunRegExp(const CREProgram<Char>& program, CREMatchContext<Char>& context, const Char* text);

namespace tlvn {

// The same for a program from another hand than CREProgram's, without groups or memory slots,
// that begins and ends as a compiled one does. `start` and `end` are offsets.
TLVN_API bool RunInstructions(const std::vector<REInstruction>& code, const char* text, int& start,
                              int& end);

} // namespace tlvn

extern template class CREMatchContext<char>;
extern template class CREMatchContext<WCHAR>;
