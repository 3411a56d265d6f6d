// Folders of Windows.

#include "platform/folder.h"

#include "platform/multibyte.h"
#include "platform/nls.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

FileResult LastFailure()
{
    const auto error = static_cast<long>(GetLastError());
    return {ClassifyFileError(error), error};
}

EntryKind KindOf(DWORD attributes)
{
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return EntryKind::Folder;
    return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? EntryKind::Other : EntryKind::File;
}

} // namespace

struct FolderReader::State {
    State() = default;
    ~State()
    {
        if (search != INVALID_HANDLE_VALUE)
            FindClose(search);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    WString folder; // with the separator at its end
    HANDLE search = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW found = {};
    bool pending = false; // `found` has not been given out yet
};

FolderReader::FolderReader() = default;
FolderReader::~FolderReader() = default;

FileResult FolderReader::Open(const std::string& path)
{
    m_state.reset();
    auto state = std::make_unique<State>();
    state->folder = Utf8ToUtf16(JoinPath(path.empty() ? "." : path, {}));
    state->search = FindFirstFileW((state->folder + TW("*")).c_str(), &state->found);
    if (state->search == INVALID_HANDLE_VALUE) {
        // An empty root has not even "." in it.
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            return LastFailure();
    } else {
        state->pending = true;
    }
    m_state = std::move(state);
    return {};
}

void FolderReader::Close()
{
    m_state.reset();
}

FolderIdentity FolderReader::GetIdentity() const
{
    if (!m_state)
        return {};
    const HANDLE folder = CreateFileW(m_state->folder.c_str(), FILE_READ_ATTRIBUTES, kShareAll,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (folder == INVALID_HANDLE_VALUE)
        return {};
    BY_HANDLE_FILE_INFORMATION info;
    const BOOL known = GetFileInformationByHandle(folder, &info);
    CloseHandle(folder);
    if (!known)
        return {};
    return {info.dwVolumeSerialNumber,
            std::uint64_t{info.nFileIndexHigh} << 32 | info.nFileIndexLow};
}

bool FolderReader::Next(FolderEntry& entry)
{
    if (!m_state || m_state->search == INVALID_HANDLE_VALUE)
        return false;
    for (;;) {
        if (!m_state->pending && !FindNextFileW(m_state->search, &m_state->found))
            return false;
        m_state->pending = false;
        const WIN32_FIND_DATAW& found = m_state->found;
        const WStringView name = found.cFileName;
        if (name == TW(".") || name == TW(".."))
            continue;
        entry.name = Utf16ToUtf8(name);
        entry.kind = KindOf(found.dwFileAttributes);
        // Of a link the listing tells the size of the link.
        const bool link = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        entry.size =
            link || entry.kind != EntryKind::File
                ? -1
                : static_cast<INT64>(std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow);
        return true;
    }
}

FileResult FolderReader::ReadHead(const char* name, char* head, std::size_t capacity,
                                  std::size_t& done, INT64& size) const
{
    done = 0;
    size = -1;
    if (!m_state)
        return {FileError::InvalidHandle, ERROR_INVALID_HANDLE};
    const HANDLE file =
        CreateFileW((m_state->folder + Utf8ToUtf16(name)).c_str(), GENERIC_READ, kShareAll, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return LastFailure();
    const auto handle = reinterpret_cast<FileHandle>(file);
    const FileResult result = ReadFromFile(handle, head, capacity, done);
    if (done < capacity)
        size = static_cast<INT64>(done);
    else
        GetFileSize(handle, size);
    CloseHandle(file);
    return result;
}

FileResult OpenToRead(const std::string& path, FileHandle& file)
{
    return OpenFile(Utf8ToUtf16(path).c_str(), kFileRead, 0, FileCreation::OpenExisting, file);
}

bool ToNarrowPath(std::string_view path, std::string& narrow)
{
    return ConvertFromUtf16(GetMultibytePage(), Utf8ToUtf16(path), narrow) == kConverted;
}

std::string FromNarrowPath(std::string_view narrow)
{
    return Utf16ToUtf8(WidenText(narrow));
}

std::string JoinPath(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    if (!path.empty() && !IsPathSeparator(path.back()) && path.back() != ':')
        path += '\\';
    path += name;
    return path;
}

std::string_view GetLastName(std::string_view path)
{
    while (path.size() > 1 && IsPathSeparator(path.back()))
        path.remove_suffix(1);
    const std::size_t separator = path.find_last_of("\\/");
    return separator == path.npos || path.size() == 1 ? path : path.substr(separator + 1);
}

} // namespace tlvn
