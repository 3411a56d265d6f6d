#include "mailtext/imap_utf7.h"
#include "platform/nls.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using tlvn::WString;

std::string Encoded(const WString& name)
{
    CBuffer out("left over");
    EncodeImap4UTF7(name.data(), static_cast<int>(name.size()), out);
    return std::string(out, static_cast<std::size_t>(out.GetLength()));
}

WString Decoded(const std::string& text)
{
    CStringW out(TW("left over"));
    EXPECT_EQ(DecodeImap4UTF7(text.data(), static_cast<int>(text.size()), out), 1);
    return WString(out, static_cast<std::size_t>(out.GetLength()));
}

} // namespace

// The first two are the examples of RFC 3501.
TEST(ImapUtf7, GoesBothWays)
{
    const struct {
        WString name;
        const char* text;
    } cases[] = {
        {TW("~peter/mail/台北/日本語"), "~peter/mail/&U,BTFw-/&ZeVnLIqe-"},
        {TW("☺!"), "&Jjo-!"},
        {TW("&"), "&-"},
        {TW("a&b"), "a&-b"},
        {TW("送信済"), "&kAFP4W4I-"},
        {TW("\u00E9\u00E9"), "&AOkA6Q-"},
        {TW("\t~"), "&AAk-~"}, // outside 20-7E
        {TW("\x7F"), "&AH8-"},
        {TW("\U0001F600"), "&2D3eAA-"},
        {WString(1, 0), "&AAA-"},
        {TW(""), ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Encoded(c.name), c.text);
        EXPECT_EQ(Decoded(c.text), c.name) << c.text;
    }
}

TEST(ImapUtf7, DecodesWhatIsBroken)
{
    const struct {
        std::string text;
        WString name;
    } cases[] = {
        {"abc&", TW("abc")},              // "&" as the last byte
        {"&AOk", TW("\u00E9")},           // no "-"
        {"&AOk!x-b", TW("\u00E9b")},      // the rest of the run is left out
        {"&AOkA-b", TW("\u00E9b")},       // two bytes and a half
        {"&AO/k-", TW("")},               // "/" is not of this alphabet
        {"\xE9\x80", TW("\u00E9\u0080")}, // bytes that have no business there
        {"&AOk-&AOk-", TW("\u00E9\u00E9")},
        {"&&-", TW("")},
        {{"a\0b", 3}, WString(TW("a\0b"), 3)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Decoded(c.text), c.name) << c.text;
    CStringW out(TW("left over"));
    EXPECT_EQ(DecodeImap4UTF7(nullptr, 3, out), 1);
    EXPECT_TRUE(out.IsEmpty());
    EXPECT_EQ(DecodeImap4UTF7("abc", -1, out), 1);
    EXPECT_TRUE(out.IsEmpty());
}

TEST(ImapBase64, StopsAtTheFirstOtherByte)
{
    const struct {
        const char* text;
        WString units;
    } cases[] = {
        {"U,BTFw", TW("台北")}, {"U,BTFw==", TW("台北")},
        {"U,B TFw", TW("台")}, // nothing is skipped
        {"U/BTFw", TW("")},     {"U", TW("")},
        {"U,", TW("")}, // a byte is no unit
    };
    CStringW out;
    for (const auto& c : cases) {
        EXPECT_EQ(DecodeImap4Base64(c.text, out), 1);
        EXPECT_EQ(WString(out, static_cast<std::size_t>(out.GetLength())), c.units) << c.text;
    }
    EXPECT_EQ(DecodeImap4Base64(nullptr, out), 1);
    EXPECT_TRUE(out.IsEmpty());
    CBuffer text("left over");
    EncodeImap4Base64(TW("台北"), 2, text);
    EXPECT_STREQ(text, "U,BTFw");
    EncodeImap4Base64(TW("台北"), 0, text);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(ImapUtf7, BringsEveryNameBack)
{
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        WString name;
        for (auto n = random() % 40; n > 0; --n)
            name += static_cast<WCHAR>(random() % 3 == 0 ? random() % 0x80 : random());
        const std::string text = Encoded(name);
        ASSERT_EQ(Decoded(text), name);
        for (const char c : text)
            ASSERT_TRUE(c >= 0x20 && c <= 0x7E);
    }
}
