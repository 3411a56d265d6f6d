// Opening the links of a text.
//
// A web address goes to the user's web browser, a "mailto:" one to the mail program. Paths and
// "file:" addresses go to the browser, too, and never to the shell, which would start a program
// that a mail points at.

#pragma once

#include "editor/link_range.h"

namespace tlvn {

// What is opened for a link: its text, "mailto:" put in front of a mail address. To whatever
// begins with "mailto:" (in any case) the sender is added as the parameter "From", unless it is
// null or empty. Empty for a range of no type and for a null or empty text. All texts are in the
// multibyte code page.
TLVN_API CString MakeLinkTarget(CEditorLineRange::ElRangeType type, const char* text,
                                const char* mailtoFrom);

// Makes the target and has it opened. Returns 1, or 0 when there is nothing to open or the system
// could not.
TLVN_API int OpenLink(CEditorLineRange::ElRangeType type, const char* text, const char* mailtoFrom);

// Opens a target and returns 1, or 0 when it cannot.
using LinkOpener = int (*)(const char* target);

// Puts `opener` in the place of the system's, null bringing that back; returns the one before
// (null: the system's). For the whole process; for tests, and clients with ways of their own.
TLVN_API LinkOpener SetLinkOpener(LinkOpener opener);

} // namespace tlvn
