#include "persist/zip/zip_directory.h"

#include "persist/zip/zip_format.h"
#include "persist/zip/zip_name.h"
#include "persist/zip/zip_time.h"

#include <climits>
#include <iterator>

namespace tlvn {

namespace {

constexpr DWORD kIn64Bits = 0xFFFFFFFF; // the value stands in the zip64 field

// Systems whose external attributes are those of DOS.
constexpr bool HasDosAttributes(unsigned host)
{
    return host == 0 || host == 7 || host == 11 || host == 14;
}

DWORD ReadAttributes(unsigned madeBy, DWORD external)
{
    constexpr DWORD kReadOnly = 1, kDirectory = 16, kArchive = 32, kDosBits = 1 | 2 | 4 | 16 | 32;
    if (HasDosAttributes(madeBy >> 8))
        return external & kDosBits;
    const bool directory = (external >> 30 & 1) != 0;
    const bool writable = (external >> 23 & 1) != 0;
    return kArchive | (directory ? kDirectory : 0) | (writable ? 0 : kReadOnly);
}

// The sizes and the offset of an entry, which overflow into a zip64 field.
struct Extent {
    UINT64 size;
    UINT64 packedSize;
    UINT64 offset;

    // False when the field lacks one of them.
    bool Complete(const BYTE* extra, unsigned extraSize)
    {
        const ZipExtra field = FindZipExtra(extra, extraSize, kZip64Extra);
        unsigned position = 0;
        for (UINT64* value : {&size, &packedSize, &offset}) {
            if (*value != kIn64Bits)
                continue;
            if (field.size - position < 8)
                return false;
            *value = GetZip64(field.data + position);
            position += 8;
        }
        return true;
    }
};

} // namespace

ZipDirectory::ZipDirectory(const ZipContainer& container)
    : m_container(container), m_headers{container.GetDirectory()}
{}

const BYTE* ZipDirectory::At(UINT64 offset, UINT64 size) const
{
    const UINT64 all = m_container.GetSize();
    return offset <= all && size <= all - offset ? m_container.GetData() + offset : nullptr;
}

DWORD ZipDirectory::Find(int index, const ZipItem*& item)
{
    item = nullptr;
    if (!m_itemValid || m_item.entry.index != index) {
        m_itemValid = false;
        m_item = {};
        UINT64 header = 0;
        DWORD result = Locate(index, header);
        if (result == kZipOk)
            result = Read(header, m_item);
        if (result != kZipOk)
            return result;
        m_item.entry.index = index;
        m_itemValid = true;
    }
    item = &m_item;
    return kZipOk;
}

DWORD ZipDirectory::Locate(int index, UINT64& header)
{
    const auto wanted = static_cast<std::size_t>(index);
    while (m_headers.size() <= wanted) {
        const UINT64 offset = m_headers.back();
        const BYTE* const central = At(offset, kZipCentralSize);
        if (central == nullptr)
            return kZipReadFailed;
        if (GetZip32(central) != kZipCentralSignature)
            return kZipCorrupt;
        m_headers.push_back(offset + kZipCentralSize + GetZip16(central + 28) +
                            GetZip16(central + 30) + GetZip16(central + 32));
    }
    header = m_headers[wanted];
    return kZipOk;
}

DWORD ZipDirectory::Read(UINT64 header, ZipItem& item)
{
    const BYTE* const central = At(header, kZipCentralSize);
    if (central == nullptr)
        return kZipReadFailed;
    if (GetZip32(central) != kZipCentralSignature)
        return kZipCorrupt;
    const unsigned nameSize = GetZip16(central + 28);
    const unsigned extraSize = GetZip16(central + 30);
    if (At(header, UINT64{kZipCentralSize} + nameSize + extraSize) == nullptr)
        return kZipReadFailed;
    const BYTE* const name = central + kZipCentralSize;
    const BYTE* const extra = name + nameSize;

    item.header = header;
    item.flags = GetZip16(central + 8);
    item.method = GetZip16(central + 10);
    item.dosTime = GetZip32(central + 12);
    item.crc = GetZip32(central + 16);
    Extent extent = {GetZip32(central + 24), GetZip32(central + 20), GetZip32(central + 42)};
    if (!extent.Complete(extra, extraSize) || extent.size > INT_MAX || extent.packedSize > INT_MAX)
        return kZipCorrupt;

    ZIPENTRY& entry = item.entry;
    ReadZipName({reinterpret_cast<const char*>(name), nameSize}, (item.flags & kZipUtf8) != 0,
                entry.name, static_cast<int>(std::size(entry.name)));
    entry.attr = ReadAttributes(GetZip16(central + 4), GetZip32(central + 38));
    entry.unc_size = static_cast<int>(extent.size);
    entry.comp_size = static_cast<int>(extent.packedSize);

    Extra localExtra = {};
    const DWORD result =
        ReadLocal(extent.offset + m_container.GetShift(), nameSize, item, localExtra);
    if (result == kZipOk)
        ReadTimes(item.dosTime, {extra, extraSize}, localExtra, entry);
    return result;
}

DWORD ZipDirectory::ReadLocal(UINT64 offset, unsigned nameSize, const ZipItem& item,
                              Extra& extra) const
{
    const BYTE* const local = At(offset, kZipLocalSize);
    if (local == nullptr)
        return kZipReadFailed;
    if (GetZip32(local) != kZipLocalSignature || GetZip16(local + 8) != item.method ||
        GetZip16(local + 26) != nameSize)
        return kZipCorrupt;
    extra = {local + kZipLocalSize + nameSize, GetZip16(local + 28)};
    const UINT64 headerSize = UINT64{kZipLocalSize} + nameSize + extra.size;
    if (At(offset, headerSize) == nullptr)
        return kZipReadFailed;
    const bool dataInside =
        At(offset, headerSize + static_cast<UINT64>(item.entry.comp_size)) != nullptr;
    return dataInside ? kZipOk : kZipCorrupt;
}

void ZipDirectory::ReadTimes(DWORD dosTime, Extra central, Extra local, ZIPENTRY& entry)
{
    if (dosTime != m_dosTime) {
        m_fileTime = DosToFileTime(dosTime);
        m_dosTime = dosTime;
    }
    entry.mtime = entry.atime = entry.ctime = m_fileTime;
    // The local header may have all three times, the directory has only the last write.
    for (const Extra extra : {central, local})
        ApplyZipTimes(extra.data, extra.size, entry.mtime, entry.atime, entry.ctime);
}

} // namespace tlvn
