#include "mailtext/quoted_printable.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

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

} // namespace

TEST(QuotedPrintable, Decodes)
{
    const std::pair<std::string, std::string> cases[] = {
        {"a=\nb=\rc=", "abc"},  {"a= \t\r\nb", "ab"}, // white space behind the "="
        {"a=4x", "a=4x"},       {"=e9=C3", "\xE9\xC3"}, {"a \t\r\nb  \nc  ", "a\r\nb\nc"},
        {"a=20\r\n", "a \r\n"}, // an escaped blank stays
    };
    for (const auto& [text, data] : cases)
        EXPECT_EQ(Decoded(text), data) << text;
}

TEST(QuotedPrintable, Encodes)
{
    const std::tuple<std::string, int, std::string> cases[] = {
        {"a b \r\n", 1, "a b=20\r\n"},
        {"a\rb\nc\r\n", 1, "a\r\nb\r\nc\r\n"},
        {"a \n", 0, "a=20=0A"},
        {"=\x7F\x80\xFF", 1, "=3D=7F=80=FF"},
        {std::string(1, '\0'), 1, "=00"},
        {std::string(80, 'a'), 1, std::string(75, 'a') + "=\r\naaaaa"},
        {std::string(73, 'a') + "\xE9", 1, std::string(73, 'a') + "=\r\n=E9"},
        {std::string(72, 'a') + "\xE9", 1, std::string(72, 'a') + "=E9"},
        {std::string(75, 'a') + "\r\n" + std::string(75, 'b'), 1,
         std::string(75, 'a') + "\r\n" + std::string(75, 'b')},
    };
    for (const auto& [data, keepLineBreaks, text] : cases)
        EXPECT_EQ(Encoded(data, keepLineBreaks), text);
}

TEST(QuotedPrintable, IsRecognisedByAFewEscapes)
{
    const std::pair<const char*, int> cases[] = {
        {nullptr, 0},      {"", 0},          {"=E3=81=82", 1},
        {"=E3=81\x82", 0}, // not ASCII
        {"abc", 1},        // too short to demand an escape
        {"abcd", 0},       {"=E3567890", 1}, {"=E34567890123456789", 0}, // 3 against 5
        {"=G3567890", 0},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(IsQuotedPrintable(text), expected) << (text != nullptr ? text : "null");
}
