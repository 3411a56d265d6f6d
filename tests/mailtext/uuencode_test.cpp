#include "mailtext/uuencode.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

std::string Encoded(const std::string& data, const char* mode = nullptr, const char* name = nullptr)
{
    CBuffer out("left over");
    EncodeUuencode(mode, name, reinterpret_cast<const unsigned char*>(data.data()),
                   static_cast<int>(data.size()), out);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

} // namespace

TEST(Uuencode, ReadsTheBeginLine)
{
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"begin 644 photo.jpg", 1, "644", "photo.jpg"},
        {"BEGIN   755   a b \r\nrest", 1, "755", "a b"},
        {"begin 644 ", 0, "", ""},
        {"begin 648 x", 0, "", ""},
        {"begin644 x", 0, "", ""},
        {nullptr, 0, "", ""},
    };
    for (const auto& [line, expected, wantedMode, wantedName] : cases) {
        CStringA mode = "left over", name = "left over";
        EXPECT_EQ(DecodeUuencodeBegin(line, &mode, &name), expected);
        EXPECT_STREQ(mode, wantedMode);
        EXPECT_STREQ(name, wantedName);
    }
}

TEST(Uuencode, Encodes)
{
    EXPECT_EQ(Encoded("Cat", "600", "cat.txt"), "begin 600 cat.txt\r\n#0V%T\r\n`\r\nend\r\n");
    EXPECT_EQ(Encoded(std::string("\0\0\0\0", 4)), "begin 644 dummy\r\n$````````\r\n`\r\nend\r\n");
    EXPECT_EQ(Encoded(std::string(46, '\xFF')),
              "begin 644 dummy\r\nM" + std::string(60, '_') + "\r\n!_P``\r\n`\r\nend\r\n");
}

TEST(Uuencode, Decodes)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"begin 644 x\r\n#0V%T\r\n`\r\nend\r\n", 1, "Cat"},
        {"\r\n\r\nbegin 644 x\n#0V%T\n \nEND", 1, "Cat"}, // a blank ends the data, too
        {"begin 644 x\n#0V%T\n`\n", 0, "Cat"},
        {"begin 644 x\n#0V%\n`\nend", 0, ""},    // a line too short
        {"begin 644 x\n\"0V$\n`\nend", 1, "Ca"}, // as short as allowed
        {"", 1, ""},
    };
    for (const auto& [text, expected, data] : cases) {
        CBuffer out("left over");
        EXPECT_EQ(DecodeUuencode(text, nullptr, nullptr, &out), expected) << text;
        EXPECT_STREQ(out, data) << text;
    }
    CStringA mode, name;
    EXPECT_EQ(DecodeUuencode("begin 600 x\nwhatever", &mode, &name, nullptr), 1);
    EXPECT_STREQ(mode, "600");
    EXPECT_STREQ(name, "x");
}
