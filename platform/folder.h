// Listing folders and reading the beginnings of the files in them.
//
//   FolderReader folder;
//   FolderEntry entry;
//   if (folder.Open(path))
//       while (folder.Next(entry))
//           if (entry.kind == EntryKind::File)
//               folder.ReadHead(entry.name.c_str(), head, sizeof head, done, size);
//
// Names and paths here hold any name that the system has: they are UTF-8 on Windows, and on
// POSIX the bytes as they stand, which usually are UTF-8. A narrow path of platform/file.h is
// made from one by ToNarrowPath. Nothing here throws except for lack of memory.

#pragma once

#include "platform/file.h"

#include <memory>
#include <string_view>

namespace tlvn {

enum class EntryKind { File, Folder, Other };

struct FolderEntry {
    std::string name;
    EntryKind kind = EntryKind::Other; // of a link: of what it leads to
    INT64 size = -1;                   // in bytes, -1 where the listing does not tell
};

// Tells one folder from all others, whatever path leads to it.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    auto operator<=>(const FolderIdentity&) const = default;
};

class TLVN_API FolderReader {
public:
    FolderReader();
    ~FolderReader();
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;

    // Opens the folder in place of the one before.
    FileResult Open(const std::string& path);
    void Close();
    bool IsOpen() const { return m_state != nullptr; }

    // Which folder it is; zeros where the file system has no numbers for them.
    FolderIdentity GetIdentity() const;

    // The next entry, "." and ".." left out, in the order of the file system. False behind the
    // last one, or when the rest cannot be read.
    bool Next(FolderEntry& entry);

    // Reads the first bytes of a file of the folder, at most `capacity`. `size` receives its
    // whole size when that shows on the way, else -1. Nobody is kept from using the file.
    FileResult ReadHead(const char* name, char* head, std::size_t capacity, std::size_t& done,
                        INT64& size) const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// Opens a file for reading, denying others nothing.
TLVN_API FileResult OpenToRead(const std::string& path, FileHandle& file);

// The path as a narrow one. False when the multibyte code page cannot express it.
TLVN_API bool ToNarrowPath(std::string_view path, std::string& narrow);
// A narrow path as one of this header.
TLVN_API std::string FromNarrowPath(std::string_view narrow);

// The path of a name in a folder.
TLVN_API std::string JoinPath(std::string_view folder, std::string_view name);
// What stands behind the last separator, one at the end not counting; a root as it is.
TLVN_API std::string_view GetLastName(std::string_view path);

} // namespace tlvn
