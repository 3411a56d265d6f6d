#include "mailtext/address.h"
#include "mailtext/address_check.h"
#include "mailtext/address_trim.h"
#include "platform/nls.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

TEST(Address, Splits)
{
    const struct {
        const char* text;
        const char* address;
        const char* name;
        int result = 1;
    } cases[] = {
        {"", "", ""},
        {"  ken@example.jp ", "ken@example.jp", ""},
        {"Sato", "", "Sato"},
        {"\"Sato, Ken\" <ken@example.jp>", "ken@example.jp", "Sato, Ken"},
        {"Sato < ken@example.jp >", "ken@example.jp", "Sato"},
        {"a <b> <c@d>", "c@d", "a <b>"},                // the last "<" counts
        {"\"a\\\"b\\\\\" <c@d>", "c@d", "a\"b\\"},      // unescaped
        {"a\\\"b <c@d>", "c@d", "a\\\"b"},              // only when it is quoted
        {"\"a <c@d>", "c@d", "a"},                      // a quote without its partner
        {"\"x < y\" <c@d> (z)", "c@d", "x < y\"  (z)"}, // "<" in quotes is none; joined
        {"a <c@d> b", "c@d", "a  b"},                   // as they stand
        {"a <c@d", "c@d", "a"},
        {"ken@example.jp (Sato Ken)", "ken@example.jp", "Sato Ken"},
        {"(a (b) c) d@e", "(a  d@e", "b) c"},
        {"%(name)", "%(name)", ""},
        {"%()", "%", ""},                   // too short for a placeholder
        {"\"Sato@home\"", "", "Sato@home"}, // in quotes it is a name
        {"\"Sato@home", "\"Sato@home", ""},
        {"\"Sato", "", "Sato"},
        {"\"", "", ""},
        {"a\x81\x40", "", "a\x81\x40"}, // a trail byte is no "@"
        {"a \"b <c", "", "a \"b <c", 0},
        {"a (b", "", "a (b", 0},
        {"a <b \"c", "", "a <b \"c", 0},
    };
    for (const auto& c : cases) {
        CString address("left over"), name("left over"), message("left over");
        EXPECT_EQ(SplitMailAddr(c.text, address, name, message), c.result) << c.text;
        EXPECT_EQ(address, c.address) << c.text;
        EXPECT_EQ(name, c.name) << c.text;
        EXPECT_EQ(message.IsEmpty(), c.result != 0) << c.text;
    }
    CString address("left over"), name, message;
    EXPECT_EQ(SplitMailAddr(nullptr, address, name, message), 1);
    EXPECT_TRUE(address.IsEmpty());
}

TEST(Address, IsPutTogether)
{
    const struct {
        const char* address;
        const char* name;
        int quote;
        const char* text;
    } cases[] = {
        {"a@b", "Sato, K.", 1, "\"Sato, K.\" <a@b>"},
        {"a@b", "Sato, K.", 0, "Sato, K. <a@b>"},
        {"a@b", "Sato", 1, "Sato <a@b>"},
        {"a@b", "", 1, "a@b"},
        {"a@b", nullptr, 0, "a@b"},
        {"a@b", "\"Sato\"", 1, "Sato <a@b>"}, // quotes come off
        {"a@b", "\"Sato\"", 0, "\"Sato\" <a@b>"},
        {"a@b", "\"S,\"", 1, "\"S,\" <a@b>"},
        {"a@b", "\"\"", 1, "\"\\\"\\\"\" <a@b>"},         // too short to be wrapped
        {"a@b", "\"a\\\"", 1, "\"\\\"a\\\\\\\"\" <a@b>"}, // the closing quote is escaped
        {"a@b", "\"\x83\x5C\"", 1, "\x83\x5C <a@b>"},     // no backslash before it
        {"a@b", "a\\b", 1, "\"a\\\\b\" <a@b>"},
        {"a@b", "\x83\x5C\x81\x40", 1, "\x83\x5C\x81\x40 <a@b>"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(MakeAddress(c.address, c.name, c.quote), c.text);
    EXPECT_EQ(MakeAddress2("", "Sato, K.", 1), "Sato, K.");
    EXPECT_EQ(MakeAddress2(nullptr, "Sato", 1), "Sato");
    EXPECT_EQ(MakeAddress2("a@b", "Sato", 1), "Sato <a@b>");
    EXPECT_EQ(CustomizeAddress("Sato <a@b>", "c@d", nullptr, 1), "Sato <c@d>");
    EXPECT_EQ(CustomizeAddress("Sato <a@b>", nullptr, "K.", 1), "\"K.\" <a@b>");
    EXPECT_EQ(CustomizeAddress("Sato <a@b>", nullptr, "", 1), "a@b");
    EXPECT_EQ(CustomizeAddress("a (b", "c@d", nullptr, 1), "a (b");
}

// What is put together comes apart again, with or without need for quotes.
TEST(Address, NamesComeBack)
{
    const char* const pieces[] = {"a", " b", "\"", "\\", ",", "(", ")", "<", ">", "@", "\x83\x5C"};
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        std::string plain = "x";
        for (auto n = random() % 8; n > 0; --n)
            plain += pieces[random() % std::size(pieces)];
        CString address, name, message;
        ASSERT_EQ(SplitMailAddr(MakeAddress("c@d.e", plain.c_str(), 1), address, name, message), 1);
        ASSERT_EQ(address, "c@d.e");
        ASSERT_EQ(name, plain.c_str());
    }
}

TEST(Address, LosesItsWrapping)
{
    const char* const quotes[][2] = {{" \"a\" ", "a"}, {"\"a", "a"},           {"a\"", "a"},
                                     {"\"", ""},       {"\"\"a\"\"", "\"a\""}, {" ", ""}};
    for (const auto& q : quotes) {
        CString text(q[0]);
        ExcludeQuote(text);
        EXPECT_EQ(text, q[1]);
        CStringW wide(q[0]);
        ExcludeQuote(wide);
        EXPECT_EQ(wide, CStringW(q[1]));
    }
    const char* const brackets[][2] = {{" <a> ", "a"}, {"<a", "a"}, {"a>", "a"}, {">a<", ">a<"}};
    for (const auto& b : brackets) {
        CString text(b[0]);
        ExcludeAngleBracket(text);
        EXPECT_EQ(text, b[1]);
        CStringW wide(b[0]);
        ExcludeAngleBracket(wide);
        EXPECT_EQ(wide, CStringW(b[1]));
    }
    const char* const identifiers[][2] = {
        {"<a@b> <c@d> x", "c@d"}, {"<a> <b", "<a> <b"}, {" a> ", "a>"}, {"<>", ""}};
    for (const auto& i : identifiers) {
        CString text(i[0]);
        ExtractLastMessageID(text);
        EXPECT_EQ(text, i[1]);
    }
}

TEST(AddressCheck, NamesTheFirstFault)
{
    using Check = int (*)(const char*, CString&);
    const Check server = [](const char* s, CString& m) { return CheckServerName(s, 0, m); };
    const Check optionalServer = [](const char* s, CString& m) { return CheckServerName(s, 1, m); };
    const struct {
        Check check;
        const char* text;
        int result;
        const char16_t* message;
    } cases[] = {
        {CheckEMailAddress, "a@b", 0, u""},
        {CheckEMailAddress, "", -1, u"メールアドレスが入力されていません。"},
        {CheckEMailAddress, nullptr, -1, u"メールアドレスが入力されていません。"},
        {CheckEMailAddress, "a(", 1, u"メールアドレスに「@」が含まれていません。"},
        {CheckEMailAddress, "\x81\x40", 1, u"メールアドレスに「@」が含まれていません。"},
        {CheckEMailAddress, "a@(\x82\xA0", 2,
         u"メールアドレスに使用できない文字「()<>;\"￥」が含まれています。"},
        // The trail byte 5C of a double-byte character is no backslash.
        {CheckEMailAddress, "a@\x83\x5C\xB1", 3,
         u"メールアドレスに日本語などの２バイト文字が含まれています。"},
        {CheckEMailAddress, "a@\xB1", 3, u"メールアドレスに半角カタカナが含まれています。"},
        {CheckWildEMailAddress, "*.jp", 0, u""},
        {CheckWildEMailAddress, "", -1, u"メールアドレスが入力されていません。"},
        {CheckEMailName, "", 0, u""},
        {CheckEMailName, "\x87\x40\xB1", 3, u"名前に半角カタカナが含まれています。"},
        {CheckEMailName, "\x87\x40", 3, u"名前に機種依存文字が含まれています。"},
        {CheckEMailName, "\x82\xA0(", 0, u""},
        {CheckEMailOrgani, nullptr, 0, u""},
        {CheckEMailOrgani, "\xB1", 3, u"所属に半角カタカナが含まれています。"},
        {CheckEMailOrgani, "\x87\x40", 3, u"所属に機種依存文字が含まれています。"},
        {server, "", -1, u"サーバーが入力されていません。"},
        {optionalServer, "", 0, u""},
        {optionalServer, "a;\x82\xA0", 2, u"サーバーに使用できない文字が含まれています。"},
        {server, "\x82\xA0", 3, u"サーバーに日本語などの２バイト文字が含まれています。"},
        {server, "a.b", 0, u""},
        {CheckAccountName, "", -1, u"アカウント名が入力されていません。"},
        {CheckAccountName, "\x82\xA0", 3,
         u"アカウント名に日本語などの２バイト文字が含まれています。"},
        {CheckAccountName, "a(\xB1", 0, u""},
    };
    for (const auto& c : cases) {
        CString message("left over");
        EXPECT_EQ(c.check(c.text, message), c.result);
        const std::u16string wanted(c.message);
        EXPECT_EQ(message, tlvn::NarrowText(tlvn::WString(wanted.begin(), wanted.end())).c_str());
    }
}

// Each of the forbidden characters, and none besides.
TEST(AddressCheck, ForbidsSevenCharacters)
{
    for (char c = 1; c > 0 && c < 0x7F; ++c) {
        const char address[] = {'@', c, '\0'};
        CString message;
        const bool forbidden = std::string("()<>;\"\\").find(c) != std::string::npos;
        EXPECT_EQ(CheckEMailAddress(address, message), forbidden ? 2 : 0) << c;
    }
}
