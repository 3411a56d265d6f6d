#include "persist/zip/zip_container.h"

#include "persist/zip/zip_format.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace tlvn {

ZipContainer::~ZipContainer()
{
    if (m_file != nullptr)
        unzClose(m_file);
}

bool ZipContainer::Open(const BYTE* data, std::size_t size)
{
    m_memory = {data, size, 0, kNowhere};
    // An archive without entries is nothing but its end record, which minizip does not take.
    if (size >= kZipEndSize && GetZip32(data) == kZipEndSignature)
        return GetZip16(data + 10) == 0;

    zlib_filefunc64_def functions = {};
    functions.zopen64_file = Begin;
    functions.zread_file = Read;
    functions.ztell64_file = Tell;
    functions.zseek64_file = Seek;
    functions.zclose_file = Nothing;
    functions.zerror_file = Nothing;
    functions.opaque = &m_memory;
    m_file = unzOpen2_64("", &functions);
    unz_global_info64 info = {};
    if (m_file == nullptr || unzGetGlobalInfo64(m_file, &info) != UNZ_OK)
        return false;
    if (info.number_entry > size / kZipCentralSize || info.number_entry > INT_MAX)
        return false;
    m_count = static_cast<int>(info.number_entry);
    if (m_count == 0)
        return true;

    // minizip tells offsets as the headers have them, and does not tell how many foreign bytes it
    // has found before the archive; but it has to go to the directory.
    m_memory.firstSeek = kNowhere;
    unzGoToFirstFile(m_file);
    unz64_file_pos first = {};
    if (m_memory.firstSeek == kNowhere)
        return false;
    m_directory = m_memory.firstSeek;
    if (unzGetFilePos64(m_file, &first) == UNZ_OK)
        m_shift = m_directory - first.pos_in_zip_directory;
    return true;
}

bool ZipContainer::FindData(UINT64 header, UINT64& data)
{
    const unz64_file_pos position = {header - m_shift, 0};
    if (unzGoToFilePos64(m_file, &position) != UNZ_OK ||
        unzOpenCurrentFile2(m_file, nullptr, nullptr, 1) != UNZ_OK)
        return false;
    data = unzGetCurrentFileZStreamPos64(m_file);
    unzCloseCurrentFile(m_file);
    return true;
}

voidpf ZipContainer::Begin(voidpf memory, const void*, int)
{
    return memory;
}

uLong ZipContainer::Read(voidpf, voidpf stream, void* buffer, uLong size)
{
    auto& memory = *static_cast<Memory*>(stream);
    const std::size_t done = std::min<std::size_t>(size, memory.size - memory.position);
    std::memcpy(buffer, memory.data + memory.position, done);
    memory.position += done;
    return static_cast<uLong>(done);
}

ZPOS64_T ZipContainer::Tell(voidpf, voidpf stream)
{
    return static_cast<Memory*>(stream)->position;
}

long ZipContainer::Seek(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    auto& memory = *static_cast<Memory*>(stream);
    UINT64 target = offset;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR)
        target += memory.position;
    else if (origin == ZLIB_FILEFUNC_SEEK_END)
        target += memory.size;
    if (memory.firstSeek == kNowhere)
        memory.firstSeek = target;
    if (target > memory.size)
        return -1;
    memory.position = static_cast<std::size_t>(target);
    return 0;
}

int ZipContainer::Nothing(voidpf, voidpf)
{
    return 0;
}

} // namespace tlvn
