// Sets of ASCII characters, for bytes and UTF-16 units alike.

#pragma once

#include "platform/types.h"

#include <array>
#include <type_traits>

namespace tlvn {

class CharacterSet {
public:
    constexpr explicit CharacterSet(const char* members)
    {
        for (; *members != '\0'; ++members)
            m_has[static_cast<BYTE>(*members)] = true;
    }

    // A byte of a double-byte character is for the caller to keep away.
    template <class Char>
    constexpr bool Has(Char c) const
    {
        const auto unit = static_cast<std::make_unsigned_t<Char>>(c);
        return unit < m_has.size() && m_has[unit];
    }

private:
    std::array<bool, 128> m_has{};
};

} // namespace tlvn
