// Why something did not work, in words.
//
// What the model of the programs tells is English, which a script can look for, until a program
// whose windows are Japanese says so. viewer/reasons.def has each text in both languages.

#pragma once

namespace tlvn {

enum class Reason {
#define TLVN_REASON(name, english, japanese) name,
#include "viewer/reasons.def"
#undef TLVN_REASON
};

// UTF-8. Of one that a path or a name goes with, the text ends where that follows.
const char* GetText(Reason reason);

// For the whole process, from now on.
void SetReasonsJapanese(bool on);

} // namespace tlvn
