#include "editor/link_range.h"
#include "platform/nls.h"
#include "tests/support/test.h"

namespace {

using Range = CEditorLineRange;
using Links = std::vector<std::string>; // kind and text of each

// Of the text in Shift_JIS, or in UTF-16 with an odd byte at the end: an odd `offset` puts that at
// an odd address.
Links Find(const std::string& text, CodeType type, std::size_t offset = 0)
{
    const bool wide = type == CT_UNICODE;
    std::string bytes(offset, 'x');
    if (wide) {
        const tlvn::WString units = tlvn::WidenText(text);
        bytes.append(reinterpret_cast<const char*>(units.data()), units.size() * 2) += 'x';
    } else {
        bytes += text;
    }
    std::vector<Range> ranges{{1, 2, Range::ElRangeUrl}};
    tlvn::FindLinks(bytes.data() + offset, static_cast<int>(bytes.size() - offset), type, ranges);
    Links links;
    int end = 0;
    for (const Range& range : ranges) {
        EXPECT_GE(range.start, end) << "out of order, or overlapping";
        end = range.GetEnd();
        std::string found = bytes.substr(offset + static_cast<std::size_t>(range.start),
                                         static_cast<std::size_t>(range.length));
        if (wide) {
            tlvn::WString units(found.size() / 2, 0);
            std::memcpy(units.data(), found.data(), found.size());
            found = tlvn::NarrowText(units);
        }
        links.push_back((range.type == Range::ElRangeUrl ? "url " : "mail ") + found);
    }
    return links;
}

} // namespace

TEST(LinkRange, LeadsToAMailAddress)
{
    const struct {
        Range::ElRangeType kind;
        const char* text;
        int result;
        const char* address;
    } cases[] = {
        {Range::ElRangeUrl, "MailTo:a@b?subject=x?y", 1, "a@b"},
        {Range::ElRangeUrl, "mailto", 0, ""},
        {Range::ElRangeUrl, "http://a@b", 0, ""},
        {Range::ElRangeUrl, nullptr, 0, ""},
        {Range::ElRangeMail, "a@b?x", 1, "a@b?x"}, // the whole of it
        {Range::ElRangeMail, "mailto:a@b", 1, "a@b"},
        {Range::ElRangeNone, "mailto:a@b", 0, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(IsRangeMailAddress(c.kind, c.text), c.result);
        EXPECT_EQ(GetRangeMailAddress(c.kind, c.text), c.address);
    }
}

// Rows: nothing to find; both kinds in order; an address inside a URL of each sort, which is none
// of its own; an address that runs into a URL and ends there; links side by side; Japanese around
// a link and half a character at the end.
TEST(LinkRange, FindsTheLinksOfALine)
{
    const struct {
        std::string text;
        Links links;
    } cases[] = {
        {"", {}},
        {"a@b.example or http://c.example/d, then e@f.example!",
         {"mail a@b.example", "url http://c.example/d,", "mail e@f.example!"}},
        {"<mailto:a@b.example> http://a@b.example/ c@d.example",
         {"url mailto:a@b.example", "url http://a@b.example/", "mail c@d.example"}},
        {"a@b.example/http://c.example", {"mail a@b.example/", "url http://c.example"}},
        {"http:// http:// \\\\server\\share x@y.z.w",
         {"url http://", "url http://", "url \\\\server\\share", "mail x@y.z.w"}},
        {"\x82\xA0http://a.jp/b\x82\xA0 c@d.jp\x82\xA0\x82", {"url http://a.jp/b", "mail c@d.jp"}},
        {std::string("a@b.cc\0http://d", 15), {"mail a@b.cc", "url http://d"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Find(c.text, CT_SJIS), c.links) << c.text;
        EXPECT_EQ(Find(c.text, CT_UNICODE, 1), c.links) << c.text;
    }
    std::vector<Range> ranges(1);
    tlvn::FindLinks("http://a", -1, CT_SJIS, ranges);
    EXPECT_TRUE(ranges.empty());
}

// A finder that starts over for every link, and reads to the end of the line each time, needs
// hours for one of these.
TEST(LinkRange, TakesLinearTimeOnHostileLines)
{
    constexpr std::size_t kSize = 1 << 19;
    const char* const pieces[] = {"@",           "http:",       "http: ",      "a",
                                  "a@b.c ",      "a@b.c/http:", "a@b.c,http:", "@a.",
                                  "\\\\a http:", "mailto:a ",   "<mailto:a",   "\\\\",
                                  "x@y.",        "\"file:",     "\x82\xA0",    "C:\\ \\\\a"};
    for (const std::string piece : pieces) {
        std::string text;
        while (text.size() < kSize)
            text += piece;
        Find(text, CT_SJIS);
        Find(text, CT_UNICODE);
    }
}
