// Page allocation by VirtualAlloc.
//
// A block that grows is given twice the address space it needs, so that it can grow again
// where it is: address space is plenty, and only pages that are committed cost memory. Whether
// there is such room behind a block is asked of the system, so that nothing is stored.

#include "platform/memory.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace tlvn {

namespace {

std::atomic<int> g_blocks{0};
std::atomic<std::size_t> g_bytes{0};

std::size_t PageSize()
{
    static const std::size_t size = [] {
        SYSTEM_INFO info;
        GetSystemInfo(&info);
        return static_cast<std::size_t>(info.dwPageSize);
    }();
    return size;
}

// `size` rounded up to whole pages; 0 when that is not possible.
std::size_t Pages(std::size_t size)
{
    const std::size_t page = PageSize();
    return size > SIZE_MAX - page ? 0 : (size + page - 1) / page * page;
}

// Commits the pages from `from` to `to` bytes of the block where address space has been
// reserved for them.
bool CommitInPlace(void* block, std::size_t from, std::size_t to)
{
    char* const end = static_cast<char*>(block) + from;
    MEMORY_BASIC_INFORMATION info;
    if (VirtualQuery(end, &info, sizeof(info)) == 0)
        return false;
    if (info.State != MEM_RESERVE || info.AllocationBase != block || info.RegionSize < to - from)
        return false;
    return VirtualAlloc(end, to - from, MEM_COMMIT, PAGE_READWRITE) != nullptr;
}

// A new block of `size` bytes with as much address space behind it.
void* AllocWithRoom(std::size_t size)
{
    if (size <= SIZE_MAX / 2) {
        void* const block = VirtualAlloc(nullptr, size * 2, MEM_RESERVE, PAGE_READWRITE);
        if (block != nullptr) {
            if (VirtualAlloc(block, size, MEM_COMMIT, PAGE_READWRITE) != nullptr)
                return block;
            VirtualFree(block, 0, MEM_RELEASE);
        }
    }
    return VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
}

} // namespace

void* PageAlloc(std::size_t size) noexcept
{
    void* const block = VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    if (block == nullptr)
        return nullptr;
    g_blocks++;
    g_bytes += Pages(size);
    return block;
}

void* PageRealloc(void* block, std::size_t oldSize, std::size_t newSize) noexcept
{
    const std::size_t oldPages = Pages(oldSize);
    const std::size_t newPages = Pages(newSize);
    if (newPages == 0)
        return nullptr;
    if (newPages == oldPages)
        return block;
    if (newPages < oldPages) {
        PageTrim(block, oldSize, newSize);
        return block;
    }
    if (CommitInPlace(block, oldPages, newPages)) {
        g_bytes += newPages - oldPages;
        return block;
    }

    void* const moved = AllocWithRoom(newPages);
    if (moved == nullptr)
        return nullptr;
    std::memcpy(moved, block, std::min(oldSize, newSize));
    VirtualFree(block, 0, MEM_RELEASE);
    g_bytes += newPages - oldPages;
    return moved;
}

void PageTrim(void* block, std::size_t oldSize, std::size_t newSize) noexcept
{
    const std::size_t pages = Pages(newSize);
    if (pages < Pages(oldSize))
        VirtualFree(static_cast<char*>(block) + pages, Pages(oldSize) - pages, MEM_DECOMMIT);
    g_bytes -= Pages(oldSize) - pages;
}

void PageFree(void* block, std::size_t size) noexcept
{
    if (block == nullptr)
        return;
    VirtualFree(block, 0, MEM_RELEASE);
    g_blocks--;
    g_bytes -= Pages(size);
}

int GetPageBlockCount() noexcept
{
    return g_blocks;
}

std::size_t GetPageBytes() noexcept
{
    return g_bytes;
}

} // namespace tlvn
