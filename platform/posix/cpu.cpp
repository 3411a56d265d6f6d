#include "platform/cpu.h"

namespace tlvn::platform {

bool SystemHasAvx2() noexcept
{
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

} // namespace tlvn::platform
