// Handing an address to the user's programs.
//
// The address is UTF-16 and holds no control character and no double quote: it becomes part of
// a command line. Both return as soon as the program has been started.

#pragma once

#include "platform/nls.h"

namespace tlvn {

// To the program that the user has chosen for addresses of its scheme. The address must have
// one: the system would take another text for the name of a file, and open or run that. False
// when there is no such program.
TLVN_API bool OpenByScheme(WStringView address);

// To the user's web browser, whatever it is the address of: a path, too, is shown or downloaded
// there and never run. False when there is no browser.
TLVN_API bool OpenInWebBrowser(WStringView address);

} // namespace tlvn
