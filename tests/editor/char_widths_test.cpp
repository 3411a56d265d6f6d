#include "editor/char_widths.h"

#include "editor/font_info.h"
#include "tests/support/test.h"

namespace {

class CharWidthsTest : public testing::Test {
protected:
    CharWidthsTest()
    {
        const LOGFONTW description = CFontInfo().MakeLogFont(96, 128);
        font.CreateFontIndirect(&description);
        dc.CreateCompatibleDC(nullptr);
        dc.SelectObject(&font);
    }

    int Extent(tlvn::WStringView units)
    {
        SIZE size{};
        ::GetTextExtentPoint32W(dc.m_hDC, units.data(), static_cast<int>(units.size()), &size);
        return size.cx;
    }

    // Of UTF-16 text.
    static int Measure(tlvn::CharWidths& widths, tlvn::WStringView units)
    {
        return widths.Measure(reinterpret_cast<const char*>(units.data()),
                              static_cast<int>(units.size() * 2));
    }

    CFont font;
    CDC dc;
    tlvn::CharWidths widths;
};

} // namespace

// Characters measured in blocks, alone, as a pair; texts of them as the system measures them.
TEST_F(CharWidthsTest, MeasuresAsTheDeviceDoes)
{
    widths.Select(dc.m_hDC, font, CT_UNICODE);
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        if (unit == '\t' || (unit >= 0xD800 && unit < 0xE000))
            continue;
        const auto c = static_cast<WCHAR>(unit);
        ASSERT_EQ(widths.GetWidth(unit), Extent({&c, 1})) << std::hex << unit;
    }
    for (const WCHAR* text : {TW("日本語、全角Ａと半角ｱ。「」―…①㈱"), TW("\xD842\xDFB7\x91CE")})
        EXPECT_EQ(Measure(widths, text), Extent(text));
    EXPECT_EQ(Measure(widths, TW("\t\t")), 0);
    // No partner: each alone.
    EXPECT_EQ(Measure(widths, TW("\xD842x")), Extent(TW("\xD842")) + Extent(TW("x")));
    EXPECT_EQ(Measure(widths, TW("\xDFB7\xD842")), Extent(TW("\xDFB7")) + Extent(TW("\xD842")));
}

// Narrow text is as wide as the UTF-16 that is drawn for it, also where it is no text.
TEST_F(CharWidthsTest, DrawsNarrowTextAsItMeasuresIt)
{
    const struct {
        CodeType type;
        std::string text;
        tlvn::WString units;
    } cases[] = {
        {CT_SJIS, "a\x93\xFA\x96\x7B\xB1.", TW("a日本ｱ.")},
        {CT_SJIS, std::string("\0\x01", 2), {WCHAR(0), WCHAR(1)}},
        {CT_GB2312, "\xC4\xE3x", TW("你x")},
        {CT_WIN1251, "\xCF\xF0", TW("Пр")},
        {CT_UNICODE, std::string("\x42\xD8\xB7\xDF\x00\xDC", 6), TW("\xD842\xDFB7\xDC00")},
    };
    for (const auto& c : cases) {
        widths.Select(dc.m_hDC, font, c.type);
        tlvn::WString units;
        std::vector<int> advances;
        const int length = static_cast<int>(c.text.size());
        widths.Decode(c.text.data(), length, units, advances);
        EXPECT_EQ(units, c.units) << c.type;
        ASSERT_EQ(advances.size(), units.size());
        int sum = 0;
        for (const int advance : advances)
            sum += advance;
        EXPECT_EQ(sum, widths.Measure(c.text.data(), length)) << c.type;
    }
    // Half characters and bytes without a character give one unit each, nothing is lost.
    widths.Select(dc.m_hDC, font, CT_SJIS);
    for (const char* bytes : {"\x82 a", "\xFF\x82", "a\x81\x39"}) {
        tlvn::WString units;
        std::vector<int> advances;
        const int length = static_cast<int>(std::strlen(bytes));
        widths.Decode(bytes, length, units, advances);
        EXPECT_EQ(static_cast<int>(units.size()), length);
    }
}

// Another size is measured anew; another code type of one font is not what was measured before.
TEST_F(CharWidthsTest, FollowsFontAndCodeType)
{
    EXPECT_EQ(widths.Measure("abc", 3), 0);
    EXPECT_EQ(widths.Select(dc.m_hDC, font, CT_SJIS), 1);
    const int narrow = widths.Measure("\xC4\xD3", 2); // two half-width katakana
    EXPECT_EQ(widths.Select(dc.m_hDC, font, CT_SJIS), 0);
    EXPECT_EQ(widths.Select(dc.m_hDC, font, CT_GB2312), 1);
    EXPECT_EQ(widths.Measure("\xC4\xD3", 2), Extent(TW("挠")));
    widths.Select(dc.m_hDC, font, CT_SJIS);
    EXPECT_EQ(widths.Measure("\xC4\xD3", 2), narrow);

    CFont large;
    const LOGFONTW description = CFontInfo(CFontInfo().GetFaceName(), 36).MakeLogFont(96, 128);
    large.CreateFontIndirect(&description);
    EXPECT_EQ(widths.Select(dc.m_hDC, large, CT_SJIS), 1);
    EXPECT_GT(widths.Measure("\xC4\xD3", 2), narrow);
    large.DeleteObject(); // is not needed any more
    EXPECT_GT(widths.Measure("xyz", 3), 0);
}
