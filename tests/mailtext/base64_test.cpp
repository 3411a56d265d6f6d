#include "mailtext/base64.h"
#include "platform/cpu.h"
#include "tests/support/test.h"

namespace {

std::string Decoded(const std::string& text)
{
    return Output([&](CBuffer& out) { EXPECT_EQ(DecodeBase64(text.c_str(), out), 1); });
}

std::string Encoded(const std::string& data, int lineLen)
{
    return Output([&](CBuffer& out) {
        EncodeBase64(Unsigned(data), static_cast<int>(data.size()), lineLen, out);
    });
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
    EXPECT_EQ(Output([](CBuffer& out) { DecodeBase64(nullptr, out); }), "");
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
    EXPECT_EQ(Output([](CBuffer& out) { EncodeBase64(nullptr, 3, 0, out); }), "");
    CBuffer out;
    EXPECT_THROW(EncodeBase64(Unsigned(""), INT_MAX, 0, out), CMemoryException*);
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
        ASSERT_EQ(Decoded(groups), data);
        std::string lines = Encoded(data, 1 + static_cast<int>(Below(random, 80)));
        std::erase_if(lines, [](char c) { return c == '\r' || c == '\n'; });
        ASSERT_EQ(lines, groups);
        for (const char c : groups)
            strewn.append(Below(random, 20) == 0 ? 1 : 0, "-. \xFF"[Below(random, 4)]) += c;
        ASSERT_EQ(Decoded(strewn), data);

        // A changed character, or an early end, changes its own group only.
        if (groups.size() < 8)
            continue;
        const std::size_t place = Below(random, groups.size() - 4);
        std::string changed = groups;
        changed[place] = "=A/"[Below(random, 3)];
        back.clear();
        for (std::size_t i = 0; i < changed.size(); i += 4) {
            back += Decoded(changed.substr(i, 4));
            if (changed[i + 2] == '=' || changed[i + 3] == '=')
                break;
        }
        ASSERT_EQ(Decoded(changed), back) << changed;
    }
}

TEST(Base64, EveryCharacterHasItsValue)
{
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    EXPECT_EQ(Encoded(Decoded(alphabet), 0), alphabet);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        EXPECT_EQ(Decoded(std::string("AAA") + alphabet[i])[2], static_cast<char>(i));
}

TEST(Base64, IsExtracted)
{
    const std::pair<std::string, std::string> cases[] = {
        {"<YWJj> ZGVm", "YWJj"},
        {"==YQ===", "YQ==="},         // "=" does not begin a run, but all of them end it
        {{"-a\0b-", 5}, {"a\0b", 3}}, // a zero byte belongs to the alphabet
    };
    const auto extracted = [](const char* text, std::size_t len) {
        return Output([&](CBuffer& out) { ExtractBase64Text(text, static_cast<int>(len), out); });
    };
    for (const auto& [text, run] : cases)
        EXPECT_EQ(extracted(text.data(), text.size()), run);
    EXPECT_EQ(extracted(nullptr, 2), "");
}
