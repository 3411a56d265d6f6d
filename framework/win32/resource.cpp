#include "framework/resource.h"

// The functions of version 2 are in kernel32.dll.
#define PSAPI_VERSION 2
#include <psapi.h>

#include <algorithm>
#include <iterator>

namespace tlvn {

HACCEL LoadAcceleratorResource(LPCWSTR name)
{
    if (const HACCEL own = ::LoadAcceleratorsW(::GetModuleHandleW(nullptr), name); own != nullptr)
        return own;
    HMODULE modules[1024];
    DWORD bytes = 0;
    if (!::EnumProcessModules(::GetCurrentProcess(), modules, sizeof(modules), &bytes))
        return nullptr;
    const std::size_t count = std::min(bytes / sizeof(HMODULE), std::size(modules));
    for (std::size_t i = 0; i < count; ++i) {
        if (const HACCEL found = ::LoadAcceleratorsW(modules[i], name); found != nullptr)
            return found;
    }
    return nullptr;
}

} // namespace tlvn
