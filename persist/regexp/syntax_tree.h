// What a pattern says, between the parser and the compiler.
//
// Nodes lie in one array and name each other by index, so that a pattern nested a hundred
// thousand deep is no deeper in memory than any other.

#pragma once

#include <cstdint>
#include <vector>

namespace tlvn::regexp {

constexpr int kNoNode = -1;

enum class NodeKind : std::uint8_t {
    Empty, // also a group with nothing in it, as which it takes an instruction of its own
    Symbol,
    Any,
    Range,
    NotRange,
    BackReference,
    Sequence, // of all from `first` on
    Group,    // `first` is a sequence
    Parenthesis,
    Negation,
    Alternation, // of `first` and the node next to it
    Repeat,
};

struct RepeatOperator {
    bool atLeastOnce = false; // "+"
    bool once = false;        // "?"
    bool greedy = true;
};

struct Node {
    NodeKind kind = NodeKind::Empty;
    bool canBeEmpty = false;
    RepeatOperator repeat;   // of a Repeat
    std::uint32_t value = 0; // character; group number; first of a range's pairs
    std::uint32_t count = 0; // of a range's pairs
    int first = kNoNode;
    int next = kNoNode; // behind this one in a sequence or alternation
};

struct RangePair {
    std::uint32_t low, high;
};

struct SyntaxTree {
    std::vector<Node> nodes;
    std::vector<RangePair> pairs;
    int root = kNoNode; // a Sequence
    int groupCount = 0;
    bool atStart = false; // the pattern begins with "^"
};

} // namespace tlvn::regexp
