#include "persist/zip/file_name.h"

#include "platform/multibyte.h"

#include <cstring>

namespace tlvn {

namespace {

bool IsForbidden(char c, bool path)
{
    if (static_cast<BYTE>(c) < ' ')
        return true;
    return std::strchr(path ? "\"*:<>?|" : "\"*:<>?|\\/", c) != nullptr;
}

} // namespace

void SuitToFileName(CStringA& name, char replacement, int path)
{
    const int length = name.GetLength();
    char* const begin = name.GetBuffer(length);
    char* const end = begin + length;
    for (char* p = begin; p < end; p += CharLength(p, end))
        if (IsForbidden(*p, path != 0))
            *p = replacement != 0 ? replacement : '_';
    name.ReleaseBuffer(length);
}

} // namespace tlvn
