// Looking through a document for the characters that do not survive the way to other mail
// systems (charcode/flagged_char.h), before it is sent.

#pragma once

#include "editor/text_pos.h"
#include "platform/types.h"

namespace tlvn {

class Document;

enum : int {
    kFlaggedKatakana = 1,
    kFlaggedMachineDepend = 2,
};

// Sets `found` (logical line and byte; the display form is not set) to the first such character
// of the kind, from the top, header block included. Returns 1, or 0 when there is none, for any
// other kind and for a document that is not edited in Shift_JIS.
TLVN_API int FindFlaggedChar(const Document& document, int which, CTextPos& found);

} // namespace tlvn
