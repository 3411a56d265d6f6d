// A compiled regular expression: a list of instructions for the backtracking machine.
//
// An instruction is two words, its kind and an argument, and is addressed by its index. The
// program starts with a Call of its body at 2; what follows at 1 says what a failed attempt
// does (Fail for a pattern that begins with "^", else AdvanceStart); MatchFound ends it.
//
//   CREProgram<char> program;
//   if (program.Parse("a[0-9]+", 1) == REParseError::None)
//       ...                              // program.m_code: Call 2, AdvanceStart, Symbol 'a' ...
//
// There is one program type for each width of character: char for text of the multibyte code
// page that is in force while Parse runs, WCHAR for UTF-16. A character is one unit, or lead
// byte x 256 + trail byte. persist/regexp/machine.h runs a program.

#pragma once

#include "platform/types.h"

#include <cstdint>
#include <vector>

// Why a pattern cannot be compiled. The messages are the string table's from 3300 on.
enum class REParseError : int {
    None = 0,
    OutOfMemory = 1, // also for a program of more than kMaxRegExpProgram instructions
    BraceExpected = 2,
    ParenthesisExpected = 3,
    BracketExpected = 4,
    Unexpected = 5, // an abbreviation does not compile
    EmptyRange = 6,
    InvalidGroup = 7, // a reference to a group that does not stand before it
    InvalidRange = 8,
    EmptyRepeat = 9, // an expression that can be empty is repeated
    InvalidInput = 10,
};

// What an instruction does. To "fail" is to go on at the instruction index on top of the stack.
enum class REKind : std::uint32_t {
    Nop = 0, // nothing; its argument is one end of a range in a list
    GroupStart = 1,
    GroupEnd = 2,
    Symbol = 3,         // the character, or the end of the text when it is 0
    Any = 4,            // any character
    RangeBitmap = 5,    // set of 256 bits in the next four instructions; Parse makes none
    NotRangeBitmap = 6, // the same, negated
    RangeList = 7,      // pairs of Nop follow, lowest and highest; argument: what is behind them
    NotRangeList = 8,
    Jump = 13,
    PushPosition = 14,
    PopPosition = 15,
    Call = 16, // pushes the index of the next instruction
    Return = 17,
    PushMemory = 20, // memory slots: a loop's or a negation's own
    PopMemory = 21,
    StorePosition = 22,
    StoreStackDepth = 23,
    LoadPosition = 24,
    LoadStackDepth = 25,
    FailIfNoProgress = 26,
    BackReference = 27,
    Fail = 28, // the whole match fails
    AdvanceStart = 29,
    MatchFound = 30,
    PushGroup = 31,
    PopGroup = 32,
};

struct REInstruction {
    REKind kind;
    std::uint32_t argument;
};

constexpr std::uint32_t kBitmapInstructions = 4; // lowest bits first, in the order of the words

// Nested "+" double what they repeat; such a program ends here rather than with the memory.
constexpr std::size_t kMaxRegExpProgram = 1 << 24;

template <typename Char>
class CREProgram {
public:
    // Compiles a terminated pattern, replacing the program. A null pattern is InvalidInput. A
    // program with an error must not be run.
    REParseError Parse(const Char* pattern, int caseSensitive);

    REParseError m_error = REParseError::None;
    std::vector<REInstruction> m_code;
    int m_groupCount = 0;
    int m_slotCount = 0;
    int m_caseSensitive = 0;
};

extern template class CREProgram<char>;
extern template class CREProgram<WCHAR>;
