#include "editor/text_pool.h"

#include "framework/guard_memory.h"

#include <utility>

namespace tlvn {

namespace {

// Longer texts get a block of their own.
constexpr std::size_t kBlockSize = 65536;
constexpr std::size_t kShort = kBlockSize / 8;

} // namespace

char* TextPool::Allocate(int length)
{
    const std::size_t size = (static_cast<std::size_t>(length) + 1) / 2 * 2;
    const auto addBlock = [this](std::size_t blockSize) {
        return GuardMemory([&] {
            m_blocks.push_back(std::unique_ptr<char[]>(new char[blockSize]));
            return m_blocks.back().get();
        });
    };
    m_size += length;
    if (size > kShort)
        return addBlock(size);
    if (size > m_left) {
        m_free = addBlock(kBlockSize);
        m_left = kBlockSize;
    }
    char* const text = m_free;
    m_free += size;
    m_left -= size;
    return text;
}

void TextPool::Swap(TextPool& other) noexcept
{
    std::swap(m_blocks, other.m_blocks);
    std::swap(m_free, other.m_free);
    std::swap(m_left, other.m_left);
    std::swap(m_size, other.m_size);
    std::swap(m_unused, other.m_unused);
}

} // namespace tlvn
