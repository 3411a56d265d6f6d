// The sample mails, read and compared with what scripts/make-samples.py put into them.

#include "viewer/mail_file.h"
#include "viewer/mail_reader.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

std::string LoadSource(const std::string& name)
{
    std::string bytes;
    std::string error;
    EXPECT_TRUE(LoadMailFile(std::string(TLVN_SOURCE_DIR) + '/' + name, bytes, error))
        << name << ": " << error;
    return bytes;
}

struct Sample {
    const char* name;
    CodeType type;
    bool labelled;
    const char* from;
};

const Sample kSamples[] = {
    {"01-iso-2022-jp", CT_JIS, true, "佐伯 美咲 <saeki@example.co.jp>"},
    {"02-shift-jis-base64", CT_SJIS, true, "柿沼 聡 <kakinuma@example.jp>"},
    {"03-euc-jp-quoted-printable", CT_EUC, true, "IGUCHI Takashi <iguchi@example.ac.jp>"},
    {"04-utf-8-base64", CT_UTF8, true, "ゆうこ <yuko@example.net>"},
    {"05-utf-8-quoted-printable", CT_UTF8, true, "Zoë Müller <zoe@example.org>"},
    {"06-wrong-label", CT_UTF8, false, "jimukyoku@example.org"},
    {"07-no-label", CT_SJIS, false, "printer@example.co.jp"},
    {"08-quoted-reply", CT_JIS, true, "小川 陽介 <ogawa@example.jp>"},
    {"09-attachments", CT_UTF8, true, "大塚 徹 <otsuka@example.com>"},
    {"10-links", CT_UTF8, true, "\"Hayakawa, Rei\" <hayakawa.r@example.co.jp>"},
    {"11-half-width-katakana", CT_JIS, true, "uketsuke@example.co.jp"},
    {"12-koi8-r", CT_KOI8R, true, "Анна Соколова <sokolova@example.org>"},
    {"13-iso-8859-1", CT_ISO8859_1, true, "François Béguelin <beguelin@example.net>"},
};

TEST(Samples, SubjectTextAndCodeAreRead)
{
    for (const Sample& sample : kSamples) {
        SCOPED_TRACE(sample.name);
        const Mail mail(LoadSource(std::string("samples/") + sample.name + ".eml"));
        const MailText text = mail.ReadText();
        EXPECT_EQ(mail.GetHeaderText("subject") + "\n\n" + ToUtf8(text),
                  LoadSource(std::string("tests/viewer/expected/") + sample.name + ".txt"));
        EXPECT_EQ(mail.GetHeaderText("From"), sample.from);
        EXPECT_EQ(text.code.type, sample.type);
        EXPECT_EQ(text.code.labelled, sample.labelled);
    }
}

// The name in pieces of RFC 2231 has a character cut between two of them; the other is an
// encoded word in quotes.
TEST(Samples, AttachmentsAreListedAndDecoded)
{
    const Mail mail(LoadSource("samples/09-attachments.eml"));
    std::string all;
    for (const int attachment : mail.GetAttachments()) {
        const MailPart& part = mail.GetParts()[static_cast<std::size_t>(attachment)];
        all += part.fileName + ": " + DecodeBody(part, kMaxTextBytes).substr(0, 4) + '\n';
    }
    EXPECT_EQ(all, "月次報告書(9月).csv: 月,\nグラフ.gif: GIF8\n");
}

// An empty, a missing and an unreadable file are told apart before a mail is made of them.
TEST(Samples, FilesThatAreNoMailGiveAReason)
{
    const struct {
        const char *path, *reason;
    } cases[] = {
        {"/samples", "it is a folder"},
        {"/samples/none.eml", "there is no such file"},
        {"/none/none.eml", "there is no such f"}, // file or folder, as the system knows it
    };
    for (const auto& c : cases) {
        std::string bytes = "old";
        std::string error;
        EXPECT_FALSE(LoadMailFile(std::string(TLVN_SOURCE_DIR) + c.path, bytes, error)) << c.path;
        EXPECT_TRUE(error.starts_with(c.reason)) << c.path << ": " << error;
        EXPECT_TRUE(bytes.empty());
    }
}

} // namespace
} // namespace tlvn
