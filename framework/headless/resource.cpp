#include "framework/resource.h"

namespace tlvn {

HACCEL LoadAcceleratorResource(LPCWSTR name)
{
    return ::LoadAcceleratorsW(::GetModuleHandleW(nullptr), name);
}

} // namespace tlvn
