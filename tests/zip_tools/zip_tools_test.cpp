// Other programs read what we write, and we read what they write.
//
// Each test needs a program and is left out, saying so, where that is not installed.

#include "tests/zip/zip_support.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace tlvn;

namespace {

bool RunIn(const TempFolder& folder, const std::string& command)
{
    return std::system(
               ("exec >/dev/null 2>&1; cd '" + folder.Path() + "' && " + command).c_str()) == 0;
}

std::map<std::string, std::string> SampleFiles()
{
    std::map<std::string, std::string> files = {
        {"mail.txt", ""}, {"empty", ""}, {"dir/packed.zip", "as it is"}};
    for (int i = 0; i < 50000; ++i)
        files["mail.txt"] += "line " + std::to_string(i * 7919 % 1000) + "\n";
    for (unsigned i = 0; i < 100000; ++i)
        files["dir/noise"] += static_cast<char>(i * 2654435761u >> 24);
    return files;
}

struct Tool {
    const char *name, *program, *command;
};

// Extract a.zip, with the password "pw" if it needs one, to the folder out.
constexpr Tool kReaders[] = {
    {"unzip", "unzip", "unzip -P pw -t a.zip && unzip -P pw a.zip -d out"},
    {"7z", "7z", "7z t -ppw a.zip && 7z x -ppw -oout a.zip"},
    {"python3", "python3",
     "python3 -c 'import zipfile; z = zipfile.ZipFile(\"a.zip\"); z.setpassword(b\"pw\"); "
     "assert z.testzip() is None; z.extractall(\"out\")'"},
};

// Pack the folder in, from inside, to ../a.zip.
constexpr Tool kWriters[] = {
    {"zip", "zip", "zip -r ../a.zip ."},
    {"zip_streaming_encrypted", "zip", "zip -P pw -fd -r - . | cat >../a.zip"},
    {"zip_with_zip64", "zip", "zip -fz -r ../a.zip ."},
    {"7z", "7z", "7z a -tzip ../a.zip ."},
    {"7z_encrypted", "7z", "7z a -tzip -ppw -mem=ZipCrypto ../a.zip ."},
    {"python3", "python3", "python3 -m zipfile -c ../a.zip *"},
};

class ZipTool : public testing::TestWithParam<Tool> {
protected:
    void SetUp() override
    {
        if (!RunIn(m_folder, std::string("command -v ") + GetParam().program))
            GTEST_SKIP() << GetParam().program << " is not installed";
    }

    const TempFolder m_folder;
    const std::map<std::string, std::string> m_files = SampleFiles();
};
using ZipReaderTool = ZipTool;
using ZipWriterTool = ZipTool;

std::string NameOfTool(const testing::TestParamInfo<Tool>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(ZipReaderTool, ReadsOurs)
{
    for (const char* password : {"", "pw"}) {
        const TempFolder folder;
        CZip zip;
        ASSERT_TRUE(Create(zip, folder, password));
        for (const auto& [name, content] : m_files)
            ASSERT_TRUE(Add(zip, WidenText(name).c_str(), content));
        ASSERT_TRUE(Add(zip, TW("folder\\"), ""));
        ASSERT_TRUE(zip.Close());
        EXPECT_TRUE(RunIn(folder, GetParam().command)) << password;
        for (const auto& [name, content] : m_files)
            EXPECT_EQ(folder.Read("out/" + name), content) << name;
        EXPECT_TRUE(std::filesystem::is_directory(folder.Native("out/folder")));
    }
}
INSTANTIATE_TEST_SUITE_P(All, ZipReaderTool, testing::ValuesIn(kReaders), NameOfTool);

TEST_P(ZipWriterTool, IsReadByUs)
{
    for (const auto& [name, content] : m_files)
        m_folder.Write("in/" + name, content);
    ASSERT_TRUE(RunIn(m_folder, std::string("cd in && ") + GetParam().command));
    EXPECT_EQ(ReadZip(m_folder.Read("a.zip"), "pw"), m_files);
}
INSTANTIATE_TEST_SUITE_P(All, ZipWriterTool, testing::ValuesIn(kWriters), NameOfTool);

// Every write fails there, as on a full disk.
TEST(ZipTools, TellsOfAFullDisk)
{
    CZip zip;
    ASSERT_TRUE(zip.CreateZip(TW("/dev/full"), ""));
    ASSERT_TRUE(Add(zip, TW("small"), "still in the buffer"));
    EXPECT_EQ(Code(zip, zip.Close()), 0x400u);
    ASSERT_TRUE(zip.CreateZip(TW("/dev/full"), ""));
    EXPECT_EQ(Code(zip, Add(zip, TW("a.gz"), std::string(200000, 'x'))), 0x400u);
    EXPECT_EQ(Code(zip, Add(zip, TW("b"), "x")), 0x40000u);
    EXPECT_EQ(Code(zip, zip.Close()), 0x400u);
    EXPECT_TRUE(zip.Close());
}
