#include "persist/zip/zip_reader.h"

#include "persist/wipe.h"

namespace tlvn {

ZipReader::ZipReader(const char* password) : m_password(password != nullptr ? password : "") {}

ZipReader::~ZipReader()
{
    Wipe(m_password.data(), m_password.size());
}

std::unique_ptr<ZipReader> ZipReader::Open(const BYTE* data, std::size_t size, const char* password)
{
    if (data == nullptr)
        return nullptr;
    std::unique_ptr<ZipReader> reader(new ZipReader(password));
    if (!reader->m_container.Open(data, size))
        return nullptr;
    reader->m_directory.emplace(reader->m_container);
    return reader;
}

DWORD ZipReader::GetItem(int index, ZIPENTRY& entry)
{
    if (index == -1) {
        entry.index = m_container.GetCount();
        return kZipOk;
    }
    if (index < 0 || index >= m_container.GetCount())
        return kZipArguments;
    const ZipItem* item;
    const DWORD result = m_directory->Find(index, item);
    if (result == kZipOk)
        entry = item->entry;
    return result;
}

DWORD ZipReader::Unzip(int index, BYTE* buffer, unsigned size)
{
    if (index < 0 || index >= m_container.GetCount() || (buffer == nullptr && size > 0))
        return kZipArguments;
    DWORD result = kZipOk;
    if (index != m_inProgress)
        result = Begin(index);
    if (result == kZipOk)
        result = m_entryData.Read(buffer, size);
    m_inProgress = result == kZipMore ? index : kNone;
    return result;
}

DWORD ZipReader::Begin(int index)
{
    const ZipItem* item;
    UINT64 data = 0;
    // Whatever is wrong with the headers: here it means that the data cannot be had.
    if (m_directory->Find(index, item) != kZipOk || !m_container.FindData(item->header, data))
        return kZipData;
    const UINT64 size = m_container.GetSize();
    if (data > size || static_cast<UINT64>(item->entry.comp_size) > size - data)
        return kZipData;
    return m_entryData.Begin(m_container.GetData() + data, *item, m_password);
}

} // namespace tlvn
