#include "editor/open_url.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Range = CEditorLineRange;

std::string g_opened;

int Remember(const char* target)
{
    g_opened = target;
    return g_opened.find("refuse") == g_opened.npos ? 1 : 0;
}

} // namespace

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

TEST(OpenUrl, GoesToTheOpenerUnlessThereIsNothingToOpen)
{
    EXPECT_EQ(tlvn::SetLinkOpener(Remember), nullptr);
    EXPECT_EQ(tlvn::OpenLink(Range::ElRangeMail, "a@b", "me@a"), 1);
    EXPECT_EQ(g_opened, "mailto:a@b?From=me@a");
    EXPECT_EQ(tlvn::OpenLink(Range::ElRangeUrl, "http://refuse", nullptr), 0);
    EXPECT_EQ(g_opened, "http://refuse");
    g_opened.clear();
    EXPECT_EQ(tlvn::OpenLink(Range::ElRangeNone, "http://a", nullptr), 0);
    EXPECT_EQ(g_opened, "");
    EXPECT_EQ(tlvn::SetLinkOpener(nullptr), Remember);
}
