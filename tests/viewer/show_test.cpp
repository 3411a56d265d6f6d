#include "mailtext/transfer_encoding.h"
#include "tests/viewer/viewer_support.h"
#include "viewer/links.h"
#include "viewer/show_json.h"
#include "viewer/show_source.h"
#include "viewer/show_text.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

std::string JoinLinks(std::string_view text)
{
    std::string joined;
    for (const Link& link : FindLinks(text))
        joined += std::string(joined.empty() ? "" : " ") + GetLinkKindName(link.kind) + "=" +
                  std::string(link.text);
    return joined;
}

// The rules of the finders are tested with them; here it is what becomes of the two together.
TEST(Links, AreFoundInTheOrderOfTheText)
{
    const struct {
        const char *text, *links;
    } cases[] = {
        {"", ""},
        {"HTTPS://Example.com/A?b=c#d", "url=HTTPS://Example.com/A?b=c#d"},
        {"<ftp://a/b>, mailto:x@example.com!", "url=ftp://a/b url=mailto:x@example.com!"},
        {"見よ http://日本.例/をご覧", "url=http://日本.例/"},
        {"𠮟 http://𠮟/", "url=http://𠮟/"}, // two units each
        {"a@example.com, <b.c+d@x.example.jp>. ", "mail=a@example.com mail=b.c+d@x.example.jp"},
        {"a@b.cd http://e f@g.hi ", "mail=a@b.cd url=http://e mail=f@g.hi"},
        {"http://u@example.com/", "url=http://u@example.com/"}, // the address inside is none
        {"\"C:\\my files\" \\\\srv\\a", "url=C:\\my files url=\\\\srv\\a"},
        {"http://a\n\nb@c.de", "url=http://a mail=b@c.de"},
        {"xhttp://a\nhttp://b", "url=http://b"}, // each line is searched for itself
        {"\\\\srv\na\\b", ""},
        {"<mailto:a\nb>", "url=mailto:a"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(JoinLinks(c.text), c.links) << c.text;
}

// Fails by its time when an unfinished candidate is searched again from each of its positions.
TEST(Links, SearchIsLinear)
{
    for (const char* piece :
         {"@", "a@", "http://", "a.", "mailto:@", "h", "\\\\", "a:", "x@y.z ", "a@b.c/http:"}) {
        const std::string text = Repeated(piece, 2'000'000);
        FindLinks(text);
        EXPECT_EQ(FindLinks(text + " http://end").back().text, "http://end") << piece;
    }
}

TEST(ShowText, ControlCharactersAreHarmless)
{
    const struct {
        std::string text;
        const char *lines, *line;
    } cases[] = {
        {"a\tb\nc", "a\tb\nc", "a b c"},
        {"\x1B[31m", "\uFFFD[31m", "\uFFFD[31m"},
        {std::string("\0\r\x7F", 3), "\uFFFD\uFFFD\uFFFD", "\uFFFD\uFFFD\uFFFD"},
        {"\xC2\x9B\xC2\xA0", "\uFFFD\u00A0", "\uFFFD\u00A0"},
        {"a\u202Eb\u2066c", "a\uFFFDb\uFFFDc", "a\uFFFDb\uFFFDc"},
        {"あ😊", "あ😊", "あ😊"},
        {"\xE3\x81", "\uFFFD\uFFFD", "\uFFFD\uFFFD"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(MakeHarmless(c.text, true), c.lines);
        EXPECT_EQ(MakeHarmless(c.text, false), c.line);
    }
}

TEST(ShowText, PrintsHeadersCodeTextAndLinks)
{
    const Mail mail("X: y\nSubject: =?utf-8?B?44GC?=\nTo: a\n\x1B"
                    "b@example.com\n"
                    "Content-Type: text/plain; charset=utf-8\n\nsee http://a\n");
    EXPECT_EQ(FormatMailText(mail), "To:       a\n"
                                    "Subject:  あ\n"
                                    "Code:     US-ASCII, detected\n"
                                    "\n"
                                    "\uFFFDb@example.com\n"
                                    "Content-Type: text/plain; charset=utf-8\n\nsee http://a\n"
                                    "\n"
                                    "Links:\n"
                                    "  mail      b@example.com\n"
                                    "  url       http://a\n");
}

// What is printed is a mail again, with the same text in the same encoding: by the kinds of line
// ends that a text can have.
TEST(ShowSource, ComesBack)
{
    for (const char* encoding : {"7bit", "base64", "quoted-printable", "x-uuencode"}) {
        for (const std::string text :
             {"", "a", "a=b \nc\n", "a\t\r\n\r\nb", "a\rb\r\nc\n", "\xE3\x81\x82\n.\n"}) {
            CBuffer body;
            EncodeBody(encoding, reinterpret_cast<const unsigned char*>(text.data()),
                       static_cast<int>(text.size()), 0, body);
            const Mail mail("Subject: x\n y\nContent-Type: multipart/mixed; boundary=b\n\n--b\n"
                            "Content-Transfer-Encoding: " +
                            std::string(encoding) + "\n\n" + std::string(body) + "\n--b--\n");
            std::string source, error;
            ASSERT_EQ(FormatMailSource(mail, source, error), 1) << encoding << error;
            const Mail again(std::move(source));
            EXPECT_EQ(again.GetHeaderText("Subject"), "x y");
            EXPECT_EQ(again.GetFields().back().name, "Content-Transfer-Encoding");
            EXPECT_EQ(again.GetParts()[0].encoding, encoding);
            EXPECT_EQ(again.ReadText().bytes, text) << encoding;
        }
    }
    std::string source, error;
    EXPECT_EQ(FormatMailSource(Mail("Content-Type: image/png\n\nx"), source, error), 0);
    EXPECT_FALSE(error.empty());
}

TEST(ShowJson, PrintsOneObject)
{
    const Mail mail("A: \"b\\c\"\na: =?utf-8?Q?=09?=\n"
                    "Content-Type: text/plain; charset=Utf-8\n\nx\r\n\x01 <c@example.com>");
    EXPECT_EQ(FormatMailJson(mail),
              "{\n"
              "  \"headers\": [\n"
              "    {\"name\": \"A\", \"value\": \"\\\"b\\\\c\\\"\"},\n"
              "    {\"name\": \"a\", \"value\": \"\\t\"},\n"
              "    {\"name\": \"Content-Type\", \"value\": \"text/plain; charset=Utf-8\"}\n"
              "  ],\n"
              "  \"charset\": \"Utf-8\",\n"
              "  \"codeType\": 1008,\n"
              "  \"how\": \"label\",\n"
              "  \"text\": \"x\\n\\u0001 <c@example.com>\",\n"
              "  \"links\": [\n"
              "    {\"kind\": \"mail\", \"text\": \"c@example.com\"}\n"
              "  ]\n"
              "}\n");
    EXPECT_EQ(FormatMailJson(Mail("\n")), "{\n"
                                          "  \"headers\": [\n"
                                          "  ],\n"
                                          "  \"charset\": null,\n"
                                          "  \"codeType\": 1,\n"
                                          "  \"how\": \"detected\",\n"
                                          "  \"text\": \"\",\n"
                                          "  \"links\": [\n"
                                          "  ]\n"
                                          "}\n");
}

} // namespace
} // namespace tlvn
