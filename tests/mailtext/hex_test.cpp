#include "mailtext/hex.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string View(const CBuffer& out)
{
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

} // namespace

TEST(Hex, DecodesEscapesAndNothingElse)
{
    const struct {
        const char* text;
        std::string data;
    } cases[] = {
        {"a%20b", "a b"},
        {"%e3%81%82", "\xE3\x81\x82"},
        {"a+b", "a+b"},
        {"%%41", "%A"}, // the first "%" is none
        {"%4%41", "%4A"},
        {"%4g", "%4g"},
        {"%", "%"},
        {"%4", "%4"},
        {"a%00b", {"a\0b", 3}},
        {"", ""},
    };
    for (const auto& c : cases) {
        CBuffer out("left over");
        DecodeHex(c.text, out);
        EXPECT_EQ(View(out), c.data) << c.text;
    }
    CBuffer out("left over");
    DecodeHex(nullptr, out);
    EXPECT_TRUE(out.IsEmpty());
}

TEST(Hex, ReadsADigit)
{
    const std::string digits = "0123456789ABCDEFabcdef";
    for (int c = -128; c < 128; ++c) {
        const std::size_t place = digits.find(static_cast<char>(c));
        const int value = place == std::string::npos ? 0 : static_cast<int>(place);
        EXPECT_EQ(DecodeHex(static_cast<char>(c)), value < 16 ? value : value - 6) << c;
    }
}

TEST(Hex, Encodes)
{
    CBuffer out("left over");
    EXPECT_STREQ(EncodeHex("a b~\x83\x5C", 0, out), "a%20b%7E%83%5C");
    EXPECT_STREQ(EncodeHex("aZ0", 1, out), "%61%5A%30");
    EXPECT_STREQ(EncodeUrlEncode("a b+-._~\xFF", out), "a+b%2B-._%7E%FF");
    CBuffer empty;
    EXPECT_STREQ(EncodeHex(nullptr, 0, empty), "");
    EXPECT_STREQ(EncodeUrlEncode("", empty), "");
}

TEST(Hex, ComesBack)
{
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    for (const int encodeAll : {0, 1}) {
        CBuffer text, back;
        EncodeHex(all.c_str(), encodeAll, text);
        DecodeHex(text, back);
        EXPECT_EQ(View(back), all);
    }
}
