// Memory that never comes back null.
//
// tv_malloc and tv_realloc throw the framework's memory exception (CMemoryException*) where
// malloc and realloc would return null, so no caller has to test. Blocks of the buffer family
// come from one of two allocators that the block's size alone chooses: see AllocBlock.

#pragma once

#include "framework/framework.h"

// `size` bytes, not initialised; a size of 0 gives a block that may be released. Throws
// CMemoryException*.
TLVN_API void* tv_malloc(std::size_t size);

// Resizes the block p (null: a new one) keeping its content up to the smaller size. Throws
// CMemoryException*, the block is then as it was. A size of 0 keeps a minimal block.
TLVN_API void* tv_realloc(void* p, std::size_t size);

// Releases what tv_malloc or tv_realloc gave; null does nothing.
TLVN_API void tv_free(void* p);

// Length in bytes of the text s, looking at no more than max bytes: the index of the first
// zero byte below max, or max. A max below 1 is returned as it is.
TLVN_API int tv_strnlen(const char* s, int max);

// Length in bytes (not units) of the UTF-16 text s, looking at no more than maxBytes bytes, an
// odd maxBytes counting as the even number below it: twice the index of the first zero unit,
// or maxBytes. A (rounded) maxBytes below 1 is returned.
TLVN_API int tv_wcsnlen(const WCHAR* s, int maxBytes);

namespace tlvn {

// Blocks below this size come from the heap, the others from the page allocator.
constexpr std::size_t kPageBlockSize = 1024;

// A block of `size` bytes, not initialised. Throws CMemoryException*.
TLVN_API void* AllocBlock(std::size_t size);

// Makes a block of oldSize bytes newSize bytes long, crossing from one allocator to the other
// when the sizes say so; the first min(oldSize, newSize) bytes are kept. A null block is a new
// one. Throws CMemoryException*, the old block is then as it was.
TLVN_API void* ReallocBlock(void* block, std::size_t oldSize, std::size_t newSize);

// Makes a block shorter where it stands, so that it is released as one of newSize bytes. Both
// sizes have to mean the same allocator.
TLVN_API void TrimBlock(void* block, std::size_t oldSize, std::size_t newSize) noexcept;

// Releases a block of that size; null does nothing.
TLVN_API void FreeBlock(void* block, std::size_t size) noexcept;

// For tests: lets `count` more allocations of this header succeed and every later one fail;
// below 0 (the normal state) none fails on purpose.
TLVN_API void SetAllocationLimit(int count) noexcept;

} // namespace tlvn
