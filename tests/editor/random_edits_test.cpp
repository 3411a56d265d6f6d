#include "tests/support/edit_model.h"
#include "tests/support/test.h"

// Thousands of edits on random documents of both forms, each step compared with the model.
TEST(RandomEdits, EqualTheModel)
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::uint8_t> bytes(200 + random() % 1000);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        const char* const fault = CheckEditing(bytes.data(), bytes.size());
        ASSERT_EQ(fault, nullptr) << fault << ", seed " << seed;
    }
}
