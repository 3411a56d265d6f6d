// Zip archives: the input as an archive gives nothing but the codes that there are, whatever it
// is; as entries it is written and read back equal.

#include "fuzz/fuzz.h"

#include "platform/file.h"
#include "platform/nls.h"
#include "tests/support/byte_source.h"
#include "tests/support/zip_check.h"

#include <cstring>
#include <vector>

namespace {

struct Entry {
    std::string name, content;
};

const std::string& FilePath()
{
    static const std::string path =
        tlvn::GetTempFolder() + "tlvn_fuzz_" + std::to_string(GetRandom()) + ".zip";
    return path;
}

std::string WriteArchive(const std::vector<Entry>& entries, const char* password)
{
    CZip zip;
    FUZZ_CHECK(zip.CreateZip(tlvn::WidenText(FilePath()).c_str(), password));
    for (const Entry& entry : entries)
        FUZZ_CHECK(zip.ZipAdd(tlvn::WidenText(entry.name).c_str(),
                              const_cast<char*>(entry.content.data()),
                              static_cast<unsigned>(entry.content.size())));
    FUZZ_CHECK(zip.Close());
    CFile file(FilePath().c_str(), CFile::modeRead);
    std::string archive(static_cast<std::size_t>(file.GetLength()), '\0');
    file.Read(archive.data(), static_cast<UINT>(archive.size()));
    file.Close();
    tlvn::RemoveFile(FilePath().c_str());
    return archive;
}

void CheckRoundTrip(const std::vector<Entry>& entries, const char* password, unsigned chunk)
{
    std::string archive = WriteArchive(entries, password);
    CZip zip;
    FUZZ_CHECK(zip.OpenZip(archive.data(), static_cast<unsigned>(archive.size()), password));
    std::string buffer(chunk, '\0');
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        const std::string& content = entries[static_cast<std::size_t>(i)].content;
        ZIPENTRY entry;
        FUZZ_CHECK(zip.GetZipItem(i, &entry));
        FUZZ_CHECK(entry.unc_size == static_cast<int>(content.size()));
        std::size_t done = 0;
        int result;
        do {
            result = zip.UnzipItem(i, buffer.data(), chunk);
            FUZZ_CHECK(result == tlvn::kZipOk || result == tlvn::kZipMore);
            const std::size_t count = std::min<std::size_t>(chunk, content.size() - done);
            FUZZ_CHECK(std::memcmp(buffer.data(), content.data() + done, count) == 0);
            done += count;
        } while (result == tlvn::kZipMore);
        FUZZ_CHECK(done == content.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    for (const char* password : {"", "pw"})
        FUZZ_CHECK(*zip_check::Violation(data, size, password, 50) == '\0');

    ByteSource source(data, size);
    const char* const password = source.Number(0, 1) != 0 ? "pw" : "";
    const auto chunk = static_cast<unsigned>(source.Number(1, 300));
    std::vector<Entry> entries;
    for (int i = source.Number(0, 4); i > 0; --i) {
        std::string name = "x" + source.Text(20);
        std::replace(name.begin(), name.end(), '\0', '0');
        entries.push_back({name, source.Text(2000)});
    }
    CheckRoundTrip(entries, password, chunk);
    return 0;
}
