#include "tests/support/editor_window_check.h"
#include "tests/support/test.h"

// Messages, keys, mouse events and sizes at random. Few windows with much to do: making one takes
// the window system seconds.
TEST(RandomWindow, KeepsTextCaretAndHistoryInOrder)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::uint8_t> bytes(300 + random() % 1500);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        const char* const fault = CheckEditorWindow(bytes.data(), bytes.size());
        ASSERT_EQ(fault, nullptr) << fault << ", seed " << seed;
    }
}
