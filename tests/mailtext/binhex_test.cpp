#include "mailtext/binhex.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

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

std::string Packed(const std::string& bytes)
{
    std::string out;
    for (std::size_t i = 0; i < bytes.size();) {
        std::size_t count = 1;
        while (i + count < bytes.size() && bytes[i + count] == bytes[i] && count < 255)
            ++count;
        const std::string one = bytes[i] == '\x90' ? std::string("\x90\0", 2) : bytes.substr(i, 1);
        out += one;
        if (count > 3)
            out += std::string("\x90") + static_cast<char>(count);
        else
            for (std::size_t n = 1; n < count; ++n)
                out += one;
        i += count;
    }
    return out;
}

std::string Armoured(const std::string& bytes)
{
    std::string out = ":";
    for (std::size_t bit = 0; bit < bytes.size() * 8; bit += 6) {
        unsigned value = 0;
        for (std::size_t i = bit; i < bit + 6; ++i)
            value =
                value << 1 |
                (i / 8 < bytes.size() ? static_cast<BYTE>(bytes[i / 8]) >> (7 - i % 8) & 1u : 0u);
        out += kAlphabet[value];
        if (out.size() % 65 == 64)
            out += "\r\n";
    }
    return out + ":";
}

std::string Decoded(const std::string& text, int expected = 1)
{
    CBuffer out("left over");
    EXPECT_EQ(DecodeBinHex(text.c_str(), out), expected);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

std::string DecodedPacked(const std::string& packed)
{
    return Decoded(kTitle + "\n" + Armoured(packed));
}

} // namespace

TEST(BinHex, ReadsFiles)
{
    std::mt19937 random(6);
    for (int round = 0; round < 300; ++round) {
        std::string data;
        for (auto n = random() % 60; n > 0; --n)
            data += std::string(random() % 5 == 0 ? random() % 600 : 1,
                                static_cast<char>(random() % 3 == 0 ? 0x90 : random()));
        const std::string file = File("name", data, "resource", data.size());
        ASSERT_EQ(DecodedPacked(Packed(file)), data);
        ASSERT_EQ(Decoded("From: x\r\n" + kTitle + "\r\n\r\n" + Armoured(Packed(file)) + "::"),
                  data);
    }
}

TEST(BinHex, NeedsTheTitleAndTwoColons)
{
    const std::string block = Armoured(Packed(File("n", "data", "", 4)));
    EXPECT_EQ(Decoded("(this FILE must be converted with binhex 4.0)" + block), "data");
    EXPECT_EQ(Decoded("a:b:c " + kTitle + block), "data"); // colons before the title
    EXPECT_EQ(Decoded(""), "");
    EXPECT_EQ(Decoded(block, 0), "");
    EXPECT_EQ(Decoded(kTitle, 0), "");
    EXPECT_EQ(Decoded(kTitle + block.substr(0, block.size() - 1), 0), "");
    CBuffer out("left over");
    EXPECT_EQ(DecodeBinHex(nullptr, out), 1);
    EXPECT_TRUE(out.IsEmpty());
}

// Lengths that lie, markers in odd places, blocks without so much as a header.
TEST(BinHex, TakesWhatIsThere)
{
    const std::string header = File("", "", "", 1000).substr(0, 22);
    const struct {
        std::string packed;
        std::string data;
    } cases[] = {
        {File("n", "abc", "", 2), "ab"},
        {header + "abc", "abc"},
        {File("", "", "", 0xFFFFFFFF).substr(0, 22) + "abc", "abc"},
        {header + "a\x90\x03z", "aaaz"},
        {header + "a\x90\x01z", "az"}, // once in all
        {header + std::string("a\x90\0\x90\x03", 5), "a\x90\x90\x90"},
        {header + "a\x90\x02\x90\x03", "aaaa"}, // a run goes on
        {header + "a\x90", "a\x90"},            // as the last byte
        // As the first byte it is the length of the name, and what follows the name.
        {"\x90" + std::string(143 + 22, '\2').replace(155, 4, std::string("\0\0\0\3", 4)) + "abcd",
         "abc"},
        {"", ""},
        {header.substr(0, 21), ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DecodedPacked(c.packed), c.data);
    CBuffer small;
    const std::string one = kTitle + Armoured(header + "abc\xFF");
    // A character too few leaves the last byte incomplete; one outside the alphabet is skipped.
    DecodeBinHex((one.substr(0, one.size() - 2) + "\x01:").c_str(), small);
    EXPECT_STREQ(small, "abc");
}
