#include "charcode/japanese.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>
#include <random>
#include <string>
#include <tuple>

namespace {

using Conversion = void (*)(const char*, int, CBuffer&);

std::string Converted(Conversion convert, const std::string& text)
{
    CBuffer out("left over");
    convert(text.data(), static_cast<int>(text.size()), out);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

unsigned Below(std::mt19937& random, unsigned limit)
{
    return static_cast<unsigned>(random() % limit);
}

// Any character of Shift_JIS, or a line end.
std::string RandomCharacter(std::mt19937& random)
{
    const unsigned kind = Below(random, 4);
    if (kind == 0)
        return std::string(1, static_cast<char>(' ' + Below(random, 95)));
    if (kind == 1)
        return std::string(1, static_cast<char>(0xA1 + Below(random, 63)));
    if (kind == 2)
        return Below(random, 8) == 0 ? "\r\n" : "\x82\xA0";
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
        {ConvertJisToSJis, "a\x1B", "a"},
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
const std::pair<std::string, char> kEscapes[] = {
    {"\x1B$B", 'K'},  {"\x1B(B", 'A'}, {"\x1B(I", 'I'}, {"\x1B$@", 'K'}, {"\x1B(J", 'A'},
    {"\x1B$(D", 'K'}, {"\x1B&@", ' '}, {"\x1BK", 'K'},  {"\x1BH", 'A'},  {"\x1B(H", 'A'}};

std::string PlainJisToSJis(const std::string& text)
{
    std::string out;
    bool kanji = false, katakana = false;
    for (std::size_t i = 0; i < text.size();) {
        const auto escape = std::find_if(std::begin(kEscapes), std::end(kEscapes), [&](auto& e) {
            return text.compare(i, e.first.size(), e.first) == 0;
        });
        if (escape != std::end(kEscapes)) {
            i += escape->first.size();
            kanji = escape->second == ' ' ? kanji : escape->second == 'K';
            katakana = escape->second == ' ' ? katakana : escape->second == 'I';
            continue;
        }
        const char c = text[i++];
        if (c == '\x1B') {
            if (i == text.size() || (text[i] != '$' && text[i] != '('))
                kanji = katakana = false;
        } else if (c == '\x0E' || c == '\x0F') {
            katakana = c == '\x0E';
        } else if (c == '\r' || c == '\n' || (!katakana && (!kanji || i == text.size()))) {
            out += c;
        } else if (katakana) {
            out += static_cast<char>(c | 0x80);
        } else {
            out += SJisPair(static_cast<BYTE>(c), static_cast<BYTE>(text[i++]));
        }
    }
    return out;
}

} // namespace

TEST(Japanese, EqualsThePlainRulesOnAnyBytes)
{
    constexpr unsigned kFirst[] = {0, 0xA1, 0x21};
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        // Runs of one kind, long enough for the fast ways, with strays between them.
        std::string text;
        for (unsigned runs = Below(random, 8); runs > 0; --runs) {
            const unsigned kind = Below(random, 6);
            for (unsigned n = Below(random, 40); n > 0; --n) {
                if (kind < 3) // ASCII, EUC-JP, JIS
                    text +=
                        static_cast<char>(kFirst[kind] + Below(random, kind == 0 ? 0x80 : 0x5E));
                else
                    text += RandomCharacter(random);
            }
            if (Below(random, 2) == 0)
                text += kEscapes[Below(random, std::size(kEscapes))].first;
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
        out = "left over";
        convert("abc", -1, out);
        EXPECT_TRUE(out.IsEmpty());
        EXPECT_THROW(convert("abc", INT_MAX / 2 + 1, out), CMemoryException*);
    }
}
