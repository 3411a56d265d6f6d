#include "editor/flagged_search.h"

#include "charcode/charset.h"
#include "charcode/flagged_char.h"
#include "editor/document.h"

namespace tlvn {

int FindFlaggedChar(const Document& document, int which, CTextPos& found)
{
    if (CodeTypeSave2Edit(document.GetCodeType()) != CT_SJIS)
        return 0;
    if (which != kFlaggedKatakana && which != kFlaggedMachineDepend)
        return 0;
    const auto find = which == kFlaggedKatakana ? FindHankakuKatakana : FindMachineDependChar;
    for (int line = 0; line < document.GetLineCount(); ++line) {
        const CLLineData& data = document.GetLine(line);
        const int byte = find(data.GetText(), data.GetLength());
        if (byte >= 0) {
            found = CTextPos(line, byte);
            return 1;
        }
    }
    return 0;
}

} // namespace tlvn
