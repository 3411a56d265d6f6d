#include "viewer/mail_reader.h"

#include "tests/viewer/viewer_support.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace tlvn {
namespace {

// The parts as "type(child type)", the shown one marked with "*", attachments with "+".
std::string Describe(const Mail& mail, int parent = -1)
{
    std::string all;
    const auto& parts = mail.GetParts();
    const std::vector<int> attachments = mail.GetAttachments();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const int index = static_cast<int>(i);
        if (parts[i].parent != parent)
            continue;
        const bool attachment =
            std::find(attachments.begin(), attachments.end(), index) != attachments.end();
        all += std::string(all.empty() ? "" : " ") + (index == mail.GetTextPart() ? "*" : "") +
               (attachment ? "+" : "") + parts[i].type;
        if (parts[i].container)
            all += '(' + Describe(mail, index) + ')';
    }
    return all;
}

std::string Multipart(const std::string& boundary, const std::string& rest)
{
    return "Content-Type: multipart/mixed; boundary=\"" + boundary + "\"\n\n" + rest;
}

TEST(MailReader, HeaderEndsWhereTheBodyStarts)
{
    const struct {
        std::string mail;
        std::size_t fields;
        const char* subject;
        std::string text;
    } cases[] = {
        {"Subject: a\r\n\r\nbody\r\n", 1, "a", "body\n"},
        {"SUBJECT : a\nX: y\n\nbody", 2, "a", "body"},
        {"Subject: a\n b\n\tc\n\nbody", 1, "a b c", "body"},
        {"From x@example.com Mon\nSubject: a\n\nbody", 1, "a", "body"},
        // No end: at the end of the bytes, or at a line that is no field.
        {"Subject: a", 1, "a", ""},
        {"Subject: a\nX: b\n", 2, "a", ""},
        {"Subject: a\nno field here\nbody", 1, "a", "no field here\nbody"},
        {"Subject: a\nn\xC3\xA4me: x\n", 1, "a", "n\xC3\xA4me: x\n"},
        // No header.
        {"", 0, "", ""},
        {"\nbody", 0, "", "body"},
        {" body\nSubject: a\n", 0, "", " body\nSubject: a\n"},
        {": x\n", 0, "", ": x\n"},
        {"Subject:\n\nbody", 1, "", "body"},
        // Line ends of the text.
        {"A: b\n\na\r\nb\rc\nd\r", 1, "", "a\nb\nc\nd\n"},
    };
    for (const auto& c : cases) {
        const Mail mail(c.mail);
        EXPECT_EQ(mail.GetFields().size(), c.fields) << c.mail;
        EXPECT_EQ(mail.GetHeaderText("Subject"), c.subject) << c.mail;
        EXPECT_EQ(ToUtf8(mail.ReadText()), c.text) << c.mail;
    }
}

TEST(MailReader, TakesMultipartsApart)
{
    const std::string inner =
        Multipart("b-2", "--b-2\n\nin\n--b-2\nContent-Type: text/html\n\nh\n");
    const struct {
        std::string mail;
        const char *parts, *text;
    } cases[] = {
        {Multipart("b", "pre\n--b\n\none\n--b\n\ntwo\n--b--\nepilogue"),
         "multipart/mixed(*text/plain text/plain)", "one"},
        {Multipart("b", "--b\r\n\r\none\r\n\r\n--b--\r\n"), "multipart/mixed(*text/plain)",
         "one\n"},
        // A boundary has its line for itself; longer lines are text.
        {Multipart("b", "--b\n\n--bb\n--b x\n --b\n--b  \n\ntwo"),
         "multipart/mixed(*text/plain text/plain)", "--bb\n--b x\n --b"},
        // The outer boundary ends an inner multipart that is not closed, and a header.
        {Multipart("b", "--b\n" + inner + "--b\nContent-Type: image/gif\n\nx\n--b--\n"),
         "multipart/mixed(multipart/mixed(*text/plain text/html) +image/gif)", "in"},
        {Multipart("b", "--b\nContent-Type: text/html\n--b\n\ntwo"),
         "multipart/mixed(text/html *text/plain)", "two"},
        // Both have the same boundary: the inner one's end leaves the outer one open.
        {Multipart("b", "--b\n" + Multipart("b", "--b\n\nx\n--b--\n") + "--b\n\ny\n"),
         "multipart/mixed(multipart/mixed(*text/plain) text/plain)", "x"},
        // A boundary that looks like the closing line of another.
        {Multipart("b", "--b\n" + Multipart("b--", "--b--\n\nx\n--b----\n") + "--b\n\ny\n"),
         "multipart/mixed(multipart/mixed(*text/plain) text/plain)", "x"},
        // No boundary, or it never comes, or nothing but the end: text.
        {"Content-Type: multipart/mixed\n\n--b\n\nx", "*multipart/mixed", "--b\n\nx"},
        {Multipart("b", "x\n"), "*multipart/mixed", "x\n"},
        {Multipart("b", "x\n--b--\ny"), "*multipart/mixed", "x"},
        // What is shown: plain before HTML before other text; attached text only if it must be.
        {Multipart("b", "--b\nContent-Type: text/html\n\nh\n--b\n\np"),
         "multipart/mixed(text/html *text/plain)", "p"},
        {Multipart("b", "--b\nContent-Type: text/x\n\nx\n--b\nContent-Type: text/html\n\nh"),
         "multipart/mixed(text/x *text/html)", "h"},
        {Multipart("b", "--b\nContent-Disposition: attachment\n\na\n--b\n\np"),
         "multipart/mixed(+text/plain *text/plain)", "p"},
        {"Content-Type: text/plain; name=n.txt\n\nx", "*text/plain", "x"},
        {"Content-Type: message/rfc822\n\nSubject: x\n\ny", "+message/rfc822", ""},
        {"Content-Type: nonsense\n\nx", "*text/plain", "x"},
    };
    for (const auto& c : cases) {
        const Mail mail(c.mail);
        EXPECT_EQ(Describe(mail), c.parts) << c.mail;
        EXPECT_EQ(ToUtf8(mail.ReadText()), c.text) << c.mail;
    }
}

TEST(MailReader, BelievesTheLabelUnlessTheBytesContradict)
{
    const struct {
        const char* label;
        std::string bytes;
        CodeType type;
        bool labelled;
        const char* utf8;
    } cases[] = {
        {"", "abc", CT_ASCII, false, "abc"},
        {"UTF-8", "abc", CT_UTF8, true, "abc"},
        {"shift_jis", "\x82\xA0", CT_SJIS, true, "あ"},
        {"x-none", "\x82\xA0", CT_SJIS, false, "あ"},
        {"US-ASCII", "\x1B$B$\"\x1B(B", CT_JIS, false, "あ"},
        {"ISO-2022-JP", "\x82\xA0\x82\xA2", CT_SJIS, false, "あい"},
        {"Shift_JIS", "\xE3\x81\x82\xE3\x81\x84", CT_UTF8, false, "あい"},
        {"ISO-8859-1", "\xE3\x81\x82", CT_UTF8, false, "あ"},
        {"UTF-8", "\x82\xA0\x82\xA2", CT_SJIS, false, "あい"},
        // Half-width katakana that would also be UTF-8 are what the label says.
        {"Shift_JIS", "\xC2\xB1", CT_SJIS, true, "ﾂｱ"},
        // Damaged: no other code reads it either, so the label stands.
        {"UTF-8", "\xE3\x81\x82\xE3\x81", CT_UTF8, true, nullptr},
        // Detection does not stop at the first kilobyte, nor take ASCII for UTF-16.
        {"", std::string(3000, 'a') + "\x82\xA0", CT_SJIS, false, nullptr},
        {"", "Hi", CT_ASCII, false, "Hi"},
        {"UTF-8", "\xEF\xBB\xBFx", CT_UTF8, true, "x"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.label) + ": " + c.bytes.substr(0, 20));
        const TextCode code = ChooseTextCode(c.label, c.bytes);
        EXPECT_EQ(code.type, c.type);
        EXPECT_EQ(code.labelled, c.labelled);
        std::string utf8;
        const bool exact = ConvertTextToUtf8(code.type, c.bytes, utf8);
        if (c.utf8 != nullptr) {
            EXPECT_TRUE(exact);
            EXPECT_EQ(utf8, c.utf8);
        }
    }
}

TEST(MailReader, DecodesBodies)
{
    const struct {
        std::string encoding, body, decoded;
    } cases[] = {
        {"", "=41", "=41"},
        {"7bit", "a\r\n", "a\r\n"},
        {"Base64", "YWJj\r\nZGVm\r\n", "abcdef"},
        {"quoted-printable (x)", "=41=\r\nb", "Ab"},
        {"x-uuencode", "begin 644 a\r\n#86)C\r\n`\r\nend\r\n", "abc"},
        {"x-uuencode", "none", "none"},
        {"x-unknown", "=41", "=41"},
        // A zero hides nothing of what stands behind it.
        {"quoted-printable", std::string("=41\0=42", 7), std::string("A\0B", 3)},
        {"base64", std::string("YWJj\0\r\nZGVm", 11), "abcdef"},
        {"7bit", std::string("a\0b", 3), std::string("a\0b", 3)},
    };
    for (const auto& c : cases) {
        const Mail mail("Content-Transfer-Encoding: " + c.encoding + "\n\n" + c.body);
        EXPECT_EQ(DecodeBody(mail.GetParts().front(), 1000), c.decoded) << c.encoding;
    }
}

// Deep nesting costs no stack; what lies deeper than the limit is text, not lost. Numbers of parts,
// fields and bytes have limits, and each of these is read in one pass: a quadratic step would take
// minutes.
TEST(MailReader, HostileMailsAreReadInBoundedTimeAndMemory)
{
    const Mail nested(NestedParts(10'000));
    EXPECT_EQ(nested.GetParts().size(), kMaxDepth + 1);
    EXPECT_TRUE(ToUtf8(nested.ReadText()).ends_with("the innermost text\n"));

    constexpr std::size_t kSize = 8'000'000;
    EXPECT_EQ(Mail(Multipart("b", Repeated("--b\n", kSize))).GetParts().size(), kMaxParts);
    EXPECT_EQ(Mail(Repeated("A: b\n", kSize)).GetFields().size(), kMaxFields);
    EXPECT_EQ(Mail(Repeated("A: b\n c\n", kSize)).GetHeaderText("a"), "b c");
    EXPECT_LE(Mail("A: " + Repeated("x", kSize)).GetHeaderText("a").size(), kMaxValueBytes);
    EXPECT_EQ(Mail(Multipart("b", Repeated("--c\n", kSize))).GetParts().size(), 1u);

    const Mail zeros(std::string(kMaxTextBytes + 1, '\0'));
    EXPECT_TRUE(zeros.GetFields().empty());
    EXPECT_TRUE(zeros.ReadText().cut);
    const Mail blanks("Content-Transfer-Encoding: quoted-printable\n\n" + Repeated(" ", kSize));
    EXPECT_EQ(ToUtf8(blanks.ReadText()), "");
}

} // namespace
} // namespace tlvn
