#include "TlvnMisc.h"
#include "platform/memory.h"
#include "tests/support/test.h"

#include <memory>

namespace {

CodeType Detect(const std::string& text)
{
    return DetectCodeType(text.c_str(), static_cast<int>(text.size()));
}

} // namespace

// Each text is a branch of the scan: undecided high bytes are EUC-JP at the end, a run of A1-DF
// and E0-EF ends at a byte that fits one code only or at a blank, and what is decided stays.
TEST(DetectCodeType, DecidesByTheFirstTellingByte)
{
    const std::pair<CodeType, std::vector<std::string>> cases[] = {
        {CT_ASCII,
         {"", "plain\r\n", "\x80\xA0\xFF", "\x1B$A", "\x1B(X", "\x1BX", "\x1B", "\x8E\x7F", "\xB1 ",
          "\xE0\x7F"}},
        {CT_JIS, {"\x1B$B", "\x1B$@", "\x1B(B", "\x1B(I", "\x1BK", "\x1BH", "\x1B$B\x82\xA0"}},
        {CT_SJIS,
         {"\x81 \x1B$B", "\x82\xA0", "\xB1\xB2\x82\xA0", "\x8E\x41", "\xE0\x40", "\xE0\xA0",
          "\xE0\xA1\x82", "\xB1\xE0\x81", "\xB1\xE0\xA1\xA1 \x82"}},
        {CT_EUC,
         {"\xA4\xA2", "\xB1\xB2", "\xF0", "\x8E\xB1", "\xB1\xF0", "\xE0\xA1", "\xE0\xFD",
          "\xB1\xE0\x8E\xFD", "\xB1\xE0 \xF0"}},
    };
    for (const auto& [expected, texts] : cases) {
        for (const std::string& text : texts)
            EXPECT_EQ(Detect(text), expected) << testing::PrintToString(text);
    }
}

TEST(DetectCodeType, LooksAt1024Bytes)
{
    EXPECT_EQ(Detect(std::string(1023, 'a') + "\x82\xA0"), CT_SJIS);
    EXPECT_EQ(Detect(std::string(1024, 'a') + "\x82\xA0"), CT_ASCII);
    EXPECT_EQ(Detect(std::string(1022, 'a') + "\x1B$B"), CT_ASCII);
    EXPECT_EQ(Detect("\xB1\xE0" + std::string(1022, '\xA1') + "\x82"), CT_EUC);
    EXPECT_EQ(DetectCodeType(nullptr, 5), CT_ASCII);
    EXPECT_EQ(DetectCodeType("\x1B$B", 2), CT_ASCII);
}

// Sequences cut off by the end of a block of exactly their size, which the sanitizer watches;
// of a longer text nothing behind the first 1024 bytes is touched, be it there or not.
TEST(DetectCodeType, ReadsNothingBehindTheRangeAndAllocatesNothing)
{
    for (const std::string tail : {"\x1B", "\x1B$", "\x1B(", "\x8E", "\xB1", "\xE0", "\xB1\xE0",
                                   "\xB1\xE0\xA1", "\xE3\x81", "a"}) {
        for (const std::size_t size : {tail.size(), std::size_t{1024}}) {
            const std::string text = std::string(size - tail.size(), 'a') + tail;
            const std::unique_ptr<char[]> block(new char[size]);
            text.copy(block.get(), size);
            const int len = static_cast<int>(size);
            tlvn::SetAllocationLimit(0);
            EXPECT_EQ(DetectCodeType(block.get(), len),
                      DetectCodeType(block.get(), size == 1024 ? 1 << 30 : len));
            EXPECT_FALSE(IsUTF8(block.get(), len));
            tlvn::SetAllocationLimit(-1);
            EXPECT_NE(DetectCodeType2(block.get(), len), CT_UTF8);
            for (const CodeType hint : {CT_JIS, CT_EUC, CT_SJIS, CT_UTF8, CT_UTF7})
                DetectCodeType3(block.get(), len, hint);
        }
    }
}

// The blocks of the fast way against the definition, byte by byte: sequences of all lengths at
// every place of a block, with one byte changed in half of the texts. Overlong forms and
// surrogates count as sequences.
TEST(IsUtf8, EqualsItsDefinition)
{
    const auto definition = [](const std::string& text) {
        int found = 0;
        for (std::size_t i = 0; i < text.size();) {
            const int lead = static_cast<unsigned char>(text[i++]);
            int count = 0;
            while (count < 8 && (lead << count & 0x80) != 0)
                ++count;
            if (count == 1 || count > 6)
                return 0;
            found |= count;
            for (; count > 1; --count, ++i) {
                if (i == text.size() || (text[i] & 0xC0) != 0x80)
                    return 0;
            }
        }
        return found > 0 ? 1 : 0;
    };
    const auto check = [&](const std::string& text) {
        const int result = IsUTF8(text.data(), static_cast<int>(text.size()));
        EXPECT_EQ(result, definition(text)) << testing::PrintToString(text);
        return result;
    };
    std::mt19937 random(5);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        const unsigned kinds = 2 + Below(random, 5);
        for (unsigned n = Below(random, 80); n > 0; --n) {
            const unsigned following = Below(random, kinds);
            text += following == 0 ? 'a' : static_cast<char>(0xFF80 >> following);
            text.append(following, '\x81').append(random() % 8 == 0 ? 15 : 0, 'b');
        }
        if (round % 2 != 0 && !text.empty())
            text[random() % text.size()] = static_cast<char>(random());
        check(text);
    }
    EXPECT_EQ(check("\xC0\x80") + check("\xED\xA0\x80") + check("\xF8\x80\x80\x80\x80"), 3);
    EXPECT_EQ(check("\xFE\x80\x80\x80\x80\x80\x80") + check("") + check("ascii"), 0);
}

TEST(DetectCodeType2, TriesUtf8AndUtf16First)
{
    EXPECT_EQ(DetectCodeType2("\xE3\x81\x82", 3), CT_UTF8);
    // A unit that Shift_JIS lacks, far from the beginning.
    std::string utf16;
    for (int i = 0; i < 1000; ++i)
        utf16 += "\x42\x30";
    EXPECT_EQ(DetectCodeType2(utf16.data(), 2000), CT_UNICODE);
    utf16.replace(1996, 2, "\xE9\x01");
    EXPECT_NE(DetectCodeType2(utf16.data(), 2000), CT_UNICODE);
}

// Rows: right hints; wrong ones; then what the arithmetic between the Japanese codes would pass
// on, so that it must be seen before it, first among them a text cut off, which is detected again.
TEST(DetectCodeType3, ChecksTheHint)
{
    const std::tuple<std::string, CodeType, CodeType> cases[] = {
        {"\x42\x30", CT_UNICODE, CT_UNICODE},
        {"\x1B$B\x24\x22\x1B(B", CT_SJIS, CT_JIS},
        {"\x82\xA0\xFF", CT_SJIS, CT_SJIS},
        {"\x42\x30\x82", CT_UNICODE, CT_SJIS},
        {"\x82\xA0\x1B(B", CT_SJIS, CT_SJIS},
        {"\x8E\x41", CT_EUC, CT_SJIS},
        {"\x1B$B\x24\x22\x1B(B\x83\x41", CT_JIS, CT_JIS},
        {"\x83\x41\x1B$B\x24\x22\x1B(B", CT_JIS, CT_SJIS},
    };
    for (const auto& [text, hint, expected] : cases)
        EXPECT_EQ(DetectCodeType3(text.data(), static_cast<int>(text.size()), hint), expected)
            << testing::PrintToString(text);
}

// The first kana or hangul decides; then the borders of both.
TEST(DetectUnicode, NarrowCodeOfUtf16)
{
    const std::pair<tlvn::WString, CodeType> cases[] = {
        {TW("a\u3042\uAC00"), CT_SJIS}, {TW("\u4E00\uAC00\u3042"), CT_KSC5601},
        {TW("\u3040"), CT_SJIS},        {TW("\u30FF"), CT_SJIS},
        {TW("\u3130"), CT_KSC5601},     {TW("\u318F"), CT_KSC5601},
        {TW("\u1100"), CT_KSC5601},     {TW("\u11FF"), CT_KSC5601},
        {TW("\uD7A3"), CT_KSC5601},     {TW("\u303F\u3100\u1200\uD7A4"), CT_BIG5},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(DetectUnicodeCodeType(text.data(), static_cast<int>(text.size()), CT_BIG5),
                  expected);
}

TEST(DetectUnicode, DeliversTheBytes)
{
    const WCHAR accented[] = {'a', 0x00E9};
    CBuffer out("left over");
    EXPECT_EQ(DetectUnicodeCodeType2(accented, 2, &out), CT_UNICODE);
    EXPECT_EQ(out.GetLength(), 4);
}
