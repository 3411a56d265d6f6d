// Which vector instructions the processor has.
//
// SSE2 is part of x86-64 and is decided on by the compiler (platform/ascii_run.h). What is beyond
// it is compiled in files of its own and called when the processor has it; every such function
// has a twin without, of the same result.

#pragma once

#include "platform/types.h"

namespace tlvn {

// True when AVX2 instructions can be used.
TLVN_API bool HasAvx2() noexcept;

// For tests: with false, HasAvx2 says no until it is called with true. Not while other threads
// work.
TLVN_API void AllowAvx2(bool allowed) noexcept;

namespace platform {

// What the system says.
bool SystemHasAvx2() noexcept;

} // namespace platform

} // namespace tlvn
