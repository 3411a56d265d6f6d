// The writing side of CZip; see there.
//
// Entries go to the file as they are added, through a buffer; the directory grows in memory and is
// written at the end. Local headers hold neither sizes nor CRC, which follow the data. An archive
// of 65,535 entries or more, or with its directory behind 4 GB, gets the end records of zip64;
// entries that would begin behind 4 GB are refused.

#pragma once

#include "persist/zip/zip_cipher.h"
#include "persist/zip/zip_result.h"
#include "platform/file.h"
#include "platform/nls.h"

#include <zlib.h>

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace tlvn {

class ZipWriter {
public:
    // Null when the file cannot be created. The password may be null.
    static std::unique_ptr<ZipWriter> Create(const WCHAR* fileName, const char* password);
    // Closes what is open, as Close does.
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    DWORD Add(const WCHAR* name, const void* data, unsigned size);

    // Writes the directory and closes the file, or empties it after a failure, which it gives
    // (kZipWriteFailed or kZipNoMemory). Later calls do nothing and give kZipOk.
    DWORD Close();

private:
    struct Entry;

    explicit ZipWriter(const char* password);

    DWORD WriteEntry(Entry& entry, const BYTE* data);
    DWORD WriteData(Entry& entry, const BYTE* data);
    DWORD Deflate(Entry& entry, const BYTE* data);
    DWORD WriteDirectory();
    void AppendLocalHeader(const Entry& entry, std::string& out) const;
    void AppendCentralHeader(const Entry& entry, std::string& out) const;
    void AppendEndRecords(std::string& out) const;

    // Enciphers and writes packed data of the entry.
    DWORD PutData(Entry& entry, const BYTE* data, std::size_t size);
    DWORD Put(const void* data, std::size_t size);
    DWORD Put(const std::string& data) { return Put(data.data(), data.size()); }
    DWORD Flush();

    FileHandle m_file = kNoFile; // kNoFile when closed
    std::string m_password;
    DWORD m_failure = kZipOk; // of the first operation that failed
    UINT64 m_position = 0;    // in the file, what is buffered included
    UINT64 m_count = 0;       // of entries
    std::string m_directory;  // their central headers

    std::optional<ZipCipher> m_cipher; // of the entry being written
    z_stream m_stream = {};
    bool m_streamReady = false;
    std::string m_buffer;            // to be written
    std::array<BYTE, 65536> m_piece; // deflated or enciphered, to be buffered
};

} // namespace tlvn
