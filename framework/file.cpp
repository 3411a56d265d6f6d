#include "framework/file.h"

#include "platform/multibyte.h"

IMPLEMENT_DYNAMIC(CFile, CObject)

namespace {

constexpr UINT kAccessMask = 0x0003;
constexpr UINT kShareMask = 0x0070;

unsigned AccessOf(UINT flags)
{
    switch (flags & kAccessMask) {
    case CFile::modeWrite:
        return tlvn::kFileWrite;
    case CFile::modeReadWrite:
        return tlvn::kFileRead | tlvn::kFileWrite;
    default:
        return tlvn::kFileRead;
    }
}

unsigned DenialOf(UINT flags)
{
    switch (flags & kShareMask) {
    case CFile::shareDenyNone:
        return 0;
    case CFile::shareDenyRead:
        return tlvn::kFileRead;
    case CFile::shareDenyWrite:
        return tlvn::kFileWrite;
    default:
        return tlvn::kFileRead | tlvn::kFileWrite;
    }
}

tlvn::FileCreation CreationOf(UINT flags)
{
    if ((flags & CFile::modeCreate) == 0)
        return tlvn::FileCreation::OpenExisting;
    return (flags & CFile::modeNoTruncate) != 0 ? tlvn::FileCreation::OpenAlways
                                                : tlvn::FileCreation::CreateAlways;
}

// What follows the last separator; the trail byte of a character is none.
CString NameOf(const CString& path)
{
    const char* const begin = path;
    const char* const end = begin + path.GetLength();
    const char* name = begin;
    for (const char* p = begin; p != end; p += tlvn::CharLength(p, end))
        if (tlvn::IsPathSeparator(*p))
            name = p + 1;
    return CString(name);
}

[[noreturn]] void ThrowFailure(tlvn::FileResult result, const char* path)
{
    AfxThrowFileException(tlvn::FileCause(result.error), static_cast<LONG>(result.systemError),
                          path);
}

CString FullPath(const char* path)
{
    return tlvn::GuardMemory([&] { return CString(tlvn::GetFullPath(path).c_str()); });
}

} // namespace

CFile::CFile(const char* path, UINT flags)
{
    CFileException error;
    if (!CFile::Open(path, flags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::CFile(const WCHAR* path, UINT flags)
{
    CFileException error;
    if (!CFile::Open(path, flags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile()
{
    CFile::Abort();
}

BOOL CFile::Open(const char* path, UINT flags, CFileException* error)
{
    Abort();
    const CString name(path);
    const tlvn::FileResult result = tlvn::GuardMemory([&] {
        return tlvn::OpenFile(path, AccessOf(flags), DenialOf(flags), CreationOf(flags), m_file);
    });
    return Opened(result, name, error);
}

BOOL CFile::Open(const WCHAR* path, UINT flags, CFileException* error)
{
    Abort();
    const CString name(path);
    const tlvn::FileResult result = tlvn::GuardMemory([&] {
        return tlvn::OpenFile(path, AccessOf(flags), DenialOf(flags), CreationOf(flags), m_file);
    });
    return Opened(result, name, error);
}

BOOL CFile::Opened(tlvn::FileResult result, const CString& path, CFileException* error)
{
    if (result) {
        m_path = FullPath(path);
        return TRUE;
    }
    if (error != nullptr) {
        error->m_cause = tlvn::FileCause(result.error);
        error->m_lOsError = static_cast<LONG>(result.systemError);
        error->m_strFileName = path;
    }
    return FALSE;
}

void CFile::Check(tlvn::FileResult result) const
{
    if (!result)
        ThrowFailure(result, m_path);
}

UINT CFile::Read(void* buffer, UINT count)
{
    std::size_t done = 0;
    Check(tlvn::ReadFromFile(m_file, buffer, count, done));
    return static_cast<UINT>(done);
}

void CFile::Write(const void* buffer, UINT count)
{
    Check(tlvn::WriteToFile(m_file, buffer, count));
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from)
{
    if (from > end)
        AfxThrowInvalidArgException();
    INT64 position = 0;
    Check(tlvn::SeekFile(m_file, offset, static_cast<tlvn::SeekFrom>(from), position));
    return static_cast<ULONGLONG>(position);
}

ULONGLONG CFile::GetPosition() const
{
    INT64 position = 0;
    Check(tlvn::SeekFile(m_file, 0, tlvn::SeekFrom::Current, position));
    return static_cast<ULONGLONG>(position);
}

ULONGLONG CFile::GetLength() const
{
    INT64 size = 0;
    Check(tlvn::GetFileSize(m_file, size));
    return static_cast<ULONGLONG>(size);
}

void CFile::SetLength(ULONGLONG length)
{
    Check(tlvn::SetFileSize(m_file, static_cast<INT64>(length)));
}

void CFile::Flush()
{
    if (IsOpen())
        Check(tlvn::FlushFile(m_file));
}

void CFile::Close()
{
    if (!IsOpen())
        return;
    const tlvn::FileResult result = tlvn::CloseFile(m_file);
    const CString path = m_path;
    m_file = tlvn::kNoFile;
    m_path.Empty();
    if (!result)
        ThrowFailure(result, path);
}

void CFile::Abort()
{
    if (IsOpen())
        tlvn::CloseFile(m_file);
    m_file = tlvn::kNoFile;
    m_path.Empty();
}

CString CFile::GetFileName() const
{
    return NameOf(m_path);
}

CString CFile::GetFileTitle() const
{
    const CString name = NameOf(m_path);
    const int dot = name.ReverseFind('.');
    return dot > 0 ? name.Left(dot) : name;
}

BOOL CFile::GetStatus(CFileStatus& status) const
{
    return IsOpen() && GetStatus(m_path, status);
}

BOOL CFile::GetStatus(const char* path, CFileStatus& status)
{
    tlvn::FileInfo info;
    if (!tlvn::GuardMemory([&] { return tlvn::GetFileInfo(path, info); }))
        return FALSE;
    status.m_ctime = info.created;
    status.m_mtime = info.modified;
    status.m_atime = info.accessed;
    status.m_size = static_cast<ULONGLONG>(info.size);
    status.m_attribute = static_cast<BYTE>((info.directory ? directory : normal) |
                                           (info.readOnly ? readOnly : normal));
    status.m_szFullName = FullPath(path);
    return TRUE;
}

void CFile::Rename(const char* oldName, const char* newName)
{
    const tlvn::FileResult result =
        tlvn::GuardMemory([&] { return tlvn::RenameFile(oldName, newName); });
    if (!result)
        ThrowFailure(result, oldName);
}

void CFile::Remove(const char* name)
{
    const tlvn::FileResult result = tlvn::GuardMemory([&] { return tlvn::RemoveFile(name); });
    if (!result)
        ThrowFailure(result, name);
}
