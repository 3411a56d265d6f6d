#include "editor/columns.h"

#include "foundation/char_type.h"

#include <algorithm>
#include <limits>

namespace tlvn {

namespace {

enum : BYTE {
    kDouble = 1,
    kAlnum = 2,
};

BYTE TraitsOf(unsigned code)
{
    WCHAR units[2] = {static_cast<WCHAR>(code), 0};
    int count = 1;
    if (code >= 0x10000) {
        units[0] = static_cast<WCHAR>(0xD800 + ((code - 0x10000) >> 10));
        units[1] = static_cast<WCHAR>(0xDC00 + (code & 0x3FF));
        count = 2;
    }
    const auto* const text = reinterpret_cast<const char*>(units);
    const int type = GetCharType(text, count * 2, text, CT_UNICODE);
    if ((type & CHARTYPE_DOUBLE) != 0)
        return kDouble;
    return (type & CHARTYPE_WORD) != 0 && code != '_' ? kAlnum : 0;
}

// Of every unit: asking GetCharType for each character of a document would take seconds.
const std::vector<BYTE>& UnitTraits()
{
    static const std::vector<BYTE> traits = [] {
        std::vector<BYTE> all(0x10000);
        for (unsigned code = 0; code < all.size(); ++code)
            all[code] = TraitsOf(code);
        return all;
    }();
    return traits;
}

BYTE Traits(unsigned code)
{
    return code < 0x10000 ? UnitTraits()[code] : TraitsOf(code);
}

} // namespace

int GetWideColumns(unsigned code)
{
    return (Traits(code) & kDouble) != 0 ? 2 : 1;
}

bool IsSingleAlnum(unsigned code)
{
    return (Traits(code) & kAlnum) != 0;
}

int CountColumns(const TextCode& code, const char* text, int length, int tabColumn, int column)
{
    const INT64 tab = std::max(tabColumn, 1);
    INT64 at = column;
    code.Visit([&](auto reader) {
        const char* const end = text + length;
        for (const char* p = text; p < end;) {
            const char* const from = p;
            const unsigned c = reader.Next(p, end);
            if (c == '\t')
                at += tab - at % tab;
            else
                at += code.IsWide() ? GetWideColumns(c) : p - from;
        }
    });
    return static_cast<int>(std::min<INT64>(at, std::numeric_limits<int>::max()));
}

} // namespace tlvn
