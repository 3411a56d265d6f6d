#include "editor/document.h"
#include "editor/line_wrap.h"
#include "tests/support/test.h"
#include "tests/support/wrap_reference.h"

namespace {

class LineWrapTest : public testing::Test {
protected:
    LineWrapTest()
    {
        const LOGFONTW description = CFontInfo().MakeLogFont(96, 128);
        font.CreateFontIndirect(&description);
        metrics.SetTurnCols(10);
    }

    CFont font;
    tlvn::CharWidths widths;
    CEditorMetrics metrics;
    static constexpr int clientWidth = 100;
};

} // namespace

// Text that comes in by an edit gets the entries, and so the colours, of text that is loaded.
TEST_F(LineWrapTest, EntersQuotesInTheOrderOfTheText)
{
    widths.Select(nullptr, font, CT_SJIS);
    const tlvn::LineWrap wrap(metrics, widths, clientWidth);
    tlvn::Document document;
    document.SetLayout(&wrap);
    document.Set(CT_SJIS, "x", 1);
    document.Insert(CTextPos(0, 0), "> a\n>> b\n> > c\n", 15);
    for (const int entry : {0, 1, 1, -1}) {
        EXPECT_EQ(document.GetLine(0).GetQuoteEntry(), entry);
        document.Delete(CTextPos(0, 0), CTextPos(1, 0));
    }
}

// Positions in a row, in pixels; the tests above and below compare where it ends.
TEST_F(LineWrapTest, KnowsThePixelsOfARow)
{
    widths.Select(nullptr, font, CT_SJIS);
    const int full = widths.Measure("\x82\xA0", 2);
    const int half = widths.Measure("-", 1);
    const tlvn::LineWrap wrap(metrics, widths, clientWidth);
    const int stop = 4 * widths.GetColumnWidth();
    const char* const text = "x\t-\x82\xA0\tz";
    EXPECT_EQ(wrap.GetX(text, 1, 5), stop + half + full);
    for (const auto& [x, byte, nearest] :
         {std::tuple(stop - 1, 1, 2), {stop + half + full - 1, 3, 5}, {9999, 7, 7}}) {
        EXPECT_EQ(wrap.FindByte(text, 1, 7, x, false), byte) << x;
        EXPECT_EQ(wrap.FindByte(text, 1, 7, x, true), nearest) << x; // not between the two bytes
    }
}

TEST_F(LineWrapTest, EqualsTheRulesTakenLiterally)
{
    std::mt19937 random(20);
    std::vector<std::uint8_t> bytes(200);
    for (int round = 0; round < 4000; ++round) {
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        ByteSource source(bytes.data(), bytes.size());
        const wrap_reference::Case c = wrap_reference::MakeCase(source);
        widths.Select(nullptr, font, c.metrics.GetCodeType());
        const char* const differs = wrap_reference::Compare(c, widths);
        ASSERT_EQ(differs, nullptr) << differs << " in round " << round;
        const char* const reaches = wrap_reference::CompareReach(c, widths, source.Text(60));
        ASSERT_EQ(reaches, nullptr) << reaches << " in round " << round;
    }
}

// A long line that gains, loses and cuts links, and one of which only tabs have been measured:
// after each change its rows are those of the text wrapped afresh.
TEST_F(LineWrapTest, FollowsTheEditsOfALongLine)
{
    const char* const link = "http://a.b/cdefghijklmno";
    const char* const words = "aa bb cc dd (a b) abcdef";
    const char* const pieces[] = {link, "x@y.jp", "\x82\xA0", "\x82",      ":",
                                  "/ ", "\t",     "a",        "(\x81\x42", ">"};
    std::mt19937 random(5);
    const auto number = [&](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    for (int round = 0; round < 60; ++round) {
        tlvn::CharWidths measured;
        measured.Select(nullptr, font, CT_SJIS);
        metrics.SetAutoTurn(1 + round % 2);
        metrics.SetNoTurnURL(round % 3 != 0);
        const tlvn::LineWrap wrap(metrics, measured, round % 4 == 1 ? 600 : 60);
        std::string text(1200, '\t');
        for (int i = 0; round % 4 != 1 && i < 1200; i += 24)
            text.replace(static_cast<std::size_t>(i), 24, i == 600 ? link : words);
        tlvn::Document document;
        document.SetLayout(&wrap);
        document.Set(CT_SJIS, text.data(), static_cast<int>(text.size()));
        for (int step = 0; step < 60; ++step) {
            const int length = static_cast<int>(text.size());
            const int from = step % 2 == 0 ? number(length) : std::min(number(60) + 570, length);
            const int to = std::min(from + number(4), length);
            const std::string piece = pieces[random() % std::size(pieces)];
            document.Delete(CTextPos(0, from), CTextPos(0, to));
            document.Insert(CTextPos(0, from), piece.data(), static_cast<int>(piece.size()));
            text.replace(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from),
                         piece);

            std::vector<tlvn::PhysicalLine> rows;
            wrap.Wrap(CLLineData(text.data(), static_cast<int>(text.size())), rows);
            const auto known = document.GetLine(0).GetPhysicalLines();
            ASSERT_TRUE(std::equal(rows.begin(), rows.end(), known.begin(), known.end(),
                                   [](const auto& a, const auto& b) {
                                       return a.start == b.start && a.width == b.width;
                                   }))
                << round << ", step " << step;
        }
    }
}

// What takes time or room out of proportion when a rule looks back or ahead without end. The
// whole test takes minutes then.
TEST_F(LineWrapTest, TakesHugeLines)
{
    widths.Select(nullptr, font, CT_SJIS);
    for (const char* piece :
         {"a", " ", "\x81\x42", "(", "a(", "\t", "\x81", "x@y.jp ", "http://a/b", ">", "a b.",
          "(((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((( a"}) {
        std::string text;
        while (text.size() < 300000)
            text += piece;
        const CLLineData line(text.data(), static_cast<int>(text.size()));
        for (const int mode : {0, 1, 2}) {
            metrics.SetAutoTurn(mode);
            const tlvn::LineWrap wrap(metrics, widths, 60);
            std::vector<tlvn::PhysicalLine> rows;
            wrap.Wrap(line, rows);
            EXPECT_GE(rows.size(), 1u);
        }
    }
}

// Sums that do not fit into an int stay at its end.
TEST_F(LineWrapTest, WidthsDoNotOverflow)
{
    CFont large;
    const LOGFONTW description = CFontInfo("", 3000).MakeLogFont(96, 128);
    large.CreateFontIndirect(&description);
    widths.Select(nullptr, large, CT_SJIS);
    metrics.SetAutoTurn(CEditorMetrics::kNoTurn);
    metrics.SetTabColumn(INT_MAX);
    const tlvn::LineWrap wrap(metrics, widths, 100);
    const std::string text = std::string(3000000, 'x') + "\t\t";
    std::vector<tlvn::PhysicalLine> rows;
    wrap.Wrap(CLLineData(text.data(), static_cast<int>(text.size())), rows);
    EXPECT_EQ(rows[0].width, INT_MAX);
    EXPECT_EQ(wrap.GetTabStop(INT_MAX), INT_MAX);
}
