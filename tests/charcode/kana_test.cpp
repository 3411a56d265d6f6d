#include "charcode/kana.h"

#include "platform/multibyte.h"
#include "platform/nls.h"
#include "tests/support/test.h"

namespace {

// The tables of the published names: half-width forms in code order with their full-width
// counterparts, and the sequences that are one full-width kana.
const tlvn::WString kHalf = TW("｡｢｣､･ｦｧｨｩｪｫｬｭｮｯｰｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜﾝﾞﾟ");
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
    const auto full = [](WCHAR half) { return kFull[static_cast<std::size_t>(half - 0xFF61)]; };
    for (const WCHAR kana : kHalf) {
        ExpectZen({kana}, {full(kana)});
        for (const auto& [mark, halves, fulls] :
             {std::tuple(WCHAR{0xFF9E}, kVoicedHalf, kVoicedFull),
              {WCHAR{0xFF9F}, kSemiVoicedHalf, kSemiVoicedFull}}) {
            const std::size_t place = halves.find(kana);
            if (place != tlvn::WString::npos)
                ExpectZen({kana, mark}, fulls.substr(place, 1));
            else
                ExpectZen({kana, mark}, {full(kana), full(mark)});
        }
    }
}

// Full-width KA and a mark are no pair, and the trail byte of a kanji is no katakana.
TEST(KatakanaHanToZen, LeavesTheRestOfTheText)
{
    ExpectZen(TW("aｶﾞ漢ｶz"), TW("aガ漢カz"));
    ExpectZen(TW("ﾞｶカﾞ"), TW("゛カカ゛"));
    CBuffer text; // which ends at its first zero
    text.Set("\xB1\0\xB1", 3);
    EXPECT_EQ(KatakanaHanToZen(text), 1);
    EXPECT_EQ(text, CBuffer("\x83\x41"));
}

// Each flag folds its own characters, in UTF-16 and in Shift_JIS alike, and nothing else.
TEST(TextToUpper, FoldsLettersAndSmallKana)
{
    const tlvn::WString small = TW("ｧｨｩｪｫｬｭｮｯァィゥェォャュョッヮヵヶぁぃぅぇぉゃゅょっゎ");
    const tlvn::WString normal = TW("ｱｲｳｴｵﾔﾕﾖﾂアイウエオヤユヨツワカケあいうえおやゆよつわ");
    const tlvn::WString lower = TW("abcxyzａｂｃｘｙｚ");
    const tlvn::WString upper = TW("ABCXYZＡＢＣＸＹＺ");
    const tlvn::WString others = TW("漢ー@[`{｛｀аん1");
    for (int flags = 0; flags < 4; ++flags) {
        const int letters = flags & 1;
        const int kana = flags >> 1;
        tlvn::WString wide = others + small + lower;
        const tlvn::WString expected =
            others + (kana != 0 ? normal : small) + (letters != 0 ? upper : lower);
        std::string narrow = Narrow(wide);
        const int wideLength = static_cast<int>(wide.size());
        const int length = static_cast<int>(narrow.size());
        EXPECT_EQ(TextToUpperW(wide.data(), wideLength, letters, kana), flags != 0);
        EXPECT_EQ(wide, expected);
        EXPECT_EQ(TextToUpper(932, narrow.data(), length, letters, kana), flags != 0);
        EXPECT_EQ(narrow, Narrow(expected));
    }
}

// A letter as trail byte, and a character cut off by the length, are no letters.
TEST(TextToUpper, KeepsDoubleByteCharactersWhole)
{
    char text[] = "\x83\x61\x82\x81";
    EXPECT_EQ(TextToUpper(932, text, 3, 1, 0), 0);
    EXPECT_EQ(TextToUpper(932, text, 4, 1, 0), 1);
    EXPECT_STREQ(text, "\x83\x61\x82\x60");
}

TEST(GetMultibyteLength, TellsJapaneseCharacters)
{
    const std::tuple<const char*, int, CodeType, int> cases[] = {
        {"\x82\xA0", 2, CT_SJIS, 2}, {"\x82\xA0", 1, CT_SJIS, 0}, {"\xB1", 1, CT_SJIS, 1},
        {"\xB1", 1, CT_EUC, 0},      {"a", 1, CT_SJIS, 0},        {nullptr, 1, CT_SJIS, 0},
    };
    for (const auto& [text, len, t, expected] : cases)
        EXPECT_EQ(GetMultibyteLength(text, len, t), expected);
}
