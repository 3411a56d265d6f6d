#include "editor/document.h"
#include "tests/support/edit_model.h"
#include "tests/support/test.h"

using namespace std::string_literals;
using edit_model::LinesOf;
using Texts = std::vector<std::string>;

namespace {

void Set(tlvn::Document& document, CodeType type, const std::string& text)
{
    document.Set(type, text.data(), static_cast<int>(text.size()));
}

std::string Copy(const tlvn::Document& document, const CTextPos& from, const CTextPos& to,
                 const tlvn::TextForm& form = {})
{
    return Output([&](CBuffer& out) { document.CopyRange(from, to, form, out); });
}

} // namespace

// Line ends are proved beside the model of edits; the odd byte at the end of UTF-16 is no unit.
TEST(Document, TakesHalfUnitsAndLyingLengths)
{
    tlvn::Document document;
    EXPECT_EQ(document.GetLineCount(), 0);
    Set(document, CT_UNICODE, "\x0A\x0D\x0D\0\x0A\0a\0b"s);
    EXPECT_EQ(LinesOf(document), (Texts{"\x0A\x0D", "a\0"s}));
    document.Set(CT_SJIS, nullptr, 5);
    EXPECT_EQ(LinesOf(document), Texts{""});
}

TEST(Document, AppendsLinesQuotedAndConverted)
{
    tlvn::Document document;
    Set(document, CT_SJIS, "a");
    document.Append("b\r\n\x82\xA0", 5, "> ");
    EXPECT_EQ(LinesOf(document), (Texts{"a", "> b", "> \x82\xA0"}));
    tlvn::Document wide;
    Set(wide, CT_UNICODE, "x\0"s);
    wide.Append(document);
    EXPECT_EQ(LinesOf(wide), (Texts{"x\0"s, "a\0"s, ">\0 \0b\0"s, ">\0 \0\x42\x30"s}));
    wide.SetCodeType(CT_SJIS);
    EXPECT_EQ(LinesOf(wide), (Texts{"x", "a", "> b", "> \x82\xA0"}));
}

TEST(Document, CopiesOut)
{
    const tlvn::TextForm final{"", true, true}, quoted{"> ", true, false}, joined{"", false, true};
    const struct {
        std::string text;
        tlvn::TextForm form;
        std::string expected;
    } cases[] = {
        {"w\n", final, "w\r\n"},            // ends with one already
        {"w\n\n", quoted, "> w\r\n> \r\n"}, // the empty last line is not quoted, others are
        {"w\nx", joined, "wx"},
    };
    tlvn::Document document;
    for (const auto& c : cases) {
        Set(document, CT_SJIS, c.text);
        EXPECT_EQ(Copy(document, CTextPos(), document.GetDocEnd(), c.form), c.expected);
    }
    Set(document, CT_SJIS, "ab\ncd\nef");
    EXPECT_EQ(Copy(document, CTextPos(2, 1), CTextPos(0, 1)), "b\r\ncd\r\ne"); // either order
    EXPECT_EQ(Copy(document, CTextPos(1, 1), CTextPos(99, 0)), "d\r\nef");
}

// A buffer that is too small gets whole characters and its zero.
TEST(Document, CopiesIntoSmallBuffers)
{
    tlvn::Document document;
    Set(document, CT_SJIS, "a\x82\xA0\nb");
    const int lengths[] = {-1, 0, 1, 1, 3, 4, 5, 6, 6};
    for (int size = 0; size < 9; ++size) {
        char out[10] = "~~~~~~~~~";
        const int length = document.CopyRange(CTextPos(), document.GetDocEnd(), {}, out, size);
        EXPECT_EQ(length, lengths[size]);
        EXPECT_EQ(std::string(out, out + std::max(length, 0)),
                  "a\x82\xA0\r\nb"s.substr(0, static_cast<std::size_t>(std::max(length, 0))));
        EXPECT_EQ(out[size], '~');
    }
    Set(document, CT_UNICODE, "\x42\xD8\xB7\xDF"s);
    char out[6];
    EXPECT_EQ(document.CopyRange(CTextPos(), document.GetDocEnd(), {}, out, 5), 0);
    EXPECT_EQ(document.CopyRange(CTextPos(), document.GetDocEnd(), {}, out, 6), 4);
}

// Lines of 2, 1 and 3 physical lines, and what lies behind them.
TEST(Document, CountsPhysicalLinesAndConvertsPositions)
{
    tlvn::Document document;
    const edit_model::ByteLayout rows;
    document.SetLayout(&rows);
    Set(document, CT_SJIS, "12345\n\n123456789");
    EXPECT_EQ(document.GetSerialLineP(5, 0), 8);
    EXPECT_EQ(document.FindSerialLineP(8), CTextPos(5, 0, 0));
    EXPECT_EQ(document.FindSerialLineP(-1), CTextPos());
    document.SetFreeCursor(true);
    EXPECT_EQ(document.GetLineCountP(3), 1);
    const struct {
        CTextPos display;
        int clamp, logicalByte;
    } toLogical[] = {
        {{2, 1, 2}, 0, 6},  {{2, 0, 4}, 0, 4}, // the end of a physical line
        {{2, 0, 99}, 1, 4},                    // cut to it
        {{2, 2, 3}, 0, 11},                    // behind the line, as with the free cursor
        {{2, 2, 3}, 1, 9},  {{2, -1, 0}, 0, 0}, {{-1, 0, 2}, 0, 0}, {{2, 2, INT_MAX}, 0, INT_MAX},
    };
    for (const auto& c : toLogical) {
        CTextPos pos = c.display;
        document.P2LByteIndex(pos, c.clamp);
        EXPECT_EQ(pos.logicalByte, c.logicalByte) << c.display.physical << ' ' << c.display.byte;
    }
    CTextPos pos;
    document.ByteL2ViewIndex(2, 4, pos);
    EXPECT_EQ(pos, CTextPos(2, 1, 0)); // a break belongs to the line behind
    document.ByteL2ViewIndex(2, 12, pos);
    EXPECT_EQ(pos, CTextPos(2, 2, 4));
}

// Words: kanji, hiragana, Latin, with a full-width and a plain blank between; line ends.
TEST(Document, MovesByWords)
{
    tlvn::Document document;
    Set(document, CT_SJIS, "\x8A\xBF\x8E\x9A\x82\xC6\x81\x40  abc\n\nx");
    const struct {
        int byte, top, end, next, previous;
    } cases[] = {
        {0, 0, 4, 4, 0},
        {4, 4, 6, 10, 0},
        {11, 10, 13, 13, 10},
    };
    for (const auto& c : cases) {
        CTextPos top(0, c.byte), end = top, next = top, previous = top;
        document.ToWordTop(top);
        document.ToWordEnd(end);
        document.ToNextWordTop(next);
        document.ToPrevWordTop(previous);
        EXPECT_EQ(top.logicalByte, c.top) << c.byte;
        EXPECT_EQ(end.logicalByte, c.end) << c.byte;
        EXPECT_EQ(previous.logicalByte, c.previous) << c.byte;
        EXPECT_EQ(next.logicalByte, c.next) << c.byte;
    }
    CTextPos pos(0, 13);
    document.ToNextWordTop(pos);
    EXPECT_EQ(pos, CTextPos(1, 0, 0));
    document.ToPrevWordTop(pos);
    EXPECT_EQ(pos.logicalByte, 13);
}

// Nothing to stand on: no operation may fail on a document without lines.
TEST(Document, WithoutLinesIsHarmless)
{
    tlvn::Document document;
    CTextPos pos(3, 1, 4);
    document.ToNextChar(pos);
    document.ToPrevChar(pos);
    document.ToNextWordTop(pos);
    document.ToWordTop(pos);
    document.ToNextPhysicalLine(pos);
    EXPECT_EQ(document.GetDocEnd(), CTextPos());
    EXPECT_EQ(document.FindSerialLineP(0), CTextPos());
    document.Delete(CTextPos(0, 0), CTextPos(4, 4));
    EXPECT_EQ(document.Insert(CTextPos(2, 2), "a", 1).logicalByte, 1);
    EXPECT_EQ(LinesOf(document), Texts{"a"});
}

// Filling and emptying again and again must not keep the old texts: the pool is made anew.
TEST(Document, GivesBackTheTextsOfDeletedLines)
{
    tlvn::Document document;
    Set(document, CT_SJIS, "first");
    const std::string page(1 << 20, 'x');
    for (int i = 0; i < 5; ++i) {
        document.Append(page.data(), static_cast<int>(page.size()));
        document.Append("short", 5);
        document.Delete(CTextPos(0, 5), CTextPos(document.GetLineCount() - 2, 1 << 20));
        document.Delete(CTextPos(0, 2), CTextPos(0, 3));
        document.Insert(CTextPos(0, 2), "r", 1);
    }
    EXPECT_EQ(LinesOf(document), (Texts{"first", "short"}));
}
