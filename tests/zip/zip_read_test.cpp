#include "tests/support/zip_check.h"
#include "tests/support/zip_maker.h"
#include "tests/zip/zip_support.h"

#include "platform/clock.h"

#include <gtest/gtest.h>

using namespace tlvn;
using zip_maker::Bytes;
using zip_maker::Make;
using zip_maker::Member;

namespace {

std::string Extra(unsigned id, const std::string& data)
{
    return Bytes({{2, id}, {2, data.size()}}) + data;
}

std::string Times(int flags, const std::vector<int>& times)
{
    std::string data(1, static_cast<char>(flags));
    for (const int time : times)
        data += Bytes({{4, static_cast<UINT64>(time)}});
    return Extra(kZipTimeExtra, data);
}

} // namespace

// Stored name -> shown name. The rows are one each for: the three kinds of prefix, in turn and
// repeated; the four patterns and which of them is taken first; a step that no pattern takes; a
// trail byte that looks like a separator; UTF-8; a zero; too long a name, also with a surrogate
// pair at the cut.
TEST(ZipRead, CleansNames)
{
    const std::string a(300, 'a');
    const struct {
        std::string stored, shown;
        unsigned flags = 0;
    } cases[] = {
        {"C:\\..\\..\\x.txt", "x.txt"},
        {"/a/b", "a/b"},
        {"C:D:/x", "x"},
        {"a:b:c", "c"},
        {"a/../b", "b"},
        {"a\\../b", "b"},
        {"a/..\\b", "b"},
        {"a/../b\\..\\c/../d", "d"},
        {"a/../\\x", "x"},
        {"../a", "../a"},
        {"a/../../b", "../b"},
        {"a/..", "a/.."},
        {"/", ""},
        {"\x83\x5C/..\\\x83\x5C", "\xE3\x82\xBD"},
        {"\xE3\x82\xBD.txt", "\xE3\x82\xBD.txt", kZipUtf8},
        {std::string("a\0/../b", 7), "a"},
        {a.substr(0, 258) + "\xF0\x9F\x98\x80", a.substr(0, 258), kZipUtf8},
        {a.substr(0, 257) + "\xF0\x9F\x98\x80", a.substr(0, 257) + "\xF0\x9F\x98\x80", kZipUtf8},
    };
    for (const auto& c : cases) {
        std::string archive = Make({{.name = c.stored, .flags = c.flags}});
        CZip zip;
        ASSERT_TRUE(OpenZip(zip, archive)) << c.stored;
        EXPECT_EQ(NameOf(zip, 0), c.shown) << c.stored;
    }
}

// A name of steps that only the last pattern takes; searching for the others again after each one
// would take minutes.
TEST(ZipRead, CleansLongNamesInLinearTime)
{
    std::string name;
    while (name.size() < 65000)
        name += "a/..\\";
    std::string archive = Make(std::vector<Member>(20, {.name = name + "end"}));
    CZip zip;
    ASSERT_TRUE(OpenZip(zip, archive));
    const INT64 begin = GetSystemTime();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(NameOf(zip, i), "end");
    EXPECT_LT(GetSystemTime() - begin, 20); // takes milliseconds
}

TEST(ZipRead, MapsAttributes)
{
    const struct {
        unsigned madeBy;
        DWORD external, attr;
    } cases[] = {
        {20, 0xFFFFFFFF, 55},          // DOS: only the known bits
        {0x0B17, 1 | 16, 17},          // NTFS
        {0x0714, 2 | 4, 6},            // host 7
        {0x0E14, 32, 32},              // host 14
        {0x0314, 0x81A40000, 32},      // Unix, -rw-r--r--
        {0x0314, 0x81240000 | 16, 33}, // -r--r--r--: the DOS bits do not count
        {0x0314, 0x41ED0000, 48},      // drwxr-xr-x
        {0x0114, 0, 33},               // any other is taken for Unix
    };
    for (const auto& c : cases) {
        std::string archive = Make({{.madeBy = c.madeBy, .attributes = c.external}});
        CZip zip;
        ZIPENTRY entry;
        ASSERT_TRUE(OpenZip(zip, archive) && zip.GetZipItem(0, &entry));
        EXPECT_EQ(entry.attr, c.attr) << std::hex << c.madeBy << ' ' << c.external;
    }
}

// Of the extended timestamps the local field wins, and what it lacks comes from the directory or
// the DOS time.
TEST(ZipRead, TakesTimesFromWhereTheyAre)
{
    std::tm local = {};
    local.tm_year = 125, local.tm_mon = 2, local.tm_mday = 15, local.tm_hour = 12;
    local.tm_isdst = -1;
    const INT64 dos = FromLocalTime(local);
    const struct {
        std::string local, central;
        DWORD dosTime;
        INT64 modified, accessed, created;
    } cases[] = {
        {"", "", 0x5A6F6000, dos, dos, dos},
        {"", "", 0, 0, 0, 0},          // no month, no day
        {"", "", 0x5A6FC000, 0, 0, 0}, // 24 o'clock
        {"", "", 0x5A9F6000, 0, 0, 0}, // the 31st of April
        {Times(7, {1000, 2000, -3000}), "", 0x5A6F6000, 1000, 2000, -3000},
        {Times(5, {1000, 3000}), "", 0x5A6F6000, 1000, dos, 3000},
        {"", Times(7, {1000}), 0x5A6F6000, 1000, dos, dos},
        {Times(2, {2000}), Times(7, {1000}), 0x5A6F6000, 1000, 2000, dos},
        {Extra(9, "x") + Times(1, {1000}), "", 0x5A6F6000, 1000, dos, dos},
        {Times(7, {1000}).substr(0, 7), "", 0x5A6F6000, dos, dos, dos}, // cut off
        {Extra(kZipTimeExtra, ""), "", 0x5A6F6000, dos, dos, dos},
    };
    for (const auto& c : cases) {
        std::string archive =
            Make({{.dosTime = c.dosTime, .localExtra = c.local, .centralExtra = c.central}});
        CZip zip;
        ZIPENTRY entry;
        ASSERT_TRUE(OpenZip(zip, archive) && zip.GetZipItem(0, &entry));
        EXPECT_EQ(Seconds(entry.mtime), c.modified) << &c - cases;
        EXPECT_EQ(Seconds(entry.atime), c.accessed) << &c - cases;
        EXPECT_EQ(Seconds(entry.ctime), c.created) << &c - cases;
    }
}

TEST(ZipRead, TellsTheCountAndChecksArguments)
{
    std::string archive = Make({{}, {.name = "b"}});
    CZip zip;
    char c;
    EXPECT_EQ(Code(zip, zip.GetZipItem(-1, nullptr)), 0x10000u);
    EXPECT_EQ(zip.UnzipItem(0, nullptr, 0), 0x10000);
    ASSERT_TRUE(OpenZip(zip, archive));
    ZIPENTRY entry, expected = {};
    std::memset(&entry, 0xCC, sizeof entry);
    expected.index = 2;
    ASSERT_TRUE(zip.GetZipItem(-1, &entry));
    EXPECT_EQ(std::memcmp(&entry, &expected, sizeof entry), 0);
    for (const int index : {-2, 2, INT_MAX, INT_MIN}) {
        EXPECT_EQ(Code(zip, zip.GetZipItem(index, &entry)), 0x10000u);
        EXPECT_EQ(zip.UnzipItem(index, &c, 1), 0x10000);
    }
    EXPECT_EQ(Code(zip, zip.GetZipItem(0, nullptr)), 0x10000u);
    EXPECT_EQ(zip.UnzipItem(0, nullptr, 1), 0x10000);
    EXPECT_EQ(Code(zip, zip.ZipAdd(TW("x"), nullptr, 0)), 0x80000u);
}

// Each chunk but the last leaves data behind, and says so; the call that delivers the last byte
// knows it.
TEST(ZipRead, DeliversInChunks)
{
    std::string content;
    for (char c = 0; c < 100; ++c)
        content += c;
    for (const unsigned method : {0u, 8u}) {
        std::string archive = Make({{.content = content, .method = method}, {.content = ""}});
        CZip zip;
        ASSERT_TRUE(OpenZip(zip, archive));
        char buffer[128];
        EXPECT_EQ(zip.UnzipItem(0, buffer, 60), 0x600);
        EXPECT_EQ(zip.UnzipItem(0, buffer, 60), 0);
        EXPECT_EQ(std::memcmp(buffer, content.data() + 60, 40), 0);
        EXPECT_EQ(zip.UnzipItem(0, buffer, 99), 0x600);
        EXPECT_EQ(zip.UnzipItem(0, buffer, 1), 0); // exactly to the end
        EXPECT_EQ(zip.UnzipItem(0, buffer, 99), 0x600);
        EXPECT_EQ(zip.UnzipItem(1, nullptr, 0), 0); // another one is gone to, the first forgotten
        EXPECT_EQ(zip.UnzipItem(0, buffer, 100), 0);
        EXPECT_EQ(std::memcmp(buffer, content.data(), 100), 0);
    }
}

// What the headers say against what is there -> codes of listing and of extracting.
TEST(ZipRead, RefusesHeadersThatLie)
{
    const UINT64 all = 0xFFFFFFFF;
    const std::string content = Member().content;
    const std::size_t size = content.size(), packed = zip_maker::Deflated(content).size();
    Member zip64 = {.method = 8, .sizeLie = all - size, .packedLie = all - packed};
    zip64.localExtra = zip64.centralExtra = Extra(kZip64Extra, Bytes({{8, size}, {8, packed}}));
    const struct {
        const char* what;
        Member member;
        DWORD listed;
        int extracted;
    } cases[] = {
        {"right, deflated", {.method = 8}, 0, 0},
        {"right, sizes in a zip64 field", zip64, 0, 0},
        {"deflated, empty, no byte", {.content = "", .method = 8, .packedLie = all - 4}, 0, 0},
        {"deflated, said longer", {.method = 8, .sizeLie = 1}, 0, 0x5000000},
        {"deflated, said shorter", {.method = 8, .sizeLie = all}, 0, 0x5000000},
        {"deflated, cut off", {.method = 8, .packedLie = all}, 0, 0x5000000},
        {"stored, said longer", {.sizeLie = 1}, 0, 0x5000000},
        {"wrong CRC", {.crcLie = 1}, 0, 0x5000000},
        {"4 GB declared", {.sizeLie = all - size}, 0x700, 0x5000000},
        {"2 GB - 1 declared", {.method = 8, .sizeLie = 0x7FFFFFFF - size}, 0, 0x5000000},
        {"4 GB packed", {.packedLie = all - size}, 0x700, 0x5000000},
        {"packed beyond the end", {.sizeLie = 200, .packedLie = 200}, 0x700, 0x5000000},
        {"far outside", {.offsetLie = 0x7FFFFFFF}, 0x800, 0x5000000},
        {"before the end", {.offsetLie = 120}, 0x800, 0x5000000},
        {"no local header there", {.offsetLie = 1}, 0x700, 0x5000000},
        {"zip64 without a field", {.offsetLie = all}, 0x700, 0x5000000},
        {"methods differ", {.localMethodLie = 8}, 0x700, 0x5000000},
        {"names differ", {.nameLie = 1}, 0x700, 0x5000000},
        {"method unknown to minizip too", {.method = 99}, 0, 0x5000000},
        {"no header", {.centralSignature = 0}, 0x700, 0x5000000},
        {"encrypted, no password", {.flags = 1}, 0, 0x1000},
    };
    for (const auto& c : cases) {
        std::string archive = Make({c.member});
        CZip zip;
        ZIPENTRY entry;
        ASSERT_TRUE(OpenZip(zip, archive)) << c.what;
        EXPECT_EQ(Code(zip, zip.GetZipItem(0, &entry)), c.listed) << c.what;
        std::string out(100, '\0');
        EXPECT_EQ(zip.UnzipItem(0, out.data(), 100), c.extracted) << c.what;
        EXPECT_EQ(GetLastZipResult(), static_cast<DWORD>(c.extracted)) << c.what;
    }
}

TEST(ZipRead, OpensOnlyArchives)
{
    const std::string good = Make({{}, {}});
    const struct {
        const char* what;
        std::string archive;
        bool opens;
    } cases[] = {
        {"with a comment", Make({{}}, {}, "", std::string(65000, 'c')), true},
        {"behind a program", Make({{}}, {}, std::string(5000, 'p')), true},
        {"without entries, behind a program", Make({}, {}, "p"), true},
        {"without entries, said to have some", Make({}, {.count = 1}), false},
        {"nothing", "", false},
        {"no end record", good.substr(0, good.size() - 1 - 21), false},
        {"directory behind the end record", Make({{}}, {.offset = 1}), false},
        {"directory larger than all", Make({{}}, {.size = 1 << 30}), false},
        {"65,535 entries", Make({{}}, {.count = 65534}), false},
    };
    for (const auto& c : cases) {
        std::string archive = c.archive;
        CZip zip;
        EXPECT_EQ(Code(zip, OpenZip(zip, archive)), c.opens ? 0u : 0x200u) << c.what;
        ZIPENTRY entry;
        EXPECT_EQ(Code(zip, zip.GetZipItem(-1, &entry)), c.opens ? 0u : 0x10000u) << c.what;
        if (entry.index > 0) {
            int code;
            EXPECT_EQ(Unzip(zip, 0, 7, code), Member().content) << c.what;
        }
    }
    EXPECT_EQ(CZip().OpenZip(nullptr, 22, nullptr), 0);
}

// A directory that ends before the number of entries that the end record says.
TEST(ZipRead, TellsWhereTheDirectoryEnds)
{
    std::string archive = Make({{}, {}, {}}, {.count = 2});
    CZip zip;
    ASSERT_TRUE(OpenZip(zip, archive));
    EXPECT_EQ(NameOf(zip, 4), std::to_string(kZipReadFailed));
    EXPECT_EQ(NameOf(zip, 2), "name");
    EXPECT_EQ(NameOf(zip, 3), std::to_string(kZipReadFailed));
}

// Under the sanitizers: no flipped byte and no cut leads outside the memory or to another code.
TEST(ZipRead, SurvivesEveryDamage)
{
    for (const char* password : {"", "secret"}) {
        const std::string whole = Pack(
            {{TW("a.txt"), "some text, some text, some text, some text"}, {TW("b.zip"), "stored"}},
            password);
        for (std::size_t i = 0; i < whole.size(); ++i) {
            EXPECT_STREQ(zip_check::Violation(whole.data(), i, password, 16), "") << i;
            for (const int flip : {0x01, 0x80, 0xFF}) {
                std::string damaged = whole;
                damaged[i] = static_cast<char>(damaged[i] ^ flip);
                EXPECT_STREQ(zip_check::Violation(damaged.data(), damaged.size(), password, 16), "")
                    << i;
            }
        }
    }
}
