// The short transfer encodings, and the choice between all of them. That what is encoded comes
// back, in lines that are not too long, is the fuzz target's affair.

#include "mailtext/transfer_encoding.h"

#include "mailtext/base64.h"
#include "mailtext/hex.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/uuencode.h"
#include "tests/support/test.h"

TEST(TransferEncoding, ChoosesTheHeaderDecoderByName)
{
    const std::tuple<const char*, const char*, int, const char*> cases[] = {
        {"B", "YWJj", 1, "abc"},
        {"q", "a_b=3D", 1, "a_b="}, // "_" is the caller's affair
        {"base64", "YWJj", 0, ""},
        {nullptr, "YWJj", 0, ""},
    };
    for (const auto& [encoding, text, expected, data] : cases) {
        CBuffer out("left over");
        EXPECT_EQ(DecodeHeaderText(encoding, text, out), expected);
        EXPECT_STREQ(out, data);
    }
}

TEST(TransferEncoding, ChoosesTheBodyEncoderByName)
{
    const std::string begin = "begin 644 dummy\r\n", end = "`\r\nend\r\n";
    const std::tuple<const char*, std::string, int, std::string> cases[] = {
        {"Base64", std::string(57, '\0') + "a", 1, std::string(76, 'A') + "\r\nYQ==\r\n"},
        {"8bit", "\xE9\r\n", 1, "\xE9\r\n"},
        {"x-uuencode", "Cat", 1, begin + "#0V%T\r\n" + end},
        {"x-uuencode", std::string(4, '\0'), 1, begin + "$````````\r\n" + end},
        {"x-uuencode", std::string(46, '\xFF'), 1,
         begin + "M" + std::string(60, '_') + "\r\n!_P``\r\n" + end},
        {"Quoted-Printable", "a b \r\n", 1, "a b=20\r\n"},
        {"quoted-printable", "a\rb\nc\r\n", 1, "a\r\nb\r\nc\r\n"},
        {"quoted-printable", "a \r\n", 0, "a=20=0D=0A"},
        {"quoted-printable", "=\x7F\x80\xFF", 1, "=3D=7F=80=FF"},
        {"quoted-printable", std::string(1, '\0'), 1, "=00"},
        {"quoted-printable", std::string(80, 'a'), 1, std::string(75, 'a') + "=\r\naaaaa"},
        {"quoted-printable", std::string(73, 'a') + "\xE9", 1, std::string(73, 'a') + "=\r\n=E9"},
        {"quoted-printable", std::string(72, 'a') + "\xE9", 1, std::string(72, 'a') + "=E9"},
        {"quoted-printable", std::string(75, 'a') + "\r\n" + std::string(75, 'b'), 1,
         std::string(75, 'a') + "\r\n" + std::string(75, 'b')},
    };
    for (const auto& [encoding, body, keepLineBreaks, text] : cases) {
        CBuffer out("left over");
        EncodeBody(encoding, Unsigned(body), static_cast<int>(body.size()), keepLineBreaks, out);
        EXPECT_EQ(Text(out), text);
    }
}

TEST(QuotedPrintable, Decodes)
{
    const std::pair<const char*, const char*> cases[] = {
        {"a=\nb=\rc=", "abc"},  {"a= \t\r\nb", "ab"}, // white space behind the "="
        {"a=4x", "a=4x"},       {"=e9=C3", "\xE9\xC3"}, {"a \t\r\nb  \nc  ", "a\r\nb\nc"},
        {"a=20\r\n", "a \r\n"}, // an escaped blank stays
    };
    for (const auto& [text, data] : cases)
        EXPECT_EQ(Output([&](CBuffer& out) { DecodeQuotedPrintable(text, out); }), data) << text;
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
    const std::string encoded =
        Output([](CBuffer& out) { EncodeUuencode("600", "cat.txt", nullptr, 0, out); });
    EXPECT_EQ(encoded, "begin 600 cat.txt\r\n`\r\nend\r\n");
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

TEST(Hex, DecodesEscapesAndNothingElse)
{
    const std::pair<const char*, std::string> cases[] = {
        {"a%20b+", "a b+"},
        {"%%41", "%A"}, // the first "%" is none
        {"%4%41", "%4A"},
        {"%4g%4:%4@%4G%4/", "%4g%4:%4@%4G%4/"},
        {"%4f%4F%4a%4A%49%40", "OOJJI@"},
        {"%", "%"},
        {"a%00b", {"a\0b", 3}},
        {nullptr, ""},
    };
    for (const auto& [text, data] : cases)
        EXPECT_EQ(Output([&](CBuffer& out) { DecodeHex(text, out); }), data) << data;
}

TEST(Hex, Encodes)
{
    CBuffer out("left over");
    EXPECT_STREQ(EncodeHex("a b~\x83\x5C", 0, out), "a%20b%7E%83%5C");
    EXPECT_STREQ(EncodeHex("aZ0", 1, out), "%61%5A%30");
    EXPECT_STREQ(EncodeUrlEncode("a b+-._~\xFF", out), "a+b%2B-._%7E%FF");
}
