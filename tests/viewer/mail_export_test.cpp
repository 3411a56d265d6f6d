#include "viewer/mail_export.h"

#include "tests/viewer/viewer_support.h"
#include "tests/zip/zip_support.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tlvn {
namespace {

std::string Export(const MailList& list, const std::string& path, const std::string& password)
{
    std::vector<int> rows(static_cast<std::size_t>(list.GetCount()));
    std::iota(rows.begin(), rows.end(), 0);
    MailExport mails(list, rows);
    std::string error;
    if (!mails.Start(path, password, error))
        return error;
    while (mails.Step(1, error)) {
    }
    return error;
}

TEST(MailExport, WritesFilesAsTheyAre)
{
    const TempFolder folder;
    const std::string one = "Subject: 1\r\n\r\nFrom here\n";
    const std::string two("Subject: 2\n\n\0\xFF", 14);
    folder.Write("in/a.eml", one);
    folder.Write("in/B.EML", two);
    MailList list;
    ReadAll(list, folder.Path("in"));
    const std::map<std::string, std::string> expected = {{"a.eml", one}, {"B.EML", two}};
    EXPECT_EQ(Export(list, folder.Path("plain.zip"), ""), "");
    EXPECT_EQ(ReadZip(folder.Read("plain.zip"), ""), expected);
    EXPECT_EQ(Export(list, folder.Path("locked.zip"), "\xE7\xA7\x98\xE5\xAF\x86"), ""); // 秘密
    EXPECT_EQ(ReadZip(folder.Read("locked.zip"), "\x94\xE9\x96\xA7"), expected);
    EXPECT_NE(ReadZip(folder.Read("locked.zip"), "wrong"), expected);
}

// A file's name on one system is a path out of the folder on another.
TEST(MailExport, LeadsNowhereElse)
{
    const TempFolder folder;
    const std::string name = folder.Name("..\\x?y.eml", "plain.eml");
    folder.Write("in/" + name, "Subject: 1\n\n");
    MailList list;
    ReadAll(list, folder.Path("in"));
    EXPECT_EQ(Export(list, folder.Path("m.zip"), ""), "");
    const auto entries = ReadZip(folder.Read("m.zip"), "");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries.begin()->first, name == "plain.eml" ? "plain.eml" : "_x_y.eml");
}

// Mails of an mbox file come out as they were sent, each under a name of its own.
TEST(MailExport, NamesMailsOfAnMboxBySubject)
{
    const TempFolder folder;
    folder.Write("m.mbox", "From a\nSubject: Re: x\n\n>From b\n\nFrom a\nSubject: re: X\n\n2\n\n"
                           "From a\nSubject: \n\n3\n\nFrom a\nSubject: Re_ x (2)\n\n4\n");
    MailList list;
    ReadAll(list, folder.Path("m.mbox"));
    EXPECT_EQ(Export(list, folder.Path("m.zip"), ""), "");
    const auto entries = ReadZip(folder.Read("m.zip"), "");
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries.at("Re_ x.eml"), "Subject: Re: x\n\nFrom b\n");
    EXPECT_EQ(entries.at("re_ X (2).eml"), "Subject: re: X\n\n2\n");
    EXPECT_EQ(entries.at("3.eml"), "Subject: \n\n3\n");
    EXPECT_EQ(entries.at("Re_ x (2) (2).eml"), "Subject: Re_ x (2)\n\n4\n");
}

// Whatever stops an export, an archive that was there stays, and nothing else is left behind.
TEST(MailExport, LeavesTheOldArchiveWhenItFails)
{
    const TempFolder folder;
    folder.Write("in/a.eml", "Subject: 1\n\n");
    folder.Write("in/b.eml", "Subject: 2\n\n");
    folder.Write("out/old.zip", "old");
    folder.Write("out/old.zip.part", "the user's");
    MailList list;
    ReadAll(list, folder.Path("in"));
    std::filesystem::remove(folder.Native("in/b.eml"));
    EXPECT_NE(Export(list, folder.Path("out/old.zip"), "").find("b.eml: "), std::string::npos);
    EXPECT_NE(Export(list, folder.Path("none/new.zip"), ""), "");
    EXPECT_NE(Export(list, folder.Path("out/old.zip"), "\xF0\x9F\x8C\xB8"), ""); // no such password
    {
        MailExport mails(list, {0});
        std::string error;
        ASSERT_TRUE(mails.Start(folder.Path("out/old.zip"), "", error));
    }
    EXPECT_EQ(folder.Read("out/old.zip"), "old");
    EXPECT_EQ(folder.Read("out/old.zip.part"), "the user's");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Native("out")), {}), 2);
}

TEST(MailExport, MakesNamesThatEverySystemTakes)
{
    const std::string longName(200, 'x');
    const struct {
        std::string subject, name;
    } cases[] = {
        {"", "7.eml"},
        {" ... ", "7.eml"},
        {"../..\\a:b*c?\"<>|\x7F\x01", "_.._a_b_c_______.eml"},
        {".hidden. ", "hidden.eml"},
        {"日本語", "日本語.eml"},
        {longName, longName.substr(0, 80) + ".eml"},
        // Windows would write these to a device.
        {"NUL", "_NUL.eml"},
        {"con .x", "_con .x.eml"},
        {"Com9", "_Com9.eml"},
        {"lpt²", "_lpt².eml"},
        {"com10", "com10.eml"},
        {"lpt0", "lpt0.eml"},
        {"null", "null.eml"},
        // A surrogate pair is not cut in two.
        {longName.substr(0, 79) + "\xF0\x9F\x8C\xB8", longName.substr(0, 79) + ".eml"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(MakeMailFileName(c.subject, 7), c.name);
}

} // namespace
} // namespace tlvn
