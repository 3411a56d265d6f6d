// Lengths as callers give them: in bytes, or in units of UTF-16; below 0 for a text that ends at
// its zero.

#pragma once

#include "platform/types.h"

#include <algorithm>
#include <climits>
#include <string>

namespace tlvn {

// `len` where it is given, else that of the terminated text s. What lies behind INT_MAX is not
// seen.
template <class Char>
int TextLength(const Char* s, int len = -1)
{
    if (len >= 0)
        return len;
    constexpr std::size_t kMost = INT_MAX;
    return static_cast<int>(std::min(std::char_traits<Char>::length(s), kMost));
}

} // namespace tlvn
