// Storage for the texts of many lines: blocks that are filled from the front and released all
// at once. Nothing is given back singly; the owner moves what it still uses to a new pool when
// most of this one is unused.

#pragma once

#include "platform/types.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tlvn {

class TLVN_API TextPool {
public:
    // Room for `length` bytes at an even address, uninitialised, as long as the pool lives. Throws
    // CMemoryException*.
    char* Allocate(int length);

    // Bytes allocated, and of them no longer used.
    INT64 GetSize() const { return m_size; }
    INT64 GetUnused() const { return m_unused; }
    void AddUnused(INT64 bytes) { m_unused += bytes; }

    void Swap(TextPool& other) noexcept;

private:
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_free = nullptr; // in the last small block
    std::size_t m_left = 0;
    INT64 m_size = 0;
    INT64 m_unused = 0;
};

} // namespace tlvn
