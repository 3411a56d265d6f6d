// A pattern and a text against the plain matcher, in both widths.
//
// The first byte says whether case counts; the pattern goes up to the first zero byte, the text
// behind it to the next. Both are short, as the plain matcher is slow.

#include "fuzz/fuzz.h"

#include "tests/support/regexp_check.h"

#include <algorithm>

namespace {

constexpr std::size_t kLongestPattern = 40;
constexpr std::size_t kLongestText = 60;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    const int caseSensitive = data[0] & 1;
    const std::string input(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string pattern = input.substr(0, std::min(end, kLongestPattern));
    std::string text = end < input.size() ? input.substr(end + 1) : std::string();
    text.resize(std::min({text.find('\0'), text.size(), kLongestText}));
    if (pattern.empty() || text.empty())
        return 0;

    return FuzzResult(regexp_check::CheckBothWidths(pattern, text, caseSensitive).c_str());
}
