#include "tests/support/finder_model.h"

#include <gtest/gtest.h>

#include <random>

namespace {

std::string FoundMail(const std::string& text)
{
    int length = -1;
    const int start = FindEMailA(text.c_str(), static_cast<int>(text.size()), length);
    EXPECT_EQ(start < 0, length == 0);
    return start < 0
               ? ""
               : text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
}

std::string FoundUrl(const std::string& text, CodeType type = CT_SJIS)
{
    int length = -1;
    const int start = FindUrlA(text.c_str(), static_cast<int>(text.size()), type, length);
    EXPECT_EQ(start < 0, length == 0);
    return start < 0
               ? ""
               : text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
}

} // namespace

TEST(MailFinder, FollowsItsRules)
{
    const struct {
        const char* text;
        const char* address;
    } cases[] = {
        {"a@b.c", "a@b.c"},
        {"@b.c", ""},
        {"abcdefgh@x.y", ""}, // the local part reaches the last four characters
        {"abcdefgh@x.y.  ", "abcdefgh@x.y."},
        {"ab@c.d", ""}, // the same with two
        {"ab@cd.e", "ab@cd.e"},
        {"write to ken@example.jp.", "ken@example.jp."}, // the dot is part of it
        {"ken@example.jp?x=1 ", "ken@example.jp?x=1"},
        {"<ken@example.jp>", "ken@example.jp"},
        {"a@b@c.de", ""}, // "b" was the domain of a candidate already
        {"a@b@c@d.ef", "c@d.ef"},
        {"a@b..c@d.ef", ".c@d.ef"}, // resumes at the second dot
        {"a@.c@d.ef", ".c@d.ef"},
        {"a@b c@d.ef", "c@d.ef"},
        {"a@b.", ""},
        {"abc@d.", ""},
        {"abc@defghij", ""},          // no dot before the end
        {"\x83\x61x@b.cd", "x@b.cd"}, // "a" here is a trail byte
        {"\x81\x40x@b.cd", "x@b.cd"}, // and "@" here
        {"a\x81\x40"
         "b.cde",
         ""},
        {"\xB1x@b.cd", "x@b.cd"}, // a half-width katakana before it
    };
    for (const auto& c : cases)
        EXPECT_EQ(FoundMail(c.text), c.address) << c.text;
}

TEST(MailFinder, TakesLengthsAsTheyComeAndCountsBytesInUtf16)
{
    const tlvn::WString text = TW("宛先 ken@example.jp 様に。");
    int length = -1;
    EXPECT_EQ(FindEMailW(text.c_str(), static_cast<int>(text.size() * 2), length), 6);
    EXPECT_EQ(length, 28);
    EXPECT_EQ(FindEMailW(text.c_str(), -1, length), 6);
    EXPECT_EQ(FindEMailW(text.c_str(), 5, length), -1);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(FindEMailW(nullptr, 10, length), -1);
    EXPECT_EQ(FindEMailA("a@b.c", -1, length), 0);
    EXPECT_EQ(FindEMailA("a@b.c", 4, length), -1);
    EXPECT_EQ(FindEMailA(nullptr, -1, length), -1);
    EXPECT_EQ(FindUrlA(nullptr, -1, CT_SJIS, length), -1);
    EXPECT_EQ(FindUrlA("http://a", 4, CT_SJIS, length), -1);
    EXPECT_EQ(FindUrlW(nullptr, -1, length), -1);
    EXPECT_EQ(FindUrlW(TW("x http://a/ b"), -1, length), 4);
    EXPECT_EQ(length, 18);
}

TEST(UrlFinder, FindsTheFirstBeginning)
{
    const struct {
        const char* text;
        const char* url;
    } cases[] = {
        {"see http://a.b/c and mailto:d", "http://a.b/c"}, // the first, not the first scheme
        {"HTTPS://a", "HTTPS://a"},
        {"ftp:x", "ftp:x"},
        {"gopher:", "gopher:"},
        {"xhttp://a", ""},
        {"(http://a)", "http://a"},
        {"xhttp://a http://b", ""}, // discarded once, a scheme is not looked for again
        {"xhttp://a ftp://b", "ftp://b"},
        {"\x83\x61http://a", "http://a"}, // a trail byte before it
        {"\x83http://a", ""},             // "h" is a trail byte
        {"C:\\a b", "C:\\a"},
        {"xC:\\a D:\\b", "D:\\b"}, // of drives the next one counts
        {"1C:\\a", ""},
        {"C:/a", ""},
        {"\\\\srv\\share x", "\\\\srv\\share"},
        {"\\\\srv", ""},
        {"\\\\srv\\", ""},              // the end behind the further backslash
        {"\\\\s\\\\", ""},              // another one
        {"\\\\s\\\\t", "\\\\s\\\\t"},   // the second of the further ones counts
        {"\\\\\\srv\\a", "\\\\srv\\a"}, // of three the last two
        {"a\\\\srv\\b", ""},
        {"\\\\s \x83\x5C http:x", "http:x"}, // a trail byte is no further backslash
    };
    for (const auto& c : cases)
        EXPECT_EQ(FoundUrl(c.text), c.url) << c.text;
}

TEST(UrlFinder, EndsByKind)
{
    const struct {
        const char* text;
        const char* url;
    } cases[] = {
        // The host takes what is not ASCII, up to a full-width space; the path does not.
        {"http://\x93\xFA\x96{/\x93\xFA", "http://\x93\xFA\x96{/"},
        {"http://\xB1\xB2.jp/\xB1", "http://\xB1\xB2.jp/"},
        {"http://a\x81\x40"
         "b",
         "http://a"},
        {"http:///a(b", "http:///a"},
        {"http://a.b/c\x93\xFA", "http://a.b/c"},
        {"http://a.b.", "http://a.b."},
        // A query takes more than what is before it; brackets take all.
        {"mailto:a@b?s=\x93\xFA(x) y", "mailto:a@b?s=\x93\xFA(x)"},
        {"mailto:a\x93\xFA", "mailto:a"},
        {"mailto:a?\xB1\x81\x40\x7Fx", "mailto:a?\xB1\x81\x40"},
        {"<mailto:a (b)\x93\xFA> x", "mailto:a (b)\x93\xFA"},
        {"<mailto:a?b c> x", "mailto:a?b c"},
        // Paths take Japanese names, but not half-width katakana.
        {"C:\\\x93\xFA\x96{\\a\xB1", "C:\\\x93\xFA\x96{\\a"},
        {"<file:C:\\my files\\a> x", "file:C:\\my files\\a"},
        {"\"C:\\my <files>\" x", "C:\\my <files>"},
        {"<\\\\srv\\a \"b\"> x", "\\\\srv\\a \"b\""},
        {"file://a b", "file://a"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FoundUrl(c.text), c.url) << c.text;
}

// GB 2312 has the space at A1A1, which is two half-width katakana in page 932; UTF-8 has it in
// three bytes, KOI8-R has none.
TEST(UrlFinder, KnowsTheFullWidthSpaceOfTheCode)
{
    const std::string text = "http://a\xA1\xA1z\x81\x40.";
    EXPECT_EQ(FoundUrl(text, CT_GB2312), "http://a");
    EXPECT_EQ(FoundUrl(text, CT_JIS), "http://a\xA1\xA1z");
    for (const CodeType type : {CT_UTF8, CT_KOI8R, CT_UNKNOWN})
        EXPECT_EQ(FoundUrl(text, type), text) << type;
}

// Everything at random, made of the pieces that matter.
TEST(LinkFinders, EqualTheRulesTakenLiterally)
{
    const char* const narrowPieces[] = {
        "http:",    "HTTPS:",   "mailto:", "ftp:",     "file:", "Gopher:", "c:\\", "\\\\",
        "\\",       "/",        "//",      "a",        "bc",    "@",       "@",    ".",
        "?",        ":",        "<",       ">",        "\"",    " ",       "(",    "\x81\x40",
        "\x83\x5C", "\x83\x61", "\xB1",    "\xA1\xA1", "\x81",  "\x1F",    "\x85", "x@y.z"};
    const WCHAR* const widePieces[] = {
        TW("http:"),  TW("HTTPS:"), TW("mailto:"), TW("ftp:"),   TW("file:"),  TW("Gopher:"),
        TW("c:\\"),   TW("\\\\"),   TW("\\"),      TW("/"),      TW("a"),      TW("bc"),
        TW("@"),      TW("@"),      TW("."),       TW("?"),      TW(":"),      TW("<"),
        TW(">"),      TW("\""),     TW(" "),       TW("("),      TW("\u3000"), TW("\u30BD"),
        TW("\uFF71"), TW("\u00A0"), TW("\u0085"),  TW("\u00E9"), TW("\u30FC"), TW("\U00020B9F"),
        TW("\u212A"), TW("x@y.z")};
    const CodeType types[] = {CT_SJIS, CT_GB2312, CT_UTF8, CT_EUC};
    std::mt19937 random(4);
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
    for (int round = 0; round < 40000; ++round) {
        std::string narrow;
        tlvn::WString wide;
        for (std::size_t n = below(14); n > 0; --n)
            narrow += narrowPieces[below(std::size(narrowPieces))];
        for (std::size_t n = below(14); n > 0; --n)
            wide += widePieces[below(std::size(widePieces))];
        const char* const differs = finder_model::Compare(narrow, wide, types[below(4)]);
        ASSERT_EQ(differs, nullptr) << narrow << " | " << tlvn::NarrowText(wide);
    }
}

TEST(UrlFinder, AppendsParameters)
{
    CString url("mailto:a@b");
    AddMailtoParam("From", "x y", url);
    EXPECT_EQ(url, "mailto:a@b?From=x y");
    AddMailtoParam("cc", url, url); // a part of the URL itself
    EXPECT_EQ(url, "mailto:a@b?From=x y&cc=mailto:a@b?From=x y");
    AddMailtoParam(nullptr, nullptr, url);
    EXPECT_EQ(url.Right(2), "&=");
}
