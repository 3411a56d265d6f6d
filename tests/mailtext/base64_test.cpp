#include "mailtext/base64.h"
#include "platform/cpu.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <tuple>

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

unsigned Below(std::mt19937& random, unsigned limit)
{
    return static_cast<unsigned>(random() % limit);
}

} // namespace

TEST(Base64, DecodesAndStopsWhereItShould)
{
    const std::pair<const char*, std::string> cases[] = {
        {"YQ==Zm9v", "a"},             // what follows padding is ignored
        {"Y-W\r\nJ j\xFF", "abc"},     // bytes outside are skipped
        {"YW=j", "a"},                 // "=" in the third place ends it
        {"=WJj", {"\x01\x62\x63", 3}}, // in the first it counts as 0
        {"Y=Jj", {"\x60\x02\x63", 3}},
    };
    for (const auto& [text, data] : cases)
        EXPECT_EQ(Decoded(text), data) << text;
    EXPECT_EQ(Decoded(nullptr), "");
}

TEST(Base64, BreaksLines)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"abc", 0, "YWJj"},
        {"abc", 4, "YWJj\r\n"},          // not two line ends
        {"abcd", 7, "YWJjZA=\r\n=\r\n"}, // padding counts
        {"abc", INT_MAX - 3, "YWJj\r\n"},
    };
    for (const auto& [data, lineLen, text] : cases)
        EXPECT_EQ(Encoded(data, lineLen), text) << lineLen;
    CBuffer out("left over");
    EncodeBase64(nullptr, 3, 0, out);
    EXPECT_TRUE(out.IsEmpty());
    EXPECT_THROW(EncodeBase64(reinterpret_cast<const unsigned char*>(""), INT_MAX, 0, out),
                 CMemoryException*);
}

// With the processor's widest instructions and without: what is encoded in one run is what is
// encoded group by group, and decodes so, whatever bytes stand between.
TEST(Base64, RunsEqualTheirGroups)
{
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        tlvn::AllowAvx2(round % 2 != 0);
        std::string data, groups, strewn, back;
        for (unsigned n = Below(random, 200); n > 0; --n)
            data += static_cast<char>(random());
        for (std::size_t i = 0; i < data.size(); i += 3)
            groups += Encoded(data.substr(i, 3), 0);
        ASSERT_EQ(Encoded(data, 0), groups);
        ASSERT_EQ(Decoded(groups.c_str()), data);
        const std::string lines = Encoded(data, 1 + static_cast<int>(Below(random, 80)));
        ASSERT_EQ(Decoded(lines.c_str()), data);
        std::erase_if(back = lines, [](char c) { return c == '\r' || c == '\n'; });
        ASSERT_EQ(back, groups);
        for (const char c : groups)
            strewn.append(Below(random, 20) == 0 ? 1 : 0, "-. \xFF"[Below(random, 4)]) += c;
        ASSERT_EQ(Decoded(strewn.c_str()), data);

        // A changed character, or an early end, changes its own group only.
        if (groups.size() < 8)
            continue;
        const std::size_t place = Below(random, static_cast<unsigned>(groups.size() - 4));
        std::string changed = groups;
        changed[place] = "=A/"[Below(random, 3)];
        back.clear();
        for (std::size_t i = 0; i < changed.size(); i += 4) {
            back += Decoded(changed.substr(i, 4).c_str());
            if (changed[i + 2] == '=' || changed[i + 3] == '=')
                break;
        }
        ASSERT_EQ(Decoded(changed.c_str()), back) << changed;
    }
}

TEST(Base64, EveryCharacterHasItsValue)
{
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    EXPECT_EQ(Encoded(Decoded(alphabet.c_str()), 0), alphabet);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        EXPECT_EQ(Decoded((std::string("AAA") + alphabet[i]).c_str())[2], static_cast<char>(i));
}

TEST(Base64, IsExtracted)
{
    const std::pair<std::string, std::string> cases[] = {
        {"<YWJj> ZGVm", "YWJj"},
        {"==YQ===", "YQ==="},         // "=" does not begin a run, but all of them end it
        {{"-a\0b-", 5}, {"a\0b", 3}}, // a zero byte belongs to the alphabet
    };
    for (const auto& [text, run] : cases) {
        CBuffer out("left over");
        ExtractBase64Text(text.data(), static_cast<int>(text.size()), out);
        EXPECT_EQ(std::string(out, static_cast<std::size_t>(out.GetLength())), run);
    }
    CBuffer out("left over");
    ExtractBase64Text(nullptr, 2, out);
    EXPECT_TRUE(out.IsEmpty());
}
