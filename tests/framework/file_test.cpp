#include "framework/file.h"

#include "tests/support/temp_folder.h"
#include "tests/support/test.h"

namespace {

class CFileTest : public testing::Test {
protected:
    const TempFolder m_folder;
    const CString m_path = m_folder.Path("tlvn.first.dat").c_str();
    const CString m_missing = m_folder.Path("missing").c_str();
};

// The cause of the exception that `work` throws, or none; the file it names, in `name`.
template <class Work>
int CauseThrownBy(Work work, CString& name)
{
    try {
        work();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        name = e->m_strFileName;
        e->Delete();
        return cause;
    }
    return CFileException::none;
}

TEST_F(CFileTest, WritesReadsAndSeeks)
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
    file.Write("x", 1); // behind the new end
    EXPECT_EQ(file.Seek(5'000'000'000, CFile::begin), 5'000'000'000);
    EXPECT_EQ(file.GetLength(), 4u);
    EXPECT_STREQ(file.GetFileName(), "tlvn.first.dat");
    EXPECT_STREQ(file.GetFileTitle(), "tlvn.first");
    EXPECT_STREQ(file.GetFilePath(), m_path);
    file.Close();
    EXPECT_EQ(m_folder.Read("tlvn.first.dat"), "012x");
    EXPECT_FALSE(file.IsOpen());
    EXPECT_STREQ(file.GetFilePath(), "");
    file.Close(); // nothing to close
    CString name;
    EXPECT_EQ(CauseThrownBy([&] { file.GetLength(); }, name), CFileException::invalidFile);
}

// Each failure with its cause; the file's name goes into the exception.
TEST_F(CFileTest, Causes)
{
    m_folder.Write("tlvn.first.dat", "content");
    CFile held(CStringW(m_path), CFile::modeRead | CFile::shareDenyWrite);
    const CString folder = m_folder.Path().c_str();
    const std::tuple<CString, UINT, int> cases[] = {
        {m_missing, CFile::modeRead, CFileException::fileNotFound},
        {m_missing + "/x", CFile::modeRead, CFileException::badPath},
        {m_path + "/x", CFile::modeRead, CFileException::badPath}, // a file for a folder
        {"", CFile::modeRead, CFileException::badPath},
        {folder, CFile::modeRead, CFileException::accessDenied},
        {folder, CFile::modeWrite, CFileException::accessDenied},
        {m_path, CFile::modeWrite | CFile::shareDenyNone, CFileException::sharingViolation},
        {m_path, CFile::modeRead | CFile::shareDenyRead, CFileException::sharingViolation},
        {m_path, CFile::modeRead, CFileException::sharingViolation}, // shareCompat excludes
        {m_path, CFile::modeRead | CFile::shareDenyWrite, CFileException::none},
    };
    CString name;
    for (const auto& [path, flags, cause] : cases) {
        CFile file;
        CFileException error;
        const bool opens = cause == CFileException::none;
        EXPECT_EQ(file.Open(path, flags, &error), opens) << path;
        EXPECT_EQ(error.m_cause, cause) << path;
        EXPECT_EQ(error.m_strFileName, opens ? "" : path);
        EXPECT_EQ(file.Open(path, flags), opens);
        file.Close();
        name.Empty();
        EXPECT_EQ(CauseThrownBy([&] { CFile(path, flags); }, name), cause) << path;
        EXPECT_EQ(name, opens ? "" : path);
    }
    EXPECT_EQ(CauseThrownBy([&] { held.Write("x", 1); }, name), CFileException::accessDenied);
    EXPECT_EQ(name, m_path);
    EXPECT_EQ(CauseThrownBy([&] { held.Seek(-1, CFile::begin); }, name), CFileException::badSeek);
    EXPECT_THROW(held.Seek(0, 3), CInvalidArgException*);
}

TEST_F(CFileTest, CreationFlagsAndStatus)
{
    m_folder.Write("tlvn.first.dat", "content");
    CFileStatus status;
    {
        const CFile file(m_path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeRead);
        EXPECT_TRUE(file.GetStatus(status));
    }
    EXPECT_EQ(status.m_size, 7u);
    EXPECT_EQ(status.m_attribute & (CFile::directory | CFile::readOnly), 0);
    EXPECT_STREQ(status.m_szFullName, m_path);
    EXPECT_TRUE(CFile::GetStatus(m_folder.Path().c_str(), status));
    EXPECT_EQ(status.m_attribute & CFile::directory, CFile::directory);
    EXPECT_FALSE(CFile::GetStatus(m_missing, status));

    CFile file(m_path, CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(file.GetLength(), 0u);
    // Opening again closes what was open: the first opening no longer excludes.
    EXPECT_TRUE(file.Open(m_path, CFile::modeRead));
}

TEST_F(CFileTest, RenameAndRemove)
{
    CString name;
    m_folder.Write("tlvn.first.dat", "content");
    CFile::Rename(m_path, m_missing);
    const auto rename = [&] { CFile::Rename(m_path, m_missing); };
    EXPECT_EQ(CauseThrownBy(rename, name), CFileException::fileNotFound);
    m_folder.Write("tlvn.first.dat", "other");
    EXPECT_EQ(CauseThrownBy(rename, name), CFileException::accessDenied);
    EXPECT_EQ(m_folder.Read("missing"), "content");
    CFile::Remove(m_missing);
    EXPECT_EQ(CauseThrownBy([&] { CFile::Remove(m_missing); }, name), CFileException::fileNotFound);
}

} // namespace
