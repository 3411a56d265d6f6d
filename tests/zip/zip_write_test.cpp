#include "persist/zip/zip_format.h"
#include "platform/clock.h"
#include "platform/string_table.h"
#include "tests/support/zip_maker.h"
#include "tests/zip/zip_support.h"

#include <gtest/gtest.h>

#include <random>

using namespace tlvn;
using zip_maker::Bytes;

namespace {

// The fields of the header at `offset`.
const BYTE* At(const std::string& archive, std::size_t offset)
{
    return reinterpret_cast<const BYTE*>(archive.data()) + offset;
}

} // namespace

// Every field of a stored entry, with and without password; what is other for a deflated one and
// for a folder.
TEST(ZipWrite, WritesTheHeadersChosen)
{
    for (const bool encrypted : {false, true}) {
        std::string archive = Pack({{TW("dir\\file.zip"), "123456789"},
                                    {TW("mail.txt"), std::string(1000, 'x')},
                                    {TW("folder\\"), ""}},
                                   encrypted ? "pw" : nullptr);
        const std::size_t packed = encrypted ? 21 : 9, end = archive.size() - kZipEndSize;
        const UINT64 flags = encrypted ? 9 : 8, crc = 0xCBF43926;
        const UINT64 dosTime = GetZip32(At(archive, 10)), time = GetZip32(At(archive, 47));
        EXPECT_LT(GetSystemTime() - static_cast<INT64>(time), 60);

        const std::string local =
            Bytes({{4, kZipLocalSignature}, {2, 20}, {2, flags}, {2, 0}, {4, dosTime}}) +
            Bytes({{12, 0}, {2, 12}, {2, 17}}) + "dir/file.zip" +
            Bytes({{2, kZipTimeExtra}, {2, 13}, {1, 7}, {4, time}, {4, time}, {4, time}});
        EXPECT_EQ(archive.substr(0, 59), local);
        EXPECT_EQ(archive.substr(59, 9) == "123456789", !encrypted);
        EXPECT_EQ(archive.substr(59 + packed, 16),
                  Bytes({{4, kZipDescriptorSignature}, {4, crc}, {4, packed}, {4, 9}}));

        const std::size_t directory = GetZip32(At(archive, end + 16));
        const std::string central =
            Bytes({{4, kZipCentralSignature}, {2, 2839}, {2, 20}, {2, flags}, {2, 0}}) +
            Bytes({{4, dosTime}, {4, crc}, {4, packed}, {4, 9}, {2, 12}, {2, 9}, {6, 0}}) +
            Bytes({{4, 32}, {4, 0}}) + "dir/file.zip" +
            Bytes({{2, kZipTimeExtra}, {2, 5}, {1, 7}, {4, time}});
        EXPECT_EQ(archive.substr(directory, 67), central);
        EXPECT_EQ(GetZip16(At(archive, directory + 67 + 10)), 8u); // mail.txt is deflated
        EXPECT_LT(GetZip32(At(archive, directory + 67 + 20)), 50u);
        EXPECT_EQ(GetZip32(At(archive, directory + 67 + 63 + 38)), 16u);
        EXPECT_EQ(archive.substr(end),
                  Bytes({{4, kZipEndSignature}, {4, 0}, {2, 3}, {2, 3}, {4, end - directory}}) +
                      Bytes({{4, directory}, {2, 0}}));

        // Without the timestamp fields the DOS time tells the same, to two seconds.
        for (std::size_t at; (at = archive.find("UT")) != std::string::npos;)
            archive[at] = 'X';
        CZip zip;
        ZIPENTRY entry;
        ASSERT_TRUE(OpenZip(zip, archive) && zip.GetZipItem(0, &entry));
        EXPECT_EQ(Seconds(entry.mtime), static_cast<INT64>(time & ~UINT64{1}));
    }
}

// Name -> stored name, in the multibyte code page, and method: extensions longer than those and not
// the last; a trail byte that looks like "|"; what has no code; a cut between and inside
// characters; the extensions, one in capitals.
TEST(ZipWrite, StoresNamesAndChoosesMethods)
{
    const WString kana(130, TW('\x30A2'));
    std::string cut;
    for (int i = 0; i < 129; ++i)
        cut += "\x83\x41";
    struct Case {
        WString name;
        std::string stored;
        unsigned method;
    };
    std::vector<Case> cases = {
        {TW("a.zipx"), "a.zipx", 8},
        {TW("a.gz.txt"), "a.gz.txt", 8},
        {TW("a.zip/b"), "a.zip/b", 8},
        {TW("C:\\a*b?\"<>|\x1F.txt"), "C_/a_b______.txt", 8},
        {TW("\x30BF\x30BD\\x"), "\x83\x5E\x83\x5C/x", 8},
        {TW("\x2460\x00E9.txt"), "\x87\x40_.txt", 8},
        {kana, cut, 8},
        {TW("x") + kana, "x" + cut, 8},
    };
    for (const char* name : {"a.Z", "a.ZIP", "a.zoo", "a.arc", "a.lzh", "a.arj", "a.gz", "a.tgz"})
        cases.push_back({WidenText(name), name, 0});
    std::vector<std::pair<WString, std::string>> entries;
    for (const auto& c : cases)
        entries.emplace_back(c.name, "content");
    const std::string archive = Pack(entries);
    std::size_t central = GetZip32(At(archive, archive.size() - 6));
    for (const auto& c : cases) {
        const unsigned length = GetZip16(At(archive, central + 28));
        EXPECT_EQ(archive.substr(central + 46, length), c.stored);
        EXPECT_EQ(GetZip16(At(archive, central + 10)), c.method) << c.stored;
        central += 46 + length + 9;
    }
}

// Random contents around the size of a block, packable and not, in random chunks.
TEST(ZipWrite, ReadsBackWhatItWrote)
{
    std::mt19937 random(5);
    CZip zip;
    for (const char* password : {"", "\x83\x5C and more of it, longer than a block"}) {
        std::vector<std::pair<WString, std::string>> entries;
        for (const unsigned size : {0u, 1u, 65535u, 65536u, 65537u, 300000u}) {
            entries.emplace_back(size % 3 == 0 ? TW("x.gz") : TW("x"), std::string(size, '\0'));
            for (char& c : entries.back().second)
                c = static_cast<char>(random() % (size % 2 != 0 ? 256 : 4));
        }
        std::string archive = Pack(entries, password);
        ASSERT_TRUE(OpenZip(zip, archive, password));
        for (unsigned round = 0; round < 60; ++round) {
            const std::size_t index = round % entries.size();
            const auto chunk = static_cast<unsigned>(1 + random() % 70000);
            int code;
            EXPECT_EQ(Unzip(zip, static_cast<int>(index), chunk, code), entries[index].second);
            EXPECT_EQ(code, 0);
        }
    }
}

// No wrong password is taken for damage, and no damage behind the check for a wrong password.
TEST(ZipWrite, TellsWrongPasswordFromDamage)
{
    for (const WCHAR* name : {TW("a.txt"), TW("a.zip")}) {
        std::string archive = Pack({{name, "some text, some text, some text, some text"}}, "right");
        CZip zip;
        int code, wrong = 0, atOnce = 0;
        char c;
        for (int i = 0; i < 2000; ++i) {
            ASSERT_TRUE(OpenZip(zip, archive, i == 0 ? "" : std::to_string(i).c_str()));
            Unzip(zip, 0, 100, code);
            wrong += code == 0x1000;
            atOnce += zip.UnzipItem(0, &c, 1) == 0x1000;
        }
        EXPECT_GE(atOnce, 1940); // all but two in 256
        EXPECT_GE(wrong, 1999);  // one in 65,536 looks right

        ZIPENTRY entry;
        ASSERT_TRUE(zip.GetZipItem(0, &entry));
        const std::size_t data = 30 + 5 + 17;
        for (std::size_t i = 12; i < static_cast<std::size_t>(entry.comp_size); ++i) {
            std::string damaged = archive;
            damaged[data + i] = static_cast<char>(damaged[data + i] ^ 0x55);
            ASSERT_TRUE(OpenZip(zip, damaged, "right"));
            Unzip(zip, 0, 100, code);
            EXPECT_EQ(code, 0x5000000) << i;
        }
    }
}

// 65,534 entries, the most that the old end record can count, and one more.
TEST(ZipWrite, WritesZip64WhereItHasTo)
{
    for (const int count : {65533, 65534}) {
        const TempFolder folder;
        CZip zip;
        ASSERT_TRUE(Create(zip, folder));
        for (int i = 0; i < count; ++i)
            ASSERT_TRUE(zip.ZipAdd(TW("a.gz"), nullptr, 0));
        ASSERT_TRUE(Add(zip, TW("last.gz"), "last"));
        ASSERT_TRUE(zip.Close());
        std::string archive = folder.Read("a.zip");
        EXPECT_EQ(archive.find(Bytes({{4, kZip64EndSignature}})) != archive.npos, count == 65534);
        ASSERT_TRUE(OpenZip(zip, archive));
        ZIPENTRY entry;
        ASSERT_TRUE(zip.GetZipItem(-1, &entry));
        EXPECT_EQ(entry.index, count + 1);
        int code;
        EXPECT_EQ(Unzip(zip, count, 10, code), "last");
    }
}

TEST(ZipWrite, ChecksArgumentsAndState)
{
    const TempFolder folder;
    CZip zip;
    char c = 'x';
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW("a"), &c, 1)), 0x10000u);
    EXPECT_EQ(Code(zip, zip.Close()), 0x10000u);

    ASSERT_TRUE(Create(zip, folder));
    ZIPENTRY entry;
    EXPECT_EQ(Code(zip, zip.GetZipItem(-1, &entry)), 0x80000u);
    EXPECT_EQ(zip.UnzipItem(0, &c, 1), 0x80000);
    EXPECT_EQ(Code(zip, zip.ZipAdd(nullptr, &c, 1)), 0x10000u);
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW(""), &c, 1)), 0x10000u);
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW("a"), nullptr, 1)), 0x10000u);
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW("a"), &c, 0xFFFFFFFF)), 0x400u);
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW("a"), &c, 1)), 0u); // none of that has broken it
    EXPECT_EQ(Code(zip, zip.Close()), 0u);
    EXPECT_EQ(Code(zip, zip.Close()), 0u); // a second time, too
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW("a"), &c, 1)), 0x50000u);
    EXPECT_TRUE(zip.Failed() && !zip.Succeeded());
}

// Each way in which an archive is closed: for all by the first copy that goes, writing the
// directory; for a new archive in the same object; by the destructor.
TEST(ZipWrite, ClosesOnceForAllCopies)
{
    const TempFolder folder;
    {
        CZip first;
        ASSERT_TRUE(Create(first, folder, nullptr, "1.zip"));
        {
            CZip second(first);
            CZip third;
            third = second;
            EXPECT_TRUE(Add(third, TW("a"), "1.zip"));
        }
        EXPECT_EQ(Code(first, Add(first, TW("b"), "too late")), 0x50000u);
        ASSERT_TRUE(Create(first, folder, nullptr, "2.zip"));
        ASSERT_TRUE(Add(first, TW("a"), "2.zip"));
        ASSERT_TRUE(Create(first, folder, nullptr, "3.zip"));
        ASSERT_TRUE(Add(first, TW("a"), "3.zip"));
    }
    for (const char* name : {"1.zip", "2.zip", "3.zip"}) {
        std::string archive = folder.Read(name);
        CZip reader;
        ASSERT_TRUE(OpenZip(reader, archive)) << name;
        CZip copy(reader);
        int code;
        EXPECT_EQ(Unzip(copy, 0, 100, code), name);
        EXPECT_TRUE(copy.Close());
        EXPECT_EQ(reader.UnzipItem(0, nullptr, 0), 0x10000);
    }
}

TEST(ZipWrite, TellsWhyAFileCannotBeMade)
{
    CZip zip;
    EXPECT_EQ(Code(zip, zip.CreateZip(nullptr, nullptr)), 0x200u);
    EXPECT_EQ(Code(zip, zip.CreateZip(TW(""), nullptr)), 0x200u);
    const WString folder = WidenText(GetTempFolder()) + TW("no_such_folder\\/x.zip");
    EXPECT_EQ(Code(zip, zip.CreateZip(folder.c_str(), nullptr)), 0x200u);
    const WString message(zip.GetLastErrorMsg().GetString());
    EXPECT_TRUE(message.starts_with(TW("[ZIP} ")));
    EXPECT_TRUE(message.ends_with(TW("\nFile: ") + folder));
    zip.SetZipName(nullptr);
    EXPECT_LT(zip.GetLastErrorMsg().Find('\n'), 0);
    EXPECT_EQ(Code(zip, Add(zip, TW("a"), "x")), 0x10000u);
}

// Codes -> numbers of the messages, which are not in the same order.
TEST(ZipWrite, HasAMessageForEveryCode)
{
    const DWORD cases[][2] = {{0, 5000},         {0x100, 5002},   {0x800, 5009},
                              {0x10000, 5011},   {0x20000, 5013}, {0x60000, 5017},
                              {0x70000, 5012},   {0x80000, 5018}, {0x1000000, 5019},
                              {0x5000000, 5022}, {0x900, 5001},   {0xFFFFFFFF, 5001}};
    for (const auto& c : cases)
        EXPECT_EQ(ZipMessageId(c[0]), c[1]) << std::hex << c[0];
    for (UINT id = 5000; id <= 5022; ++id)
        EXPECT_FALSE(FindMessage(id).empty()) << id;
}
