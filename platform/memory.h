// The page allocator: memory straight from the operating system, for large blocks.
//
// Sizes are in bytes and are the caller's to remember: a block is released with the size it
// has. Nothing here throws; exhaustion is a null result.

#pragma once

#include "platform/types.h"

namespace tlvn {

// A block of at least `size` bytes (size > 0), zeroed, or null. Read/write.
TLVN_API void* PageAlloc(std::size_t size) noexcept;

// Makes the block at `block`, of `oldSize` bytes, `newSize` bytes long, moving it when it
// has to; the first min(oldSize, newSize) bytes are kept. The system remaps the pages rather
// than copying them where it can. Null on failure, the old block is then as it was.
TLVN_API void* PageRealloc(void* block, std::size_t oldSize, std::size_t newSize) noexcept;

// Makes a block shorter (0 < newSize <= oldSize) where it stands, giving the pages behind its new
// end back to the system; it then counts as a block of newSize bytes.
TLVN_API void PageTrim(void* block, std::size_t oldSize, std::size_t newSize) noexcept;

// Releases a block; null does nothing.
TLVN_API void PageFree(void* block, std::size_t size) noexcept;

// Number of page blocks that are allocated and not yet released, in the whole process.
TLVN_API int GetPageBlockCount() noexcept;
// The size of their pages by the sizes that callers gave; it does not come back to where it was
// when a block is released with another size than it has.
TLVN_API std::size_t GetPageBytes() noexcept;

} // namespace tlvn
