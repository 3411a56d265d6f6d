#include "platform/memory.h"
#include "tests/support/test.h"

namespace tlvn {
namespace {

// Then a size no system has: null, and the old block is still whole.
TEST(PageMemory, IsZeroedAndCountedUntilItIsExhausted)
{
    const int before = GetPageBlockCount();
    char* const block = static_cast<char*>(PageAlloc(5000));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::string(block, 5000), std::string(5000, '\0'));
    EXPECT_EQ(GetPageBlockCount(), before + 1);
    PageFree(nullptr, 0);
    block[4999] = 'x';
    EXPECT_EQ(PageAlloc(SIZE_MAX), nullptr);
    EXPECT_EQ(PageRealloc(block, 5000, SIZE_MAX / 2), nullptr);
    EXPECT_EQ(block[4999], 'x');
    EXPECT_EQ(GetPageBlockCount(), before + 1);
    PageFree(block, 5000);
    EXPECT_EQ(GetPageBlockCount(), before);
}

// Grows and shrinks at random across page boundaries; fails when content is lost in a move, or
// when pages given back by shrinking are not there again after growing.
TEST(PageMemory, KeepsTheContentThroughChangesOfSize)
{
    std::mt19937 random(7);
    std::size_t size = 1;
    char* block = static_cast<char*>(PageAlloc(size));
    std::string model(size, '\0');
    for (int i = 0; i < 300; i++) {
        const std::size_t next = 1 + random() % (i % 3 == 0 ? 200000 : 9000);
        char* const changed = static_cast<char*>(PageRealloc(block, size, next));
        ASSERT_NE(changed, nullptr);
        block = changed;
        model.resize(next);
        ASSERT_EQ(std::memcmp(block, model.data(), std::min(size, next)), 0);
        const char fill = static_cast<char>('a' + i % 26);
        std::memset(block, fill, next);
        model.assign(next, fill);
        size = next;
    }
    PageFree(block, size);
}

TEST(PageMemory, TrimmingGivesThePagesBack)
{
    const std::size_t before = GetPageBytes();
    char* const block = static_cast<char*>(PageAlloc(300000));
    block[1999] = 'x';
    PageTrim(block, 300000, 2000);
    EXPECT_EQ(block[1999], 'x');
    EXPECT_LT(GetPageBytes() - before, 300000u / 2);
    PageFree(block, 2000);
    EXPECT_EQ(GetPageBytes(), before);
}

} // namespace
} // namespace tlvn
