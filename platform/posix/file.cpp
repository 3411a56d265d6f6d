// Files of a POSIX system.
//
// Share modes are kept as locks that belong to the open file (open file description locks, see
// fcntl(2)): they hold between processes and go away with the last close. Each of four facts -
// somebody reads, writes, denies reading, denies writing - is a lock in its own range of bytes,
// far behind the end of any file. A lock is shared, so that any number of openers can state the
// same fact; a file that may only be written cannot have a shared lock and takes an exclusive
// one on a byte of its own within the range. Testing and setting is one step under flock(2).
// On file systems without such locks there are no share modes.

#include "platform/file.h"

#include "platform/nls.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tlvn {

namespace {

constexpr unsigned kReadWrite = kFileRead | kFileWrite;
constexpr mode_t kNewFileMode = 0666;

// The first byte of the ranges, and the size of each: below the largest file offset, above the
// size of any file.
constexpr off_t kLockBase = off_t{1} << 62;
constexpr off_t kLockRange = off_t{1} << 40;

// The error number that stands for a share mode that forbids.
constexpr int kSharingErrno = EBUSY;

// A handle is the descriptor and, in the lowest two bits, what the opener may do: the
// descriptor itself is opened for reading as well when it is to be written.
FileHandle MakeHandle(int descriptor, unsigned access)
{
    return FileHandle{descriptor} << 2 | static_cast<FileHandle>(access);
}
int DescriptorOf(FileHandle file)
{
    return file == kNoFile ? -1 : static_cast<int>(file >> 2);
}
bool MayAccess(FileHandle file, unsigned access)
{
    return file == kNoFile || (static_cast<unsigned>(file) & access) == access;
}

FileResult Failure(int error)
{
    return {ClassifyFileError(error), error};
}
FileResult LastFailure()
{
    return Failure(errno);
}

// What a missing file means for `path`: whether it is the folder that is missing.
FileResult Missing(const std::string& path)
{
    const std::size_t slash = path.find_last_of('/');
    struct stat folder;
    const bool folderMissing = slash != std::string::npos && slash > 0 &&
                               stat(path.substr(0, slash).c_str(), &folder) != 0;
    return {folderMissing || path.empty() ? FileError::BadPath : FileError::NotFound, ENOENT};
}

FileResult PathFailure(const char* path)
{
    const int error = errno;
    return error == ENOENT ? Missing(path) : Failure(error);
}

// The facts, as the numbers of their ranges.
enum Fact { kReads, kWrites, kDeniesRead, kDeniesWrite };

class ShareLocks {
public:
    ShareLocks(int descriptor, bool readable) : m_descriptor(descriptor), m_readable(readable) {}

    // States what this opener does and denies. False when another opener is in the way; what
    // has been stated then goes with the descriptor.
    bool Claim(unsigned access, unsigned deny)
    {
        const Mutex mutex(m_descriptor);
        if (((access & kFileRead) && IsStated(kDeniesRead)) ||
            ((access & kFileWrite) && IsStated(kDeniesWrite)) ||
            ((deny & kFileRead) && IsStated(kReads)) || ((deny & kFileWrite) && IsStated(kWrites)))
            return false;
        State(kReads, access & kFileRead);
        State(kWrites, access & kFileWrite);
        State(kDeniesRead, deny & kFileRead);
        State(kDeniesWrite, deny & kFileWrite);
        return true;
    }

private:
    // Held for some microseconds by each opener. The wait has an end because some network file
    // systems count the locks of the open files among its holders.
    class Mutex {
    public:
        explicit Mutex(int descriptor) : m_descriptor(descriptor)
        {
            constexpr int kAttempts = 200;
            constexpr useconds_t kPause = 1000;
            for (int i = 0; i < kAttempts && flock(m_descriptor, LOCK_EX | LOCK_NB) != 0; i++) {
                if (errno != EWOULDBLOCK && errno != EINTR)
                    return;
                usleep(kPause);
            }
        }
        ~Mutex() { flock(m_descriptor, LOCK_UN); }
        Mutex(const Mutex&) = delete;
        Mutex& operator=(const Mutex&) = delete;

    private:
        int m_descriptor;
    };

    bool IsStated(Fact fact) const
    {
        struct flock lock = {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = kLockBase + fact * kLockRange;
        lock.l_len = kLockRange;
        return fcntl(m_descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    }

    void State(Fact fact, unsigned stated) const
    {
        if (stated == 0)
            return;
        struct flock lock = {};
        lock.l_type = m_readable ? F_RDLCK : F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = kLockBase + fact * kLockRange + (m_readable ? 0 : OwnByte());
        lock.l_len = 1;
        fcntl(m_descriptor, F_OFD_SETLK, &lock);
    }

    static off_t OwnByte()
    {
        std::random_device random;
        return off_t{1} + random();
    }

    int m_descriptor;
    bool m_readable;
};

int OpenRetrying(const char* path, int flags)
{
    int descriptor;
    do
        descriptor = open(path, flags | O_CLOEXEC | O_NOCTTY, kNewFileMode);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

int CreationFlags(FileCreation creation)
{
    switch (creation) {
    case FileCreation::OpenAlways:
    case FileCreation::CreateAlways:
        return O_CREAT;
    case FileCreation::CreateNew:
        return O_CREAT | O_EXCL;
    case FileCreation::OpenExisting:
        break;
    }
    return 0;
}

std::string NativePath(const WCHAR* path)
{
    std::string result;
    ConvertFromUtf16(GetSystemCodePage(), path, result);
    return result;
}

} // namespace

FileError ClassifyFileError(long systemError)
{
    switch (systemError) {
    case 0:
        return FileError::None;
    case ENOENT:
        return FileError::NotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return FileError::BadPath;
    case EMFILE:
    case ENFILE:
        return FileError::TooManyOpen;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return FileError::AccessDenied;
    case EBADF:
        return FileError::InvalidHandle;
    case kSharingErrno:
    case ETXTBSY:
        return FileError::Sharing;
    case EAGAIN:
    case EDEADLK:
    case ENOLCK:
        return FileError::Lock;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return FileError::DiskFull;
    case EMLINK:
        return FileError::DirectoryFull;
    case ESPIPE:
        return FileError::BadSeek;
    case EIO:
        return FileError::HardIo;
    case EEXIST:
    case ENOTEMPTY:
        return FileError::AlreadyExists;
    default:
        return FileError::Other;
    }
}

FileResult OpenFile(const char* path, unsigned access, unsigned deny, FileCreation creation,
                    FileHandle& file)
{
    file = kNoFile;
    if (path == nullptr || *path == '\0')
        return {FileError::BadPath, ENOENT};

    const int flags = CreationFlags(creation);
    bool readable = true;
    int descriptor = OpenRetrying(path, flags | ((access & kFileWrite) ? O_RDWR : O_RDONLY));
    if (descriptor < 0 && errno == EACCES && (access & kReadWrite) == kFileWrite) {
        readable = false;
        descriptor = OpenRetrying(path, flags | O_WRONLY);
    }
    if (descriptor < 0)
        return PathFailure(path);

    struct stat status;
    int error = 0;
    if (fstat(descriptor, &status) != 0)
        error = errno;
    else if (S_ISDIR(status.st_mode))
        error = EISDIR;
    else if (S_ISREG(status.st_mode) && !ShareLocks(descriptor, readable).Claim(access, deny))
        error = kSharingErrno;
    else if (creation == FileCreation::CreateAlways && status.st_size > 0 &&
             ftruncate(descriptor, 0) != 0)
        error = errno;
    if (error != 0) {
        close(descriptor);
        return Failure(error);
    }
    file = MakeHandle(descriptor, access & kReadWrite);
    return {};
}

FileResult OpenFile(const WCHAR* path, unsigned access, unsigned deny, FileCreation creation,
                    FileHandle& file)
{
    return OpenFile(path == nullptr ? nullptr : NativePath(path).c_str(), access, deny, creation,
                    file);
}

FileResult CloseFile(FileHandle file)
{
    // After an interruption the descriptor is closed nevertheless.
    if (close(DescriptorOf(file)) != 0 && errno != EINTR)
        return LastFailure();
    return {};
}

FileResult ReadFromFile(FileHandle file, void* data, std::size_t size, std::size_t& done)
{
    done = 0;
    if (!MayAccess(file, kFileRead))
        return Failure(EACCES);
    while (done < size) {
        const ssize_t count =
            read(DescriptorOf(file), static_cast<char*>(data) + done, size - done);
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0)
            break;
        else if (errno != EINTR)
            return LastFailure();
    }
    return {};
}

FileResult WriteToFile(FileHandle file, const void* data, std::size_t size)
{
    if (!MayAccess(file, kFileWrite))
        return Failure(EACCES);
    const char* from = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t count = write(DescriptorOf(file), from, size);
        if (count >= 0) {
            from += count;
            size -= static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return LastFailure();
        }
    }
    return {};
}

FileResult SeekFile(FileHandle file, INT64 offset, SeekFrom from, INT64& position)
{
    const int whence = from == SeekFrom::Begin     ? SEEK_SET
                       : from == SeekFrom::Current ? SEEK_CUR
                                                   : SEEK_END;
    const off_t result = lseek(DescriptorOf(file), offset, whence);
    if (result < 0)
        return errno == EINVAL ? FileResult{FileError::BadSeek, EINVAL} : LastFailure();
    position = result;
    return {};
}

FileResult GetFileSize(FileHandle file, INT64& size)
{
    struct stat status;
    if (fstat(DescriptorOf(file), &status) != 0)
        return LastFailure();
    size = status.st_size;
    return {};
}

FileResult SetFileSize(FileHandle file, INT64 size)
{
    if (!MayAccess(file, kFileWrite))
        return Failure(EACCES);
    if (size < 0)
        return {FileError::BadSeek, EINVAL};
    int result;
    do
        result = ftruncate(DescriptorOf(file), size);
    while (result != 0 && errno == EINTR);
    if (result != 0)
        return LastFailure();
    INT64 position;
    return SeekFile(file, size, SeekFrom::Begin, position);
}

FileResult FlushFile(FileHandle file)
{
    // What is no file on a device (a pipe, a terminal) has nothing to flush.
    if (fsync(DescriptorOf(file)) != 0 && errno != EINVAL && errno != EROFS)
        return LastFailure();
    return {};
}

FileResult RemoveFile(const char* path)
{
    if (path == nullptr)
        return {FileError::BadPath, ENOENT};
    return unlink(path) == 0 ? FileResult{} : PathFailure(path);
}

FileResult RenameFile(const char* from, const char* to)
{
    if (from == nullptr || to == nullptr)
        return {FileError::BadPath, ENOENT};
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return {};
    if (errno != EINVAL && errno != ENOSYS) {
        struct stat status;
        return errno == ENOENT && lstat(from, &status) == 0 ? PathFailure(to) : PathFailure(from);
    }
    // The file system cannot rename without replacing: link fails where the name is taken.
    if (link(from, to) != 0)
        return PathFailure(from);
    return unlink(from) == 0 ? FileResult{} : PathFailure(from);
}

FileResult ReplaceFileWith(const char* from, const char* to)
{
    if (from == nullptr || to == nullptr)
        return {FileError::BadPath, ENOENT};
    return rename(from, to) == 0 ? FileResult{} : PathFailure(from);
}

FileResult GetFileInfo(const char* path, FileInfo& info)
{
    if (path == nullptr)
        return {FileError::BadPath, ENOENT};
    struct statx status;
    if (statx(AT_FDCWD, path, 0, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return PathFailure(path);
    const bool hasBirth = (status.stx_mask & STATX_BTIME) != 0;
    info.size = static_cast<INT64>(status.stx_size);
    info.modified = status.stx_mtime.tv_sec;
    info.accessed = status.stx_atime.tv_sec;
    info.created = hasBirth ? status.stx_btime.tv_sec : status.stx_ctime.tv_sec;
    info.directory = S_ISDIR(status.stx_mode);
    info.readOnly = (status.stx_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
    return {};
}

FileResult SetFileReadOnly(const char* path, bool readOnly)
{
    if (path == nullptr)
        return {FileError::BadPath, ENOENT};
    struct stat status;
    if (stat(path, &status) != 0)
        return PathFailure(path);
    constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;
    const mode_t mode = status.st_mode & 07777;
    const mode_t wanted = readOnly ? mode & ~kWriteBits : mode | S_IWUSR;
    return chmod(path, wanted) == 0 ? FileResult{} : PathFailure(path);
}

FileResult CopyFilePermissions(const char* from, const char* to)
{
    if (from == nullptr || to == nullptr)
        return {FileError::BadPath, ENOENT};
    struct stat status;
    if (stat(from, &status) != 0)
        return PathFailure(from);
    // Only root may give a file away, others may change its group within limits; the mode comes
    // after that, which may clear some of its bits.
    if (chown(to, status.st_uid, status.st_gid) != 0 &&
        chown(to, static_cast<uid_t>(-1), status.st_gid) != 0 && errno == ENOENT)
        return PathFailure(to);
    return chmod(to, status.st_mode & 07777) == 0 ? FileResult{} : PathFailure(to);
}

std::string GetTempFolder()
{
    const char* const variable = std::getenv("TMPDIR");
    std::string folder = variable != nullptr && *variable == '/' ? variable : "/tmp";
    if (folder.back() != '/')
        folder += '/';
    return folder;
}

std::string GetFullPath(const char* path)
{
    if (path == nullptr || *path == '\0')
        return std::string();
    if (*path == '/')
        return path;
    char* const current = getcwd(nullptr, 0);
    if (current == nullptr)
        return path;
    std::string full(current);
    std::free(current);
    if (full.back() != '/')
        full += '/';
    return full + path;
}

bool IsPathSeparator(char c)
{
    return c == '/';
}

} // namespace tlvn
