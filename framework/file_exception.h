// CFileException and CArchiveException: failures of files and of stored objects.

#pragma once

#include "framework/string.h"
#include "platform/file.h"

// The failure of an operation on a file. The members are the caller's to read and set.
class TLVN_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)
public:
    // What went wrong.
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile,
        generic = genericException,
    };

    // `fileName` (null for none) goes into the message.
    explicit CFileException(int cause = none, LONG osError = -1, const char* fileName = nullptr);

    // A sentence for the cause that names the file.
    BOOL GetErrorMessage(char* buffer, UINT max, UINT* helpId = nullptr) override;

    // The cause for an error number of the operating system (GetLastError, or errno on POSIX).
    static int OsErrorToException(LONG osError);
    [[noreturn]] static void ThrowOsError(LONG osError, const char* fileName = nullptr);

    // One of Cause, and the file's name, which may be empty.
    int m_cause;
    LONG m_lOsError; // -1 when there is none
    // May be empty.
    CString m_strFileName;
};

// The failure to read or write stored objects.
class TLVN_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)
public:
    // What went wrong.
    enum Cause {
        none,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema,
        generic = genericException,
    };

    // `fileName` (null for none) goes into the message.
    explicit CArchiveException(int cause = none, const char* fileName = nullptr);

    BOOL GetErrorMessage(char* buffer, UINT max, UINT* helpId = nullptr) override;

    // One of Cause, and the file's name, which may be empty.
    int m_cause;
    // May be empty.
    CString m_strFileName;
};

// Throw an exception of the class, made of the arguments.
[[noreturn]] TLVN_API void AfxThrowFileException(int cause, LONG osError = -1,
                                                 const char* fileName = nullptr);
[[noreturn]] TLVN_API void AfxThrowArchiveException(int cause, const char* fileName = nullptr);

namespace tlvn {

// The CFileException cause for a failure of the platform's file operations.
TLVN_API int FileCause(FileError error);

} // namespace tlvn
