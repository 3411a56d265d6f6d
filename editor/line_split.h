// Cuts a text at its line terminators: CR LF, a lone CR, a lone LF.
//
// No trail byte of a multibyte code page is a CR or LF, so double-byte characters need no look.

#pragma once

#include "platform/types.h"

#include <cstring>

namespace tlvn {

// A unit of the text: a byte, or two of UTF-16 at any address.
template <class Unit>
Unit UnitAt(const char* p)
{
    Unit unit;
    std::memcpy(&unit, p, sizeof unit);
    return unit;
}

// Length of the first line of the text, without its terminator.
template <class Unit>
int FirstLineLength(const char* text, int length)
{
    constexpr int size = sizeof(Unit);
    int i = 0;
    while (i < length && UnitAt<Unit>(text + i) != '\n' && UnitAt<Unit>(text + i) != '\r')
        i += size;
    return i;
}

// Length of the terminator at the start of the text; 0 at the end of the text.
template <class Unit>
int TerminatorLength(const char* text, int length)
{
    constexpr int size = sizeof(Unit);
    if (length == 0)
        return 0;
    return length > size && UnitAt<Unit>(text) == '\r' && UnitAt<Unit>(text + size) == '\n'
               ? 2 * size
               : size;
}

// Calls visit(start, length) for each line; behind the last terminator stands one more. The
// length of a wide text is even.
template <class Unit, class Visit>
void SplitUnits(const char* text, int length, Visit& visit)
{
    for (;;) {
        const int line = FirstLineLength<Unit>(text, length);
        visit(text, line);
        const int terminator = TerminatorLength<Unit>(text + line, length - line);
        if (terminator == 0)
            return;
        text += line + terminator;
        length -= line + terminator;
    }
}

template <class Visit>
void SplitLines(const char* text, int length, bool wide, Visit visit)
{
    if (wide)
        SplitUnits<WCHAR>(text, length, visit);
    else
        SplitUnits<char>(text, length, visit);
}

} // namespace tlvn
