#include "editor/text_pos.h"

#include <algorithm>

void CTextPos::UpLineL(int delta, int min, int max)
{
    const INT64 moved = INT64{line} + delta;
    if (moved >= min && moved <= max)
        line = static_cast<int>(moved);
    else
        *this = CTextPos(moved < min ? min : max, 0);
}

void ClearTextViewRangeArray(CEditorTextViewRangeArray& ranges)
{
    for (int i = 0; i < ranges.GetSize(); ++i)
        delete ranges[i];
    ranges.RemoveAll();
}
