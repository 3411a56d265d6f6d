// The quote prefixes of a document (">", ">>") and their colour levels, 0 to 3.
//
// Each prefix is entered once, in the order of first appearance; a line keeps the index of its
// entry. The level of an entry is settled when it is entered, so that it differs from those of
// its parent (the prefix without its last character) and its children (longer by one
// character), as far as they are there already:
//
//   1. The level of the parent and those of the children are taken.
//   2. The level is the first that is free of index mod 4, index + 1 mod 4, ...; or index mod 4
//      when none is free.
//
// So threads that have nothing to do with each other spread over the levels.
//
//   QuoteTable quotes;
//   const int entry = quotes.Enter(prefix, length, CT_SJIS);
//   color = colors.GetQuotedTextColor(quotes.GetLevel(entry));
//
// Entering costs one or two look-ups by hash, however many prefixes there are.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tlvn {

class TLVN_API QuoteTable {
public:
    enum : int { kNone = -1, kLevels = 4 };

    // Index of the prefix, `length` bytes of the code type; entered when it is new. kNone for
    // an empty or null one. All prefixes of a table are of one code type.
    int Enter(const char* prefix, int length, CodeType codeType);

    // Colour level of an entry; kNone for an index that is none.
    int GetLevel(int entry) const;
    int GetCount() const { return static_cast<int>(m_levels.size()); }

    // Forgets all entries.
    void Clear();

private:
    // A prefix that is an entry or the parent of one.
    struct Node {
        int entry = kNone;
        unsigned childLevels = 0; // bit n: a child has level n
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>()(text);
        }
    };
    using NodeMap = std::unordered_map<std::string, Node, Hash, std::equal_to<>>;

    Node& MakeNode(std::string_view prefix);
    int Add(std::string_view prefix, CodeType codeType);

    NodeMap m_nodes;
    std::vector<signed char> m_levels; // by entry
    std::string m_lastPrefix;          // that of m_lastEntry: quoted lines stand together
    int m_lastEntry = kNone;
};

} // namespace tlvn
