#include "platform/file.h"

#include "platform/nls.h"

#include <gtest/gtest.h>

#include <string>

namespace tlvn {
namespace {

// A name in the folder for temporary files that nothing else uses; removed at the end.
class TempPath {
public:
    explicit TempPath(const char* name)
        : m_path(GetTempFolder() + "tlvn_file_test_" +
                 std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "_" + name)
    {
        Remove();
    }
    ~TempPath() { Remove(); }
    TempPath(const TempPath&) = delete;
    TempPath& operator=(const TempPath&) = delete;

    operator const char*() const { return m_path.c_str(); }

private:
    void Remove()
    {
        SetFileReadOnly(m_path.c_str(), false);
        RemoveFile(m_path.c_str());
    }

    std::string m_path;
};

void WriteWhole(const char* path, const std::string& text)
{
    FileHandle file;
    ASSERT_TRUE(OpenFile(path, kFileWrite, 0, FileCreation::CreateAlways, file));
    EXPECT_TRUE(WriteToFile(file, text.data(), text.size()));
    EXPECT_TRUE(CloseFile(file));
}

std::string ReadWhole(const char* path)
{
    FileHandle file;
    if (!OpenFile(path, kFileRead, 0, FileCreation::OpenExisting, file))
        return "(cannot be opened)";
    std::string text(1000, '\0');
    std::size_t done = 0;
    EXPECT_TRUE(ReadFromFile(file, text.data(), text.size(), done));
    EXPECT_TRUE(CloseFile(file));
    return text.substr(0, done);
}

FileError OpenAndClose(const char* path, unsigned access, unsigned deny, FileCreation creation)
{
    FileHandle file;
    const FileResult result = OpenFile(path, access, deny, creation, file);
    if (result)
        EXPECT_TRUE(CloseFile(file));
    else
        EXPECT_EQ(file, kNoFile);
    return result.error;
}

constexpr unsigned kBoth = kFileRead | kFileWrite;

// All nine accesses and denials (and none) of two openers against the rule, and a third opener
// afterwards: nothing may be left of the two when they are closed.
TEST(File, ShareModesBetweenTwoOpeners)
{
    const TempPath path("share");
    WriteWhole(path, "content");
    for (unsigned access1 = kFileRead; access1 <= kBoth; access1++) {
        for (unsigned deny1 = 0; deny1 <= kBoth; deny1++) {
            for (unsigned access2 = kFileRead; access2 <= kBoth; access2++) {
                for (unsigned deny2 = 0; deny2 <= kBoth; deny2++) {
                    FileHandle first;
                    ASSERT_TRUE(OpenFile(path, access1, deny1, FileCreation::OpenExisting, first));
                    const bool allowed = (access2 & deny1) == 0 && (deny2 & access1) == 0;
                    const FileError expected = allowed ? FileError::None : FileError::Sharing;
                    EXPECT_EQ(OpenAndClose(path, access2, deny2, FileCreation::OpenExisting),
                              expected)
                        << access1 << deny1 << access2 << deny2;
                    EXPECT_TRUE(CloseFile(first));
                    EXPECT_EQ(OpenAndClose(path, kBoth, kBoth, FileCreation::OpenExisting),
                              FileError::None);
                }
            }
        }
    }
}

// The facts of several openers add up, and one that leaves takes only its own.
TEST(File, ShareModesOfSeveralOpeners)
{
    const TempPath path("several");
    WriteWhole(path, "content");
    FileHandle reader1, reader2;
    ASSERT_TRUE(OpenFile(path, kFileRead, 0, FileCreation::OpenExisting, reader1));
    ASSERT_TRUE(OpenFile(path, kFileRead, kFileWrite, FileCreation::OpenExisting, reader2));
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::OpenExisting), FileError::Sharing);
    EXPECT_TRUE(CloseFile(reader2));
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::OpenExisting), FileError::None);
    EXPECT_EQ(OpenAndClose(path, kFileWrite, kFileRead, FileCreation::OpenExisting),
              FileError::Sharing);
    EXPECT_TRUE(CloseFile(reader1));
}

// Fails when the file is emptied before it is known that it may be opened.
TEST(File, ARefusedOpenerDoesNotEmptyTheFile)
{
    const TempPath path("refused");
    WriteWhole(path, "content");
    FileHandle reader;
    ASSERT_TRUE(OpenFile(path, kFileRead, kFileWrite, FileCreation::OpenExisting, reader));
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::CreateAlways), FileError::Sharing);
    EXPECT_TRUE(CloseFile(reader));
    EXPECT_EQ(ReadWhole(path), "content");
}

TEST(File, Creation)
{
    const TempPath path("creation");
    EXPECT_EQ(OpenAndClose(path, kFileRead, 0, FileCreation::OpenExisting), FileError::NotFound);
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::CreateNew), FileError::None);
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::CreateNew), FileError::AlreadyExists);
    WriteWhole(path, "content");
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::OpenAlways), FileError::None);
    EXPECT_EQ(ReadWhole(path), "content");
    EXPECT_EQ(OpenAndClose(path, kFileWrite, 0, FileCreation::CreateAlways), FileError::None);
    EXPECT_EQ(ReadWhole(path), "");
}

TEST(File, FailuresOfPaths)
{
    const TempPath path("failures");
    WriteWhole(path, "content");
    const std::string inMissingFolder = std::string(path) + "_missing/x";
    const struct {
        std::string path;
        unsigned access;
        FileError expected;
    } cases[] = {
        {"", kFileRead, FileError::BadPath},
        {std::string(path) + "_missing", kFileRead, FileError::NotFound},
        {inMissingFolder, kFileRead, FileError::BadPath},
        {std::string(path) + "/x", kFileRead, FileError::BadPath}, // a file for a folder
        {GetTempFolder() + ".", kFileRead, FileError::AccessDenied},
        {GetTempFolder() + ".", kFileWrite, FileError::AccessDenied},
    };
    for (const auto& c : cases)
        EXPECT_EQ(OpenAndClose(c.path.c_str(), c.access, 0, FileCreation::OpenExisting), c.expected)
            << c.path;
    FileHandle file;
    EXPECT_FALSE(OpenFile(static_cast<const char*>(nullptr), kFileRead, 0,
                          FileCreation::OpenExisting, file));
    EXPECT_FALSE(OpenFile(static_cast<const WCHAR*>(nullptr), kFileRead, 0,
                          FileCreation::OpenExisting, file));
}

// What was not asked for is refused although the system's own handle might allow it.
TEST(File, AccessIsLimitedToWhatWasAskedFor)
{
    const TempPath path("access");
    WriteWhole(path, "content");
    char byte = 'x';
    std::size_t done;
    FileHandle file;
    ASSERT_TRUE(OpenFile(path, kFileWrite, 0, FileCreation::OpenExisting, file));
    EXPECT_EQ(ReadFromFile(file, &byte, 1, done).error, FileError::AccessDenied);
    EXPECT_TRUE(CloseFile(file));
    ASSERT_TRUE(OpenFile(path, kFileRead, 0, FileCreation::OpenExisting, file));
    EXPECT_EQ(WriteToFile(file, &byte, 1).error, FileError::AccessDenied);
    EXPECT_FALSE(SetFileSize(file, 0));
    EXPECT_TRUE(FlushFile(file));
    EXPECT_TRUE(CloseFile(file));
    EXPECT_EQ(ReadFromFile(kNoFile, &byte, 1, done).error, FileError::InvalidHandle);
    EXPECT_EQ(WriteToFile(kNoFile, &byte, 1).error, FileError::InvalidHandle);
}

TEST(File, PositionAndSize)
{
    const TempPath path("position");
    FileHandle file;
    INT64 position = -1;
    INT64 size = -1;
    ASSERT_TRUE(OpenFile(path, kBoth, 0, FileCreation::CreateAlways, file));
    EXPECT_TRUE(WriteToFile(file, "0123456789", 10));
    EXPECT_TRUE(SeekFile(file, -3, SeekFrom::End, position));
    EXPECT_EQ(position, 7);
    EXPECT_EQ(SeekFile(file, -1, SeekFrom::Begin, position).error, FileError::BadSeek);
    EXPECT_TRUE(SeekFile(file, 0, SeekFrom::Current, position));
    EXPECT_EQ(position, 7);
    EXPECT_TRUE(SetFileSize(file, 4));
    EXPECT_TRUE(WriteToFile(file, "x", 1));
    EXPECT_TRUE(SeekFile(file, 5'000'000'000, SeekFrom::Begin, position));
    EXPECT_TRUE(GetFileSize(file, size));
    EXPECT_EQ(size, 5);
    EXPECT_TRUE(FlushFile(file));
    EXPECT_TRUE(CloseFile(file));
    EXPECT_EQ(ReadWhole(path), "0123x");
}

TEST(File, RenameReplaceAndInformation)
{
    const TempPath a("a");
    const TempPath b("b");
    WriteWhole(a, "a");
    WriteWhole(b, "bb");
    EXPECT_EQ(RenameFile(a, b).error, FileError::AlreadyExists);
    EXPECT_EQ(ReadWhole(b), "bb");
    EXPECT_TRUE(ReplaceFileWith(a, b));
    EXPECT_EQ(ReadWhole(b), "a");
    EXPECT_EQ(ReplaceFileWith(a, b).error, FileError::NotFound);
    EXPECT_EQ(RenameFile(a, b).error, FileError::NotFound);
    EXPECT_EQ(RemoveFile(a).error, FileError::NotFound);
    EXPECT_TRUE(RenameFile(b, a));
    EXPECT_EQ(ReadWhole(a), "a");

    FileInfo info;
    ASSERT_TRUE(GetFileInfo(a, info));
    EXPECT_EQ(info.size, 1);
    EXPECT_FALSE(info.directory || info.readOnly);
    EXPECT_GT(info.modified, 1'700'000'000);
    EXPECT_TRUE(SetFileReadOnly(a, true));
    ASSERT_TRUE(GetFileInfo(a, info));
    EXPECT_TRUE(info.readOnly);
    EXPECT_EQ(GetFileInfo(b, info).error, FileError::NotFound);
    ASSERT_TRUE(GetFileInfo((GetTempFolder() + ".").c_str(), info));
    EXPECT_TRUE(info.directory);
}

TEST(File, WidePathsAndFullPaths)
{
    const TempPath path("wide");
    WriteWhole(path, "content");
    const WString wide(path.operator const char*(),
                       path.operator const char*() + std::string(path).size());
    FileHandle file;
    ASSERT_TRUE(OpenFile(wide.c_str(), kFileRead, 0, FileCreation::OpenExisting, file));
    EXPECT_TRUE(CloseFile(file));
    EXPECT_EQ(GetFullPath(path), std::string(path));
    const std::string full = GetFullPath("name");
    EXPECT_GT(full.size(), 5u);
    EXPECT_TRUE(IsPathSeparator(full[full.size() - 5]));
    EXPECT_EQ(GetFullPath(""), "");
    EXPECT_TRUE(IsPathSeparator(GetTempFolder().back()));
}

} // namespace
} // namespace tlvn
