// The part of the Windows API that the library uses, over windows kept in memory.
//
// Names, constants, structures and documented behaviour are those of Windows (W form only),
// as far as a program that draws text, scrolls, edits and takes input depends on them:
// messages are sent in the order in which Windows sends them, handles of destroyed objects are
// recognised as such, and what is drawn is recorded. There is one desktop, and all calls come
// from one thread. framework/headless/headless.h has what a test or a tool needs beyond this:
// synthesised input, a clock to set, the recorded drawing.

#pragma once

#include "framework/headless/win_constants.h"
#include "framework/headless/win_functions.h"
#include "framework/headless/win_structures.h"
