#include "platform/cpu.h"

namespace tlvn {

namespace {

bool g_allowed = true;

} // namespace

bool HasAvx2() noexcept
{
    static const bool has = platform::SystemHasAvx2();
    return has && g_allowed;
}

void AllowAvx2(bool allowed) noexcept
{
    g_allowed = allowed;
}

} // namespace tlvn
