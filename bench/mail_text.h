// The text of the editor's benchmarks: Japanese mail, one after the other.

#pragma once

#include <cstddef>
#include <string>

// At least so many bytes of Shift_JIS, in lines of some fifty bytes with CR LF between them:
// running text, quotes up to three deep, links, empty lines, and now and then a paragraph of a
// kilobyte in one line. The same at every call.
std::string MakeMailText(std::size_t bytes);
