#include "framework/file.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class FileTest : public testing::Test {
protected:
    FileTest() : m_folder(tlvn::GetTempFolder().c_str())
    {
        m_path = m_folder + "tlvn_cfile_test.first.dat";
        tlvn::RemoveFile(m_path);
    }
    ~FileTest() override { tlvn::RemoveFile(m_path); }

    void WriteWhole(const char* text)
    {
        CFile file(m_path, CFile::modeCreate | CFile::modeWrite);
        file.Write(text, static_cast<UINT>(std::string(text).size()));
    }

    CString m_folder;
    CString m_path;
};

// The cause of the exception that `work` throws, or none.
template <class Work>
int CauseThrownBy(Work work)
{
    try {
        work();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return CFileException::none;
}

TEST_F(FileTest, WritesReadsAndSeeks)
{
    CFile file(m_path, CFile::modeCreate | CFile::modeReadWrite | CFile::shareExclusive);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.GetPosition(), 10u);
    EXPECT_EQ(file.Seek(-4, CFile::end), 6u);
    char buffer[20] = {};
    EXPECT_EQ(file.Read(buffer, 20), 4u); // fewer only at the end
    EXPECT_STREQ(buffer, "6789");
    EXPECT_EQ(file.Read(buffer, 20), 0u);
    EXPECT_EQ(file.Seek(2, CFile::begin), 2u);
    EXPECT_EQ(file.Seek(3, CFile::current), 5u);
    file.SetLength(3);
    EXPECT_EQ(file.SeekToEnd(), 3u);
    EXPECT_EQ(file.GetLength(), 3u);
    file.Flush();
    EXPECT_STREQ(file.GetFileName(), "tlvn_cfile_test.first.dat");
    EXPECT_STREQ(file.GetFileTitle(), "tlvn_cfile_test.first");
    EXPECT_STREQ(file.GetFilePath(), m_path);
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_STREQ(file.GetFilePath(), "");
    file.Close(); // nothing to close
    EXPECT_EQ(CauseThrownBy([&] { file.GetLength(); }), CFileException::invalidFile);
}

// Each failure with its cause; the file's name goes into the exception.
TEST_F(FileTest, Causes)
{
    WriteWhole("x");
    CFile held(m_path, CFile::modeRead | CFile::shareDenyWrite);
    const struct {
        CString path;
        UINT flags;
        int cause;
    } cases[] = {
        {m_folder + "tlvn_no_such_file", CFile::modeRead, CFileException::fileNotFound},
        {m_folder + "tlvn_no_such_folder/x", CFile::modeRead, CFileException::badPath},
        {"", CFile::modeRead, CFileException::badPath},
        {m_folder + ".", CFile::modeWrite, CFileException::accessDenied},
        {m_path, CFile::modeWrite | CFile::shareDenyNone, CFileException::sharingViolation},
        {m_path, CFile::modeRead | CFile::shareDenyRead, CFileException::sharingViolation},
        {m_path, CFile::modeRead, CFileException::sharingViolation}, // shareCompat excludes
        {m_path, CFile::modeRead | CFile::shareDenyWrite, CFileException::none},
    };
    for (const auto& c : cases) {
        CFile file;
        CFileException error;
        EXPECT_EQ(file.Open(c.path, c.flags, &error), c.cause == CFileException::none) << c.path;
        EXPECT_EQ(error.m_cause, c.cause) << c.path;
        if (c.cause == CFileException::none)
            continue;
        EXPECT_EQ(error.m_strFileName, c.path);
        EXPECT_FALSE(file.Open(c.path, c.flags));
        try {
            const CFile thrown(c.path, c.flags);
            ADD_FAILURE() << "nothing thrown for " << c.path;
        } catch (CFileException* e) {
            EXPECT_EQ(e->m_cause, c.cause);
            e->Delete();
        }
    }
    try {
        held.Write("x", 1);
        ADD_FAILURE() << "written to a file opened for reading";
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::accessDenied);
        EXPECT_EQ(e->m_strFileName, m_path);
        e->Delete();
    }
    EXPECT_EQ(CauseThrownBy([&] { held.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_THROW(held.Seek(0, 3), CInvalidArgException*);
}

TEST_F(FileTest, CreationFlags)
{
    WriteWhole("content");
    {
        CFile file(m_path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeRead);
        EXPECT_EQ(file.GetLength(), 7u);
    }
    CFile file(m_path, CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(file.GetLength(), 0u);
    // Opening again closes what was open: the first opening no longer excludes.
    EXPECT_TRUE(file.Open(m_path, CFile::modeRead));
}

// The destructor closes; a wide path finds the same file.
TEST_F(FileTest, WidePathsAndStatus)
{
    WriteWhole("content");
    {
        const CFile first(CStringW(m_path), CFile::modeReadWrite);
        EXPECT_TRUE(first.IsOpen());
    }
    CFile file(CStringW(m_path), CFile::modeRead | CFile::shareDenyNone);
    CFileStatus status;
    EXPECT_TRUE(file.GetStatus(status));
    EXPECT_EQ(status.m_size, 7u);
    EXPECT_EQ(status.m_attribute & (CFile::directory | CFile::readOnly), 0);
    EXPECT_STREQ(status.m_szFullName, m_path);
    EXPECT_TRUE(CFile::GetStatus(m_folder + ".", status));
    EXPECT_EQ(status.m_attribute & CFile::directory, CFile::directory);
    EXPECT_FALSE(CFile::GetStatus(m_folder + "tlvn_no_such_file", status));
}

TEST_F(FileTest, RenameAndRemove)
{
    const CString other = m_path + ".renamed";
    tlvn::RemoveFile(other);
    WriteWhole("content");
    CFile::Rename(m_path, other);
    EXPECT_EQ(CauseThrownBy([&] { CFile::Rename(m_path, other); }), CFileException::fileNotFound);
    WriteWhole("other");
    EXPECT_EQ(CauseThrownBy([&] { CFile::Rename(m_path, other); }), CFileException::accessDenied);
    CFile::Remove(other);
    EXPECT_EQ(CauseThrownBy([&] { CFile::Remove(other); }), CFileException::fileNotFound);
}

} // namespace
