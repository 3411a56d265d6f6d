// CFile: an unbuffered binary file.
//
//   CFile file;
//   CFileException error;
//   if (!file.Open("C:\\Mail\\Inbox.dat", CFile::modeRead | CFile::shareDenyWrite, &error))
//       return error.m_cause;
//   const UINT read = file.Read(buffer, sizeof(buffer));
//
// Names and flags are those of the MFC. A narrow path is in the multibyte code page on Windows
// and goes to the system as it stands elsewhere. Share modes hold between all programs that
// open files through this library (platform/file.h). Every failure of an operation throws a
// CFileException; Open reports it instead.

#pragma once

#include "framework/file_exception.h"
#include "framework/time.h"
#include "platform/file.h"

struct CFileStatus {
    CTime m_ctime; // created; the last change of status where that is not kept
    CTime m_mtime; // modified
    CTime m_atime; // accessed
    // In bytes.
    ULONGLONG m_size = 0;
    BYTE m_attribute = 0; // CFile::Attribute bits
    // The path.
    CString m_szFullName;
};

// A file that is closed with its object.
class TLVN_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)
public:
    // One mode and one way of sharing, with any of the others.
    enum OpenFlags : UINT {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000, // as shareExclusive
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,  // always in force
        modeCreate = 0x1000,     // create when missing, else empty
        modeNoTruncate = 0x2000, // with modeCreate: keep the content of an existing file
        typeText = 0x4000,       // without effect, like typeBinary
        typeBinary = 0x8000,
    };
    // What an offset is counted from.
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    // Bits of CFileStatus::m_attribute.
    enum Attribute : BYTE { normal = 0x00, readOnly = 0x01, directory = 0x10 };

    CFile() = default;
    // Opens the file or throws.
    CFile(const char* path, UINT flags);
    CFile(const WCHAR* path, UINT flags);
    // Closes the file; a failure of that is not reported.
    ~CFile() override;

    // Opens the file, closing one that is open. Returns FALSE on failure, having filled
    // `error` unless it is null.
    virtual BOOL Open(const char* path, UINT flags, CFileException* error = nullptr);
    virtual BOOL Open(const WCHAR* path, UINT flags, CFileException* error = nullptr);
    BOOL IsOpen() const { return m_file != tlvn::kNoFile; }

    // Reads up to `count` bytes; returns how many, less than `count` only at the end.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    // Returns the new position in bytes from the beginning; it may lie behind the end.
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    // Cuts or extends the file; the position is then at its end.
    virtual void SetLength(ULONGLONG length);
    virtual void Flush();
    virtual void Close();
    // Closes without reporting anything.
    virtual void Abort();

    // Full path, file name with and without extension of the file opened last; empty when that
    // has been closed.
    virtual CString GetFilePath() const { return m_path; }
    virtual CString GetFileName() const;
    virtual CString GetFileTitle() const;

    // Size, times and attributes of this file or of a path. FALSE when they cannot be had.
    virtual BOOL GetStatus(CFileStatus& status) const;
    static BOOL GetStatus(const char* path, CFileStatus& status);

    // These two throw a CFileException on failure. Rename does not replace an existing file.
    static void Rename(const char* oldName, const char* newName);
    static void Remove(const char* name);

private:
    BOOL Opened(tlvn::FileResult result, const CString& path, CFileException* error);
    // Throws when `result` is a failure.
    void Check(tlvn::FileResult result) const;

    tlvn::FileHandle m_file = tlvn::kNoFile;
    CString m_path;
};
