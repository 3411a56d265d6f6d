#include "mailtext/transfer_encoding.h"

#include <gtest/gtest.h>

#include <string>

TEST(TransferEncoding, ChoosesTheHeaderDecoderByName)
{
    const struct {
        const char* encoding;
        const char* text;
        int expected;
        const char* data;
    } cases[] = {
        {"b", "YWJj", 1, "abc"},    {"B", "YWJj", 1, "abc"},
        {"q", "a_b=3D", 1, "a_b="}, // "_" is the caller's affair
        {"base64", "YWJj", 0, ""},  {"", "YWJj", 0, ""},
        {nullptr, "YWJj", 0, ""},
    };
    for (const auto& c : cases) {
        CBuffer out("left over");
        EXPECT_EQ(DecodeHeaderText(c.encoding, c.text, out), c.expected);
        EXPECT_STREQ(out, c.data);
    }
}

TEST(TransferEncoding, ChoosesTheBodyEncoderByName)
{
    const std::string line(57, 'a');
    const std::string encodedLine = "YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh"
                                    "YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh\r\n";
    const struct {
        const char* encoding;
        std::string data;
        int keepLineBreaks;
        std::string text;
    } cases[] = {
        {"Base64", line + "a", 1, encodedLine + "YQ==\r\n"},
        {"Quoted-Printable", "=\r\n", 1, "=3D\r\n"},
        {"quoted-printable", "=\r\n", 0, "=3D=0D=0A"},
        {"x-uuencode", "Cat", 1, "begin 644 dummy\r\n#0V%T\r\n`\r\nend\r\n"},
        {"8bit", "\xE9\r\n", 1, "\xE9\r\n"},
        {nullptr, "abc", 1, "abc"},
    };
    for (const auto& c : cases) {
        CBuffer out("left over");
        EncodeBody(c.encoding, reinterpret_cast<const unsigned char*>(c.data.data()),
                   static_cast<int>(c.data.size()), c.keepLineBreaks, out);
        EXPECT_EQ(std::string(out, static_cast<std::size_t>(out.GetLength())), c.text);
    }
}
