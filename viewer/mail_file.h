// Loads mails from files, and tells why a file could not be read or written.
//
// Each function replaces `bytes`; on failure it is empty, and `error` says why in one line without
// the file's name: not found, a folder, no right to read it, empty, larger than kMaxMailFile.

#pragma once

#include "platform/file.h"

#include <string>

namespace tlvn {

constexpr INT64 kMaxMailFile = 1'000'000'000; // bytes

// The file of a mail, at a narrow path.
bool LoadMailFile(const std::string& path, std::string& bytes, std::string& error);
// The same at a path of platform/folder.h.
bool LoadMailAt(const std::string& path, std::string& bytes, std::string& error);

// `size` bytes from `start` of a file that is `fileSize` bytes long and has not changed.
bool LoadMailSlice(const std::string& path, INT64 fileSize, INT64 start, INT64 size,
                   std::string& bytes, std::string& error);

// What a failure means to people, such as "no permission to read it" or "to write it".
const char* DescribeFileError(FileError error);
const char* DescribeWriteError(FileError error);

} // namespace tlvn
