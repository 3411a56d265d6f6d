// Pasting from blocks that Windows would not let through: it ends every text itself.

#include "framework/headless/headless.h"
#include "tests/support/editor_fixture.h"

namespace {

class EditorPasting : public tlvn::EditorFixture {};

} // namespace

// A format and a block without a terminator, which ends anywhere -> what is pasted. Reading on
// behind the block is an error of the sanitizer.
TEST_F(EditorPasting, EndsWithTheBlock)
{
    using namespace std::string_literals;
    const struct {
        UINT format;
        std::string block;
        const char* expected;
    } cases[] = {
        {CF_UNICODETEXT, "a\0\x42\x30"s, "a\x82\xA0"},
        {CF_UNICODETEXT, "a\0b\0c"s, "ab"},
        {CF_UNICODETEXT, "a", ""},
        {CF_TEXT, "a\x82\xA0", "a\x82\xA0"},
        {CF_TEXT, "", ""},
    };
    tlvn::headless::Reset();
    Create();
    for (const auto& c : cases) {
        SetText("");
        tlvn::GiveBlocks({{c.format, c.block}});
        EXPECT_EQ(editor.Paste(), 1);
        EXPECT_EQ(Text(), c.expected);
    }
}
