#include "persist/zip/zip_writer.h"

#include "persist/random.h"
#include "persist/wipe.h"
#include "persist/zip/zip_format.h"
#include "persist/zip/zip_name.h"
#include "persist/zip/zip_time.h"
#include "platform/clock.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr unsigned kMadeBy = 0x0B17; // NTFS, version 2.3 of the format
constexpr unsigned kNeeded = 20;     // 2.0: deflate, folders, encryption
constexpr unsigned kNeededZip64 = 45;
constexpr std::size_t kBufferSize = 65536;
constexpr UINT64 kMax32 = 0xFFFFFFFF; // means "see zip64"
constexpr UINT64 kMax16 = 0xFFFF;

} // namespace

// An entry on its way into the file.
struct ZipWriter::Entry {
    CStringA name;
    UINT64 position = 0; // of the local header
    unsigned flags = 0;
    unsigned method = 0;
    INT64 time = 0;
    DWORD dosTime = 0;
    DWORD crc = 0;
    unsigned size = 0;
    UINT64 packedSize = 0;

    bool IsFolder() const { return name[name.GetLength() - 1] == '/'; }
};

ZipWriter::ZipWriter(const char* password) : m_password(password != nullptr ? password : "")
{
    m_buffer.reserve(kBufferSize);
}

ZipWriter::~ZipWriter()
{
    Close();
    Wipe(m_password.data(), m_password.size());
    Wipe(m_piece.data(), m_piece.size());
}

std::unique_ptr<ZipWriter> ZipWriter::Create(const WCHAR* fileName, const char* password)
{
    if (fileName == nullptr || *fileName == 0)
        return nullptr;
    std::unique_ptr<ZipWriter> writer(new ZipWriter(password));
    if (!OpenFile(fileName, kFileWrite, kFileWrite, FileCreation::CreateAlways, writer->m_file))
        return nullptr;
    return writer;
}

DWORD ZipWriter::Add(const WCHAR* name, const void* data, unsigned size)
{
    if (m_failure != kZipOk)
        return kZipFailedBefore;
    if (m_file == kNoFile)
        return kZipEnded;
    if (name == nullptr || *name == 0 || (data == nullptr && size > 0))
        return kZipArguments;
    // The fields have 32 bits, and the largest value is taken.
    if (m_position >= kMax32 || size == kMax32)
        return kZipWriteFailed;

    // Also when lack of memory ends it by an exception, the archive is not to be gone on with.
    m_failure = kZipNoMemory;
    Entry entry;
    entry.name = StoredZipName(name);
    entry.position = m_position;
    entry.flags = kZipDescriptor | (m_password.empty() ? 0u : kZipEncrypted);
    entry.method = IsPackedFileName(entry.name) ? kZipStored : kZipDeflated;
    entry.time = GetSystemTime();
    entry.dosTime = ToDosTime(entry.time);
    entry.size = size;
    m_failure = WriteEntry(entry, static_cast<const BYTE*>(data));
    return m_failure;
}

DWORD ZipWriter::WriteEntry(Entry& entry, const BYTE* data)
{
    std::string header;
    AppendLocalHeader(entry, header);
    DWORD result = Put(header);
    if (result == kZipOk)
        result = WriteData(entry, data);
    if (result != kZipOk)
        return result;
    if (entry.packedSize >= kMax32)
        return kZipWriteFailed;

    std::string descriptor;
    PutZip(descriptor, 4, kZipDescriptorSignature);
    PutZip(descriptor, 4, entry.crc);
    PutZip(descriptor, 4, entry.packedSize);
    PutZip(descriptor, 4, entry.size);
    AppendCentralHeader(entry, m_directory);
    ++m_count;
    return Put(descriptor);
}

DWORD ZipWriter::WriteData(Entry& entry, const BYTE* data)
{
    entry.crc = static_cast<DWORD>(crc32(crc32(0, nullptr, 0), data, entry.size));
    m_cipher.reset();
    if (!m_password.empty()) {
        // The CRC follows the data, so it is the time that readers check the password by.
        BYTE header[ZipCipher::kHeaderSize];
        for (unsigned i = 0; i < sizeof header - 2; ++i)
            header[i] = static_cast<BYTE>(GetRandom() >> 8);
        header[10] = static_cast<BYTE>(entry.dosTime);
        header[11] = static_cast<BYTE>(entry.dosTime >> 8);
        m_cipher.emplace(m_password);
        const DWORD result = PutData(entry, header, sizeof header);
        if (result != kZipOk)
            return result;
    }
    return entry.method == kZipStored ? PutData(entry, data, entry.size) : Deflate(entry, data);
}

DWORD ZipWriter::Deflate(Entry& entry, const BYTE* data)
{
    const int begun = m_streamReady ? deflateReset(&m_stream)
                                    : deflateInit2(&m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED,
                                                   -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    m_streamReady = begun == Z_OK;
    if (!m_streamReady)
        return kZipNoMemory;
    m_stream.next_in = const_cast<BYTE*>(data);
    m_stream.avail_in = entry.size;
    int state = Z_OK;
    while (state == Z_OK) {
        m_stream.next_out = m_piece.data();
        m_stream.avail_out = static_cast<uInt>(m_piece.size());
        state = deflate(&m_stream, Z_FINISH);
        const DWORD result = PutData(entry, m_piece.data(), m_piece.size() - m_stream.avail_out);
        if (result != kZipOk)
            return result;
    }
    return state == Z_STREAM_END ? kZipOk : kZipData;
}

DWORD ZipWriter::PutData(Entry& entry, const BYTE* data, std::size_t size)
{
    entry.packedSize += size;
    if (!m_cipher)
        return Put(data, size);
    while (size > 0) {
        const std::size_t piece = std::min(size, m_piece.size());
        m_cipher->Encipher(data, m_piece.data(), piece);
        const DWORD result = Put(m_piece.data(), piece);
        if (result != kZipOk)
            return result;
        data += piece;
        size -= piece;
    }
    return kZipOk;
}

void ZipWriter::AppendLocalHeader(const Entry& entry, std::string& out) const
{
    PutZip(out, 4, kZipLocalSignature);
    PutZip(out, 2, kNeeded);
    PutZip(out, 2, entry.flags);
    PutZip(out, 2, entry.method);
    PutZip(out, 4, entry.dosTime);
    PutZip(out, 12, 0); // CRC and sizes
    PutZip(out, 2, static_cast<unsigned>(entry.name.GetLength()));
    PutZip(out, 2, 17); // the field below
    out += entry.name.GetString();
    PutZip(out, 2, kZipTimeExtra);
    PutZip(out, 2, 13);
    PutZip(out, 1, 7); // has last write, last access and creation
    for (int i = 0; i < 3; ++i)
        PutZip(out, 4, static_cast<UINT64>(entry.time));
}

void ZipWriter::AppendCentralHeader(const Entry& entry, std::string& out) const
{
    PutZip(out, 4, kZipCentralSignature);
    PutZip(out, 2, kMadeBy);
    PutZip(out, 2, kNeeded);
    PutZip(out, 2, entry.flags);
    PutZip(out, 2, entry.method);
    PutZip(out, 4, entry.dosTime);
    PutZip(out, 4, entry.crc);
    PutZip(out, 4, entry.packedSize);
    PutZip(out, 4, entry.size);
    PutZip(out, 2, static_cast<unsigned>(entry.name.GetLength()));
    PutZip(out, 2, 9); // the field below
    PutZip(out, 2, 0); // comment
    PutZip(out, 2, 0); // volume
    PutZip(out, 2, 0); // internal attributes
    PutZip(out, 4, entry.IsFolder() ? 16 : 32);
    PutZip(out, 4, entry.position);
    out += entry.name.GetString();
    PutZip(out, 2, kZipTimeExtra);
    PutZip(out, 2, 5);
    PutZip(out, 1, 7); // as in the local header, though only the last write stands here
    PutZip(out, 4, static_cast<UINT64>(entry.time));
}

void ZipWriter::AppendEndRecords(std::string& out) const
{
    const UINT64 directory = m_position - m_directory.size();
    if (m_count >= kMax16 || directory >= kMax32 || m_directory.size() >= kMax32) {
        PutZip(out, 4, kZip64EndSignature);
        PutZip(out, 8, kZip64EndSize - 12); // of what follows
        PutZip(out, 2, kMadeBy);
        PutZip(out, 2, kNeededZip64);
        PutZip(out, 8, 0); // volumes
        PutZip(out, 8, m_count);
        PutZip(out, 8, m_count);
        PutZip(out, 8, m_directory.size());
        PutZip(out, 8, directory);
        PutZip(out, 4, kZip64LocatorSignature);
        PutZip(out, 4, 0); // volume
        PutZip(out, 8, m_position);
        PutZip(out, 4, 1); // volumes
    }
    PutZip(out, 4, kZipEndSignature);
    PutZip(out, 4, 0); // volumes
    PutZip(out, 2, std::min(m_count, kMax16));
    PutZip(out, 2, std::min(m_count, kMax16));
    PutZip(out, 4, std::min<UINT64>(m_directory.size(), kMax32));
    PutZip(out, 4, std::min(directory, kMax32));
    PutZip(out, 2, 0); // comment
}

// Allocates nothing, so that closing cannot fail for lack of memory.
DWORD ZipWriter::WriteDirectory()
{
    DWORD result = Put(m_directory);
    if (result == kZipOk)
        result = Flush();
    if (result != kZipOk)
        return result;
    AppendEndRecords(m_buffer);
    return Flush();
}

DWORD ZipWriter::Close()
{
    if (m_file == kNoFile)
        return kZipOk;
    if (m_streamReady)
        deflateEnd(&m_stream);
    m_streamReady = false;

    if (m_failure == kZipOk)
        m_failure = WriteDirectory();
    // Half an archive is not to pass for one.
    if (m_failure != kZipOk)
        SetFileSize(m_file, 0);
    const FileResult closed = CloseFile(m_file);
    m_file = kNoFile;
    if (!closed && m_failure == kZipOk)
        m_failure = kZipWriteFailed;
    m_directory = {};
    m_buffer = {};
    return m_failure;
}

DWORD ZipWriter::Put(const void* data, std::size_t size)
{
    if (size == 0)
        return kZipOk;
    m_position += size;
    if (m_buffer.size() + size > kBufferSize) {
        const DWORD result = Flush();
        if (result != kZipOk)
            return result;
    }
    if (size >= kBufferSize)
        return WriteToFile(m_file, data, size) ? kZipOk : kZipWriteFailed;
    m_buffer.append(static_cast<const char*>(data), size);
    return kZipOk;
}

DWORD ZipWriter::Flush()
{
    const FileResult result = WriteToFile(m_file, m_buffer.data(), m_buffer.size());
    m_buffer.clear();
    return result ? kZipOk : kZipWriteFailed;
}

} // namespace tlvn
