// A compiled regular expression in readable form, for looking at what a pattern becomes.

#pragma once

#include "persist/regexp/program.h"

#include <string>

namespace tlvn {

// Compiles the pattern and gives one line for each instruction: its index, its name, its
// argument, in UTF-8. The ranges of a class stand on its line. The last line tells the groups
// and memory slots.
//
//   0  Call 2
//   1  AdvanceStart
//   2  RangeList 5  a-z
//   5  MatchFound
//
// When the pattern does not compile, the list is empty and `error` is the message, in UTF-8.
TLVN_API std::string ListRegExp(const char* pattern, int caseSensitive, std::string& error);
TLVN_API std::string ListRegExp(const WCHAR* pattern, int caseSensitive, std::string& error);

} // namespace tlvn
