// Writing a file so that its last good content is never lost.

#pragma once

#include "platform/file.h"

namespace tlvn {

// Makes `size` bytes the content of the file, creating it when there is none and lifting a
// read-only attribute. Whatever happens on the way - a full disk, a crash, the end of the
// process - the file holds either its old content or the new one.
//
// The content is written beside the file under its name with ".saving" behind it, handed to the
// storage device, and then put in the file's place; it gets the file's permissions. Fails when
// somebody else has opened the file for writing or denies that. Only where the folder takes no
// second file an existing file is written in place: first what goes behind its end, which is
// taken back when the disk is full, then the rest. An end of the process just then may leave a
// mixture.
TLVN_API FileResult WriteWholeFile(const char* path, const void* data, std::size_t size);

} // namespace tlvn
