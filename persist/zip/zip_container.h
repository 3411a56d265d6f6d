// minizip over an archive in memory: finds the directory and the data of an entry.
//
// minizip reads through callbacks that hand out the caller's bytes; positions given back are
// offsets into the archive. The entries' headers themselves are read by ZipDirectory, their data
// decoded by ZipEntryData, both in place.

#pragma once

#include "platform/types.h"

#include <minizip/unzip.h>

namespace tlvn {

class ZipContainer {
public:
    ZipContainer() = default;
    ~ZipContainer();
    ZipContainer(const ZipContainer&) = delete;
    ZipContainer& operator=(const ZipContainer&) = delete;

    // False when there is no archive in [data, data + size).
    bool Open(const BYTE* data, std::size_t size);

    const BYTE* GetData() const { return m_memory.data; }
    std::size_t GetSize() const { return m_memory.size; }
    // As the end record says; never more than the archive has room for.
    int GetCount() const { return m_count; }
    // Offset of the first header of the directory; it may lie outside the archive.
    UINT64 GetDirectory() const { return m_directory; }
    // How far offsets in the archive's headers lie before those into the memory.
    UINT64 GetShift() const { return m_shift; }

    // Offset of the data of the entry whose directory header lies at offset `header`. False when
    // its headers are damaged or contradict each other.
    bool FindData(UINT64 header, UINT64& data);

private:
    struct Memory {
        const BYTE* data = nullptr;
        std::size_t size = 0;
        std::size_t position = 0;
        // Where it was first told to go since this was last set.
        UINT64 firstSeek = kNowhere;
    };
    static constexpr UINT64 kNowhere = ~UINT64{0};

    static voidpf Begin(voidpf memory, const void* name, int mode);
    static uLong Read(voidpf memory, voidpf stream, void* buffer, uLong size);
    static ZPOS64_T Tell(voidpf memory, voidpf stream);
    static long Seek(voidpf memory, voidpf stream, ZPOS64_T offset, int origin);
    static int Nothing(voidpf memory, voidpf stream);

    Memory m_memory;
    unzFile m_file = nullptr; // null for an archive without entries
    int m_count = 0;
    UINT64 m_directory = 0;
    UINT64 m_shift = 0;
};

} // namespace tlvn
