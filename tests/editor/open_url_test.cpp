#include "editor/open_url.h"
#include "tests/support/test.h"

using Range = CEditorLineRange;

TEST(OpenUrl, MakesTheTargetOfALink)
{
    const struct {
        Range::ElRangeType type;
        const char* text;
        const char* from;
        const char* target;
    } cases[] = {
        {Range::ElRangeNone, "http://a", "me@a", ""},
        {Range::ElRangeUrl, nullptr, "me@a", ""},
        {Range::ElRangeMail, "", "me@a", ""}, // not a bare "mailto:"
        {Range::ElRangeMail, "a@b", nullptr, "mailto:a@b"},
        {Range::ElRangeMail, "a@b", "me@a", "mailto:a@b?From=me@a"},
        {Range::ElRangeUrl, "MAILTO:a@b?subject=x", "me@a", "MAILTO:a@b?subject=x&From=me@a"},
        {Range::ElRangeUrl, "mailto", "me@a", "mailto"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tlvn::MakeLinkTarget(c.type, c.text, c.from), c.target);
}
