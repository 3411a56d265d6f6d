#include "platform/cpu.h"

namespace tlvn::platform {

bool SystemHasAvx2() noexcept
{
    // PF_AVX2_INSTRUCTIONS_AVAILABLE, which older headers do not have.
    constexpr DWORD kAvx2 = 40;
    return IsProcessorFeaturePresent(kAvx2) != FALSE;
}

} // namespace tlvn::platform
