// Files of the operating system: the raw operations below CFile and the settings files.
//
// Share modes hold between all openers that use this module, in one process and in several,
// with the rules of Windows: an open fails with FileError::Sharing when it asks for an access
// that an earlier opener denies, or denies an access that an earlier opener has.
//
// Narrow paths are in the multibyte code page on Windows and go to the system as they stand
// on POSIX. Nothing here throws; every failure is a FileError.

#pragma once

#include "platform/types.h"

#include <string>

namespace tlvn {

enum class FileError {
    None,
    NotFound, // the file does not exist
    BadPath,  // a folder of the path does not exist, or the path is malformed
    TooManyOpen,
    AccessDenied, // also: a folder, or a read-only file opened for writing
    InvalidHandle,
    Sharing,
    Lock,
    DiskFull,
    DirectoryFull,
    BadSeek,
    HardIo,
    AlreadyExists,
    Other,
};

enum FileAccess : unsigned { kFileRead = 1, kFileWrite = 2 };

enum class FileCreation {
    OpenExisting,
    OpenAlways,   // create when missing, keep the content
    CreateAlways, // create when missing, else empty it
    CreateNew,    // fail with AlreadyExists when there is one
};

// An open file. Closed by CloseFile, never copied.
using FileHandle = std::intptr_t;
constexpr FileHandle kNoFile = -1;

struct FileResult {
    FileError error = FileError::None;
    long systemError = 0; // errno or GetLastError of the failed call, 0 when none
    explicit operator bool() const { return error == FileError::None; }
};

// The meaning of an error number of the system (errno, or GetLastError's).
TLVN_API FileError ClassifyFileError(long systemError);

// `access` is what this opener does, `deny` what it forbids others (both FileAccess bits).
TLVN_API FileResult OpenFile(const char* path, unsigned access, unsigned deny,
                             FileCreation creation, FileHandle& file);
TLVN_API FileResult OpenFile(const WCHAR* path, unsigned access, unsigned deny,
                             FileCreation creation, FileHandle& file);
TLVN_API FileResult CloseFile(FileHandle file);

// Reads up to `size` bytes at the file position; `done` is less than `size` only at the end.
TLVN_API FileResult ReadFromFile(FileHandle file, void* data, std::size_t size, std::size_t& done);
// Writes all of it or fails.
TLVN_API FileResult WriteToFile(FileHandle file, const void* data, std::size_t size);

enum class SeekFrom { Begin, Current, End };
TLVN_API FileResult SeekFile(FileHandle file, INT64 offset, SeekFrom from, INT64& position);
TLVN_API FileResult GetFileSize(FileHandle file, INT64& size);
// Cuts or extends the file; the position is afterwards at `size`.
TLVN_API FileResult SetFileSize(FileHandle file, INT64 size);
// Hands everything written to the storage device.
TLVN_API FileResult FlushFile(FileHandle file);

TLVN_API FileResult RemoveFile(const char* path);
// Fails with AlreadyExists when `to` exists.
TLVN_API FileResult RenameFile(const char* from, const char* to);
// Puts `from` in the place of `to` in one step; `to` need not exist.
TLVN_API FileResult ReplaceFileWith(const char* from, const char* to);

struct FileInfo {
    INT64 size = 0;
    INT64 modified = 0; // seconds since 1970-01-01 00:00 UTC
    INT64 accessed = 0;
    INT64 created = 0; // status change where the file system keeps no creation time
    bool directory = false;
    bool readOnly = false;
};
TLVN_API FileResult GetFileInfo(const char* path, FileInfo& info);
TLVN_API FileResult SetFileReadOnly(const char* path, bool readOnly);
// Gives the file `to` the permissions of the file `from`: mode and owner (as far as the process
// may) on POSIX, attributes and access list on Windows.
TLVN_API FileResult CopyFilePermissions(const char* from, const char* to);

// The folder for temporary files, with the separator at its end.
TLVN_API std::string GetTempFolder();
// The absolute form of `path`, without asking whether it exists.
TLVN_API std::string GetFullPath(const char* path);
// True for the characters that part the names of a path.
TLVN_API bool IsPathSeparator(char c);

} // namespace tlvn
