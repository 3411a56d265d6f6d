#include "mailtext/hex.h"

#include <gtest/gtest.h>

#include <string>

TEST(Hex, DecodesEscapesAndNothingElse)
{
    const std::pair<const char*, std::string> cases[] = {
        {"a%20b", "a b"},
        {"%e3%81%82", "\xE3\x81\x82"},
        {"a+b", "a+b"},
        {"%%41", "%A"}, // the first "%" is none
        {"%4%41", "%4A"},
        {"%4g%4:%4@%4G%4/", "%4g%4:%4@%4G%4/"},
        {"%4f%4F%4a%4A%49%40", "OOJJI@"},
        {"%", "%"},
        {"a%00b", {"a\0b", 3}},
    };
    for (const auto& [text, data] : cases) {
        CBuffer out("left over");
        DecodeHex(text, out);
        EXPECT_EQ(std::string(out, static_cast<std::size_t>(out.GetLength())), data) << text;
    }
    CBuffer out("left over");
    DecodeHex(nullptr, out);
    EXPECT_TRUE(out.IsEmpty());
}

TEST(Hex, Encodes)
{
    CBuffer out("left over");
    EXPECT_STREQ(EncodeHex("a b~\x83\x5C", 0, out), "a%20b%7E%83%5C");
    EXPECT_STREQ(EncodeHex("aZ0", 1, out), "%61%5A%30");
    EXPECT_STREQ(EncodeUrlEncode("a b+-._~\xFF", out), "a+b%2B-._%7E%FF");
}
