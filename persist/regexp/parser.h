// Reads a pattern into a syntax tree.
//
// From the loosest: a sequence of items; an item is a repeated atom, or two of them with "|"
// between; a repeated atom has at most one of * + ? *? +? ?? behind it. Atoms:
//
//   {...}  group that can be referred to      (...)  group that cannot
//   [...]  one character of a class           !x     x does not stand here
//   \0     what group 0 matched               \d     an abbreviation
//   \x     the character x                    .      any character
//   $      at the very end: the text's end    ^      at the very start: the text's start
//
// A sequence ends without an error at whatever cannot start an atom, so what follows a bracket
// that was never opened is not read. Two ends that the rules leave open: a "\" that ends the
// pattern is that character, and a "!" with nothing behind it is nothing. "a|" is a or nothing.
//
// Open brackets are kept in an array, not on the call stack.

#pragma once

#include "persist/regexp/program.h"
#include "persist/regexp/syntax_tree.h"

namespace tlvn::regexp {

// Reads a terminated pattern; `tree` is new. May throw std::bad_alloc.
template <typename Char>
REParseError ParsePattern(const Char* pattern, SyntaxTree& tree);

} // namespace tlvn::regexp
