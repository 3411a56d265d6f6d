#include "editor/columns.h"

#include "foundation/char_type.h"
#include "framework/guard_memory.h"

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

// Calls take(code, bytes, columns) for every character of the text.
template <class Take>
void VisitColumns(const TextCode& code, const char* text, int length, int tabColumn, INT64 column,
                  const Take& take)
{
    code.Visit([&](auto reader) {
        const char* const end = text + length;
        for (const char* p = text; p < end;) {
            const char* const from = p;
            const unsigned c = reader.Next(p, end);
            const auto bytes = static_cast<int>(p - from);
            const INT64 columns = c == '\t'       ? tabColumn - column % tabColumn
                                  : code.IsWide() ? GetWideColumns(c)
                                                  : bytes;
            take(c, bytes, columns);
            column += columns;
        }
    });
}

void AddBlanks(char*& p, INT64 count, bool wide)
{
    for (; count > 0; --count) {
        *p++ = ' ';
        if (wide)
            *p++ = '\0';
    }
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
    INT64 end = column;
    VisitColumns(code, text, length, std::max(tabColumn, 1), column,
                 [&](unsigned, int, INT64 columns) { end += columns; });
    return static_cast<int>(std::min<INT64>(end, std::numeric_limits<int>::max()));
}

int Tab2Space(const TextCode& code, const char* text, int length, int tabColumn, CBuffer& out)
{
    const bool wide = code.IsWide();
    tabColumn = std::max(tabColumn, 1);
    int tabs = 0;
    INT64 size = 0;
    VisitColumns(code, text, length, tabColumn, 0, [&](unsigned c, int bytes, INT64 columns) {
        tabs += c == '\t' ? 1 : 0;
        size += c != '\t' ? bytes : wide ? columns * 2 : columns;
    });
    if (tabs == 0) {
        out.Set(text, length);
        return 0;
    }
    if (size > std::numeric_limits<int>::max())
        AfxThrowMemoryException();

    char* to = out.GetBuffer(static_cast<int>(size));
    VisitColumns(code, text, length, tabColumn, 0, [&](unsigned c, int bytes, INT64 columns) {
        if (c == '\t') {
            AddBlanks(to, columns, wide);
        } else {
            std::memcpy(to, text, static_cast<std::size_t>(bytes));
            to += bytes;
        }
        text += bytes;
    });
    out.ReleaseBuffer(static_cast<int>(size));
    return tabs;
}

} // namespace tlvn
