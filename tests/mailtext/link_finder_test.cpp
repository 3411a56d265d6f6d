#include "tests/support/finder_model.h"
#include "tests/support/test.h"

namespace {

std::string Found(const std::string& text, bool url, CodeType type = CT_SJIS)
{
    int length = -1;
    const int size = static_cast<int>(text.size());
    const int start =
        url ? FindUrlA(text.c_str(), size, type, length) : FindEMailA(text.c_str(), size, length);
    EXPECT_EQ(start < 0, length == 0);
    return text.substr(static_cast<std::size_t>(std::max(start, 0)),
                       static_cast<std::size_t>(length));
}

} // namespace

TEST(MailFinder, FollowsItsRules)
{
    const std::pair<const char*, const char*> cases[] = {
        {"abcdefgh@x.y", ""}, // the local part reaches the last four characters
        {"write to ken@example.jp.", "ken@example.jp."}, // the dot is part of it
        {"a@b@c.de", ""},             // "b" was the domain of a candidate already
        {"a@b..c@d.ef", ".c@d.ef"},   // resumes at the second dot
        {"\x83\x61x@b.cd", "x@b.cd"}, // "a" here is a trail byte
    };
    for (const auto& [text, address] : cases)
        EXPECT_EQ(Found(text, false), address) << text;
}

TEST(MailFinder, TakesLengthsAsTheyComeAndCountsBytesInUtf16)
{
    const tlvn::WString text = TW("宛先 ken@example.jp 様に。");
    int length = -1;
    EXPECT_EQ(FindEMailW(text.c_str(), static_cast<int>(text.size() * 2), length), 6);
    EXPECT_EQ(length, 28);
    EXPECT_EQ(FindEMailW(nullptr, 10, length), -1);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(FindEMailA("a@b.c", -1, length), 0);
    EXPECT_EQ(FindUrlW(TW("x http://a/ b"), -1, length), 4);
    EXPECT_EQ(length, 18);
}

TEST(UrlFinder, FollowsItsRules)
{
    const std::pair<const char*, const char*> cases[] = {
        {"see http://a.b/c and mailto:d", "http://a.b/c"}, // the first, not the first scheme
        {"HTTPS://a", "HTTPS://a"},
        {"xhttp://a http://b", ""}, // discarded once, a scheme is not looked for again
        {"xC:\\a D:\\b", "D:\\b"},  // of drives the next one counts
        {"1C:\\a", ""},
        {"\\\\s\\\\t", "\\\\s\\\\t"},        // the second of the further ones counts
        {"\\\\\\srv\\a", "\\\\srv\\a"},      // of three the last two
        {"\\\\s \x83\x5C http:x", "http:x"}, // a trail byte is no further backslash
        // The host takes what is not ASCII, up to a full-width space; the path does not.
        {"http://\x93\xFA\x96{/\x93\xFA", "http://\x93\xFA\x96{/"},
        {"http://a\x81\x40(b", "http://a"},
        // A query takes more than what is before it; brackets take all.
        {"mailto:a@b?s=\x93\xFA(x) y", "mailto:a@b?s=\x93\xFA(x)"},
        {"mailto:a?\xB1\x81\x40\x7Fx", "mailto:a?\xB1\x81\x40"},
        {"<mailto:a (b)\x93\xFA> x", "mailto:a (b)\x93\xFA"},
        // Paths take Japanese names, but not half-width katakana.
        {"C:\\\x93\xFA\x96{\\a\xB1", "C:\\\x93\xFA\x96{\\a"},
        {"\"C:\\my <files>\" x", "C:\\my <files>"},
        {"<\\\\srv\\a \"b\"> x", "\\\\srv\\a \"b\""},
    };
    for (const auto& [text, url] : cases)
        EXPECT_EQ(Found(text, true), url) << text;
}

// GB 2312 has the space at A1A1, which is two half-width katakana in page 932; UTF-8 has it in
// three bytes, KOI8-R has none.
TEST(UrlFinder, KnowsTheFullWidthSpaceOfTheCode)
{
    const std::string text = "http://a\xA1\xA1z\x81\x40.";
    EXPECT_EQ(Found(text, true, CT_GB2312), "http://a");
    EXPECT_EQ(Found(text, true, CT_JIS), "http://a\xA1\xA1z");
    for (const CodeType type : {CT_UTF8, CT_KOI8R, CT_UNKNOWN})
        EXPECT_EQ(Found(text, true, type), text) << type;
}

// Everything at random, made of the pieces that matter.
TEST(LinkFinders, EqualTheRulesTakenLiterally)
{
    const std::vector<std::string> ascii = {
        "http:", "HTTPS:", "mailto:", "ftp:", "file:", "Gopher:", "c:\\", "\\\\",
        "\\",    "/",      "//",      "a",    "bc",    "@",       "@",    ".",
        "?",     ":",      "<",       ">",    "\"",    " ",       "(",    "x@y.z"};
    const std::vector<std::string> narrowPieces = {"\x81\x40", "\x83\x5C", "\x83\x61", "\xB1",
                                                   "\xA1\xA1", "\x81",     "\x1F",     "\x85"};
    const std::vector<tlvn::WString> widePieces = {TW("\u3000"), TW("\u30BD"),     TW("\uFF71"),
                                                   TW("\u00A0"), TW("\u0085"),     TW("\u00E9"),
                                                   TW("\u30FC"), TW("\U00020B9F"), TW("\u212A")};
    const CodeType types[] = {CT_SJIS, CT_GB2312, CT_UTF8, CT_EUC};
    std::mt19937 random(4);
    for (int round = 0; round < 40000; ++round) {
        std::string narrow;
        tlvn::WString wide;
        for (unsigned n = Below(random, 14); n > 0; --n) {
            const std::string& common = ascii[Below(random, ascii.size())];
            const bool other = Below(random, 4) == 0;
            narrow += other ? narrowPieces[Below(random, narrowPieces.size())] : common;
            wide += other ? widePieces[Below(random, widePieces.size())] : tlvn::WidenText(common);
        }
        const char* const differs = finder_model::Compare(narrow, wide, types[Below(random, 4)]);
        ASSERT_EQ(differs, nullptr) << narrow << " | " << tlvn::NarrowText(wide);
    }
}

TEST(UrlFinder, AppendsParameters)
{
    CString url("mailto:a@b");
    AddMailtoParam("From", "x y", url);
    AddMailtoParam("cc", url, url); // a part of the URL itself
    EXPECT_EQ(url, "mailto:a@b?From=x y&cc=mailto:a@b?From=x y");
    AddMailtoParam(nullptr, nullptr, url);
    EXPECT_EQ(url.Right(2), "&=");
}
