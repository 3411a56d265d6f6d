// Real Japanese text for the benchmarks: the manual pages of the Debian package manpages-ja.

#pragma once

#include <string>
#include <vector>

// The running text of the pages (no requests and comments of the formatter), one string for
// each page, in Shift_JIS. It holds only characters that every code of the benchmarks has, by
// ours and by iconv's tables alike. Empty when the package is not installed.
std::vector<std::string> ManualText();
