// Page allocation by mmap.

#include "platform/memory.h"

#include <atomic>
#include <sys/mman.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define TLVN_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TLVN_ADDRESS_SANITIZER
#endif
#endif
#ifdef TLVN_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace tlvn {

namespace {

std::atomic<int> g_blocks{0};
std::atomic<std::size_t> g_bytes{0};

// `size` rounded up to whole pages; 0 when that is not possible.
std::size_t Pages(std::size_t size)
{
    static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size > SIZE_MAX - page ? 0 : (size + page - 1) / page * page;
}

// AddressSanitizer does not know these blocks: it is told that what lies between the size and
// the end of the last page is not to be touched, and to forget that before the pages go.
#ifdef TLVN_ADDRESS_SANITIZER
void Guard(void* block, std::size_t size)
{
    __asan_poison_memory_region(static_cast<char*>(block) + size, Pages(size) - size);
}
void Unguard(void* block, std::size_t size)
{
    __asan_unpoison_memory_region(block, Pages(size));
}
#else
void Guard(void*, std::size_t) {}
void Unguard(void*, std::size_t) {}
#endif

} // namespace

void* PageAlloc(std::size_t size) noexcept
{
    const std::size_t pages = Pages(size);
    if (pages == 0)
        return nullptr;
    void* const block =
        mmap(nullptr, pages, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED)
        return nullptr;
    Unguard(block, size);
    Guard(block, size);
    g_blocks++;
    g_bytes += pages;
    return block;
}

void* PageRealloc(void* block, std::size_t oldSize, std::size_t newSize) noexcept
{
    const std::size_t pages = Pages(newSize);
    if (pages == 0)
        return nullptr;
    Unguard(block, oldSize);
    void* moved = block;
    if (pages != Pages(oldSize))
        moved = mremap(block, Pages(oldSize), pages, MREMAP_MAYMOVE);
    if (moved == MAP_FAILED) {
        Guard(block, oldSize);
        return nullptr;
    }
    Unguard(moved, newSize);
    Guard(moved, newSize);
    g_bytes += pages - Pages(oldSize);
    return moved;
}

void PageTrim(void* block, std::size_t oldSize, std::size_t newSize) noexcept
{
    const std::size_t pages = Pages(newSize);
    Unguard(block, oldSize);
    if (pages < Pages(oldSize))
        munmap(static_cast<char*>(block) + pages, Pages(oldSize) - pages);
    Guard(block, newSize);
    g_bytes -= Pages(oldSize) - pages;
}

void PageFree(void* block, std::size_t size) noexcept
{
    if (block == nullptr)
        return;
    Unguard(block, size);
    munmap(block, Pages(size));
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
