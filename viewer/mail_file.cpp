#include "viewer/mail_file.h"

#include "platform/folder.h"
#include "viewer/reason.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr std::size_t kFirstRead = 16'384;

// Closes the file at the end of the scope.
class OpenedFile {
public:
    OpenedFile() = default;
    ~OpenedFile()
    {
        if (handle != kNoFile)
            CloseFile(handle);
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    FileHandle handle = kNoFile;
};

bool OpenMail(const std::string& path, OpenedFile& file, std::string& error)
{
    const FileResult opened = OpenToRead(path, file.handle);
    if (!opened)
        error =
            FolderReader().Open(path) ? GetText(Reason::IsFolder) : DescribeFileError(opened.error);
    return static_cast<bool>(opened);
}

// Reads to the end, also where the size is not known beforehand. False when the limit or an
// error stops it; `error` is then set.
bool ReadAll(FileHandle file, std::string& bytes, std::string& error)
{
    INT64 size = 0;
    std::size_t room = kFirstRead;
    // One byte more, so that the end shows at the first reading.
    if (GetFileSize(file, size) && size > 0 && size <= kMaxMailFile)
        room = static_cast<std::size_t>(size) + 1;
    for (;;) {
        const std::size_t old = bytes.size();
        if (static_cast<INT64>(old) > kMaxMailFile) {
            error = GetText(Reason::TooLarge);
            return false;
        }
        bytes.resize(old + room);
        std::size_t done = 0;
        const FileResult result = ReadFromFile(file, bytes.data() + old, room, done);
        bytes.resize(old + done);
        if (!result) {
            error = DescribeFileError(result.error);
            return false;
        }
        if (done < room)
            return true;
        room = std::max(kFirstRead, std::min(bytes.size(), std::size_t{1} << 24));
    }
}

} // namespace

const char* DescribeFileError(FileError error)
{
    switch (error) {
    case FileError::NotFound:
        return GetText(Reason::NoSuchFile);
    case FileError::BadPath:
        return GetText(Reason::NoSuchFolder);
    case FileError::AccessDenied:
        return GetText(Reason::MayNotRead);
    case FileError::Sharing:
    case FileError::Lock:
        return GetText(Reason::InUse);
    case FileError::TooManyOpen:
        return GetText(Reason::TooManyFiles);
    default:
        return GetText(Reason::CannotRead);
    }
}

const char* DescribeWriteError(FileError error)
{
    switch (error) {
    case FileError::AccessDenied:
        return GetText(Reason::MayNotWrite);
    case FileError::DiskFull:
    case FileError::DirectoryFull:
        return GetText(Reason::DiskFull);
    case FileError::Other:
    case FileError::HardIo:
        return GetText(Reason::CannotWrite);
    default:
        return DescribeFileError(error);
    }
}

bool LoadMailFile(const std::string& path, std::string& bytes, std::string& error)
{
    return LoadMailAt(FromNarrowPath(path), bytes, error);
}

bool LoadMailAt(const std::string& path, std::string& bytes, std::string& error)
{
    bytes.clear();
    OpenedFile file;
    if (!OpenMail(path, file, error))
        return false;
    bool good = ReadAll(file.handle, bytes, error);
    if (good && bytes.empty()) {
        error = GetText(Reason::IsEmpty);
        good = false;
    }
    if (!good)
        bytes = {};
    return good;
}

bool LoadMailSlice(const std::string& path, INT64 fileSize, INT64 start, INT64 size,
                   std::string& bytes, std::string& error)
{
    bytes.clear();
    if (size > kMaxMailFile) {
        error = GetText(Reason::TooLarge);
        return false;
    }
    OpenedFile file;
    if (!OpenMail(path, file, error))
        return false;
    INT64 present = 0;
    INT64 position = 0;
    FileResult result = GetFileSize(file.handle, present);
    if (result && present != fileSize) {
        error = GetText(Reason::HasChanged);
        return false;
    }
    if (result)
        result = SeekFile(file.handle, start, SeekFrom::Begin, position);
    std::size_t done = 0;
    if (result) {
        bytes.resize(static_cast<std::size_t>(size));
        result = ReadFromFile(file.handle, bytes.data(), bytes.size(), done);
    }
    if (!result || done < static_cast<std::size_t>(size)) {
        error = DescribeFileError(result.error);
        bytes = {};
        return false;
    }
    return true;
}

} // namespace tlvn
