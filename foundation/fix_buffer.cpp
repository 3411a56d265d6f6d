#include "foundation/fix_buffer.h"

#include "foundation/allocation.h"

#include <cstring>
#include <utility>

namespace {

std::size_t BlockSize(int length)
{
    return static_cast<std::size_t>(length) + 2;
}

// A block that holds `length` bytes and the two zero bytes behind them; null for no bytes.
char* CopyBlock(const char* data, int length)
{
    if (length < 1)
        return nullptr;
    return static_cast<char*>(
        std::memcpy(tlvn::AllocBlock(BlockSize(length)), data, BlockSize(length)));
}

} // namespace

CFixBuffer::CFixBuffer() : m_data(nullptr), m_length(0) {}

CFixBuffer::CFixBuffer(const CFixBuffer& other)
    : m_data(CopyBlock(other.m_data, other.m_length)), m_length(other.m_length)
{}

CFixBuffer::~CFixBuffer()
{
    AllocFree();
}

CFixBuffer& CFixBuffer::operator=(const CFixBuffer& other)
{
    if (this == &other)
        return *this;
    char* copy = CopyBlock(other.m_data, other.m_length);
    AllocFree();
    m_data = copy;
    m_length = other.m_length;
    return *this;
}

void CFixBuffer::AllocFree()
{
    if (m_data != nullptr)
        tlvn::FreeBlock(m_data, BlockSize(m_length));
    m_data = nullptr;
    m_length = 0;
}

void CFixBuffer::MoveFrom(CBuffer& src)
{
    const bool otherAllocator = BlockSize(src.m_allocSize) >= tlvn::kPageBlockSize &&
                                BlockSize(src.m_length) < tlvn::kPageBlockSize;
    if (src.m_data != nullptr && otherAllocator) {
        char* copy = CopyBlock(src.m_data, src.m_length);
        AllocFree();
        m_data = copy;
        m_length = src.m_length;
        src.AllocFree();
        return;
    }
    AllocFree();
    // The block is released by its length from now on: what lies behind it would be lost.
    if (src.m_data != nullptr)
        tlvn::TrimBlock(src.m_data, BlockSize(src.m_allocSize), BlockSize(src.m_length));
    m_data = std::exchange(src.m_data, nullptr);
    m_length = std::exchange(src.m_length, 0);
    src.m_allocSize = 0;
}

CFixBuffer::operator const char*() const
{
    static const WCHAR empty[1] = {0};
    return m_data != nullptr ? m_data : reinterpret_cast<const char*>(empty);
}
