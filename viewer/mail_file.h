// Loads the file of a mail.

#pragma once

#include "platform/types.h"

#include <string>

namespace tlvn {

constexpr INT64 kMaxMailFile = 1'000'000'000; // bytes

// Replaces `bytes` by the content of the file. On failure `bytes` is empty and `error` says in
// one line, without the file's name, why: not found, a folder, no right to read it, empty,
// larger than kMaxMailFile.
bool LoadMailFile(const std::string& path, std::string& bytes, std::string& error);

} // namespace tlvn
