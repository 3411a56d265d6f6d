#include "mailtext/binhex.h"

#include "mailtext/base64.h"
#include "tests/support/test.h"

namespace {

const std::string kTitle = "(This file must be converted with BinHex 4.0)";
const std::string kAlphabet = "!\"#$%&'()*+,-012345689@ABCDEFGHIJKLMNPQRSTUVXYZ[`abcdefhijklmpqr";

// A file as it is before packing. The checksums are wrong: nobody looks.
std::string File(const std::string& name, const std::string& data, const std::string& resource,
                 std::size_t statedLength)
{
    const auto number = [](std::size_t n) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(n >> shift);
        return bytes;
    };
    return static_cast<char>(name.size()) + name + std::string(1, '\0') + "TEXTttxt" + "\1\2" +
           number(statedLength) + number(resource.size()) + "HC" + data + "DC" + resource + "RC";
}

// The same as Base64, but for the alphabet.
std::string Armoured(const std::string& bytes)
{
    static const std::string kBase64 =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text = Output([&](CBuffer& out) {
        EncodeBase64(Unsigned(bytes), static_cast<int>(bytes.size()), 64, out);
    });
    std::erase(text, '=');
    for (char& c : text)
        c = c < ' ' ? c : kAlphabet[kBase64.find(c)];
    return ":" + text + ":";
}

std::string Decoded(const std::string& text, int expected = 1)
{
    return Output([&](CBuffer& out) { EXPECT_EQ(DecodeBinHex(text.c_str(), out), expected); });
}

} // namespace

TEST(BinHex, NeedsTheTitleAndTwoColons)
{
    const std::string block = Armoured(File("n", "data", "resource", 4));
    EXPECT_EQ(Decoded("(this FILE must be converted with binhex 4.0)" + block), "data");
    EXPECT_EQ(Decoded("a:b:c " + kTitle + block), "data"); // colons before the title
    EXPECT_EQ(Decoded(block, 0), "");
    EXPECT_EQ(Decoded(kTitle + block.substr(0, block.size() - 1), 0), "");
    EXPECT_EQ(Output([](CBuffer& out) { EXPECT_EQ(DecodeBinHex(nullptr, out), 1); }), "");
}

// Lengths that lie, markers in odd places, blocks without so much as a header.
TEST(BinHex, TakesWhatIsThere)
{
    std::string all; // over several lines, and without the marker of runs
    for (int c = 0; c < 0x80; ++c)
        all += static_cast<char>(c);
    const std::string header = File("", "", "", 1000).substr(0, 22);
    const std::pair<std::string, std::string> cases[] = {
        {File("n", "abc", "", 2), "ab"},
        {File("name", all, "resource", all.size()), all},
        {File("", "", "", 0xFFFFFFFF).substr(0, 22) + "abc", "abc"},
        {header + "a\x90\x03z", "aaaz"},
        {header + std::string("a\x90\0\x90\x03", 5), "a\x90\x90\x90"},
        {header + "a\x90\x02\x90\x03", "aaaa"}, // a run goes on
        {header + "a\x90", "a\x90"},            // as the last byte
        // As the first byte it is the length of the name, and what follows the name.
        {"\x90" + std::string(143 + 22, '\2').replace(155, 4, std::string("\0\0\0\3", 4)) + "abcd",
         "abc"},
        {header.substr(0, 21), ""},
    };
    for (const auto& [packed, data] : cases)
        EXPECT_EQ(Decoded(kTitle + "\n" + Armoured(packed)), data);
    const std::string one = kTitle + Armoured(header + "abc\xFF");
    // A character too few leaves the last byte incomplete; one outside the alphabet is skipped.
    EXPECT_EQ(Decoded(one.substr(0, one.size() - 4) + "\x01:"), "abc");
}
