// Zip archives in memory: inflating and listing beside minizip over the same memory.

#include "TlvnMisc.h"
#include "bench/bench_table.h"
#include "platform/file.h"
#include "platform/nls.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

// minizip's stream over a block of memory.
struct Memory {
    const std::string* content;
    std::size_t position = 0;

    static voidpf Begin(voidpf memory, const void*, int) { return memory; }
    static uLong Read(voidpf, voidpf stream, void* buffer, uLong size)
    {
        auto& m = *static_cast<Memory*>(stream);
        const std::size_t done = std::min<std::size_t>(size, m.content->size() - m.position);
        std::memcpy(buffer, m.content->data() + m.position, done);
        m.position += done;
        return static_cast<uLong>(done);
    }
    static ZPOS64_T Tell(voidpf, voidpf stream) { return static_cast<Memory*>(stream)->position; }
    static long Seek(voidpf, voidpf stream, ZPOS64_T offset, int origin)
    {
        auto& m = *static_cast<Memory*>(stream);
        if (origin == ZLIB_FILEFUNC_SEEK_CUR)
            offset += m.position;
        else if (origin == ZLIB_FILEFUNC_SEEK_END)
            offset += m.content->size();
        m.position = static_cast<std::size_t>(offset);
        return 0;
    }
    static int Nothing(voidpf, voidpf) { return 0; }
};

unzFile OpenPeer(Memory& memory)
{
    zlib_filefunc64_def functions = {};
    functions.zopen64_file = Memory::Begin;
    functions.zread_file = Memory::Read;
    functions.ztell64_file = Memory::Tell;
    functions.zseek64_file = Memory::Seek;
    functions.zclose_file = Memory::Nothing;
    functions.zerror_file = Memory::Nothing;
    functions.opaque = &memory;
    return unzOpen2_64("", &functions);
}

// An archive of `count` entries of the same content.
std::string MakeArchive(int count, std::string content)
{
    const std::string path = tlvn::GetTempFolder() + "tlvn_bench.zip";
    CZip zip;
    zip.CreateZip(tlvn::WidenText(path).c_str(), nullptr);
    for (int i = 0; i < count; ++i)
        zip.ZipAdd(tlvn::WidenText("mail/folder/" + std::to_string(i) + ".eml").c_str(),
                   content.data(), static_cast<unsigned>(content.size()));
    zip.Close();
    CFile file(path.c_str(), CFile::modeRead);
    std::string archive(static_cast<std::size_t>(file.GetLength()), '\0');
    file.Read(archive.data(), static_cast<UINT>(archive.size()));
    file.Close();
    tlvn::RemoveFile(path.c_str());
    return archive;
}

// Text of random words: packs to about a third, as mail does.
std::string MakeText(std::size_t size)
{
    std::mt19937 random(1);
    std::vector<std::string> words;
    for (int i = 0; i < 4000; ++i) {
        std::string word;
        for (auto k = 2 + random() % 8; k > 0; --k)
            word += static_cast<char>('a' + random() % 26);
        words.push_back(word);
    }
    std::string text;
    while (text.size() < size)
        text += words[random() % 64 * (random() % 63)] + (random() % 12 == 0 ? "\r\n" : " ");
    text.resize(size);
    return text;
}

void Inflating(BenchTable& table)
{
    constexpr std::size_t kSize = 50 << 20;
    std::string archive = MakeArchive(1, MakeText(kSize));
    for (const unsigned chunk : {4096u, 65536u, 4u << 20}) {
        std::vector<char> buffer(chunk);
        CZip zip;
        zip.OpenZip(archive.data(), static_cast<unsigned>(archive.size()), nullptr);
        Memory memory = {&archive};
        const unzFile peer = OpenPeer(memory);
        table.Compare(
            "inflate 50 MB in chunks of " + std::to_string(chunk / 1024) + " KB",
            static_cast<double>(kSize), "minizip",
            [&] {
                while (zip.UnzipItem(0, buffer.data(), chunk) == 0x600)
                    Use(buffer.data());
            },
            [&] {
                unzGoToFirstFile(peer);
                unzOpenCurrentFile(peer);
                while (unzReadCurrentFile(peer, buffer.data(), chunk) > 0)
                    Use(buffer.data());
                unzCloseCurrentFile(peer);
            });
        unzClose(peer);
    }
}

void SmallEntries(BenchTable& table)
{
    constexpr int kCount = 2000;
    constexpr unsigned kSize = 4000;
    std::string archive = MakeArchive(kCount, MakeText(kSize));
    char buffer[kSize];
    CZip zip;
    zip.OpenZip(archive.data(), static_cast<unsigned>(archive.size()), nullptr);
    Memory memory = {&archive};
    const unzFile peer = OpenPeer(memory);
    table.Compare(
        "inflate 2,000 entries of 4 KB", double{kCount} * kSize, "minizip, next file",
        [&] {
            for (int i = 0; i < kCount; ++i)
                zip.UnzipItem(i, buffer, kSize);
            Use(buffer);
        },
        [&] {
            unzGoToFirstFile(peer);
            for (int i = 0; i < kCount; ++i) {
                unzOpenCurrentFile(peer);
                unzReadCurrentFile(peer, buffer, kSize);
                unzCloseCurrentFile(peer);
                unzGoToNextFile(peer);
            }
            Use(buffer);
        });
    unzClose(peer);
}

// Name, sizes and times of the entry that minizip is at.
void DescribePeer(unzFile peer)
{
    unz_file_info64 info;
    char name[260];
    unzGetCurrentFileInfo64(peer, &info, name, sizeof name, nullptr, 0, nullptr, 0);
    Use(name);
}

void Listing(BenchTable& table)
{
    constexpr int kCount = 20000;
    std::string archive = MakeArchive(kCount, "x");
    Memory memory = {&archive};
    const unzFile peer = OpenPeer(memory);
    std::vector<unz64_file_pos> positions;
    std::vector<std::string> names;
    for (int at = unzGoToFirstFile(peer); at == UNZ_OK; at = unzGoToNextFile(peer)) {
        char name[260];
        unzGetCurrentFileInfo64(peer, nullptr, name, sizeof name, nullptr, 0, nullptr, 0);
        names.push_back(name);
        positions.emplace_back();
        unzGetFilePos64(peer, &positions.back());
    }
    // A new reader each time, so that its table is built within.
    const auto list = [&](int count) {
        CZip zip;
        zip.OpenZip(archive.data(), static_cast<unsigned>(archive.size()), nullptr);
        ZIPENTRY entry;
        for (int i = 0; i < count; ++i)
            zip.GetZipItem(i, &entry);
        Use(&entry);
    };
    const double bytes = static_cast<double>(archive.size());
    table.Compare(
        "list 20,000 entries", bytes, "go to a known position", [&] { list(kCount); },
        [&] {
            for (const unz64_file_pos& position : positions) {
                unzGoToFilePos64(peer, &position);
                DescribePeer(peer);
            }
        });
    table.Compare(
        "list 20,000 entries", bytes, "go to the next file", [&] { list(kCount); },
        [&] {
            for (int at = unzGoToFirstFile(peer); at == UNZ_OK; at = unzGoToNextFile(peer))
                DescribePeer(peer);
        });
    // Going there from the first file each time takes minizip minutes for all of them.
    constexpr int kFew = 1000;
    table.Compare(
        "list 1,000 of them", bytes * kFew / kCount, "go to each by name", [&] { list(kFew); },
        [&] {
            for (int i = 0; i < kFew; ++i) {
                unzLocateFile(peer, names[static_cast<std::size_t>(i)].c_str(), 1);
                DescribePeer(peer);
            }
        },
        3);
    table.Compare(
        "list 1,000 of them", bytes * kFew / kCount, "go on from the first", [&] { list(kFew); },
        [&] {
            for (int i = 0; i < kFew; ++i) {
                unzGoToFirstFile(peer);
                for (int k = 0; k < i; ++k)
                    unzGoToNextFile(peer);
                DescribePeer(peer);
            }
        },
        3);
    unzClose(peer);
}

} // namespace

int main()
{
    BenchTable table;
    Inflating(table);
    SmallEntries(table);
    Listing(table);
    table.Print();
    return 0;
}
