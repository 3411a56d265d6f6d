#include "persist/whole_file.h"

#include <algorithm>
#include <string>

namespace tlvn {

namespace {

// A file open for writing, that others may meanwhile read but not write.
class Output {
public:
    Output() = default;
    ~Output() { Close(); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    FileResult Open(const char* path, FileCreation creation)
    {
        return OpenFile(path, kFileWrite, kFileWrite, creation, m_file);
    }
    FileResult Write(const void* data, std::size_t size, INT64 position)
    {
        INT64 reached;
        const FileResult sought = SeekFile(m_file, position, SeekFrom::Begin, reached);
        return sought ? WriteToFile(m_file, data, size) : sought;
    }
    FileResult GetSize(INT64& size) const { return GetFileSize(m_file, size); }
    FileResult SetSize(INT64 size) { return SetFileSize(m_file, size); }
    FileResult FlushAndClose()
    {
        const FileResult flushed = FlushFile(m_file);
        const FileResult closed = Close();
        return flushed ? closed : flushed;
    }

private:
    FileResult Close()
    {
        if (m_file == kNoFile)
            return {};
        const FileResult closed = CloseFile(m_file);
        m_file = kNoFile;
        return closed;
    }

    FileHandle m_file = kNoFile;
};

FileResult WriteInPlace(const char* path, const void* data, std::size_t size)
{
    Output file;
    INT64 oldSize = 0;
    FileResult result = file.Open(path, FileCreation::OpenExisting);
    if (result)
        result = file.GetSize(oldSize);
    if (!result)
        return result;

    const std::size_t covered = std::min(size, static_cast<std::size_t>(oldSize));
    result = file.Write(static_cast<const char*>(data) + covered, size - covered, oldSize);
    if (!result) {
        file.SetSize(oldSize);
        return result;
    }
    result = file.Write(data, covered, 0);
    if (result)
        result = file.SetSize(static_cast<INT64>(size));
    return result ? file.FlushAndClose() : result;
}

bool FolderTakesNoFile(const FileResult& result)
{
    return result.error == FileError::AccessDenied || result.error == FileError::DirectoryFull ||
           result.error == FileError::BadPath;
}

// Fails with what is in the way of writing an existing file; makes it writable first.
FileResult PrepareExisting(const char* path, const FileInfo& info)
{
    if (info.readOnly && !info.directory) {
        const FileResult writable = SetFileReadOnly(path, false);
        if (!writable)
            return writable;
    }
    return Output().Open(path, FileCreation::OpenExisting);
}

} // namespace

FileResult WriteWholeFile(const char* path, const void* data, std::size_t size)
{
    FileInfo info;
    const bool exists = static_cast<bool>(GetFileInfo(path, info));
    if (exists) {
        const FileResult prepared = PrepareExisting(path, info);
        if (!prepared)
            return prepared;
    }

    const std::string beside = std::string(path != nullptr ? path : "") + ".saving";
    Output file;
    FileResult result = file.Open(beside.c_str(), FileCreation::CreateAlways);
    if (!result)
        return exists && FolderTakesNoFile(result) ? WriteInPlace(path, data, size) : result;

    // Before the content: nobody is to read it who may not read the file.
    if (exists)
        CopyFilePermissions(path, beside.c_str());
    result = file.Write(data, size, 0);
    if (result)
        result = file.FlushAndClose();
    if (result)
        result = ReplaceFileWith(beside.c_str(), path);
    if (!result) {
        file.FlushAndClose();
        RemoveFile(beside.c_str());
    }
    return result;
}

} // namespace tlvn
