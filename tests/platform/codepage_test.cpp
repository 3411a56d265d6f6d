#include "platform/ascii_run.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "tests/support/test.h"

#include <array>
#include <map>

using namespace tlvn;

namespace {

WString Wide(UINT page, std::string_view text, int expected)
{
    WString units;
    EXPECT_EQ(ConvertToUtf16(page, text, units), expected) << page;
    return units;
}

std::string Bytes(UINT page, WStringView text, int expected, char replacement = '?')
{
    std::string bytes;
    EXPECT_EQ(ConvertFromUtf16(page, text, bytes, replacement), expected) << page;
    return bytes;
}

// Position of a code in the order of preference, by the parts of code page 932.
int Preference(int code)
{
    const int lead = code >> 8;
    return lead == 0x87 ? 1 : lead >= 0xFA ? 2 : lead == 0xED || lead == 0xEE ? 3 : 0;
}

} // namespace

// All double-byte codes: what decodes encodes again, and to the preferred code among those that
// decode alike. Catches a wrong table, a wrong preference, and best fit creeping in.
TEST(CodePage932, EncodesEveryDecodedUnitToThePreferredCode)
{
    std::map<WCHAR, int> preferred;
    int codes = 0;
    for (int code = 0x8100; code < 0x10000; ++code) {
        const std::string text{static_cast<char>(code >> 8), static_cast<char>(code)};
        WString units;
        if (ConvertToUtf16(932, text, units) != kConverted || units.size() != 1)
            continue;
        ++codes;
        const auto [found, added] = preferred.try_emplace(units[0], code);
        if (!added && Preference(code) < Preference(found->second))
            found->second = code;
    }
    EXPECT_EQ(codes, 6879 + 83 + 374 + 388 + 1880); // JIS X 0208, NEC, NEC-selected, IBM, user
    for (const auto& [unit, code] : preferred) {
        const std::string text{static_cast<char>(code >> 8), static_cast<char>(code)};
        ASSERT_EQ(Bytes(932, WStringView(&unit, 1), kConverted), text) << std::hex << code;
    }
}

// The units over which codecs of this page disagree; null for those without a code.
TEST(CodePage932, FollowsWindowsWhereCodecsDiffer)
{
    const std::pair<WCHAR, const char*> cases[] = {
        {0xFFE0, "\x81\x91"}, {0xFFE1, "\x81\x92"}, {0xFFE2, "\x81\xCA"}, {0x2225, "\x81\x61"},
        {0xFF0D, "\x81\x7C"}, {0xFF5E, "\x81\x60"}, {0x2170, "\xFA\x40"}, {0x2160, "\x87\x54"},
        {0x222A, "\x81\xBE"}, {0x2252, "\x81\xE0"}, {0xE000, "\xF0\x40"}, {0xE757, "\xF9\xFC"},
        {0x0080, "\x80"},     {0xFF61, "\xA1"},     {0x00A2, nullptr},    {0x00A3, nullptr},
        {0x00AC, nullptr},    {0x2016, nullptr},    {0x2212, nullptr},    {0x301C, nullptr},
        {0x00A9, nullptr},    {0xE758, nullptr},    {0xD83D, nullptr},
    };
    for (const auto& [unit, bytes] : cases) {
        const WStringView text(&unit, 1);
        const int result = bytes != nullptr ? kConverted : kConvertedWithLoss;
        EXPECT_EQ(Bytes(932, text, result), bytes != nullptr ? bytes : "?")
            << std::hex << unsigned{unit};
    }
}

// A bad trail byte goes with its lead byte, except a zero; a lead byte at the end stands alone.
TEST(CodePage932, DecodesMalformedTextAsLoss)
{
    const std::pair<std::string, WString> cases[] = {
        {"a\x82", TW("a\x30FB")},
        {"\x82\x20z", TW("\x30FBz")},
        {{"\x82\0z", 3}, {0x30FB, 0, 'z'}},
        {"\xA0\xFD\xFF", {0xF8F0, 0xF8F1, 0xF8F3}},
    };
    for (const auto& [bytes, units] : cases)
        EXPECT_EQ(Wide(932, bytes, kConvertedWithLoss), units);
    EXPECT_EQ(Wide(932, "\x81\x45", kConverted), WString({0x30FB})); // the character itself
}

// Any bytes, in runs that the fast way takes, decode like their characters one by one.
TEST(CodePage932, DecodesAnyTextLikeItsCharacters)
{
    std::mt19937 random(3);
    for (int round = 0; round < 1000; ++round) {
        std::string text;
        WString expected;
        int expectedResult = kConverted;
        const auto add = [&](const std::string& character) {
            WString one;
            text += character;
            expectedResult |= ConvertToUtf16(932, character, one);
            expected += one;
        };
        for (unsigned runs = Below(random, 5); runs > 0; --runs) {
            const std::string character = Below(random, 2) != 0 ? "\x88\x9F" : "a";
            for (unsigned n = Below(random, 20); n > 0; --n)
                add(character);
            for (unsigned n = Below(random, 4); n > 0; --n) {
                const int b = static_cast<int>(Below(random, 0x100));
                const bool lead = (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
                const char trail = static_cast<char>(1 + Below(random, 0xFF));
                add(std::string{static_cast<char>(b), trail}.substr(0, lead ? 2 : 1));
            }
        }
        ASSERT_EQ(Wide(932, text, expectedResult), expected);
    }
}

// The pages that the system converts treat a lead byte as page 932 does: it takes what follows
// along, except a zero, and both become one question mark.
TEST(CodePage, DecodesMalformedDoubleByteTextAsLoss)
{
    const std::pair<std::string, WString> cases[] = {
        {"a\xB0", {'a', '?'}},           {"\xB0\x20z", {'?', 'z'}},    {"\xB0\xFFz", {'?', 'z'}},
        {{"\xB0\0z", 3}, {'?', 0, 'z'}}, {"\xB0\xB0\xB0", {'x', '?'}}, {"\xFE\x30z", {'?', 'z'}},
    };
    for (const UINT page : {936u, 949u, 950u}) {
        for (const auto& [bytes, expected] : cases) {
            WString units = Wide(page, bytes, kConvertedWithLoss);
            if (!units.empty() && units[0] >= 0x80)
                units[0] = 'x';
            EXPECT_EQ(units, expected) << page << ' ' << testing::PrintToString(bytes);
        }
        EXPECT_EQ(Wide(page, "\xFF", kConvertedWithLoss).size(), 1u) << page;
    }
}

TEST(CodePage, ReplacesOrDropsEachUnitThatHasNoCode)
{
    const WString text = {'a', 0xD83D, 0xDE00, 'b', 0x00E9};
    EXPECT_EQ(Bytes(1251, text, kConvertedWithLoss, '_'), "a__b_");
    EXPECT_EQ(Bytes(1252, text, kConvertedWithLoss, '\0'), "ab\xE9");
    for (const UINT page : {932u, 936u, 949u, 950u}) {
        EXPECT_EQ(Bytes(page, WStringView(text).substr(0, 4), kConvertedWithLoss), "a??b") << page;
        EXPECT_EQ(Bytes(page, WStringView(text).substr(0, 4), kConvertedWithLoss, '\0'), "ab")
            << page;
    }
}

// One row for each page: the character that only this page has at that place.
TEST(CodePage, KnowsEachPage)
{
    const std::tuple<UINT, const char*, WCHAR> cases[] = {
        {1250, "\xA3", 0x0141},    {1251, "\xC6", 0x0416},      {1252, "\x80", 0x20AC},
        {1253, "\xA2", 0x0386},    {1254, "\xDE", 0x015E},      {1257, "\xC0", 0x0104},
        {28591, "\x85", 0x0085},   {28592, "\xA1", 0x0104},     {28594, "\xA2", 0x0138},
        {28595, "\xB6", 0x0416},   {28597, "\xB6", 0x0386},     {28599, "\xFD", 0x0131},
        {20866, "\xF6", 0x0416},   {936, "\xB0\xA1", 0x554A},   {949, "\xB0\xA1", 0xAC00},
        {950, "\xA4\x40", 0x4E00}, {51949, "\xB0\xA1", 0xAC00}, {65001, "\xC3\xA9", 0x00E9},
        {932, "\x88\x9F", 0x4E9C},
    };
    for (const auto& [page, bytes, unit] : cases) {
        EXPECT_TRUE(IsCodePageKnown(page)) << page;
        EXPECT_EQ(Wide(page, bytes, kConverted), WString(1, unit)) << page;
        EXPECT_EQ(Bytes(page, WStringView(&unit, 1), kConverted), bytes) << page;
    }
    EXPECT_EQ(Bytes(20127, WString{0x00E9}, kConvertedWithLoss), "?");
    EXPECT_EQ(Wide(20127, "a\xE9", kConvertedWithLoss), TW("ai"));
    EXPECT_EQ(Bytes(65000, WString{'a', 0x3042, 'b'}, kConverted), "a+MEI-b");
    EXPECT_EQ(Wide(65000, "a+MEI-b", kConverted), (WString{'a', 0x3042, 'b'}));

    WString units = TW("old");
    EXPECT_EQ(ConvertToUtf16(12345, "x", units), kUnknownCodePage);
    EXPECT_TRUE(units.empty());
    EXPECT_FALSE(IsCodePageKnown(50220));
}

// One U+FFFD for each maximal part of a sequence, as Table 3-8 of the Unicode Standard.
TEST(Utf8, ReplacesMaximalParts)
{
    const std::pair<const char*, WString> cases[] = {
        {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", WString(8, 0xFFFD) + TW("A")},
        {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", WString(8, 0xFFFD) + TW("A")},
        {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42",
         WString(5, 0xFFFD) + WString{'A', 0xFFFD, 0xFFFD, 'B'}},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", WString(4, 0xFFFD) + TW("A")},
        {"\xE3\x81", {0xFFFD}},
        {"\xF0\x9F\x98", {0xFFFD}},
    };
    for (const auto& [bytes, units] : cases)
        EXPECT_EQ(Wide(65001, bytes, kConvertedWithLoss), units);
    EXPECT_EQ(Wide(65001, "\xF4\x8F\xBF\xBF", kConverted), (WString{0xDBFF, 0xDFFF}));

    // Lone surrogates have no code.
    const WString text = {0xD800, 'a', 0xDC00, 0xD83D, 0xDE00, 0xD83D};
    EXPECT_EQ(Bytes(65001, text, kConvertedWithLoss), "\xEF\xBF\xBD"
                                                      "a\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD");
    EXPECT_EQ(Bytes(65001, text, kConvertedWithLoss, '\0'), "a\xF0\x9F\x98\x80");
}

// Runs of every length around the block size, with the first other character at every place:
// a run that stops early or late, or writes where it should not.
TEST(AsciiRun, StopsAtTheFirstOtherCharacter)
{
    for (int length = 0; length <= 50; ++length) {
        for (int other = 0; other <= length; ++other) {
            std::vector<BYTE> bytes(static_cast<std::size_t>(length), 'x');
            std::vector<WCHAR> units(bytes.begin(), bytes.end());
            if (other < length) {
                bytes[static_cast<std::size_t>(other)] = 0x80;
                units[static_cast<std::size_t>(other)] = other % 2 == 0 ? 0x8000 : 0x0080;
            }
            std::vector<WCHAR> wide(bytes.size());
            std::vector<BYTE> narrow(bytes.size());
            ASSERT_EQ(AsciiRunLength(bytes.data(), bytes.data() + length), other);
            ASSERT_EQ(WidenAscii(bytes.data(), bytes.data() + length, wide.data()), other);
            ASSERT_EQ(NarrowAscii(units.data(), units.data() + length, narrow.data()), other);
            ASSERT_TRUE(std::equal(wide.begin(), wide.begin() + other, bytes.begin()));
            ASSERT_TRUE(std::equal(narrow.begin(), narrow.begin() + other, bytes.begin()));
        }
    }
}

// Whole texts equal the conversions of their characters one by one: state or an index that
// leaks from one character into the next.
TEST(CodePage, ConvertsATextLikeItsCharacters)
{
    std::mt19937 random(1);
    for (const UINT page : {932u, 1251u, 65001u}) {
        for (int round = 0; round < 300; ++round) {
            WString text;
            std::string expected;
            for (unsigned left = Below(random, 100); left > 0; --left) {
                const bool ascii = Below(random, 3) != 0;
                const WCHAR unit = static_cast<WCHAR>(Below(random, ascii ? 0x80 : 0xD800));
                std::string one;
                ConvertFromUtf16(page, WStringView(&unit, 1), one);
                text += unit;
                expected += one;
            }
            std::string bytes;
            ConvertFromUtf16(page, text, bytes);
            ASSERT_EQ(bytes, expected);
        }
    }
}

// The raw forms refuse storage that could turn out too small, and say how much they wrote.
TEST(CodePage, RawFormsCheckTheCapacity)
{
    const char text[] = "\x82\xA0z";
    std::array<WCHAR, 3> units;
    int written = -1;
    EXPECT_EQ(ConvertToUtf16(932, text, 3, units.data(), 2, written), kUnknownCodePage);
    EXPECT_EQ(written, 0);
    EXPECT_EQ(ConvertToUtf16(932, text, 3, units.data(), 3, written), kConverted);
    EXPECT_EQ(WString(units.data(), static_cast<std::size_t>(written)), (WString{0x3042, 'z'}));
    std::array<char, 6> bytes;
    EXPECT_EQ(ConvertFromUtf16(65001, units.data(), 2, bytes.data(), 5, written), kUnknownCodePage);
    EXPECT_EQ(ConvertFromUtf16(65001, units.data(), 2, bytes.data(), 6, written), kConverted);
    EXPECT_EQ(std::string(bytes.data(), static_cast<std::size_t>(written)), "\xE3\x81\x82z");
    EXPECT_EQ(MaxNarrowLength(65001, 0x7FFFFFFF), INT64{0x7FFFFFFF} * 3);
}

TEST(CodePage, WidensByTheMultibytePage)
{
    SetMultibytePage(949);
    EXPECT_EQ(WidenText("\xB0\xA1"), WString{0xAC00});
    EXPECT_EQ(NarrowText(WString{0xAC00, 0x00E9}), "\xB0\xA1?");
    SetMultibytePage(932);
}
