// What a console program gets from the system.

#pragma once

#include "platform/types.h"

#include <string>
#include <vector>

namespace tlvn {

// The program's arguments, its name first, in the form narrow paths have: in the multibyte
// code page on Windows, where `argc` and `argv` are not looked at; as they stand on POSIX.
TLVN_API std::vector<std::string> GetProgramArguments(int argc, char** argv);

// Makes standard output and standard error carry bytes, without a change of line ends.
TLVN_API void SetBinaryOutput();

} // namespace tlvn
