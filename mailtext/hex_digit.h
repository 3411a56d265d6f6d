// Hexadecimal digits as the transfer encodings write them.

#pragma once

namespace tlvn {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// Value of a digit of either case, or -1.
constexpr int HexValue(char c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

} // namespace tlvn
