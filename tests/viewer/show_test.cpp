#include "viewer/links.h"
#include "viewer/show_json.h"
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

TEST(Links, AreFoundWithoutTheSentenceAroundThem)
{
    const struct {
        const char* text;
        const char* links;
    } cases[] = {
        {"", ""},
        {"http://a", "url=http://a"},
        {"HTTPS://Example.com/A?b=c#d", "url=HTTPS://Example.com/A?b=c#d"},
        {"http:// http://. xhttp://a", ""},
        {"<ftp://a/b>, mailto:x@example.com!", "url=ftp://a/b url=mailto:x@example.com"},
        {"http://a/をご覧", "url=http://a/"},
        {"見よhttp://a。", "url=http://a"},
        {"(http://a/b_(c)) [http://a]", "url=http://a/b_(c) url=http://a"},
        {"http://a\nb", "url=http://a"},
        {"a@example.com, <b.c+d@x.example.jp>.", "mail=a@example.com mail=b.c+d@x.example.jp"},
        {"a@b a@b. @example.com a@.com a@b..com a@1.2", ""},
        {"a@example.com@example.org", "mail=a@example.com"},
        {"http://u@example.com/", "url=http://u@example.com/"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(JoinLinks(c.text), c.links) << c.text;
}

// Fails by its time when an unfinished candidate is searched again from each of its positions.
TEST(Links, SearchIsLinear)
{
    for (const char* piece : {"@", "a@", "http://", "http://.", "a.", "mailto:@", "h"}) {
        std::string text;
        while (text.size() < 2'000'000)
            text += piece;
        FindLinks(text);
        EXPECT_EQ(FindLinks(text + " http://end").back().text, "http://end") << piece;
    }
}

TEST(ShowText, ControlCharactersAreHarmless)
{
    const struct {
        std::string text;
        const char* lines;
        const char* line;
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
