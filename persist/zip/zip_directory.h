// The entries of an archive in memory, by index.
//
// The directory is a row of headers of different lengths. Where each begins is kept in a table
// that grows as entries are asked for, so that reading all of them in turn takes time in
// proportion to the directory, and any entry can be read again at once. The table is never larger
// than the directory.

#pragma once

#include "persist/zip/zip.h"
#include "persist/zip/zip_container.h"
#include "persist/zip/zip_result.h"

#include <vector>

namespace tlvn {

// What the headers say of an entry.
struct ZipItem {
    ZIPENTRY entry = {};
    UINT64 header = 0; // offset of its header in the directory
    unsigned flags = 0;
    unsigned method = 0;
    DWORD dosTime = 0;
    DWORD crc = 0;
};

class ZipDirectory {
public:
    // `container` is open and outlives this object.
    explicit ZipDirectory(const ZipContainer& container);

    // The entry `index`, which is not below 0 and below the container's count; valid until the
    // next call. Gives kZipOk, or kZipReadFailed or kZipCorrupt and then null.
    DWORD Find(int index, const ZipItem*& item);

private:
    // Extra fields: [data, data + size).
    struct Extra {
        const BYTE* data;
        unsigned size;
    };

    DWORD Locate(int index, UINT64& header);
    DWORD Read(UINT64 header, ZipItem& item);
    // Looks at the local header at `offset`, to which the directory's name size must fit.
    DWORD ReadLocal(UINT64 offset, unsigned nameSize, const ZipItem& item, Extra& extra) const;
    void ReadTimes(DWORD dosTime, Extra central, Extra local, ZIPENTRY& entry);

    // The `size` bytes at `offset`, or null where the archive does not have them.
    const BYTE* At(UINT64 offset, UINT64 size) const;

    const ZipContainer& m_container;
    std::vector<UINT64> m_headers; // offsets of the first entries and of the next one after them
    ZipItem m_item;                // the last one read
    bool m_itemValid = false;
    // The last DOS time and what it is in UTC: asking the time zone is slow, and the entries of an
    // archive often come from one moment.
    DWORD m_dosTime = 0;
    FILETIME m_fileTime = {};
};

} // namespace tlvn
