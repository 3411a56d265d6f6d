#include "charcode/japanese.h"
#include "tests/support/test.h"

namespace {

using Conversion = void (*)(const char*, int, CBuffer&);

std::string Converted(Conversion convert, const std::string& text)
{
    return Output([&](CBuffer& out) { convert(text.data(), static_cast<int>(text.size()), out); });
}

// ASCII or a line end, katakana, kanji, what is of no code, or any of them.
std::string RandomCharacter(std::mt19937& random, unsigned kind)
{
    if (kind == 4)
        kind = Below(random, 4);
    if (kind == 0)
        return Below(random, 8) == 0 ? "\r\n"
                                     : std::string(1, static_cast<char>(' ' + Below(random, 95)));
    if (kind == 1)
        return std::string(1, static_cast<char>(0xA1 + Below(random, 63)));
    if (kind == 3)
        return std::string{"\x80\xA0\xFF\x7F"[Below(random, 4)]};
    const unsigned lead = Below(random, 47), trail = 0x40 + Below(random, 188);
    return {static_cast<char>(lead < 31 ? 0x81 + lead : 0xC1 + lead),
            static_cast<char>(trail < 0x7F ? trail : trail + 1)};
}

} // namespace

// Rows from ISO-2022-JP: the older designations and the announcer, which keeps the mode;
// shift-in, which falls back to kanji; line ends in kanji mode; unknown and cut-off escapes, whose
// bytes stay; half a character. To ISO-2022-JP: every line ends in ASCII, which does not stand
// between the two other sets; NEC row 13 has a row, F0 and above and bad trail bytes pass. From
// and to EUC-JP: the single shift, alone and before another byte; the supplementary shift, which
// is nothing special; halves of characters.
TEST(Japanese, OddTexts)
{
    const std::tuple<Conversion, std::string, std::string> cases[] = {
        {ConvertJisToSJis, "\x1B$@\x30\x21\x1B&@\x30\x21\x1B(J!", "\x88\x9F\x88\x9F!"},
        {ConvertJisToSJis, "\x1BK\x30\x21\x1BH!\x1B$(D\x30\x21", "\x88\x9F!\x88\x9F"},
        {ConvertJisToSJis, "\x1B$B\x0E\x31\x0F\x30\x21", "\xB1\x88\x9F"},
        {ConvertJisToSJis, "\x1B$B\x30\x21\r\n\x30\x21", "\x88\x9F\r\n\x88\x9F"},
        {ConvertJisToSJis, "\x1B$B\x30\x21\x1BX!", "\x88\x9FX!"},
        {ConvertJisToSJis, "\x1B$B\x1B(\x30\x21", "\x84\xAE\x21"},
        {ConvertJisToSJis, "a\x1B$(", "a$("},
        {ConvertJisToSJis, "\x1B$B\x30\x21\x30", "\x88\x9F\x30"},
        {ConvertSJisToJis, "\x88\x9F\n\xB1\x88\x9F",
         "\x1B$B\x30\x21\x1B(B\n\x1B(I\x31\x1B$B\x30\x21\x1B(B"},
        {ConvertSJisToJis, "\x87\x40\x88", "\x1B$B\x2D\x21\x1B(B\x88"},
        {ConvertSJisToJis, "\x88\x20\xF0\x40\x80\xA0\xFF", "\x88\x20\xF0\x40\x80\xA0\xFF"},
        {ConvertEucToSJis, "\x8E\xB1\x8E!\xB0!", "\xB1\x8E!\xB0!"},
        {ConvertEucToSJis, "\x8F\xB0\xA1\xB0", "\x8F\x88\x9F\xB0"},
        {ConvertSJisToEuc, "\xB1\x88\x20\xF0\x40\x80\xA0\x88",
         "\x8E\xB1\x88\x20\xF0\x40\x80\xA0\x88"},
    };
    for (const auto& [convert, in, out] : cases)
        EXPECT_EQ(Converted(convert, in), out) << testing::PrintToString(in);
}

TEST(Japanese, RowsAndCellsOfTheWholeTable)
{
    for (int row = 0x21; row <= 0x7E; ++row) {
        for (int cell = 0x21; cell <= 0x7E; ++cell) {
            const std::string jis{static_cast<char>(row), static_cast<char>(cell)};
            const std::string euc{static_cast<char>(row | 0x80), static_cast<char>(cell | 0x80)};
            // The definition of Shift_JIS by row and cell numbers, counted from 0.
            const int r = row - 0x21;
            const int c = cell - 0x21 + (r % 2 == 0 ? 0 : 94);
            const int lead = 0x81 + r / 2 + (r / 2 >= 31 ? 0x40 : 0);
            const int trail = 0x40 + c + (c >= 63 ? 1 : 0);
            const std::string sjis{static_cast<char>(lead), static_cast<char>(trail)};
            ASSERT_EQ(Converted(ConvertJisToSJis, "\x1B$B" + jis), sjis);
            ASSERT_EQ(Converted(ConvertEucToSJis, euc), sjis);
            ASSERT_EQ(Converted(ConvertSJisToEuc, sjis), euc);
            ASSERT_EQ(Converted(ConvertSJisToJis, sjis), "\x1B$B" + jis + "\x1B(B");
        }
    }
}

// The fast ways through runs do what is done to each character alone: in EUC-JP they follow one
// another, in ISO-2022-JP a set is designated where it changes.
TEST(Japanese, RunsEqualTheirCharacters)
{
    const std::string ascii = "\x1B(B";
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        std::string text, euc, jis, mode = ascii;
        for (unsigned runs = Below(random, 8); runs > 0; --runs) {
            const unsigned kind = Below(random, 5);
            for (unsigned n = Below(random, 40); n > 0; --n) {
                const std::string one = RandomCharacter(random, kind);
                text += one;
                euc += Converted(ConvertSJisToEuc, one);
                const std::string alone = Converted(ConvertSJisToJis, one);
                const bool shifted = alone[0] == '\x1B';
                const std::string set = shifted ? alone.substr(0, 3) : ascii;
                jis += (set == mode ? "" : set) +
                       (shifted ? alone.substr(3, alone.size() - 6) : alone);
                mode = set;
            }
        }
        jis += mode == ascii ? "" : ascii;
        ASSERT_EQ(Converted(ConvertSJisToEuc, text), euc);
        ASSERT_EQ(Converted(ConvertEucToSJis, euc), text);
        ASSERT_EQ(Converted(ConvertSJisToJis, text), jis);
        ASSERT_EQ(Converted(ConvertJisToSJis, jis), text);
    }
}

// Changing between ASCII and katakana at every byte takes four bytes for one: more than the
// twice the input that is reserved at first.
TEST(Japanese, TextThatOutgrowsTheReservation)
{
    std::string text, expected;
    for (int count = 0; count < 5000; ++count) {
        text += "\xB1!";
        expected += "\x1B(I\x31\x1B(B!";
        if (count < 8 || count == 4999) {
            EXPECT_EQ(Converted(ConvertSJisToJis, text + "\xB1"), expected + "\x1B(I\x31\x1B(B");
        }
    }
}

TEST(Japanese, NothingAndTooMuch)
{
    for (const Conversion convert :
         {ConvertJisToSJis, ConvertSJisToJis, ConvertEucToSJis, ConvertSJisToEuc}) {
        CBuffer out("left over");
        convert(nullptr, 5, out);
        EXPECT_TRUE(out.IsEmpty());
        EXPECT_THROW(convert("abc", INT_MAX / 2 + 1, out), CMemoryException*);
    }
}
