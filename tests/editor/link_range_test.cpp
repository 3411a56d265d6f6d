#include "editor/link_range.h"

#include <gtest/gtest.h>

TEST(LinkRange, LeadsToAMailAddress)
{
    using Range = CEditorLineRange;
    const struct {
        Range::ElRangeType kind;
        const char* text;
        int result;
        const char* address;
    } cases[] = {
        {Range::ElRangeUrl, "MailTo:a@b?subject=x?y", 1, "a@b"},
        {Range::ElRangeUrl, "mailto:a@b", 1, "a@b"},
        {Range::ElRangeUrl, "mailto", 0, ""},
        {Range::ElRangeUrl, "http://a@b", 0, ""},
        {Range::ElRangeUrl, nullptr, 0, ""},
        {Range::ElRangeMail, "a@b?x", 1, "a@b?x"}, // the whole of it
        {Range::ElRangeNone, "mailto:a@b", 0, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(IsRangeMailAddress(c.kind, c.text), c.result);
        EXPECT_EQ(GetRangeMailAddress(c.kind, c.text), c.address);
    }
}
