// Folders of a POSIX system.

#include "platform/folder.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tlvn {

namespace {

FileResult LastFailure()
{
    return {ClassifyFileError(errno), errno};
}

EntryKind KindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return EntryKind::File;
    return S_ISDIR(mode) ? EntryKind::Folder : EntryKind::Other;
}

} // namespace

struct FolderReader::State {
    explicit State(DIR* opened) : stream(opened), descriptor(dirfd(opened)) {}
    ~State() { closedir(stream); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    DIR* stream;
    int descriptor;
};

FolderReader::FolderReader() = default;
FolderReader::~FolderReader() = default;

FileResult FolderReader::Open(const std::string& path)
{
    m_state.reset();
    DIR* const opened = opendir(path.c_str());
    if (opened == nullptr)
        return {errno == ENOENT ? FileError::BadPath : ClassifyFileError(errno), errno};
    m_state = std::make_unique<State>(opened);
    return {};
}

void FolderReader::Close()
{
    m_state.reset();
}

FolderIdentity FolderReader::GetIdentity() const
{
    struct stat status;
    if (!m_state || fstat(m_state->descriptor, &status) != 0)
        return {};
    return {status.st_dev, status.st_ino};
}

bool FolderReader::Next(FolderEntry& entry)
{
    if (!m_state)
        return false;
    const dirent* found;
    do
        found = readdir(m_state->stream);
    while (found != nullptr &&
           (std::string_view(found->d_name) == "." || std::string_view(found->d_name) == ".."));
    if (found == nullptr)
        return false;

    entry.name = found->d_name;
    entry.size = -1;
    entry.kind = found->d_type == DT_REG   ? EntryKind::File
                 : found->d_type == DT_DIR ? EntryKind::Folder
                                           : EntryKind::Other;
    // Links are what they lead to; some file systems do not tell what an entry is.
    if (found->d_type == DT_LNK || found->d_type == DT_UNKNOWN) {
        struct stat status;
        if (fstatat(m_state->descriptor, found->d_name, &status, 0) == 0)
            entry.kind = KindOf(status.st_mode);
    }
    return true;
}

FileResult FolderReader::ReadHead(const char* name, char* head, std::size_t capacity,
                                  std::size_t& done, INT64& size) const
{
    done = 0;
    size = -1;
    if (!m_state)
        return {FileError::InvalidHandle, EBADF};
    // Without waiting for the other end, should a pipe have taken the file's place.
    const int file =
        openat(m_state->descriptor, name, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (file < 0)
        return LastFailure();
    FileResult result;
    bool atEnd = false;
    while (done < capacity && !atEnd && result) {
        const ssize_t count = read(file, head + done, capacity - done);
        if (count > 0) {
            // A short count is the end of a file in a folder; asking again would tell no more.
            atEnd = static_cast<std::size_t>(count) < capacity - done;
            done += static_cast<std::size_t>(count);
        } else if (count == 0) {
            atEnd = true;
        } else if (errno != EINTR) {
            result = LastFailure();
        }
    }
    if (atEnd) {
        size = static_cast<INT64>(done);
    } else if (struct stat status; result && fstat(file, &status) == 0) {
        size = status.st_size;
    }
    close(file);
    return result;
}

FileResult OpenToRead(const std::string& path, FileHandle& file)
{
    return OpenFile(path.c_str(), kFileRead, 0, FileCreation::OpenExisting, file);
}

bool ToNarrowPath(std::string_view path, std::string& narrow)
{
    narrow = path;
    return true;
}

std::string FromNarrowPath(std::string_view narrow)
{
    return std::string(narrow);
}

std::string JoinPath(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    if (!path.empty() && path.back() != '/')
        path += '/';
    path += name;
    return path;
}

std::string_view GetLastName(std::string_view path)
{
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    const std::size_t slash = path.rfind('/');
    return slash == path.npos || path.size() == 1 ? path : path.substr(slash + 1);
}

} // namespace tlvn
