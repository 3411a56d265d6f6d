// Reads choices out of arbitrary bytes: how the fuzz targets, and the random tests that share
// their code, turn bytes into operations. Past the end it gives zeros.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

class ByteSource {
public:
    ByteSource(const std::uint8_t* data, std::size_t size) : m_data(data), m_left(size) {}

    bool IsEmpty() const { return m_left == 0; }

    unsigned Byte()
    {
        if (m_left == 0)
            return 0;
        --m_left;
        return *m_data++;
    }

    // A number from low to high; both ends are possible.
    int Number(int low, int high)
    {
        const unsigned range = static_cast<unsigned>(high - low) + 1;
        unsigned value = Byte();
        if (range > 256)
            value = value << 8 | Byte();
        return low + static_cast<int>(value % range);
    }

    std::string Text(int maxLength)
    {
        std::string text;
        for (int i = Number(0, maxLength); i > 0; --i)
            text += static_cast<char>(Byte());
        return text;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_left;
};
