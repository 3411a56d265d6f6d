#include "mailtext/imap_utf7.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/transfer_encoding.h"
#include "mailtext/uuencode.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <tuple>

namespace {

std::string View(const CBuffer& buffer)
{
    return std::string(buffer, static_cast<std::size_t>(buffer.GetLength()));
}

} // namespace

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
    const std::string line(57, '\0'), encodedLine = std::string(76, 'A') + "\r\n";
    const std::tuple<const char*, std::string, int, std::string> cases[] = {
        {"Base64", line + "a", 1, encodedLine + "YQ==\r\n"},
        {"Quoted-Printable", "=\r\n", 1, "=3D\r\n"},
        {"quoted-printable", "=\r\n", 0, "=3D=0D=0A"},
        {"x-uuencode", "Cat", 1, "begin 644 dummy\r\n#0V%T\r\n`\r\nend\r\n"},
        {"8bit", "\xE9\r\n", 1, "\xE9\r\n"},
    };
    for (const auto& [encoding, body, keepLineBreaks, text] : cases) {
        CBuffer out("left over");
        EncodeBody(encoding, reinterpret_cast<const unsigned char*>(body.data()),
                   static_cast<int>(body.size()), keepLineBreaks, out);
        EXPECT_EQ(View(out), text);
    }
}

// Any bytes come back from each encoding, whose lines are not too long. Some texts are nothing but
// escapes: the storage is computed ahead.
TEST(TransferEncoding, RandomDataSurvivesTheRoundTrip)
{
    const std::string kinds[] = {"", "\xE9", "a \t\r\n=\xFF"};
    std::mt19937 random(5);
    for (unsigned round = 0; round < 3000; ++round) {
        std::string data;
        const std::string& kind = kinds[round % 3];
        for (auto n = random() % 300; n > 0; --n)
            data += kind.empty() ? static_cast<char>(random()) : kind[random() % kind.size()];
        const auto* const bytes = reinterpret_cast<const unsigned char*>(data.data());
        const int length = static_cast<int>(data.size());
        CBuffer text, back;
        EncodeQuotedPrintable(bytes, length, 0, text);
        DecodeQuotedPrintable(text, back);
        ASSERT_EQ(View(back), data);
        std::istringstream lines(View(text));
        for (std::string line; std::getline(lines, line);)
            ASSERT_LE(line.size(), 77u); // with its CR
        EncodeUuencode(nullptr, nullptr, bytes, length, text);
        ASSERT_EQ(DecodeUuencode(text, nullptr, nullptr, &back), 1);
        ASSERT_EQ(View(back), data);

        tlvn::WString name(data.begin(), data.end());
        for (WCHAR& unit : name)
            unit = random() % 3 == 0 ? static_cast<WCHAR>(random()) : unit & 0x7F;
        EncodeImap4UTF7(name.data(), length, text);
        CStringW nameBack;
        DecodeImap4UTF7(text, text.GetLength(), nameBack);
        ASSERT_EQ(nameBack, CStringW(name.data(), length));
    }
}
