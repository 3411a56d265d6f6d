#include "foundation/allocation.h"

#include "platform/memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

int g_allocationLimit = -1;

// One allocation is about to be made: false when it has to fail on purpose.
bool MayAllocate()
{
    if (g_allocationLimit < 0)
        return true;
    if (g_allocationLimit == 0)
        return false;
    --g_allocationLimit;
    return true;
}

void* OrThrow(void* p)
{
    if (p == nullptr)
        AfxThrowMemoryException();
    return p;
}

bool IsPageSize(std::size_t size)
{
    return size >= tlvn::kPageBlockSize;
}

} // namespace

void* tv_malloc(std::size_t size)
{
    return OrThrow(MayAllocate() ? std::malloc(std::max<std::size_t>(size, 1)) : nullptr);
}

void* tv_realloc(void* p, std::size_t size)
{
    return OrThrow(MayAllocate() ? std::realloc(p, std::max<std::size_t>(size, 1)) : nullptr);
}

void tv_free(void* p)
{
    std::free(p);
}

int tv_strnlen(const char* s, int max)
{
    if (max < 1)
        return max;
    const void* end = std::memchr(s, 0, static_cast<std::size_t>(max));
    return end != nullptr ? static_cast<int>(static_cast<const char*>(end) - s) : max;
}

int tv_wcsnlen(const WCHAR* s, int maxBytes)
{
    const int max = maxBytes & ~1;
    if (max < 1)
        return max;
    const WCHAR* end = std::find(s, s + max / 2, WCHAR{0});
    return static_cast<int>(end - s) * 2;
}

namespace tlvn {

void* AllocBlock(std::size_t size)
{
    if (!IsPageSize(size))
        return tv_malloc(size);
    return OrThrow(MayAllocate() ? PageAlloc(size) : nullptr);
}

void* ReallocBlock(void* block, std::size_t oldSize, std::size_t newSize)
{
    if (block == nullptr)
        return AllocBlock(newSize);
    if (IsPageSize(oldSize) != IsPageSize(newSize)) {
        void* moved = AllocBlock(newSize);
        std::memcpy(moved, block, std::min(oldSize, newSize));
        FreeBlock(block, oldSize);
        return moved;
    }
    if (!IsPageSize(newSize))
        return tv_realloc(block, newSize);
    return OrThrow(MayAllocate() ? PageRealloc(block, oldSize, newSize) : nullptr);
}

void TrimBlock(void* block, std::size_t oldSize, std::size_t newSize) noexcept
{
    if (IsPageSize(oldSize))
        PageTrim(block, oldSize, newSize);
}

void FreeBlock(void* block, std::size_t size) noexcept
{
    if (IsPageSize(size))
        PageFree(block, size);
    else
        std::free(block);
}

void SetAllocationLimit(int count) noexcept
{
    g_allocationLimit = count;
}

} // namespace tlvn
