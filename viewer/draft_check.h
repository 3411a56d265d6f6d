// What of a draft other mail systems may not show: half-width katakana and machine-dependent
// characters, pointed out before the draft is saved, and put right when the user wants it.
//
// Both count in drafts of a Japanese code type, where they are told by charcode/flagged_char.h.
// In the Unicode types every character has a code of its own, so only half-width katakana do,
// which do not survive a gateway to ISO-2022-JP. In other types nothing does. The subject is
// looked at like the text.

#pragma once

#include "viewer/mail_compose.h"

namespace tlvn {

enum class FlawKind { HalfWidthKatakana, MachineDependent };

// A run of such characters.
struct TextFlaw {
    FlawKind kind;
    int start;  // bytes, in the edit form
    int length; // bytes
};

struct DraftFlaws {
    std::vector<TextFlaw> text; // in order, without overlap
    int halfWidthKatakana = 0;  // characters, those of the subject included
    int machineDependent = 0;
    bool inSubject = false;

    bool IsEmpty() const { return halfWidthKatakana == 0 && machineDependent == 0; }
};

// Takes time in proportion to the draft.
DraftFlaws FindDraftFlaws(const Draft& draft);

// Puts full-width katakana (KatakanaHanToZen) and plain characters such as "(1)" and "No." in
// their place. Machine-dependent characters that have no such form stay. Returns how many runs
// were replaced.
int ReplaceDraftFlaws(Draft& draft);

} // namespace tlvn
