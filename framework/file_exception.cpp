#include "framework/file_exception.h"

#include "framework/messages.h"

IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace {

// The message of `cause` in a block of messages that begins at `firstId`, naming the file.
BOOL CauseMessage(UINT firstId, int cause, int lastCause, const CString& fileName, char* buffer,
                  UINT max, UINT* helpId)
{
    if (helpId != nullptr)
        *helpId = 0;
    if (buffer == nullptr || max == 0)
        return FALSE;
    if (cause < CFileException::none || cause > lastCause)
        cause = CFileException::genericException;

    CString name = fileName;
    if (name.IsEmpty())
        name.LoadString(tlvn::kMessageUnnamedFile);
    CString message;
    message.LoadString(firstId + static_cast<UINT>(cause));
    message.Replace("%s", name);
    tlvn::CopyMessage(message, buffer, max);
    return !message.IsEmpty();
}

} // namespace

CFileException::CFileException(int cause, LONG osError, const char* fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName)
{}

BOOL CFileException::GetErrorMessage(char* buffer, UINT max, UINT* helpId)
{
    return CauseMessage(tlvn::kMessageFileCause, m_cause, endOfFile, m_strFileName, buffer, max,
                        helpId);
}

int CFileException::OsErrorToException(LONG osError)
{
    return tlvn::FileCause(tlvn::ClassifyFileError(osError));
}

void CFileException::ThrowOsError(LONG osError, const char* fileName)
{
    AfxThrowFileException(OsErrorToException(osError), osError, fileName);
}

CArchiveException::CArchiveException(int cause, const char* fileName)
    : m_cause(cause), m_strFileName(fileName)
{}

BOOL CArchiveException::GetErrorMessage(char* buffer, UINT max, UINT* helpId)
{
    return CauseMessage(tlvn::kMessageArchiveCause, m_cause, badSchema, m_strFileName, buffer, max,
                        helpId);
}

void AfxThrowFileException(int cause, LONG osError, const char* fileName)
{
    throw tlvn::GuardMemory([&] { return new CFileException(cause, osError, fileName); });
}

void AfxThrowArchiveException(int cause, const char* fileName)
{
    throw tlvn::GuardMemory([&] { return new CArchiveException(cause, fileName); });
}

namespace tlvn {

int FileCause(FileError error)
{
    switch (error) {
    case FileError::None:
        return CFileException::none;
    case FileError::NotFound:
        return CFileException::fileNotFound;
    case FileError::BadPath:
        return CFileException::badPath;
    case FileError::TooManyOpen:
        return CFileException::tooManyOpenFiles;
    case FileError::AccessDenied:
    case FileError::AlreadyExists:
        return CFileException::accessDenied;
    case FileError::InvalidHandle:
        return CFileException::invalidFile;
    case FileError::Sharing:
        return CFileException::sharingViolation;
    case FileError::Lock:
        return CFileException::lockViolation;
    case FileError::DiskFull:
        return CFileException::diskFull;
    case FileError::DirectoryFull:
        return CFileException::directoryFull;
    case FileError::BadSeek:
        return CFileException::badSeek;
    case FileError::HardIo:
        return CFileException::hardIO;
    case FileError::Other:
        break;
    }
    return CFileException::genericException;
}

} // namespace tlvn
