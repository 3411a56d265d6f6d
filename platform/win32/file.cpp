// Files of Windows. Share modes are the system's own.

#include "platform/file.h"

#include "platform/nls.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr INT64 kTicksPerSecond = 10'000'000;      // of a FILETIME
constexpr INT64 kEpochInFileTime = 11'644'473'600; // seconds from 1601 to 1970
// Most bytes that are read or written by one call.
constexpr std::size_t kChunk = std::size_t{1} << 30;

FileResult Failure(DWORD error)
{
    return {ClassifyFileError(static_cast<long>(error)), static_cast<long>(error)};
}
FileResult LastFailure()
{
    return Failure(GetLastError());
}
FileResult ResultOf(BOOL succeeded)
{
    return succeeded ? FileResult{} : LastFailure();
}

HANDLE NativeHandle(FileHandle file)
{
    return reinterpret_cast<HANDLE>(file);
}

DWORD Disposition(FileCreation creation)
{
    switch (creation) {
    case FileCreation::OpenAlways:
        return OPEN_ALWAYS;
    case FileCreation::CreateAlways:
        return CREATE_ALWAYS;
    case FileCreation::CreateNew:
        return CREATE_NEW;
    case FileCreation::OpenExisting:
        break;
    }
    return OPEN_EXISTING;
}

// The path for the system; null gives an empty one, which the system refuses.
WString NativePath(const char* path)
{
    return path == nullptr ? WString() : WidenText(path);
}

INT64 ToSeconds(const FILETIME& time)
{
    const UINT64 ticks = UINT64{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return static_cast<INT64>(ticks) / kTicksPerSecond - kEpochInFileTime;
}

} // namespace

FileError ClassifyFileError(long systemError)
{
    switch (systemError) {
    case ERROR_SUCCESS:
        return FileError::None;
    case ERROR_FILE_NOT_FOUND:
        return FileError::NotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY:
        return FileError::BadPath;
    case ERROR_TOO_MANY_OPEN_FILES:
        return FileError::TooManyOpen;
    case ERROR_ACCESS_DENIED:
    case ERROR_CURRENT_DIRECTORY:
    case ERROR_WRITE_PROTECT:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD:
        return FileError::AccessDenied;
    case ERROR_INVALID_HANDLE:
        return FileError::InvalidHandle;
    case ERROR_SHARING_VIOLATION:
    case ERROR_SHARING_BUFFER_EXCEEDED:
        return FileError::Sharing;
    case ERROR_LOCK_VIOLATION:
    case ERROR_LOCK_FAILED:
    case ERROR_NOT_LOCKED:
        return FileError::Lock;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return FileError::DiskFull;
    case ERROR_CANNOT_MAKE:
        return FileError::DirectoryFull;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK:
    case ERROR_SEEK_ON_DEVICE:
        return FileError::BadSeek;
    case ERROR_CRC:
    case ERROR_NOT_READY:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
        return FileError::HardIo;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return FileError::AlreadyExists;
    default:
        return FileError::Other;
    }
}

FileResult OpenFile(const char* path, unsigned access, unsigned deny, FileCreation creation,
                    FileHandle& file)
{
    return OpenFile(NativePath(path).c_str(), access, deny, creation, file);
}

FileResult OpenFile(const WCHAR* path, unsigned access, unsigned deny, FileCreation creation,
                    FileHandle& file)
{
    file = kNoFile;
    const DWORD wanted = ((access & kFileRead) ? GENERIC_READ : 0) |
                         ((access & kFileWrite) ? static_cast<DWORD>(GENERIC_WRITE) : 0);
    const DWORD shared = ((deny & kFileRead) ? 0u : DWORD{FILE_SHARE_READ}) |
                         ((deny & kFileWrite) ? 0u : DWORD{FILE_SHARE_WRITE});
    const HANDLE opened = CreateFileW(path == nullptr ? TW("") : path, wanted, shared, nullptr,
                                      Disposition(creation), FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return LastFailure();
    file = reinterpret_cast<FileHandle>(opened);
    return {};
}

FileResult CloseFile(FileHandle file)
{
    return ResultOf(CloseHandle(NativeHandle(file)));
}

FileResult ReadFromFile(FileHandle file, void* data, std::size_t size, std::size_t& done)
{
    done = 0;
    while (done < size) {
        DWORD count = 0;
        if (!ReadFile(NativeHandle(file), static_cast<char*>(data) + done,
                      static_cast<DWORD>(std::min(size - done, kChunk)), &count, nullptr))
            return LastFailure();
        if (count == 0)
            break;
        done += count;
    }
    return {};
}

FileResult WriteToFile(FileHandle file, const void* data, std::size_t size)
{
    const char* from = static_cast<const char*>(data);
    while (size > 0) {
        DWORD count = 0;
        if (!WriteFile(NativeHandle(file), from, static_cast<DWORD>(std::min(size, kChunk)), &count,
                       nullptr))
            return LastFailure();
        if (count == 0)
            return Failure(ERROR_DISK_FULL);
        from += count;
        size -= count;
    }
    return {};
}

FileResult SeekFile(FileHandle file, INT64 offset, SeekFrom from, INT64& position)
{
    const DWORD method = from == SeekFrom::Begin     ? FILE_BEGIN
                         : from == SeekFrom::Current ? FILE_CURRENT
                                                     : FILE_END;
    LARGE_INTEGER distance;
    LARGE_INTEGER result;
    distance.QuadPart = offset;
    if (!SetFilePointerEx(NativeHandle(file), distance, &result, method)) {
        const DWORD error = GetLastError();
        return error == ERROR_INVALID_PARAMETER
                   ? FileResult{FileError::BadSeek, static_cast<long>(error)}
                   : Failure(error);
    }
    position = result.QuadPart;
    return {};
}

FileResult GetFileSize(FileHandle file, INT64& size)
{
    LARGE_INTEGER result;
    if (!GetFileSizeEx(NativeHandle(file), &result))
        return LastFailure();
    size = result.QuadPart;
    return {};
}

FileResult SetFileSize(FileHandle file, INT64 size)
{
    INT64 position;
    const FileResult sought = SeekFile(file, size, SeekFrom::Begin, position);
    return sought ? ResultOf(SetEndOfFile(NativeHandle(file))) : sought;
}

FileResult FlushFile(FileHandle file)
{
    if (FlushFileBuffers(NativeHandle(file)))
        return {};
    // A file that is only read has nothing to flush, and the system refuses to.
    const DWORD error = GetLastError();
    return error == ERROR_ACCESS_DENIED ? FileResult{} : Failure(error);
}

FileResult RemoveFile(const char* path)
{
    return ResultOf(DeleteFileW(NativePath(path).c_str()));
}

FileResult RenameFile(const char* from, const char* to)
{
    return ResultOf(MoveFileW(NativePath(from).c_str(), NativePath(to).c_str()));
}

FileResult ReplaceFileWith(const char* from, const char* to)
{
    return ResultOf(MoveFileExW(NativePath(from).c_str(), NativePath(to).c_str(),
                                MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

FileResult GetFileInfo(const char* path, FileInfo& info)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(NativePath(path).c_str(), GetFileExInfoStandard, &data))
        return LastFailure();
    info.size = static_cast<INT64>(UINT64{data.nFileSizeHigh} << 32 | data.nFileSizeLow);
    info.modified = ToSeconds(data.ftLastWriteTime);
    info.accessed = ToSeconds(data.ftLastAccessTime);
    info.created = ToSeconds(data.ftCreationTime);
    info.directory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    info.readOnly = (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    return {};
}

FileResult SetFileReadOnly(const char* path, bool readOnly)
{
    const WString native = NativePath(path);
    const DWORD attributes = GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return LastFailure();
    constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;
    const DWORD wanted = readOnly ? attributes | kReadOnly : attributes & ~kReadOnly;
    return ResultOf(SetFileAttributesW(native.c_str(), wanted));
}

FileResult CopyFilePermissions(const char* from, const char* to)
{
    const WString source = NativePath(from);
    const WString target = NativePath(to);
    const DWORD attributes = GetFileAttributesW(source.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return LastFailure();
    if (!SetFileAttributesW(target.c_str(), attributes))
        return LastFailure();

    // File systems without access lists have nothing more to copy.
    DWORD size = 0;
    GetFileSecurityW(source.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    if (size == 0)
        return {};
    std::string descriptor(size, '\0');
    if (!GetFileSecurityW(source.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size,
                          &size))
        return LastFailure();
    return ResultOf(SetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, descriptor.data()));
}

std::string GetTempFolder()
{
    WCHAR folder[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH)
        return ".\\";
    return NarrowText(WStringView(folder, length)); // ends in a separator
}

std::string GetFullPath(const char* path)
{
    const WString native = NativePath(path);
    if (native.empty())
        return std::string();
    const DWORD size = GetFullPathNameW(native.c_str(), 0, nullptr, nullptr);
    WString full(size, 0);
    full.resize(GetFullPathNameW(native.c_str(), size, full.data(), nullptr));
    return NarrowText(full);
}

bool IsPathSeparator(char c)
{
    return c == '\\' || c == '/';
}

} // namespace tlvn
