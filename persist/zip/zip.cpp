#include "persist/zip/zip.h"

#include "persist/zip/zip_reader.h"
#include "persist/zip/zip_result.h"
#include "persist/zip/zip_writer.h"
#include "platform/string_table.h"

#include <new>

namespace tlvn {

// An open archive, or one that was: after closing, a writer stays to say so to those who add.
struct ZipArchive {
    enum Kind { Reader = 1, Writer = 2 };
    Kind kind;
    std::unique_ptr<ZipReader> reader; // null when closed
    std::unique_ptr<ZipWriter> writer;
};

namespace {

// The result of `work`, lack of memory included.
template <class Work>
DWORD Try(const Work& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return kZipNoMemory;
    } catch (CMemoryException* e) {
        e->Delete();
        return kZipNoMemory;
    }
}

// The result of `work` done on the reader of an archive, which may be null or the wrong one.
template <class Work>
DWORD WithReader(const std::shared_ptr<ZipArchive>& archive, const Work& work)
{
    if (archive != nullptr && archive->kind != ZipArchive::Reader)
        return kZipWrongKind;
    if (archive == nullptr || archive->reader == nullptr)
        return kZipArguments;
    return Try([&] { return work(*archive->reader); });
}

template <class Work>
DWORD WithWriter(const std::shared_ptr<ZipArchive>& archive, const Work& work)
{
    if (archive == nullptr)
        return kZipArguments;
    if (archive->kind != ZipArchive::Writer)
        return kZipWrongKind;
    return Try([&] { return work(*archive->writer); });
}

} // namespace

} // namespace tlvn

using namespace tlvn;

CZip::CZip() = default;
CZip::CZip(const CZip& other) = default;
CZip& CZip::operator=(const CZip& other) = default;

CZip::~CZip()
{
    if (m_archive != nullptr)
        Close();
}

int CZip::Record(DWORD result)
{
    m_result = result;
    SetLastZipResult(result);
    return result == kZipOk ? 1 : 0;
}

int CZip::OpenZip(void* data, unsigned int size, const char* password)
{
    if (m_archive != nullptr)
        Close();
    m_archive = nullptr;
    return Record(Try([&]() -> DWORD {
        auto reader = ZipReader::Open(static_cast<const BYTE*>(data), size, password);
        if (reader == nullptr)
            return kZipNoFile;
        m_archive = std::make_shared<ZipArchive>(
            ZipArchive{ZipArchive::Reader, std::move(reader), nullptr});
        return kZipOk;
    }));
}

int CZip::GetZipItem(int index, ZIPENTRY* entry)
{
    if (entry != nullptr)
        *entry = {};
    return Record(WithReader(m_archive, [&](ZipReader& reader) -> DWORD {
        return entry != nullptr ? reader.GetItem(index, *entry) : kZipArguments;
    }));
}

int CZip::UnzipItem(int index, void* buffer, unsigned int size)
{
    Record(WithReader(m_archive, [&](ZipReader& reader) {
        return reader.Unzip(index, static_cast<BYTE*>(buffer), size);
    }));
    return static_cast<int>(m_result);
}

int CZip::CreateZip(const WCHAR* fileName, const char* password)
{
    if (m_archive != nullptr)
        Close();
    m_archive = nullptr;
    return Record(Try([&]() -> DWORD {
        m_name = fileName;
        auto writer = ZipWriter::Create(fileName, password);
        if (writer == nullptr)
            return kZipNoFile;
        m_archive = std::make_shared<ZipArchive>(
            ZipArchive{ZipArchive::Writer, nullptr, std::move(writer)});
        return kZipOk;
    }));
}

int CZip::ZipAdd(const WCHAR* name, void* data, unsigned int size)
{
    return Record(
        WithWriter(m_archive, [&](ZipWriter& writer) { return writer.Add(name, data, size); }));
}

int CZip::Close()
{
    if (m_archive == nullptr)
        return Record(kZipArguments);
    m_archive->reader = nullptr;
    if (m_archive->writer == nullptr)
        return Record(kZipOk);
    return Record(WithWriter(m_archive, [](ZipWriter& writer) { return writer.Close(); }));
}

DWORD CZip::GetLastErrorID() const
{
    return m_result;
}

CStringW CZip::GetLastErrorMsg()
{
    const WStringView message = FindMessage(ZipMessageId(m_result));
    CStringW text(message.data(), static_cast<int>(message.size()));
    if (!m_name.IsEmpty()) {
        text += TW("\nFile: ");
        text += m_name;
    }
    return text;
}

int CZip::Succeeded() const
{
    return m_result == kZipOk ? 1 : 0;
}

int CZip::Failed() const
{
    return m_result != kZipOk ? 1 : 0;
}

void CZip::SetZipName(const WCHAR* name)
{
    m_name = name;
}
