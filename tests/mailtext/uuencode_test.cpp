#include "mailtext/uuencode.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string Text(const CBuffer& buffer)
{
    return std::string(buffer, static_cast<std::size_t>(buffer.GetLength()));
}

std::string Encoded(const std::string& data, const char* mode = nullptr, const char* name = nullptr)
{
    CBuffer out("left over");
    EncodeUuencode(mode, name, reinterpret_cast<const unsigned char*>(data.data()),
                   static_cast<int>(data.size()), out);
    return Text(out);
}

} // namespace

TEST(Uuencode, ReadsTheBeginLine)
{
    const struct {
        const char* line;
        int expected;
        const char* mode;
        const char* name;
    } cases[] = {
        {"begin 644 photo.jpg", 1, "644", "photo.jpg"},
        {"BEGIN   755   a b \r\nrest", 1, "755", "a b"},
        {"begin 644", 0, "", ""},
        {"begin 644 ", 0, "", ""},
        {"begin 64 x", 0, "", ""},
        {"begin 648 x", 0, "", ""},
        {"begin 6444 x", 0, "", ""},
        {"begin644 x", 0, "", ""},
        {"", 0, "", ""},
        {nullptr, 0, "", ""},
    };
    for (const auto& c : cases) {
        CStringA mode = "left over", name = "left over";
        EXPECT_EQ(DecodeUuencodeBegin(c.line, &mode, &name), c.expected);
        EXPECT_STREQ(mode, c.mode);
        EXPECT_STREQ(name, c.name);
    }
    EXPECT_EQ(DecodeUuencodeBegin("begin 644 x", nullptr, nullptr), 1);
}

TEST(Uuencode, Encodes)
{
    EXPECT_EQ(Encoded(""), "begin 644 dummy\r\n`\r\nend\r\n");
    EXPECT_EQ(Encoded("Cat", "600", "cat.txt"), "begin 600 cat.txt\r\n#0V%T\r\n`\r\nend\r\n");
    EXPECT_EQ(Encoded(std::string("\0\0\0\0", 4)), "begin 644 dummy\r\n$````````\r\n`\r\nend\r\n");
    EXPECT_EQ(Encoded(std::string(46, '\xFF')),
              "begin 644 dummy\r\nM" + std::string(60, '_') + "\r\n!_P``\r\n`\r\nend\r\n");
}

TEST(Uuencode, Decodes)
{
    const struct {
        const char* text;
        int expected;
        std::string data;
    } cases[] = {
        {"begin 644 x\r\n#0V%T\r\n`\r\nend\r\n", 1, "Cat"},
        {"\r\n\r\nbegin 644 x\n#0V%T\n \nEND", 1, "Cat"}, // a blank ends the data, too
        {"begin 644 x\n#0V%T\n`\nstop", 0, "Cat"},
        {"begin 644 x\n#0V%T\n`\n", 0, "Cat"},
        {"begin 644 x\n#0V%T\n", 0, "Cat"},
        {"begin 644 x\n#0V%\n`\nend", 0, ""},    // a line too short
        {"begin 644 x\n\"0V$\n`\nend", 1, "Ca"}, // as short as allowed
        {"#0V%T\n`\nend", 0, ""},
        {"begin 644 x\n`\nend", 1, ""},
        {"", 1, ""},
    };
    for (const auto& c : cases) {
        CBuffer out("left over");
        EXPECT_EQ(DecodeUuencode(c.text, nullptr, nullptr, &out), c.expected) << c.text;
        EXPECT_EQ(Text(out), c.data) << c.text;
    }
    CStringA mode, name;
    EXPECT_EQ(DecodeUuencode("begin 600 x\nwhatever", &mode, &name, nullptr), 1);
    EXPECT_STREQ(mode, "600");
    EXPECT_STREQ(name, "x");
}

TEST(Uuencode, EmptiesItsOutputsFirst)
{
    for (const char* text : {"", "\r\n"}) {
        CStringA mode("left"), name("over");
        CBuffer out("!");
        EXPECT_EQ(DecodeUuencode(text, &mode, &name, &out), *text == '\0' ? 1 : 0);
        EXPECT_TRUE(mode.IsEmpty() && name.IsEmpty() && out.IsEmpty());
    }
}

TEST(Uuencode, RandomDataSurvivesTheRoundTrip)
{
    std::mt19937 random(9);
    for (std::size_t length = 0; length < 200; ++length) {
        std::string data;
        while (data.size() < length)
            data += static_cast<char>(random());
        CBuffer out;
        ASSERT_EQ(DecodeUuencode(Encoded(data).c_str(), nullptr, nullptr, &out), 1);
        ASSERT_EQ(Text(out), data);
    }
}
