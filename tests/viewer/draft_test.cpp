#include "charcode/charset.h"
#include "charcode/convert.h"
#include "tests/support/temp_folder.h"
#include "tests/viewer/viewer_support.h"
#include "viewer/draft_check.h"
#include "viewer/header_encode.h"
#include "viewer/header_text.h"
#include "viewer/mail_reply.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <sstream>

namespace tlvn {
namespace {

CBuffer EditForm(CodeType type, const std::string& utf8)
{
    CBuffer text;
    EXPECT_EQ(ConvertToOtherCodeType2(CT_UTF8, utf8.data(), static_cast<int>(utf8.size()),
                                      CodeTypeSave2Edit(type), text, 0),
              0)
        << utf8;
    return text;
}

std::string FromEditForm(const Draft& draft)
{
    CBuffer text;
    ConvertToOtherCodeType2(CodeTypeSave2Edit(draft.codeType), draft.text, draft.text.GetLength(),
                            CT_UTF8, text, 0);
    return std::string(text, static_cast<std::size_t>(text.GetLength()));
}

Draft MakeDraft(CodeType type, const std::string& text)
{
    Draft draft;
    draft.to = "a@example.jp";
    draft.codeType = type;
    draft.text = EditForm(type, text);
    return draft;
}

std::string LongestLine(const std::string& mail)
{
    std::string longest;
    std::istringstream lines(mail);
    for (std::string line; std::getline(lines, line);)
        if (line.size() > longest.size())
            longest = line;
    return longest.substr(0, longest.find('\r'));
}

TEST(HeaderEncode, IsAsciiAndReadsBack)
{
    const struct {
        const char* text;
        CodeType preferred;
        const char* encoded; // null: only what it reads back to
    } cases[] = {
        {"", CT_JIS, ""},
        {"plain  text", CT_JIS, "plain  text"},
        {"Re: あ b", CT_JIS, "Re: =?ISO-2022-JP?B?GyRCJCIbKEI=?= b"},
        {"あ b い", CT_UTF8, "=?UTF-8?B?44GCIGIg44GE?="},
        {"𠮟る", CT_JIS, "=?UTF-8?B?8KCun+OCiw==?="}, // not in the code preferred
        {"①ｱ", CT_JIS, nullptr},
        {"é", CT_ISO8859_1, "=?ISO-8859-1?B?6Q==?="},
        {"=?utf-8?Q?a?=", CT_ASCII, nullptr},
        {"\x07 a", CT_UTF8, "=?UTF-8?B?Bw==?= a"},
    };
    for (const auto& c : cases) {
        const std::string encoded = EncodeHeaderText(c.text, c.preferred);
        EXPECT_EQ(encoded, c.encoded != nullptr ? c.encoded : encoded);
        EXPECT_EQ(DecodeHeaderValue(encoded), c.text);
    }
    // Blanks alone are no line, so that so many could not be folded.
    for (const std::size_t blanks : {80u, 81u, 3'000u}) {
        const std::string text = "a" + std::string(blanks, ' ') + "b c";
        const std::string field = FormatField("Subject", EncodeHeaderText(text, CT_JIS, 9));
        EXPECT_EQ(DecodeHeaderValue(field.substr(8)), text);
        EXPECT_LE(LongestLine(field).size(), 100u);
    }
    // The first word of each field leaves room for the name, whatever the code.
    for (const char* const name : {"To", "Subject", "X-A-Name-That-Is-Not-So-Short"}) {
        const std::string words = Repeated("長い件名", 72);
        const std::size_t column = std::strlen(name) + 2;
        for (const CodeType type : {CT_JIS, CT_UTF8}) {
            for (const std::string& value :
                 {EncodeHeaderText(words, type, column),
                  EncodeMailboxes({{words, "a@b"}, {words, "c@d"}}, type, column)})
                EXPECT_LE(LongestLine(FormatField(name, value)).size(), 76u) << value;
        }
    }
    // A line end starts no field of its own.
    EXPECT_EQ(FormatField("Subject", EncodeHeaderText("a\r\nBcc: b", CT_JIS)),
              "Subject: a  Bcc: b\r\n");

    std::mt19937 random(7);
    const char* const pieces[] = {"あ", "ｱ",       "髙", "①",  "𠮟", "é",
                                  "a",  "Subject", " ",  "=?", "한", "\""};
    for (int round = 0; round < 3'000; ++round) {
        std::string text;
        const auto kinds = 1 + random() % std::size(pieces);
        for (auto i = random() % 120; i > 0; --i)
            text += pieces[random() % kinds];
        text = text.substr(std::min(text.find_first_not_of(' '), text.size()));
        text.resize(text.find_last_not_of(' ') + 1);
        const CodeType type = random() % 2 != 0 ? CT_JIS : CT_UTF8;
        const std::string field = FormatField("Subject", EncodeHeaderText(text, type, 9));
        if (field.empty())
            continue;
        ASSERT_EQ(DecodeHeaderValue(field.substr(8)), text) << field;
        ASSERT_TRUE(LongestLine(field).size() <= 76 || LongestLine(field).rfind(' ') < 9) << field;
    }
}

// The text as it is sent, and read back by the reader of mails.
TEST(MailCompose, NothingIsLostOnTheWay)
{
    std::string longLine(2'000, 'x');
    const struct {
        CodeType draft;
        std::string text;
        CodeType sent;
        const char* encoding;
    } cases[] = {
        {CT_JIS, "", CT_ASCII, "7bit"},
        {CT_JIS, "plain\n\n.\nFrom me\n", CT_ASCII, "7bit"},
        {CT_UTF8, "plain", CT_ASCII, "7bit"},
        {CT_JIS, "日本語 abc\n表示\n", CT_JIS, "7bit"},
        {CT_SJIS, "日本語", CT_JIS, "7bit"},
        {CT_EUC, "日本語", CT_JIS, "7bit"},
        {CT_JIS, "①㈱ ｱｲｳﾞ", CT_JIS, "7bit"}, // carried by the library's arithmetic
        {CT_JIS, "髙纊", CT_UTF8, "8bit"},    // lead bytes without a row of JIS
        {CT_UTF8, "日本語 𠮟 é", CT_UTF8, "8bit"},
        {CT_UTF8, "あ\tb ", CT_UTF8, "8bit"},
        {CT_ISO8859_1, "é", CT_ISO8859_1, "8bit"},
        {CT_ISO8859_1, "é€", CT_UTF8, "8bit"}, // of the edit form only
        {CT_UTF7, "あ", CT_UTF7, "7bit"},
        {CT_ASCII, longLine, CT_ASCII, "base64"},
        {CT_UTF8, "あ" + longLine + "\nb", CT_UTF8, "base64"},
        {CT_UTF8, std::string("a\0b", 3), CT_ASCII, "base64"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 30));
        Draft draft = MakeDraft(c.draft, c.text);
        draft.from = "\"山田, 太郎\" <yamada@example.jp>";
        draft.to = "\"Sato, Ken\" <sato@example.jp>, b@example.com";
        draft.subject = "件名 subject ①𠮟";
        draft.fields = {{"X-Note", "注"}};
        DraftSource source;
        std::string error;
        ASSERT_TRUE(FormatDraft(draft, 1360027230, "<1@b>", source, error)) << error;
        EXPECT_EQ(source.codeType, c.sent);

        const Mail mail(source.bytes);
        const MailText text = mail.ReadText();
        EXPECT_EQ(ToUtf8(text), c.text);
        EXPECT_EQ(text.code.type, c.sent);
        EXPECT_EQ(mail.GetHeaderText("Content-Transfer-Encoding"), c.encoding);
        EXPECT_EQ(mail.GetHeaderText("Subject"), draft.subject);
        EXPECT_EQ(mail.GetHeaderText("From"), "山田, 太郎 <yamada@example.jp>");
        EXPECT_EQ(mail.GetHeaderText("To"), draft.to);
        EXPECT_EQ(mail.GetHeaderText("X-Note"), "注");
        EXPECT_EQ(FindField(mail.GetFields(), "Cc"), nullptr);
        EXPECT_EQ(GetRFC822Time(mail.GetHeaderText("Date").c_str()), 1360027230);
        EXPECT_LE(LongestLine(source.bytes).size(), 998u);
    }
}

// Line ends of any kind become CR LF, in both widths.
TEST(MailCompose, LinesEndInCrLf)
{
    for (const CodeType type : {CT_SJIS, CT_UTF8}) {
        DraftSource source;
        std::string error;
        ASSERT_TRUE(FormatDraft(MakeDraft(type, "表\ra\r\nb\n\r"), 0, "<1@b>", source, error));
        EXPECT_EQ(ToUtf8(Mail(source.bytes).ReadText()), "表\na\nb\n\n");
        EXPECT_TRUE(source.bytes.ends_with("a\r\nb\r\n\r\n"));
    }
}

TEST(MailCompose, TellsWhatIsWrong)
{
    const struct {
        const char *to, *field;
        bool good;
    } cases[] = {
        {"", "X-A", true},           {"a@b.jp, Ken <c@d.jp>", "X-A", true},
        {"ken", "X-A", false},       {"<a;b@c.jp>", "X-A", false},
        {"日本@b.jp", "X-A", false}, {"한@b.jp", "X-A", false},
        {"\"a@b.jp", "X-A", false}, // the quote is never closed
        {"(a@b.jp", "X-A", false},   {"a@b.jp", "X A", false},
        {"a@b.jp", "X:", false},     {"a@b.jp", "", false},
    };
    for (const auto& c : cases) {
        Draft draft = MakeDraft(CT_JIS, "x");
        draft.to = c.to;
        draft.fields = {{c.field, "y"}};
        DraftSource source;
        std::string error;
        const bool good = FormatDraft(draft, 0, "<1@b>", source, error);
        EXPECT_EQ(good, c.good) << c.to << ' ' << c.field;
        EXPECT_EQ(good, error.empty());
    }
    Draft draft = MakeDraft(CT_JIS, "");
    draft.text.Set("a\x81", 2); // half a character
    DraftSource source;
    std::string error;
    EXPECT_FALSE(FormatDraft(draft, 0, "<1@b>", source, error));

    const std::string id = MakeMessageId("Ken <a@example.jp>");
    EXPECT_TRUE(id.starts_with('<') && id.ends_with("@example.jp>")) << id;
    EXPECT_NE(id, MakeMessageId("a@example.jp"));
    EXPECT_TRUE(MakeMessageId("a@日本").ends_with("@localhost>"));
}

TEST(MailCompose, SavesAFile)
{
    const TempFolder folder;
    std::string error;
    const std::string name = folder.Name("下書き.eml", "draft.eml");
    ASSERT_TRUE(SaveDraft(MakeDraft(CT_JIS, "あ"), folder.Path(name), error)) << error;
    EXPECT_NE(folder.Read(name).find("\r\n\r\n\x1B$B$\"\x1B(B"), std::string::npos);
    EXPECT_FALSE(SaveDraft(MakeDraft(CT_JIS, "あ"), folder.Path("no/a.eml"), error));
    EXPECT_EQ(error, "there is no such folder");
}

TEST(MailReply, AddressesAndSubject)
{
    const struct {
        const char* header;
        bool all;
        const char *to, *cc, *subject;
    } cases[] = {
        {"From: A <a@b>\nSubject: s\n", false, "A <a@b>", "", "Re: s"},
        {"From: a@b\nReply-To: L <l@m>, n@o\nTo: me@x\nSubject: RE: Re[2]:  s\n", false,
         "L <l@m>, n@o", "", "Re: s"},
        {"From: a@b\nTo: ME@x, c@d, a@B\nCc: e@f, C@d\nSubject: Re:s\n", true, "a@b", "c@d, e@f",
         "Re: s"},
        // One's own mail goes on to whom it went; one to oneself comes back.
        {"From: me@x\nTo: c@d\n", false, "c@d", "", "Re: "},
        {"From: Me <me@x>\nTo: me@x\n", false, "Me <me@x>", "", "Re: "},
        {"From: =?utf-8?Q?a=2C=E3=81=82?= <a@b>\nSubject: Reply: =?utf-8?B?44GC?=\n", false,
         "\"a,あ\" <a@b>", "", "Re: Reply: あ"},
        {"", true, "", "", "Re: "},
    };
    for (const auto& c : cases) {
        const Draft draft = MakeReply(Mail(std::string(c.header) + "\nx"),
                                      {.from = "Me <me@x>", .all = c.all, .quoteMark = ">"});
        EXPECT_EQ(draft.to, c.to) << c.header;
        EXPECT_EQ(draft.cc, c.cc) << c.header;
        EXPECT_EQ(draft.subject, c.subject) << c.header;
    }
}

std::string FieldOf(const Draft& draft, const std::string& name)
{
    for (const auto& [fieldName, value] : draft.fields)
        if (fieldName == name)
            return value;
    return {};
}

TEST(MailReply, KeepsTheThread)
{
    const struct {
        std::string header;
        const char *inReplyTo, *references;
    } cases[] = {
        {"", "", ""},
        {"Message-ID: <3@x>\n", "<3@x>", "<3@x>"},
        {"Message-ID:\n <3@x>\nReferences: <1@x>\n <2@x>junk\n", "<3@x>", "<1@x> <2@x> <3@x>"},
        {"Message-ID: <3@x>\nIn-Reply-To: <2@x>\n", "<3@x>", "<2@x> <3@x>"},
        {"Message-ID: <3@x>\nIn-Reply-To: <1@x> <2@x>\n", "<3@x>", "<3@x>"},
        {"Message-ID: <a b>\nReferences: <1@x\n", "", ""},
        {"Message-ID: <=?utf-8?q?a?=@x>\nReferences: <1@x>\n", "", "<1@x>"},
    };
    for (const auto& c : cases) {
        const Draft draft = MakeReply(Mail(c.header + "\nx"), {});
        EXPECT_EQ(FieldOf(draft, "In-Reply-To"), c.inReplyTo) << c.header;
        EXPECT_EQ(FieldOf(draft, "References"), c.references) << c.header;
    }
    std::string many = "References:";
    for (int i = 0; i < 1'000; ++i)
        many += " <" + std::to_string(i) + "@x>";
    const std::string kept = FieldOf(MakeReply(Mail(many + "\n\nx"), {}), "References");
    EXPECT_TRUE(kept.starts_with("<0@x> <961@x>") && kept.ends_with("<999@x>")) << kept;
}

TEST(MailReply, QuotesInTheCodeOfTheMail)
{
    const struct {
        const char* header;
        std::string body;
        CodeType type;
        const char* text;
    } cases[] = {
        {"", "", CT_JIS, ""},
        {"From: K <a@b>\nDate: d\n", "x\n\n y", CT_JIS, "On d, K wrote:\n>x\n>\n> y\n"},
        {"From: a@b\n", "x\n", CT_JIS, "a@b wrote:\n>x\n"},
        {"Content-Type: text/plain; charset=ISO-2022-JP\n", "\x1B$B$\"\x1B(B\n", CT_JIS, ">あ\n"},
        {"Content-Type: text/plain; charset=UTF-8\n", "𠮟\r\n", CT_UTF8, ">𠮟\n"},
        {"Content-Type: text/plain; charset=EUC-KR\n", "\xC7\xD1\n", CT_EUCKR, ">한\n"},
        // The sender's name needs another code than the text.
        {"From: あ <a@b>\nContent-Type: text/plain; charset=ISO-8859-1\n", "\xE9\n", CT_UTF8,
         "あ wrote:\n>é\n"},
        {"From: é <a@b>\nContent-Type: text/plain; charset=ISO-2022-JP\n", "\x1B$B$\"\x1B(B\n",
         CT_UTF8, "é wrote:\n>あ\n"},
    };
    for (const auto& c : cases) {
        const Draft draft = MakeReply(Mail(std::string(c.header) + "\n" + c.body), {});
        EXPECT_EQ(draft.codeType, c.type) << c.header;
        EXPECT_EQ(FromEditForm(draft), c.text) << c.header;
    }
}

TEST(DraftCheck, PointsOutAndReplaces)
{
    const struct {
        CodeType type;
        const char *text, *subject;
        int katakana, machineDependent;
        bool inSubject;
        const char *textAfter, *subjectAfter;
    } cases[] = {
        {CT_JIS, "表示 abc ア", "s", 0, 0, false, "表示 abc ア", "s"},
        {CT_JIS, "a\nｶﾞｱb①", "s", 3, 1, false, "a\nガアb(1)", "s"},
        {CT_SJIS, "㈱№Ⅳⅳ髙", "", 0, 5, false, "(株)No.IViv髙", ""},
        {CT_UTF8, "①\r\n\r\nﾊﾟ漢", "", 2, 0, false, "①\r\n\r\nパ漢", ""},
        {CT_JIS, "x", "ｱ①", 1, 1, true, "x", "ア(1)"},
        {CT_JIS, "x", "𠮟ｱ", 1, 0, true, "x", "𠮟ア"},
        {CT_UTF8, "x", "ｱ①", 1, 0, true, "x", "ア①"},
    };
    for (const auto& c : cases) {
        Draft draft = MakeDraft(c.type, c.text);
        draft.subject = c.subject;
        const DraftFlaws flaws = FindDraftFlaws(draft);
        EXPECT_EQ(flaws.halfWidthKatakana, c.katakana) << c.text;
        EXPECT_EQ(flaws.machineDependent, c.machineDependent) << c.text;
        EXPECT_EQ(flaws.inSubject, c.inSubject) << c.text;
        EXPECT_EQ(ReplaceDraftFlaws(draft) > 0, !flaws.IsEmpty());
        EXPECT_EQ(FromEditForm(draft), c.textAfter);
        EXPECT_EQ(draft.subject, c.subjectAfter);
    }
    const DraftFlaws flaws = FindDraftFlaws(MakeDraft(CT_JIS, "あｱｲ①②ｳ"));
    ASSERT_EQ(flaws.text.size(), 3u);
    EXPECT_EQ(flaws.text[1].kind, FlawKind::MachineDependent);
    EXPECT_EQ(flaws.text[1].start, 4);
    EXPECT_EQ(flaws.text[1].length, 4);
}

} // namespace
} // namespace tlvn
