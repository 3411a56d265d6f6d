// Apart from the measurements, so that no compiler pairs these with what it knows of its own.

#include "bench/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

int g_allocations = 0;

} // namespace

int CountAllocations()
{
    return g_allocations;
}

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* const block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
