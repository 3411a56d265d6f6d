// The reading side of CZip; see there.

#pragma once

#include "persist/zip/zip_container.h"
#include "persist/zip/zip_directory.h"
#include "persist/zip/zip_entry_data.h"

#include <memory>
#include <string>

namespace tlvn {

class ZipReader {
public:
    // Null when there is no archive at `data`. The password may be null.
    static std::unique_ptr<ZipReader> Open(const BYTE* data, std::size_t size,
                                           const char* password);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    // `entry` is zero before, and stays so after a failure.
    DWORD GetItem(int index, ZIPENTRY& entry);
    DWORD Unzip(int index, BYTE* buffer, unsigned size);

private:
    static constexpr int kNone = -1;

    explicit ZipReader(const char* password);
    DWORD Begin(int index);

    ZipContainer m_container;
    std::optional<ZipDirectory> m_directory; // not before the container is open
    std::string m_password;
    ZipEntryData m_entryData;
    int m_inProgress = kNone; // index of the entry being extracted
};

} // namespace tlvn
