#include "mailtext/base64.h"
#include "platform/cpu.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>

namespace {

std::string Decoded(const char* text)
{
    CBuffer out("left over");
    EXPECT_EQ(DecodeBase64(text, out), 1);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

std::string Encoded(const std::string& data, int lineLen)
{
    CBuffer out("left over");
    EncodeBase64(reinterpret_cast<const unsigned char*>(data.data()), static_cast<int>(data.size()),
                 lineLen, out);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

// The rules, bit by bit and character by character.

const std::string kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string SlowDecoded(const std::string& text)
{
    std::string out, group;
    for (const char c : text) {
        if (c != '=' && kAlphabet.find(c) == std::string::npos)
            continue;
        group += c;
        if (group.size() < 4)
            continue;
        unsigned bits = 0;
        for (const char g : group)
            bits = bits << 6 | (g == '=' ? 0 : static_cast<unsigned>(kAlphabet.find(g)));
        out += static_cast<char>(bits >> 16);
        if (group[2] == '=')
            return out;
        out += static_cast<char>(bits >> 8);
        if (group[3] == '=')
            return out;
        out += static_cast<char>(bits);
        group.clear();
    }
    return out;
}

std::string SlowEncoded(const std::string& data, int lineLen)
{
    std::string characters;
    for (std::size_t i = 0; i < data.size(); i += 3) {
        std::string group = data.substr(i, 3);
        const std::size_t missing = 3 - group.size();
        group.resize(3);
        for (std::size_t place = 0; place < 4; ++place) {
            unsigned value = 0;
            for (std::size_t bit = place * 6; bit < place * 6 + 6; ++bit)
                value = value << 1 | (static_cast<BYTE>(group[bit / 8]) >> (7 - bit % 8) & 1);
            characters += place >= 4 - missing ? '=' : kAlphabet[value];
        }
    }
    if (lineLen <= 0)
        return characters;
    std::string out;
    for (std::size_t i = 0; i < characters.size(); i += static_cast<std::size_t>(lineLen))
        out += characters.substr(i, static_cast<std::size_t>(lineLen)) + "\r\n";
    return out;
}

unsigned Below(std::mt19937& random, unsigned limit)
{
    return static_cast<unsigned>(random() % limit);
}

void CompareWithSlowRules()
{
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::string data;
        for (unsigned n = Below(random, 200); n > 0; --n)
            data += static_cast<char>(random());
        const int lineLen = static_cast<int>(Below(random, 81));
        std::string text = Encoded(data, lineLen);
        ASSERT_EQ(text, SlowEncoded(data, lineLen));
        ASSERT_EQ(Decoded(text.c_str()), data);
        for (unsigned n = Below(random, 4); n > 0 && !text.empty(); --n)
            text[Below(random, static_cast<unsigned>(text.size()))] = "=-A \xFF"[Below(random, 5)];
        ASSERT_EQ(Decoded(text.c_str()), SlowDecoded(text)) << text;
    }
}

} // namespace

TEST(Base64, DecodesAndStopsWhereItShould)
{
    const struct {
        const char* text;
        std::string data;
    } cases[] = {
        {"YWJj", "abc"},
        {"YQ==", "a"},
        {"YWI=", "ab"},
        {"YQ==Zm9v", "a"}, // what follows padding is ignored
        {"YWJjZG", "abc"}, // an incomplete group is dropped
        {"YWJjZA=", "abc"},
        {"Y-W\r\nJ j\xFF", "abc"},     // bytes outside are skipped
        {"YW=j", "a"},                 // "=" in the third place ends it
        {"=WJj", {"\x01\x62\x63", 3}}, // in the first it counts as 0
        {"Y=Jj", {"\x60\x02\x63", 3}},
        {"", ""},
        {"\r\n", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Decoded(c.text), c.data) << c.text;
    EXPECT_EQ(Decoded(nullptr), "");
}

TEST(Base64, BreaksLines)
{
    const struct {
        const char* data;
        int lineLen;
        const char* text;
    } cases[] = {
        {"abc", 0, "YWJj"},
        {"abc", -1, "YWJj"},
        {"abc", 4, "YWJj\r\n"}, // not two line ends
        {"abcd", 4, "YWJj\r\nZA==\r\n"},
        {"abcd", 100, "YWJjZA==\r\n"},
        {"abcd", 7, "YWJjZA=\r\n=\r\n"}, // padding counts
        {"abc", 1, "Y\r\nW\r\nJ\r\nj\r\n"},
        {"abc", INT_MAX, "YWJj\r\n"},
        {"abc", INT_MAX - 3, "YWJj\r\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Encoded(c.data, c.lineLen), c.text) << c.lineLen;
    CBuffer out("left over");
    EncodeBase64(nullptr, 3, 0, out);
    EXPECT_TRUE(out.IsEmpty());
    EXPECT_EQ(Encoded("", 76), "");
    try {
        EncodeBase64(reinterpret_cast<const unsigned char*>(""), INT_MAX, 0, out);
        ADD_FAILURE();
    } catch (CMemoryException* e) {
        e->Delete();
    }
}

// With the processor's widest instructions and without.
TEST(Base64, EqualsTheSlowRules)
{
    for (const bool avx2 : {false, true}) {
        tlvn::AllowAvx2(avx2);
        CompareWithSlowRules();
    }
}

TEST(Base64, PassesTheVectorsOfTheStandard)
{
    const char* const vectors[][2] = {{"", ""},
                                      {"f", "Zg=="},
                                      {"fo", "Zm8="},
                                      {"foo", "Zm9v"},
                                      {"foob", "Zm9vYg=="},
                                      {"fooba", "Zm9vYmE="},
                                      {"foobar", "Zm9vYmFy"}};
    for (const auto& v : vectors) {
        EXPECT_EQ(Encoded(v[0], 0), v[1]);
        EXPECT_EQ(Decoded(v[1]), v[0]);
    }
}

TEST(Base64, IsExtracted)
{
    const struct {
        std::string text;
        std::string run;
    } cases[] = {
        {"<YWJj> ZGVm", "YWJj"},
        {"  YQ==Zm9v", "YQ=="},
        {"==YQ===", "YQ==="}, // "=" does not begin a run, but all of them end it
        {"YW\r\nJj", "YW"},
        {{"-a\0b-", 5}, {"a\0b", 3}}, // a zero byte belongs to the alphabet
        {{"-\0=", 3}, {"\0=", 2}},
        {"-\xFF*", ""},
    };
    for (const auto& c : cases) {
        CBuffer out("left over");
        ExtractBase64Text(c.text.data(), static_cast<int>(c.text.size()), out);
        EXPECT_EQ(std::string(out, static_cast<std::size_t>(out.GetLength())), c.run);
    }
    CBuffer out("left over");
    ExtractBase64Text("YWJj", 2, out);
    EXPECT_STREQ(out, "YW");
    ExtractBase64Text(nullptr, 2, out);
    EXPECT_TRUE(out.IsEmpty());
}
