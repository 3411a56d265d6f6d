#include "TlvnMisc.h"
#include "editor/document.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> Lines(const tlvn::Document& document)
{
    std::vector<std::string> lines;
    for (int i = 0; i < document.GetLineCount(); ++i) {
        const CBuffer& line = document.GetLine(i);
        lines.emplace_back(line, static_cast<std::size_t>(line.GetLength()));
    }
    return lines;
}

} // namespace

// Every terminator alone and in company; a line after the last one; line-end bytes that are not
// line ends because they are the second half of something.
TEST(Document, CutsTextIntoLines)
{
    using Texts = std::vector<std::string>;
    const struct {
        std::string text;
        Texts lines;
    } narrow[] = {
        {"", {""}},
        {"w\r\nx\ny\rz", {"w", "x", "y", "z"}},
        {"a\r\n", {"a", ""}},
        {"\n\r\r\n", {"", "", "", ""}},
        {std::string("a\0b\n", 4), {std::string("a\0b", 3), ""}},
        {"\x82\nx", {"\x82", "x"}}, // a lead byte without its trail byte
        {"\x82\xA0\r", {"\x82\xA0", ""}},
    };
    tlvn::Document document;
    EXPECT_EQ(Lines(document), Texts{""});
    for (const auto& c : narrow) {
        document.Set(CT_SJIS, c.text.data(), static_cast<int>(c.text.size()));
        EXPECT_EQ(Lines(document), c.lines);
    }
    // U+0D0A and U+0A0D are letters, and the odd byte at the end is kept.
    const std::string wide("\x0A\x0D\x0D\x0A\x0D\0\x0A\0a\0b", 11);
    document.Set(CT_UNICODE, wide.data(), 11);
    EXPECT_EQ(Lines(document), (Texts{"\x0A\x0D\x0D\x0A", std::string("a\0b", 3)}));
    document.Set(CT_SJIS, nullptr, 5);
    EXPECT_EQ(Lines(document), Texts{""});
}

TEST(Document, HeaderBlockStandsInFrontAndIsReplacedAsAWhole)
{
    tlvn::Document document;
    document.Set(CT_SJIS, "body", 4);
    document.SetHeader("From: a\r\nTo: b", 14);
    EXPECT_EQ(document.GetHeaderLineCount(), 2);
    EXPECT_EQ(Lines(document), (std::vector<std::string>{"From: a", "To: b", "body"}));
    document.SetHeader("X", 1);
    EXPECT_EQ(Lines(document), (std::vector<std::string>{"X", "body"}));
    document.Set(CT_SJIS, "new", 3);
    EXPECT_EQ(document.GetHeaderLineCount(), 0);
}

TEST(Document, GivesTheStartOfALineAsUtf16)
{
    tlvn::Document document;
    document.Set(CT_SJIS, "\x82\xA0\xB1z", 4);
    tlvn::WString units;
    document.GetLineUnits(0, 100, units);
    EXPECT_EQ(units, TW("\x3042\xFF71z"));
    document.GetLineUnits(0, 1, units);
    EXPECT_EQ(units.substr(0, 1), TW("\x3042"));
    document.Set(CT_UNICODE, "a\0b\0c", 5);
    document.GetLineUnits(0, 100, units);
    EXPECT_EQ(units, TW("ab"));
    document.GetLineUnits(0, 1, units);
    EXPECT_EQ(units, TW("a"));
}

TEST(Document, CountsColumns)
{
    tlvn::Document document;
    document.Set(CT_SJIS, "a\x82\xA0\xB1", 4);
    EXPECT_EQ(document.CountColumns(0), 4);
    const tlvn::WString wide = TW("a\x00E9\x3042\xFF71\xFF21\xD842\xDFB7");
    document.Set(CT_UNICODE, reinterpret_cast<const char*>(wide.data()), 14);
    EXPECT_EQ(document.CountColumns(0), 1 + 1 + 2 + 1 + 2 + 4);
}
