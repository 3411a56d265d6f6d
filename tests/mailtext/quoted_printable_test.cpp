#include "mailtext/quoted_printable.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string Decoded(const std::string& text)
{
    CBuffer out("left over");
    EXPECT_EQ(DecodeQuotedPrintable(text.c_str(), out), 1);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

std::string Encoded(const std::string& data, int keepLineBreaks)
{
    CBuffer out("left over");
    EncodeQuotedPrintable(reinterpret_cast<const unsigned char*>(data.data()),
                          static_cast<int>(data.size()), keepLineBreaks, out);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

// The rules, byte by byte.

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool IsLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

std::string SlowDecoded(const std::string& text)
{
    const std::string digits = "0123456789ABCDEFabcdef";
    const auto value = [&](std::size_t i) {
        const std::size_t place = i < text.size() ? digits.find(text[i]) : std::string::npos;
        return place == std::string::npos ? -1 : static_cast<int>(place < 16 ? place : place - 6);
    };
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t behind = i + (text[i] == '=' ? 1 : 0);
        while (behind < text.size() && IsBlank(text[behind]))
            ++behind;
        const bool ends = behind == text.size() || IsLineEnd(text[behind]);
        if (text[i] == '=' && ends) {
            i = text.compare(behind, 2, "\r\n") == 0 ? behind + 2 : behind + 1;
        } else if (text[i] == '=' && value(i + 1) >= 0 && value(i + 2) >= 0) {
            out += static_cast<char>(value(i + 1) * 16 + value(i + 2));
            i += 3;
        } else if (IsBlank(text[i]) && ends) {
            i = behind;
        } else {
            out += text[i++];
        }
    }
    return out;
}

std::string SlowEncoded(const std::string& data, bool keepLineBreaks)
{
    std::string out;
    std::size_t column = 0;
    const auto put = [&](const std::string& characters) {
        if (column + characters.size() > 75) {
            out += "=\r\n";
            column = 0;
        }
        out += characters;
        column += characters.size();
    };
    for (std::size_t i = 0; i < data.size(); ++i) {
        const char c = data[i];
        const bool last = i + 1 == data.size() || IsLineEnd(data[i + 1]);
        if ((c >= 33 && c <= 60) || (c >= 62 && c <= 126) || (IsBlank(c) && !last)) {
            put({c});
        } else if (keepLineBreaks && IsLineEnd(c)) {
            i += data.compare(i, 2, "\r\n") == 0 ? 1 : 0;
            out += "\r\n";
            column = 0;
        } else {
            const auto b = static_cast<unsigned char>(c);
            put({'=', "0123456789ABCDEF"[b / 16], "0123456789ABCDEF"[b % 16]});
        }
    }
    return out;
}

unsigned Below(std::mt19937& random, unsigned limit)
{
    return static_cast<unsigned>(random() % limit);
}

} // namespace

TEST(QuotedPrintable, Decodes)
{
    const struct {
        std::string text, data;
    } cases[] = {
        {"a=\r\nb", "ab"},
        {"a=\nb=\rc=", "abc"},
        {"a= \t\r\nb", "ab"}, // white space behind the "="
        {"a= ", "a"},
        {"a= b", "a= b"},
        {"a=\r\n\r\nb", "a\r\nb"}, // one line end only
        {"a=4", "a=4"},
        {"a=4x", "a=4x"},
        {"=e9=C3", "\xE9\xC3"},
        {"==3D", "=="},
        {"a \t\r\nb  \nc  ", "a\r\nb\nc"},
        {"a  b", "a  b"},
        {"a=20\r\n", "a \r\n"}, // an escaped blank stays
        {"a_b\xE9", "a_b\xE9"},
        {"   ", ""},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Decoded(c.text), c.data) << c.text;
}

// The example of RFC 2045.
TEST(QuotedPrintable, JoinsTheLinesOfTheStandard)
{
    EXPECT_EQ(Decoded("Now's the time =\r\nfor all folk to come=\r\n to the aid of their country."),
              "Now's the time for all folk to come to the aid of their country.");
}

TEST(QuotedPrintable, EqualsTheSlowRules)
{
    std::mt19937 random(9);
    for (int round = 0; round < 3000; ++round) {
        std::string data;
        for (unsigned n = Below(random, 12); n > 0; --n) {
            const char* const pieces[] = {"a",    " ", "\t", "\r",  "\n",
                                          "\r\n", "=", "=4", "=4a", "~"};
            if (Below(random, 3) == 0)
                data.append(Below(random, 90), "a \xE9="[Below(random, 4)]);
            data += pieces[Below(random, 10)];
        }
        ASSERT_EQ(Decoded(data), SlowDecoded(data)) << data;
        ASSERT_EQ(Encoded(data, 0), SlowEncoded(data, false)) << data;
        ASSERT_EQ(Encoded(data, 1), SlowEncoded(data, true)) << data;
    }
}

TEST(QuotedPrintable, Encodes)
{
    const struct {
        std::string data;
        int keepLineBreaks;
        std::string text;
    } cases[] = {
        {"a b \r\n", 1, "a b=20\r\n"},
        {"a\tb\t", 1, "a\tb=09"},
        {"a\rb\nc\r\n", 1, "a\r\nb\r\nc\r\n"},
        {"\n\r", 1, "\r\n\r\n"},
        {"a \n", 0, "a=20=0A"},
        {"=\x7F\x80\xFF", 1, "=3D=7F=80=FF"},
        {std::string(1, '\0'), 1, "=00"},
        {std::string(80, 'a'), 1, std::string(75, 'a') + "=\r\naaaaa"},
        {std::string(75, 'a'), 1, std::string(75, 'a')},
        {std::string(73, 'a') + "\xE9", 1, std::string(73, 'a') + "=\r\n=E9"},
        {std::string(72, 'a') + "\xE9", 1, std::string(72, 'a') + "=E9"},
        {std::string(75, 'a') + "\r\n" + std::string(75, 'b'), 1,
         std::string(75, 'a') + "\r\n" + std::string(75, 'b')},
        {"", 1, ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Encoded(c.data, c.keepLineBreaks), c.text);
}

// The storage is computed ahead; nothing but escapes needs the most of it.
TEST(QuotedPrintable, HoldsLongRunsOfEscapes)
{
    for (int length = 1; length < 400; ++length) {
        const std::string data(static_cast<std::size_t>(length), '\xE9');
        EXPECT_EQ(Decoded(Encoded(data, 1)), data);
        const std::string mixed = std::string(static_cast<std::size_t>(length % 7), 'a') + data;
        EXPECT_EQ(Decoded(Encoded(mixed, 0)), mixed);
    }
}

// Any bytes come back when line breaks are escaped; no line is longer than 76.
TEST(QuotedPrintable, RandomDataSurvivesTheRoundTrip)
{
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        std::string data;
        for (unsigned n = Below(random, 300); n > 0; --n)
            data +=
                Below(random, 2) == 0 ? static_cast<char>(random()) : "a \t\r\n="[Below(random, 6)];
        const std::string text = Encoded(data, 0);
        ASSERT_EQ(Decoded(text), data);
        std::size_t start = 0;
        for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos;
             start = end + 2)
            ASSERT_LE(end - start, 76u);
        ASSERT_LE(text.size() - start, 75u);
    }
}

TEST(QuotedPrintable, IsRecognisedByAFewEscapes)
{
    const struct {
        const char* text;
        int expected;
    } cases[] = {
        {nullptr, 0},      {"", 0},          {"=E3=81=82", 1},
        {"=E3=81\x82", 0}, // not ASCII
        {"abc", 1},        // too short to demand an escape
        {"abcd", 0},       {"=E3567890", 1}, {"=E34567890123456789", 0}, // 3 against 5
        {"=G3567890", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsQuotedPrintable(c.text), c.expected) << (c.text != nullptr ? c.text : "null");
}
