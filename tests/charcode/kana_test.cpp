#include "charcode/kana.h"

#include "platform/multibyte.h"
#include "platform/nls.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The tables of the published names: half-width forms in code order with their full-width
// counterparts, and the sequences that are one full-width kana.
const tlvn::WString kHalf = [] {
    tlvn::WString all;
    for (WCHAR c = 0xFF61; c <= 0xFF9F; ++c)
        all += c;
    return all;
}();
const tlvn::WString kFull =
    TW("。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘ"
       "ホマミムメモ") TW("ヤユヨラリルレロワン゛゜");
const tlvn::WString kVoicedHalf = TW("ｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾊﾋﾌﾍﾎｳ");
const tlvn::WString kVoicedFull = TW("ガギグゲゴザジズゼゾダヂヅデドバビブベボヴ");
const tlvn::WString kSemiVoicedHalf = TW("ﾊﾋﾌﾍﾎ");
const tlvn::WString kSemiVoicedFull = TW("パピプペポ");

std::string Narrow(const tlvn::WString& text)
{
    std::string bytes;
    EXPECT_EQ(tlvn::ConvertFromUtf16(932, text, bytes), tlvn::kConverted);
    return bytes;
}

void ExpectZen(const tlvn::WString& half, const tlvn::WString& full)
{
    CStringW wide(half.c_str());
    EXPECT_EQ(KatakanaHanToZen(wide), half != full);
    EXPECT_EQ(wide, full.c_str());
    CStringA narrow(Narrow(half).c_str());
    EXPECT_EQ(KatakanaHanToZen(narrow), half != full);
    EXPECT_EQ(narrow, Narrow(full).c_str());
}

} // namespace

TEST(KatakanaHanToZen, EveryCharacterAndEveryPair)
{
    ASSERT_EQ(kFull.size(), kHalf.size());
    for (std::size_t i = 0; i < kHalf.size(); ++i)
        ExpectZen(kHalf.substr(i, 1), kFull.substr(i, 1));
    for (const WCHAR kana : kHalf) {
        const struct {
            WCHAR mark;
            const tlvn::WString& half;
            const tlvn::WString& full;
        } marks[] = {{0xFF9E, kVoicedHalf, kVoicedFull},
                     {0xFF9F, kSemiVoicedHalf, kSemiVoicedFull}};
        for (const auto& m : marks) {
            const std::size_t place = m.half.find(kana);
            const tlvn::WString separate{kFull[static_cast<std::size_t>(kana - 0xFF61)],
                                         kFull[static_cast<std::size_t>(m.mark - 0xFF61)]};
            ExpectZen({kana, m.mark},
                      place == tlvn::WString::npos ? separate : m.full.substr(place, 1));
        }
    }
}

TEST(KatakanaHanToZen, LeavesTheRestOfTheText)
{
    ExpectZen(TW("aｶﾞ漢ｶz"), TW("aガ漢カz"));
    ExpectZen(TW("ﾞｶ"), TW("゛カ"));
    ExpectZen(TW("カﾞ"), TW("カ゛")); // full-width KA and the mark are no pair
    ExpectZen(TW("漢字abc"), TW("漢字abc"));
    ExpectZen(TW(""), TW(""));
    // A trail byte in the range of half-width katakana is no katakana.
    ExpectZen(TW("亜ア"), TW("亜ア"));
}

TEST(KatakanaHanToZen, BufferEndsAtItsFirstZero)
{
    CBuffer text;
    text.Set("\xB1\0\xB1", 3);
    EXPECT_EQ(KatakanaHanToZen(text), 1);
    EXPECT_EQ(text, CBuffer("\x83\x41"));
    text = "abc";
    EXPECT_EQ(KatakanaHanToZen(text), 0);
    EXPECT_EQ(text, CBuffer("abc"));
    text.Empty();
    EXPECT_EQ(KatakanaHanToZen(text), 0);
}

// Each flag folds its own characters, in UTF-16 and in Shift_JIS alike, and nothing else.
TEST(TextToUpper, FoldsLettersAndSmallKana)
{
    const tlvn::WString small = TW("ｧｨｩｪｫｬｭｮｯァィゥェォャュョッヮヵヶぁぃぅぇぉゃゅょっゎ");
    const tlvn::WString normal = TW("ｱｲｳｴｵﾔﾕﾖﾂアイウエオヤユヨツワカケあいうえおやゆよつわ");
    const tlvn::WString lower = TW("abcxyzａｂｃｘｙｚ");
    const tlvn::WString upper = TW("ABCXYZＡＢＣＸＹＺ");
    for (int flags = 0; flags < 4; ++flags) {
        const int letters = flags & 1;
        const int kana = flags >> 1;
        const tlvn::WString text = small + lower + TW("漢ー@[`{｛｀");
        tlvn::WString expected = (kana != 0 ? normal : small) + (letters != 0 ? upper : lower);
        expected += TW("漢ー@[`{｛｀");

        tlvn::WString wide = text;
        EXPECT_EQ(TextToUpperW(wide.data(), static_cast<int>(wide.size()), letters, kana),
                  flags != 0);
        EXPECT_EQ(wide, expected);
        std::string narrow = Narrow(text);
        EXPECT_EQ(TextToUpper(932, narrow.data(), static_cast<int>(narrow.size()), letters, kana),
                  flags != 0);
        EXPECT_EQ(narrow, Narrow(expected));
    }
    const tlvn::WString others = TW("`{@[｀｛ー漢аäｶん1");
    tlvn::WString unchanged = others;
    EXPECT_EQ(TextToUpperW(unchanged.data(), static_cast<int>(unchanged.size()), 1, 1), 0);
    EXPECT_EQ(unchanged, others);
    EXPECT_EQ(TextToUpperW(nullptr, 3, 1, 1), 0);
    EXPECT_EQ(TextToUpper(932, nullptr, 3, 1, 1), 0);
}

// A letter as trail byte, and a character cut off by the length, are no letters.
TEST(TextToUpper, KeepsDoubleByteCharactersWhole)
{
    char text[] = "\x83\x61\x82\x81";
    EXPECT_EQ(TextToUpper(932, text, 3, 1, 0), 0);
    EXPECT_STREQ(text, "\x83\x61\x82\x81");
    EXPECT_EQ(TextToUpper(932, text, 4, 1, 0), 1);
    EXPECT_STREQ(text, "\x83\x61\x82\x60");
}

TEST(GetMultibyteLength, TellsJapaneseCharacters)
{
    const struct {
        const char* text;
        int len;
        CodeType t;
        int expected;
    } cases[] = {
        {"\x82\xA0", 2, CT_SJIS, 2}, {"\x82\xA0", 1, CT_SJIS, 0}, {"\x82\xA0", 2, CT_EUC, 2},
        {"\xB1", 1, CT_SJIS, 1},     {"\xB1", 1, CT_EUC, 0},      {"\xE0", 1, CT_SJIS, 0},
        {"a", 1, CT_SJIS, 0},        {"\xB1", 0, CT_SJIS, 0},     {nullptr, 1, CT_SJIS, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetMultibyteLength(c.text, c.len, c.t), c.expected);
}
