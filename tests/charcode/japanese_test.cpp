#include "charcode/japanese.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>

namespace {

using Conversion = void (*)(const char*, int, CBuffer&);

std::string Converted(Conversion convert, const std::string& text)
{
    CBuffer out("left over");
    convert(text.data(), static_cast<int>(text.size()), out);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

struct Case {
    const char* what;
    std::string in;
    std::string out;
};

void Check(Conversion convert, std::initializer_list<Case> cases)
{
    for (const Case& c : cases)
        EXPECT_EQ(Converted(convert, c.in), c.out) << c.what;
}

unsigned Below(std::mt19937& random, unsigned limit)
{
    return static_cast<unsigned>(random() % limit);
}

// Any character of Shift_JIS that the three codes share.
std::string RandomCharacter(std::mt19937& random)
{
    switch (Below(random, 4)) {
    case 0:
        return std::string(1, static_cast<char>(' ' + Below(random, 95)));
    case 1:
        return std::string(1, static_cast<char>(0xA1 + Below(random, 63)));
    case 2:
        return Below(random, 8) == 0 ? "\r\n" : "\x82\xA0";
    default: {
        const unsigned lead =
            Below(random, 2) == 0 ? 0x81 + Below(random, 31) : 0xE0 + Below(random, 16);
        unsigned trail = 0x40 + Below(random, 188);
        if (trail >= 0x7F)
            ++trail;
        return {static_cast<char>(lead), static_cast<char>(trail)};
    }
    }
}

} // namespace

TEST(Japanese, JisToShiftJis)
{
    Check(ConvertJisToSJis,
          {
              {"both designations of kanji", "\x1B$B\x30\x21\x1B(B", "\x88\x9F"},
              {"", "\x1B$@\x30\x21\x1B(Ja",
               "\x88\x9F"
               "a"},
              {"the supplementary set is read as kanji", "\x1B$(D\x30\x21\x1B(B", "\x88\x9F"},
              {"revision announcer", "\x1B&@\x1B$B\x30\x21", "\x88\x9F"},
              {"announcer keeps the mode", "\x1B$B\x30\x21\x1B&@\x30\x21", "\x88\x9F\x88\x9F"},
              {"older pair", "\x1BK\x30\x21\x1BHa",
               "\x88\x9F"
               "a"},
              {"half-width katakana", "\x1B(I\x31\x1B(H1",
               "\xB1"
               "1"},
              {"shift-out and shift-in", "\x0E\x31\x0F\x31", "\xB1\x31"},
              {"shift-in falls back to kanji", "\x1B$B\x0E\x31\x0F\x30\x21", "\xB1\x88\x9F"},
              {"line ends keep the mode", "\x1B$B\x30\x21\r\n\x30\x21", "\x88\x9F\r\n\x88\x9F"},
              {"unknown escape ends kanji, its byte stays", "\x1B$B\x30\x21\x1BX!", "\x88\x9FX!"},
              {"unknown in ESC ( keeps the mode", "\x1B$B\x1B(\x30\x21", "\x84\xAE\x21"},
              {"cut-off escape at the end", "a\x1B$", "a$"},
              {"", "a\x1B$(", "a$("},
              {"", "a\x1B", "a"},
              {"a lone byte in kanji mode", "\x1B$B\x30\x21\x30", "\x88\x9F\x30"},
              {"NEC row 13 is only arithmetic", "\x1B$B\x2D\x21\x1B(B", "\x87\x40"},
              {"", "", ""},
          });
}

TEST(Japanese, ShiftJisToJis)
{
    Check(ConvertSJisToJis,
          {
              {"the whole ends in ASCII", "\x88\x9F", "\x1B$B\x30\x21\x1B(B"},
              {"every line ends in ASCII", "\x88\x9F\r\n\x88\x9F",
               "\x1B$B\x30\x21\x1B(B\r\n\x1B$B\x30\x21\x1B(B"},
              {"half-width katakana", "\xB1", "\x1B(I\x31\x1B(B"},
              {"no ASCII between the two sets", "\xB1\x88\x9F", "\x1B(I\x31\x1B$B\x30\x21\x1B(B"},
              {"lead byte at the end", "a\x88", "a\x88"},
              {"bad trail byte goes through", "\x88\x9F\x88\x20z", "\x1B$B\x30\x21\x1B(B\x88\x20z"},
              {"no row for F0 and above", "\xF0\x40", "\xF0\x40"},
              {"no codes", "\x80\xA0\xFF", "\x80\xA0\xFF"},
              {"NEC row 13", "\x87\x40", "\x1B$B\x2D\x21\x1B(B"},
              {"", "plain", "plain"},
          });
}

TEST(Japanese, EucAndShiftJis)
{
    Check(ConvertEucToSJis,
          {
              {"", "\xB0\xA1z", "\x88\x9Fz"},
              {"single shift", "\x8E\xB1", "\xB1"},
              {"single shift before another", "\x8E\x41z",
               "\x8E"
               "Az"},
              {"bad second byte", "\xB0\x41z",
               "\xB0"
               "Az"},
              {"first byte at the end", "a\xB0", "a\xB0"},
              {"supplementary shift is nothing special", "\x8F\xB0\xA1", "\x8F\x88\x9F"},
          });
    Check(ConvertSJisToEuc, {
                                {"", "\x88\x9Fz", "\xB0\xA1z"},
                                {"", "\xB1", "\x8E\xB1"},
                                {"bad trail byte", "\x88\x20", "\x88\x20"},
                                {"lead byte at the end", "\x88", "\x88"},
                                {"", "\xF0\x40\x80\xA0", "\xF0\x40\x80\xA0"},
                            });
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

TEST(Japanese, RandomTextSurvivesBothRoundTrips)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (unsigned n = Below(random, 60); n > 0; --n)
            text += RandomCharacter(random);
        const std::string jis = Converted(ConvertSJisToJis, text);
        EXPECT_TRUE(std::none_of(jis.begin(), jis.end(), [](char c) { return (c & 0x80) != 0; }));
        ASSERT_EQ(Converted(ConvertJisToSJis, jis), text);
        ASSERT_EQ(Converted(ConvertEucToSJis, Converted(ConvertSJisToEuc, text)), text);
    }
}

// Changing between ASCII and katakana at every byte takes four bytes for one: more than the
// twice the input that is reserved at first.
TEST(Japanese, TextThatOutgrowsTheReservation)
{
    for (const int count : {1, 2, 3, 7, 5000}) {
        std::string text, expected;
        for (int i = 0; i < count; ++i) {
            text += "\xB1"
                    "a";
            expected += "\x1B(I\x31\x1B(Ba";
        }
        EXPECT_EQ(Converted(ConvertSJisToJis, text), expected);
        EXPECT_EQ(Converted(ConvertSJisToJis, text + "\xB1"), expected + "\x1B(I\x31\x1B(B");
    }
}

TEST(Japanese, NothingAndTooMuch)
{
    for (const Conversion convert :
         {ConvertJisToSJis, ConvertSJisToJis, ConvertEucToSJis, ConvertSJisToEuc}) {
        CBuffer out("left over");
        convert(nullptr, 5, out);
        EXPECT_TRUE(out.IsEmpty());
        out = "left over";
        convert("abc", -1, out);
        EXPECT_TRUE(out.IsEmpty());
        try {
            convert("abc", INT_MAX / 2 + 1, out);
            ADD_FAILURE();
        } catch (CMemoryException* e) {
            e->Delete();
        }
    }
}
