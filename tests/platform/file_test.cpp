// What lies below CFile, whose tests go the common ways of a file.

#include "platform/file.h"

#include "tests/support/temp_folder.h"
#include "tests/support/test.h"

namespace tlvn {
namespace {

constexpr unsigned kBoth = kFileRead | kFileWrite;

class FileTest : public testing::Test {
protected:
    FileTest() { folder.Write("file", "content"); }

    FileError OpenAndClose(unsigned access, unsigned deny,
                           FileCreation creation = FileCreation::OpenExisting)
    {
        FileHandle file;
        const FileResult result = OpenFile(path.c_str(), access, deny, creation, file);
        EXPECT_EQ(result ? CloseFile(file).error : FileError::None, FileError::None);
        EXPECT_TRUE(result || file == kNoFile);
        return result.error;
    }
    FileHandle Open(unsigned access, unsigned deny)
    {
        FileHandle file;
        EXPECT_TRUE(OpenFile(path.c_str(), access, deny, FileCreation::OpenExisting, file));
        return file;
    }

    const TempFolder folder;
    const std::string path = folder.Path("file"), other = folder.Path("other");
};

// All accesses and denials of two openers against the rule, and a third opener afterwards:
// nothing may be left of the two when they are closed.
TEST_F(FileTest, ShareModesBetweenTwoOpeners)
{
    for (unsigned i = 0; i < 3 * 4 * 3 * 4; ++i) {
        const unsigned access1 = 1 + i % 3, deny1 = i / 3 % 4;
        const unsigned access2 = 1 + i / 12 % 3, deny2 = i / 36;
        const FileHandle first = Open(access1, deny1);
        const bool allowed = (access2 & deny1) == 0 && (deny2 & access1) == 0;
        EXPECT_EQ(OpenAndClose(access2, deny2), allowed ? FileError::None : FileError::Sharing)
            << access1 << deny1 << access2 << deny2;
        EXPECT_TRUE(CloseFile(first));
        EXPECT_EQ(OpenAndClose(kBoth, kBoth), FileError::None);
    }
}

// The facts of several openers add up, and one that leaves takes only its own. Who is refused
// must not have emptied the file.
TEST_F(FileTest, ShareModesOfSeveralOpeners)
{
    const FileHandle reader1 = Open(kFileRead, 0);
    const FileHandle reader2 = Open(kFileRead, kFileWrite);
    EXPECT_EQ(OpenAndClose(kFileWrite, 0, FileCreation::CreateAlways), FileError::Sharing);
    EXPECT_EQ(folder.Read("file"), "content");
    EXPECT_TRUE(CloseFile(reader2));
    EXPECT_EQ(OpenAndClose(kFileWrite, 0), FileError::None);
    EXPECT_EQ(OpenAndClose(kFileWrite, kFileRead), FileError::Sharing);
    EXPECT_TRUE(CloseFile(reader1));
}

// What was not asked for is refused although the system's own handle might allow it.
TEST_F(FileTest, AccessIsLimitedToWhatWasAskedFor)
{
    char byte = 'x';
    std::size_t done;
    const FileHandle writer = Open(kFileWrite, 0);
    EXPECT_EQ(ReadFromFile(writer, &byte, 1, done).error, FileError::AccessDenied);
    EXPECT_TRUE(CloseFile(writer));
    const FileHandle reader = Open(kFileRead, 0);
    EXPECT_FALSE(SetFileSize(reader, 0));
    EXPECT_TRUE(FlushFile(reader));
    EXPECT_TRUE(CloseFile(reader));
    EXPECT_EQ(ReadFromFile(kNoFile, &byte, 1, done).error, FileError::InvalidHandle);
    EXPECT_EQ(WriteToFile(kNoFile, &byte, 1).error, FileError::InvalidHandle);
    FileHandle none;
    EXPECT_FALSE(OpenFile(static_cast<const char*>(nullptr), kFileRead, 0,
                          FileCreation::OpenExisting, none));
    EXPECT_EQ(OpenAndClose(kFileWrite, 0, FileCreation::CreateNew), FileError::AlreadyExists);
}

TEST_F(FileTest, ReplacingAndInformation)
{
    folder.Write("other", "bb");
    EXPECT_TRUE(ReplaceFileWith(other.c_str(), path.c_str()));
    EXPECT_EQ(folder.Read("file"), "bb");
    EXPECT_EQ(ReplaceFileWith(other.c_str(), path.c_str()).error, FileError::NotFound);

    FileInfo info;
    for (const bool readOnly : {true, false}) {
        EXPECT_TRUE(SetFileReadOnly(path.c_str(), readOnly));
        ASSERT_TRUE(GetFileInfo(path.c_str(), info));
        EXPECT_EQ(info.readOnly, readOnly);
    }
    EXPECT_GT(info.modified, 1'700'000'000);
    EXPECT_EQ(GetFileInfo(other.c_str(), info).error, FileError::NotFound);

    const std::string full = GetFullPath("name");
    EXPECT_GT(full.size(), 5u);
    EXPECT_TRUE(IsPathSeparator(full[full.size() - 5]));
    EXPECT_EQ(GetFullPath(""), "");
    EXPECT_TRUE(IsPathSeparator(GetTempFolder().back()));
}

} // namespace
} // namespace tlvn
