#include "mailtext/mail_date.h"
#include "platform/nls.h"
#include "tests/support/temp_folder.h"
#include "tests/viewer/viewer_support.h"
#include "viewer/mail_folder.h"
#include "viewer/mail_head.h"
#include "viewer/mailbox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tlvn {
namespace {

TEST(MailHead, HasTheHeadersBounds)
{
    const struct {
        std::string bytes;
        const char *from, *subject, *date;
        bool complete;
    } cases[] = {
        {"From: a\nSubject: b\r\nDate: c\n\nFrom: no\n", " a", " b\r", " c", true},
        {"SUBJECT : b\n c\n\td\nX: y\n z\nFrom: a\n\n", " a", " b\n c\n\td", "", true},
        {"From x@y Mon\nSubject: b\nSubject: c\n e\n\n", "", " b", "", true},
        {"Subject: b\nno field\nFrom: a\n", "", " b", "", true},
        {"\nFrom: a\n", "", "", "", true},
        // Cut off in the middle of a value and of a name; with all three, the next field ends it.
        {"From: a\nSubject: b\n c", " a", " b\n c", "", false},
        {"From: a\nSub", " a", "", "", false},
        {"From: a\nSubject: b\nDate: c\nX:", " a", " b", " c", true},
        {"From: a\nSubject: b\nDate: c\n", " a", " b", " c", false}, // may go on
        {"", "", "", "", false},
    };
    for (const auto& c : cases) {
        const MailHead head = ScanMailHead(c.bytes);
        EXPECT_EQ(head.from, c.from) << c.bytes;
        EXPECT_EQ(head.subject, c.subject) << c.bytes;
        EXPECT_EQ(head.date, c.date) << c.bytes;
        EXPECT_EQ(head.complete, c.complete) << c.bytes;
    }
}

TEST(Mailbox, IsSplitBeforeItsWordsAreDecoded)
{
    const struct {
        const char *field, *name, *address;
    } cases[] = {
        {"", "", ""},
        {"a@b.c", "", "a@b.c"},
        {"<a@b.c>", "", "a@b.c"},
        {" \"Sato, \\\"Ken\\\"\" <a@b.c>, x@y.z", "Sato, \"Ken\"", "a@b.c"},
        {"a@b.c (Ken Sato)", "Ken Sato", "a@b.c"},
        {"undisclosed", "undisclosed", ""},
        // A comma and a bracket inside encoded words are no structure.
        {"=?utf-8?Q?a=2C_b_=3Cc=3E?= <a@b.c>", "a, b <c>", "a@b.c"},
        {"\"=?utf-8?B?44GC?=\"\r\n <a@b.c>", "あ", "a@b.c"},
        // Raw: Shift_JIS with a trail byte "\\", UTF-8, ISO-2022-JP with "<" and a comma inside.
        {"\"\x95\x5C\" <a@b.c>", "表", "a@b.c"},
        {"山田、あ <a@b.c>", "山田、あ", "a@b.c"},
        {"\x1B$B%\"!<\x1B(B <a@b.c>", "アー", "a@b.c"},
        // Unfinished.
        {"\"Ken <a@b.c>", "\"Ken", "a@b.c"},
        {"Ken <a@b.c", "Ken", "a@b.c"},
        {"Ken <@a,@b:c@d>, e@f", "Ken", "@a,@b:c@d"},
        {"<a@b, Ken <c@d>", "", "a@b"},
        {", , a@b.c", "", "a@b.c"},
    };
    for (const auto& c : cases) {
        const Mailbox mailbox = ReadFirstMailbox(c.field);
        EXPECT_EQ(mailbox.name, c.name) << c.field;
        EXPECT_EQ(mailbox.address, c.address) << c.field;
    }
    EXPECT_EQ(GetShownSender("<a@b.c>"), "a@b.c");
    // A route has commas inside the brackets; one that is not closed ends at its comma.
    std::string list;
    for (const Mailbox& mailbox : ReadMailboxField("=?utf-8?Q?=2C?= <a@b>, \"x,y\" <c@d>, "
                                                   "Z <@e,@f,@g:h@i>, <j@k, l <m@n>, o@p"))
        list += FormatMailbox(mailbox) + '|';
    EXPECT_EQ(list, "\",\" <a@b>|\"x,y\" <c@d>|Z <@e,@f,@g:h@i>|j@k|l <m@n>|o@p|");
}

std::string Column(const MailList& list)
{
    std::string all;
    for (int row = 0; row < list.GetCount(); ++row)
        all += std::string(list.GetRow(row).subject) + ' ';
    return all;
}

TEST(MailList, ReadsAFolderInSteps)
{
    const TempFolder folder;
    const std::string padding = "X-Long: " + std::string(20'000, 'x') + "\n";
    folder.Write("1.eml", "From: =?utf-8?B?44GC?= <a@b>\nSubject: s1\n"
                          "Date: Tue, 5 Feb 2013 10:20:30 +0900\n\nbody");
    folder.Write("2.EML", padding + "From: b@c\nSubject: a\tb\x07\n\n" + std::string(9'000, 'x'));
    const std::string unicode = folder.Name("あ𠮟.eml", "unicode.eml");
    folder.Write(unicode, "Subject: unicode\n\n");
    folder.Write("3.txt", "Subject: no\n\n");
    folder.Write("x.eml/4.eml", "Subject: no\n\n");

    MailList list;
    std::string error;
    ASSERT_TRUE(list.Open(folder.Path(), error));
    EXPECT_TRUE(list.Step(1000, 1));
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.GetTotal(), 3);
    EXPECT_EQ(list.GetDone(), 1);
    EXPECT_FALSE(list.Step(1000));
    list.Sort(MailColumn::Subject, true);
    ASSERT_EQ(list.GetCount(), 3);

    EXPECT_EQ(list.GetRow(0).subject, "a b\xEF\xBF\xBD"); // behind the first piece of the file
    EXPECT_EQ(list.GetRow(0).sender, "b@c");
    EXPECT_EQ(list.GetRow(0).size, INT64(padding.size() + 9'025));
    EXPECT_EQ(list.GetRow(0).date, -1);
    EXPECT_EQ(list.GetRow(1).sender, "あ");
    EXPECT_EQ(list.GetRow(1).date, 1360027230);
    std::string bytes;
    EXPECT_TRUE(list.LoadMail(2, bytes, error)) << error;
    EXPECT_EQ(bytes, "Subject: unicode\n\n");
    EXPECT_EQ(list.GetPath(2), folder.Path(unicode));
}

TEST(MailList, ReadsAnMboxFile)
{
    const TempFolder folder;
    const std::string first = "From: a@b\nSubject: one\n\n>From here\n";
    folder.Write("Inbox", "From a@b Mon\n" + first + "\nFrom c@d Tue\nSubject: two\n\n" +
                              std::string(600'000, 'x') + "\n");
    MailList list;
    ReadAll(list, folder.Path("Inbox"));
    EXPECT_EQ(Column(list), "one two ");
    EXPECT_EQ(list.GetRow(1).size, 600'015);
    std::string bytes;
    std::string error;
    EXPECT_TRUE(list.LoadMail(0, bytes, error));
    EXPECT_EQ(bytes, "From: a@b\nSubject: one\n\nFrom here\n");

    folder.Write("Inbox", "From x\n\n");
    EXPECT_FALSE(list.LoadMail(0, bytes, error)); // would be bytes of another mail
    folder.Write("text", "no mails");
    EXPECT_FALSE(list.Open(folder.Path("text"), error));
    EXPECT_EQ(error, "it is neither a folder nor an mbox file");
    folder.Write("empty", "");
    EXPECT_FALSE(list.Open(folder.Path("empty"), error));
    EXPECT_EQ(error, "it is empty");
    EXPECT_FALSE(list.Open(folder.Path("missing"), error));
    EXPECT_EQ(error, "there is no such file");
    EXPECT_EQ(list.GetCount(), 0);
}

// Every order of columns in a row, each sorting stably what the one before left.
TEST(MailList, SortsLikeTheModel)
{
    struct Row {
        std::string sender, subject;
        INT64 date, size;
        int mail;
    };
    const char* const texts[] = {"", "b", "A", "a", "ア", "あ", "漢字", "10", "9", "Ｂ", "é"};
    std::mt19937 random(5);
    std::vector<Row> rows;
    std::string file;
    for (int i = 0; i < 300; ++i) {
        Row row{texts[random() % std::size(texts)], texts[random() % std::size(texts)],
                random() % 4 == 0 ? -1 : 1'000'000 + INT64(random() % 5) * 3600, 0, i};
        std::string mail = "From: " + row.sender + "\nSubject: " + row.subject + "\n";
        if (row.date >= 0)
            mail += std::string("Date: ") + GetRFC822TimeText(CTime(row.date)).GetString() + "\n";
        mail += "\n" + std::string(random() % 3, '.') + "\n";
        row.size = static_cast<INT64>(mail.size());
        file += "From \n" + mail + "\n";
        rows.push_back(row);
    }
    const TempFolder folder;
    folder.Write("a.mbox", file);
    MailList list;
    ReadAll(list, folder.Path("a.mbox"));
    ASSERT_EQ(list.GetCount(), 300);

    const auto key = [](const std::string& utf8) {
        std::string made;
        MakeCollationKey(Utf8ToUtf16(utf8), made);
        return made;
    };
    for (int round = 0; round < 24; ++round) {
        const auto column = static_cast<MailColumn>(random() % 4);
        const bool ascending = random() % 2 != 0;
        list.Sort(column, ascending);
        std::stable_sort(rows.begin(), rows.end(), [&](const Row& x, const Row& y) {
            const Row& a = ascending ? x : y;
            const Row& b = ascending ? y : x;
            if (column == MailColumn::Sender)
                return key(a.sender) < key(b.sender);
            if (column == MailColumn::Subject)
                return key(a.subject) < key(b.subject);
            if (column == MailColumn::Size)
                return a.size < b.size;
            return (x.date < 0) != (y.date < 0) ? y.date < 0 : a.date < b.date;
        });
        for (std::size_t row = 0; row < rows.size(); ++row)
            ASSERT_EQ(list.GetMailOfRow(static_cast<int>(row)), rows[row].mail)
                << static_cast<int>(column) << ascending;
        EXPECT_EQ(list.FindRow(list.GetMailOfRow(17)), 17);
    }
}

std::string Describe(const FolderTree& tree, int index = 0)
{
    const MailFolder& folder = tree.Get(index);
    std::string all = (index == 0 ? "" : folder.name) + (folder.mbox ? "*" : "") +
                      (folder.mails >= 0 ? std::to_string(folder.mails) : "");
    if (folder.childCount == 0)
        return all;
    all += '(';
    for (int i = 0; i < folder.childCount; ++i) {
        EXPECT_EQ(tree.Get(folder.firstChild + i).parent, index);
        all += (i == 0 ? "" : " ") + Describe(tree, folder.firstChild + i);
    }
    return all + ')';
}

TEST(FolderTree, FindsFoldersAndMboxFiles)
{
    const TempFolder folder;
    folder.Write("1.eml", "x");
    folder.Write("b/2.eml", "x");
    folder.Write("b/3.EML", "x");
    const std::string unicode = folder.Name("あ𠮟", "unicode");
    folder.Write("a/" + unicode + "/4.eml", "x");
    folder.Write("a/Sent", "From x\n");
    folder.Write("a/notes", "From: x\n");
    folder.Write("a/old.mbox", "From x\n");
    folder.Write("a/old.txt", "From x\n");
    folder.Write(".git/5.eml", "x");
    std::error_code noLinks;
    std::filesystem::create_directory_symlink(folder.Native("a"), folder.Native("b/up"), noLinks);

    FolderTree tree;
    std::string error;
    ASSERT_TRUE(tree.Open(folder.Path(), error));
    while (tree.Step(0))
        continue;
    const std::string link = noLinks ? "" : "(up)"; // leads to a folder that is in the tree
    EXPECT_EQ(Describe(tree), "1(a0(old.mbox* Sent* " + unicode + "1) b2" + link + ")");
    EXPECT_FALSE(tree.IsCut());
    ASSERT_TRUE(tree.Open(folder.Path("a/Sent"), error));
    EXPECT_FALSE(tree.Step(0));
    EXPECT_TRUE(tree.Get(0).mbox);
    EXPECT_FALSE(tree.Open(folder.Path("a/notes"), error));
}

TEST(FolderTree, DepthIsBounded)
{
    const TempFolder folder;
    folder.Write(Repeated("d/", 2 * (FolderTree::kMaxDepth + 5)) + "1.eml", "x");
    FolderTree tree;
    std::string error;
    ASSERT_TRUE(tree.Open(folder.Path(), error));
    while (tree.Step(1000))
        continue;
    EXPECT_EQ(tree.GetCount(), FolderTree::kMaxDepth + 1);
    EXPECT_TRUE(tree.IsCut());
}

} // namespace
} // namespace tlvn
