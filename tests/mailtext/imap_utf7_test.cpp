#include "mailtext/imap_utf7.h"
#include "platform/nls.h"
#include "tests/support/test.h"

namespace {

using tlvn::WString;

std::string Encoded(const WString& name)
{
    return Output(
        [&](CBuffer& out) { EncodeImap4UTF7(name.data(), static_cast<int>(name.size()), out); });
}

WString Decoded(const std::string& text)
{
    CStringW out(TW("left over"));
    EXPECT_EQ(DecodeImap4UTF7(text.data(), static_cast<int>(text.size()), out), 1);
    return WString(out, static_cast<std::size_t>(out.GetLength()));
}

} // namespace

// The first is an example of RFC 3501.
TEST(ImapUtf7, GoesBothWays)
{
    const std::pair<WString, const char*> cases[] = {
        {TW("~peter/mail/台北/日本語"), "~peter/mail/&U,BTFw-/&ZeVnLIqe-"},
        {TW("a&b"), "a&-b"},
        {TW("\t~"), "&AAk-~"}, // outside 20-7E
        {TW("\x7F"), "&AH8-"},
        {TW("\U0001F600"), "&2D3eAA-"},
        {WString(1, 0), "&AAA-"},
    };
    for (const auto& [name, text] : cases) {
        EXPECT_EQ(Encoded(name), text);
        EXPECT_EQ(Decoded(text), name) << text;
    }
}

TEST(ImapUtf7, DecodesWhatIsBroken)
{
    const std::pair<std::string, WString> cases[] = {
        {"abc&", TW("abc")},              // "&" as the last byte
        {"&AOk", TW("\u00E9")},           // no "-"
        {"&AOk!x-b", TW("\u00E9b")},      // the rest of the run is left out
        {"&AOkA-b", TW("\u00E9b")},       // two bytes and a half
        {"&AO/k-", TW("")},               // "/" is not of this alphabet
        {"\xE9\x80", TW("\u00E9\u0080")}, // bytes that have no business there
        {"&&-", TW("")},
        {{"a\0b", 3}, WString(TW("a\0b"), 3)},
    };
    for (const auto& [text, name] : cases)
        EXPECT_EQ(Decoded(text), name) << text;
    CStringW out(TW("left over"));
    EXPECT_EQ(DecodeImap4UTF7(nullptr, 3, out), 1);
    EXPECT_TRUE(out.IsEmpty());
}

TEST(ImapBase64, StopsAtTheFirstOtherByte)
{
    const std::pair<const char*, const WCHAR*> cases[] = {
        // Nothing is skipped, and a byte is no unit.
        {"U,BTFw", TW("台北")}, {"U,BTFw==", TW("台北")}, {"U,B TFw", TW("台")}, {"U/BTFw", TW("")},
        {"U", TW("")},          {"U,", TW("")},
    };
    CStringW out;
    for (const auto& [text, units] : cases) {
        EXPECT_EQ(DecodeImap4Base64(text, out), 1);
        EXPECT_EQ(out, units) << text;
    }
    EXPECT_EQ(DecodeImap4Base64(nullptr, out), 1);
    EXPECT_TRUE(out.IsEmpty());
}
