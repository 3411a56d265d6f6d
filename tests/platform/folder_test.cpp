#include "platform/folder.h"

#include "platform/nls.h"
#include "tests/support/temp_folder.h"
#include "tests/support/test.h"

namespace tlvn {
namespace {

TEST(Folder, ListsWhatIsInIt)
{
    const TempFolder folder;
    FolderReader reader;
    FolderEntry entry;
    ASSERT_TRUE(reader.Open(folder.Path()));
    EXPECT_FALSE(reader.Next(entry)); // "." and ".." do not count

    const std::string name = folder.Name("あ𠮟 한.txt", "unicode");
    folder.Write(name, "12345");
    folder.Write("sub/x", "");
    ASSERT_TRUE(reader.Open(folder.Path()));
    std::vector<std::string> found;
    while (reader.Next(entry))
        found.push_back(entry.name + (entry.kind == EntryKind::Folder ? "/" : ""));
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (std::vector<std::string>{"sub/", name}));

    EXPECT_EQ(reader.Open(folder.Path("no")).error, FileError::BadPath);
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_FALSE(reader.Open(folder.Path("sub/x")));
    EXPECT_FALSE(reader.Next(entry));
}

TEST(Folder, ReadsBeginningsOfFiles)
{
    const TempFolder folder;
    const std::string name = folder.Name("あ", "unicode");
    folder.Write(name, "12345");
    FolderReader reader;
    ASSERT_TRUE(reader.Open(folder.Path()));
    char head[8];
    std::size_t done = 99;
    INT64 size = -1;
    for (const std::size_t capacity : {0, 4, 5, 6}) {
        EXPECT_TRUE(reader.ReadHead(name.c_str(), head, capacity, done, size));
        EXPECT_EQ(done, std::min<std::size_t>(capacity, 5));
        EXPECT_EQ(size, 5) << capacity;
    }
    EXPECT_EQ(reader.ReadHead("no", head, sizeof head, done, size).error, FileError::NotFound);
    EXPECT_EQ(done, 0u);
}

// One folder by two paths, and two folders.
TEST(Folder, IdentityTellsFoldersApart)
{
    const TempFolder folder;
    folder.Write("a/x", "");
    folder.Write("b/x", "");
    const auto identity = [&](const std::string& name) {
        FolderReader reader;
        EXPECT_TRUE(reader.Open(folder.Path(name)));
        return reader.GetIdentity();
    };
    EXPECT_EQ(identity("a"), identity("b/../a"));
    EXPECT_NE(identity("a"), identity("b"));
    EXPECT_NE(identity("a"), FolderIdentity());
}

TEST(Folder, PathsAreJoinedAndCut)
{
    EXPECT_EQ(GetLastName(JoinPath("a", "あ")), "あ");
    EXPECT_EQ(JoinPath("a/", "b"), "a/b");
    EXPECT_EQ(JoinPath("", "b"), "b");
    EXPECT_EQ(GetLastName("/"), "/");
    EXPECT_EQ(GetLastName("a/b//"), "b");
    std::string narrow;
    ASSERT_TRUE(ToNarrowPath("日本/表", narrow));
    EXPECT_EQ(FromNarrowPath(narrow), "日本/表");
}

} // namespace
} // namespace tlvn
