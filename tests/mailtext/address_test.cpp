#include "mailtext/address.h"
#include "mailtext/address_check.h"
#include "mailtext/address_trim.h"
#include "tests/support/test.h"

TEST(Address, Splits)
{
    const struct {
        const char* text;
        const char* address;
        const char* name;
        int result = 1;
    } cases[] = {
        {"  ken@example.jp ", "ken@example.jp", ""},
        {"\"Sato, Ken\" <ken@example.jp>", "ken@example.jp", "Sato, Ken"},
        {"a <b> <c@d>", "c@d", "a <b>"},                // the last "<" counts
        {"\"a\\\"b\\\\\" <c@d>", "c@d", "a\"b\\"},      // unescaped
        {"a\\\"b <c@d>", "c@d", "a\\\"b"},              // only when it is quoted
        {"\"a <c@d>", "c@d", "a"},                      // a quote without its partner
        {"\"x < y\" <c@d> (z)", "c@d", "x < y\"  (z)"}, // "<" in quotes is none; joined
        {"(a (b) c) d@e", "(a  d@e", "b) c"},
        {"%(name)", "%(name)", ""},
        {"%()", "%", ""},                   // too short for a placeholder
        {"\"Sato@home\"", "", "Sato@home"}, // in quotes it is a name
        {"\"Sato", "", "Sato"},
        {"\"", "", ""},
        {"a\x81\x40", "", "a\x81\x40"}, // a trail byte is no "@"
        {"a \"b <c", "", "a \"b <c", 0},
        {"a (b", "", "a (b", 0},
    };
    for (const auto& c : cases) {
        CString address("left over"), name("left over"), message("left over");
        EXPECT_EQ(SplitMailAddr(c.text, address, name, message), c.result) << c.text;
        EXPECT_EQ(address, c.address) << c.text;
        EXPECT_EQ(name, c.name) << c.text;
        EXPECT_EQ(message.IsEmpty(), c.result != 0) << c.text;
    }
}

TEST(Address, IsPutTogether)
{
    const std::tuple<const char*, const char*, int, const char*> cases[] = {
        {"a@b", "Sato, K.", 1, "\"Sato, K.\" <a@b>"},
        {"a@b", "Sato, K.", 0, "Sato, K. <a@b>"},
        {"a@b", "Sato", 1, "Sato <a@b>"},
        {"a@b", "\"Sato\"", 1, "Sato <a@b>"},             // quotes come off
        {"a@b", "\"\"", 1, "\"\\\"\\\"\" <a@b>"},         // too short to be wrapped
        {"a@b", "\"a\\\"", 1, "\"\\\"a\\\\\\\"\" <a@b>"}, // the closing quote is escaped
        {"a@b", "\"\x83\x5C\"", 1, "\x83\x5C <a@b>"},     // no backslash before it
    };
    for (const auto& [address, name, quote, text] : cases)
        EXPECT_EQ(MakeAddress(address, name, quote), text);
    EXPECT_EQ(MakeAddress2("", "Sato, K.", 1), "Sato, K.");
    EXPECT_EQ(CustomizeAddress("Sato <a@b>", "c@d", nullptr, 1), "Sato <c@d>");
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
    using Trim = void (*)(CString&);
    const std::tuple<Trim, const char*, const char*> cases[] = {
        {ExcludeQuote, " \"a\" ", "a"},
        {ExcludeQuote, "\"a", "a"},
        {ExcludeQuote, "\"", ""},
        {ExcludeQuote, "\"\"a\"\"", "\"a\""},
        {ExcludeAngleBracket, " <a> ", "a"},
        {ExcludeAngleBracket, ">a<", ">a<"},
        {ExtractLastMessageID, "<a@b> <c@d> x", "c@d"},
        {ExtractLastMessageID, "<a> <b", "<a> <b"},
        {ExtractLastMessageID, "<>", ""},
    };
    for (const auto& [trim, wrapped, inside] : cases) {
        CString text(wrapped);
        trim(text);
        EXPECT_EQ(text, inside) << wrapped;
    }
}

TEST(AddressCheck, NamesTheFirstFault)
{
    using Check = int (*)(const char*, CString&);
    const Check server = [](const char* s, CString& m) { return CheckServerName(s, 0, m); };
    const Check optionalServer = [](const char* s, CString& m) { return CheckServerName(s, 1, m); };
    const std::tuple<Check, const char*, int, const WCHAR*> cases[] = {
        {CheckEMailAddress, "a@,:[]b", 0, TW("")},
        {CheckEMailAddress, "a(", 1, TW("メールアドレスに「@」が含まれていません。")},
        {CheckEMailAddress, "a@(\x82\xA0", 2,
         TW("メールアドレスに使用できない文字「()<>;\"￥」が含まれています。")},
        // The trail byte 5C of a double-byte character is no backslash.
        {CheckEMailAddress, "a@\x83\x5C\xB1", 3,
         TW("メールアドレスに日本語などの２バイト文字が含まれています。")},
        {CheckEMailAddress, "a@\xB1", 3, TW("メールアドレスに半角カタカナが含まれています。")},
        {CheckEMailName, "\x87\x40\xB1", 3, TW("名前に半角カタカナが含まれています。")},
        {CheckEMailOrgani, "\x87\x40", 3, TW("所属に機種依存文字が含まれています。")},
        {server, "", -1, TW("サーバーが入力されていません。")},
        {optionalServer, "", 0, TW("")},
        {optionalServer, "a;\x82\xA0", 2, TW("サーバーに使用できない文字が含まれています。")},
        {server, "\x82\xA0", 3, TW("サーバーに日本語などの２バイト文字が含まれています。")},
        {CheckAccountName, "", -1, TW("アカウント名が入力されていません。")},
        {CheckAccountName, "\x82\xA0", 3,
         TW("アカウント名に日本語などの２バイト文字が含まれています。")},
        {CheckAccountName, "a(\xB1", 0, TW("")},
    };
    for (const auto& [check, text, result, wantedMessage] : cases) {
        CString message("left over");
        EXPECT_EQ(check(text, message), result);
        EXPECT_EQ(message, CString(wantedMessage));
    }
}
