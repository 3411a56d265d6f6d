#include "viewer/mail_file.h"

#include "platform/file.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr std::size_t kChunk = 1 << 20;

const char* Describe(FileError error)
{
    switch (error) {
    case FileError::NotFound:
        return "there is no such file";
    case FileError::BadPath:
        return "there is no such folder";
    case FileError::AccessDenied:
        return "no permission to read it";
    case FileError::Sharing:
    case FileError::Lock:
        return "another program is using it";
    case FileError::TooManyOpen:
        return "too many files are open";
    default:
        return "it cannot be read";
    }
}

// Reads to the end, also where the size is not known beforehand. False when the limit or an
// error stops it; `error` is then set.
bool ReadAll(FileHandle file, std::string& bytes, std::string& error)
{
    INT64 size = 0;
    if (GetFileSize(file, size) && size > 0 && size <= kMaxMailFile)
        bytes.reserve(static_cast<std::size_t>(size) + 1);
    for (;;) {
        const std::size_t old = bytes.size();
        if (static_cast<INT64>(old) > kMaxMailFile) {
            error = "it is larger than a mail can be";
            return false;
        }
        const std::size_t room = std::max(kChunk, bytes.capacity() - old);
        bytes.resize(old + std::min(room, kChunk));
        std::size_t done = 0;
        const FileResult result = ReadFromFile(file, bytes.data() + old, bytes.size() - old, done);
        bytes.resize(old + done);
        if (!result) {
            error = Describe(result.error);
            return false;
        }
        if (done == 0)
            return true;
    }
}

} // namespace

bool LoadMailFile(const std::string& path, std::string& bytes, std::string& error)
{
    bytes.clear();
    FileInfo info;
    if (GetFileInfo(path.c_str(), info) && info.directory) {
        error = "it is a folder";
        return false;
    }
    FileHandle file = kNoFile;
    if (const FileResult opened =
            OpenFile(path.c_str(), kFileRead, 0, FileCreation::OpenExisting, file);
        !opened) {
        error = Describe(opened.error);
        return false;
    }
    bool good = ReadAll(file, bytes, error);
    CloseFile(file);
    if (good && bytes.empty()) {
        error = "it is empty";
        good = false;
    }
    if (!good)
        bytes = {};
    return good;
}

} // namespace tlvn
