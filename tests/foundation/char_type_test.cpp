#include "TlvnMisc.h"

#include "tests/support/test.h"

#include <cctype>

namespace {

int TypeAt(const std::string& text, int pos, CodeType ct)
{
    return GetCharType(text.data(), static_cast<int>(text.size()), text.data() + pos, ct);
}

int TypeAt(const tlvn::WString& text, int unit)
{
    const char* bytes = reinterpret_cast<const char*>(text.data());
    return GetCharType(bytes, static_cast<int>(2 * text.size()), bytes + 2 * unit, CT_UNICODE);
}

std::string Bytes(int code)
{
    return {static_cast<char>(code >> 8), static_cast<char>(code)};
}

} // namespace

// Every code of Shift_JIS against the list of ranges: a border off by one, or a range taken before
// another, shows at its code.
TEST(CharType, ShiftJisCodesHaveTheirClass)
{
    const std::tuple<int, int, int> ranges[] = {
        {0x8140, 0x8140, 0x201}, {0x824F, 0x8258, 0x204}, {0x8260, 0x8279, 0x204},
        {0x8281, 0x829A, 0x204}, {0x8151, 0x8151, 0x204}, {0x829F, 0x82F1, 0x208},
        {0x8154, 0x8155, 0x208}, {0x8340, 0x8396, 0x210}, {0x8152, 0x8153, 0x210},
        {0x814A, 0x814B, 0x210}, {0x815B, 0x815B, 0x210}, {0x8158, 0x8158, 0x220},
        {0x889F, 0xFCFC, 0x220},
    };
    for (int code = 0x8140; code <= 0xFCFC; ++code) {
        const int lead = code >> 8;
        const int trail = code & 0xFF;
        if ((lead > 0x9F && lead < 0xE0) || trail < 0x40 || trail == 0x7F || trail > 0xFC)
            continue;
        int expected = 0x202;
        for (const auto& [first, last, type] : ranges)
            expected = code >= first && code <= last ? type : expected;
        ASSERT_EQ(TypeAt(Bytes(code), 0, CT_SJIS), expected) << std::hex << code;
        ASSERT_EQ(TypeAt(Bytes(code), 0, CT_BIG5), 0x202) << std::hex << code;
    }
}

TEST(CharType, SingleBytesHaveTheirClass)
{
    for (int c = 1; c < 0x100; ++c) {
        const std::string text(1, static_cast<char>(c));
        const bool space = c == ' ' || (c >= 9 && c <= 13);
        const bool word = (c < 0x80 && std::isalnum(c) != 0) || c == '_';
        const int plain = space ? 0x101 : word ? 0x104 : 0x102;
        ASSERT_EQ(TypeAt(text, 0, CT_EUC), c >= 0xA1 && c <= 0xDF ? 0x110 : plain) << c;
        ASSERT_EQ(GetCharType(text.c_str(), -1, text.c_str(), CT_ASCII), plain) << c;
    }
}

// The mark at the end of each text. Texts: at the start, behind each kind, behind other marks, and
// behind a kanji whose trail byte and the mark's lead byte would be another character.
TEST(CharType, VoicingMarksFollowTheKanaBeforeThem)
{
    const std::pair<int, std::vector<std::string>> cases[] = {
        {0x208, {"\x82\xA0", "\x81\x55", "\x82\xA0\x81\x4A\x81\x5B\x81\x4B"}},
        {0x210,
         {"", "\x83\x41", "\x88\xA0", "\x82\xA0z", "\x83\x41\x81\x5B\x81\x5B", "\x81\x5B\x81\x5B",
          "\x82\xA0\x88\x82", "\x82\xA0\xB1"}},
    };
    for (const auto& [type, texts] : cases) {
        for (const std::string& before : texts)
            for (const char* mark : {"\x81\x4A", "\x81\x4B", "\x81\x5B"})
                EXPECT_EQ(TypeAt(before + mark, static_cast<int>(before.size()), CT_JIS), type)
                    << testing::PrintToString(before);
    }
}

// Where the length, or the end of the text, cuts a character off.
TEST(CharType, NothingStandsOutsideTheText)
{
    const char kana[] = "\x82\xA0";
    const tlvn::WString pairUnits = TW("\U00020000");
    const char* const pair = reinterpret_cast<const char*>(pairUnits.c_str());
    const std::tuple<const char*, int, int, CodeType, int> cases[] = {
        {kana, 2, 2, CT_SJIS, 0},      {kana, 1, 0, CT_SJIS, 0x102},
        {kana + 1, 1, -1, CT_SJIS, 0}, {pair, 4, 3, CT_UTF7, 0x220},
        {pair, 3, 0, CT_UTF7, 0x102},  {pair + 2, 2, 0, CT_UTF7, 0x102},
        {pair, -1, 4, CT_UTF8, 0},
    };
    for (const auto& [text, len, pos, codeType, type] : cases)
        EXPECT_EQ(GetCharType(text, len, text + pos, codeType), type) << len << pos;
    EXPECT_EQ(GetCharType(nullptr, 0, kana, CT_SJIS), 0);
}

// At least one character, and the borders, of each rule.
TEST(CharType, UnicodeCharactersHaveTheirClass)
{
    const std::pair<const char32_t*, int> cases[] = {
        {U"\t\r \u0085\u00A0", 0x101},
        {U"\u1680\u2000\u200A\u2028\u3000", 0x201},
        {U"!/:@[`{~\u00A1\u00B2\u00D7\u20A0\u200B\uFFE8", 0x102},
        {U"\u3001\u30A0\u30FB\u32D0\u3300\u2460\u2606\u20AC\uFF01\uFF5E\U0001F600", 0x202},
        {U"09AZ_"
         U"az\u00B5\u00E9\u0151\u03B1\u0416\u05D0\u0661\u0915\u093F\u0E01\u203F\u200D\U0001D400",
         0x104},
        {U"\uFF10\uFF21\uFF41\uFF3F\u1100\u1160\uAC00\u3105\uA000", 0x204},
        {U"\u3041\u3096\u309D\u309F\U0001B001\U0001B150", 0x208},
        {U"\u30A1\u30FA\u30FD\u30FF\u31F0\U0001B000\U0001B164", 0x210},
        {U"\uFF61\uFF70\uFF9F", 0x110},
        {U"\u3005\u3007\u3400\u4E00\u9FFF\uF900\uFAFF\uE000\uF8FF\u2F00\U00020000\U0002F800"
         U"\U00030000\U000E0100",
         0x220},
        {U"\u3031\u3035\u3099\u309C\u30FC", 0x218},
    };
    for (const auto& [characters, type] : cases) {
        for (const char32_t* p = characters; *p != 0; ++p) {
            tlvn::WString text;
            if (*p >= 0x10000)
                text += static_cast<WCHAR>(0xD800 + ((*p - 0x10000) >> 10));
            text += static_cast<WCHAR>(*p < 0x10000 ? *p : 0xDC00 + (*p & 0x3FF));
            for (const std::size_t unit : {std::size_t{0}, text.size() - 1})
                EXPECT_EQ(TypeAt(text, static_cast<int>(unit)), type) << std::hex << unsigned{*p};
        }
    }
}

// The last character of each text. Rows: at the start, behind each kind and behind other marks.
// Then the same at an odd address.
TEST(CharType, MarksOfBothKanaAreResolvedInUtf16)
{
    const std::pair<tlvn::WString, int> cases[] = {
        {TW("\u30FC"), 0x218},           {TW("\u3042\u30FC"), 0x208},
        {TW("\u30A2\u309B"), 0x210},     {TW("\u3042\u3099\u30FC\u30FC"), 0x208},
        {TW("\u30FC\u30FC"), 0x218},     {TW("\u4E00\u30FC"), 0x210},
        {TW("\u3042z\u30FC"), 0x210},    {TW("\uFF71\u30FC"), 0x210},
        {TW("\U0001B001\u30FC"), 0x208}, {tlvn::WString(1, 0xDC00) + TW("\u30FC"), 0x210},
    };
    for (const auto& [units, type] : cases) {
        const int last = static_cast<int>(units.size()) - 1;
        EXPECT_EQ(TypeAt(units, last), type) << last;

        std::string odd(2 * units.size() + 3, '\0');
        std::memcpy(odd.data() + 1, units.data(), 2 * units.size());
        EXPECT_EQ(GetCharType(odd.data() + 1, -1, odd.data() + 1 + 2 * last, CT_UTF8), type)
            << last;
    }
}
