#include "charcode/japanese.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>
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

namespace {

// The rules of the conversions, one character after the other; the fast ways through runs of
// characters must not differ from them in anything.
std::string JisPair(int s1, int s2)
{
    const int adjust = s2 < 0x9F ? 1 : 0;
    const int cell = adjust == 0 ? 0x7E : s2 > 0x7F ? 0x20 : 0x1F;
    return {static_cast<char>(2 * (s1 - (s1 < 0xA0 ? 0x70 : 0xB0)) - adjust),
            static_cast<char>(s2 - cell)};
}
std::string SJisPair(int j1, int j2)
{
    const int cell = j1 % 2 == 0 ? 0x7E : j2 > 0x5F ? 0x20 : 0x1F;
    return {static_cast<char>((j1 + 1) / 2 + (j1 < 0x5F ? 0x70 : 0xB0)),
            static_cast<char>(j2 + cell)};
}

std::string PlainSJisTo(bool jis, const std::string& text)
{
    std::string out;
    const char* mode = "\x1B(B";
    const auto put = [&](const char* designation, const std::string& bytes) {
        if (jis && std::string(mode) != designation)
            out += mode = designation;
        out += bytes;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int b = static_cast<BYTE>(text[i]);
        const bool lead = (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xEF);
        if (lead && i + 1 < text.size()) {
            const int trail = static_cast<BYTE>(text[++i]);
            std::string pair = JisPair(b, trail);
            if (!jis)
                pair = {static_cast<char>(pair[0] + 0x80), static_cast<char>(pair[1] + 0x80)};
            if (trail >= 0x40 && trail <= 0xFC)
                put("\x1B$B", pair);
            else
                put("\x1B(B", text.substr(i - 1, 2));
        } else if (b >= 0xA1 && b <= 0xDF) {
            put("\x1B(I",
                jis ? std::string(1, static_cast<char>(b & 0x7F)) : std::string{'\x8E', text[i]});
        } else {
            put("\x1B(B", text.substr(i, 1));
        }
    }
    put("\x1B(B", "");
    return out;
}

std::string PlainEucToSJis(const std::string& text)
{
    const auto at = [&](std::size_t i) {
        return i < text.size() ? int{static_cast<BYTE>(text[i])} : -1;
    };
    const auto isEuc = [](int b) { return b >= 0xA1 && b <= 0xFE; };
    std::string out;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        if (isEuc(at(i)) && isEuc(at(i + 1)))
            out += SJisPair(at(i) - 0x80, at(i + 1) - 0x80);
        else if (at(i) == 0x8E && at(i + 1) >= 0xA1 && at(i + 1) <= 0xDF)
            out += text[i + 1];
        else if (isEuc(at(i)) || at(i) == 0x8E)
            out += text.substr(i, 2);
        else
            out += text[i--];
    }
    return out;
}

// What is designated: K kanji, A ASCII, I half-width katakana, nothing.
struct Designator {
    std::string bytes;
    char effect;
};
const Designator kEscapes[] = {{"\x1B$B", 'K'}, {"\x1B(B", 'A'},  {"\x1B(I", 'I'}, {"\x1B$@", 'K'},
                               {"\x1B(J", 'A'}, {"\x1B$(D", 'K'}, {"\x1B&@", ' '}, {"\x1BK", 'K'},
                               {"\x1BH", 'A'},  {"\x1B(H", 'A'}};

std::string PlainJisToSJis(const std::string& text)
{
    std::string out;
    bool kanji = false;
    bool katakana = false;
    for (std::size_t i = 0; i < text.size();) {
        const auto escape =
            std::find_if(std::begin(kEscapes), std::end(kEscapes), [&](const auto& e) {
                return text.compare(i, e.bytes.size(), e.bytes) == 0;
            });
        const char c = text[i];
        if (escape != std::end(kEscapes)) {
            i += escape->bytes.size();
            if (escape->effect != ' ') {
                kanji = escape->effect == 'K';
                katakana = escape->effect == 'I';
            }
            continue;
        }
        ++i;
        if (c == '\x1B') {
            if (i == text.size() || (text[i] != '$' && text[i] != '('))
                kanji = katakana = false;
        } else if (c == '\x0E' || c == '\x0F') {
            katakana = c == '\x0E';
        } else if (c == '\r' || c == '\n') {
            out += c;
        } else if (katakana) {
            out += static_cast<char>(c | 0x80);
        } else if (kanji && i < text.size()) {
            out += SJisPair(static_cast<BYTE>(c), static_cast<BYTE>(text[i++]));
        } else {
            out += c;
        }
    }
    return out;
}

} // namespace

TEST(Japanese, EqualsThePlainRulesOnAnyBytes)
{
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        // Runs of one kind, long enough for the fast ways, with strays between them.
        std::string text;
        for (unsigned runs = Below(random, 8); runs > 0; --runs) {
            const unsigned kind = Below(random, 6);
            for (unsigned n = Below(random, 40); n > 0; --n) {
                if (kind == 0)
                    text += static_cast<char>(Below(random, 0x80));
                else if (kind == 1)
                    text += static_cast<char>(0xA1 + Below(random, 0x5E)); // of EUC-JP
                else if (kind == 2)
                    text += static_cast<char>(0x21 + Below(random, 0x5E)); // of JIS
                else
                    text += RandomCharacter(random);
            }
            if (Below(random, 2) == 0)
                text += kEscapes[Below(random, std::size(kEscapes))].bytes;
            if (Below(random, 3) == 0)
                text += static_cast<char>(Below(random, 0x100));
        }
        ASSERT_EQ(Converted(ConvertSJisToEuc, text), PlainSJisTo(false, text));
        ASSERT_EQ(Converted(ConvertSJisToJis, text), PlainSJisTo(true, text));
        ASSERT_EQ(Converted(ConvertEucToSJis, text), PlainEucToSJis(text));
        ASSERT_EQ(Converted(ConvertJisToSJis, text), PlainJisToSJis(text));
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
