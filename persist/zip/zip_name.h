// Names of zip entries, both ways.

#pragma once

#include "framework/framework.h"
#include "platform/nls.h"

namespace tlvn {

// The name of an entry as a user may see it: without drive, leading separators and what stands
// before a step to the parent folder. Takes time in proportion to the name.
//
// Repeated until nothing changes: drop two units when the second is ":"; else drop one that is a
// separator; else drop everything up to and including the first "\..\", or if there is none the
// first "\../", "/../", "/..\". A name that then begins with "../" keeps it.
WStringView CleanZipName(WStringView name);

// A stored name made ready for an entry record of `capacity` units: widened (UTF-8 or the
// multibyte code page), ended at a zero, cleaned, cut between characters, terminated.
void ReadZipName(std::string_view stored, bool utf8, WCHAR* name, int capacity);

// The form in which a name is stored: narrow, with "/" between folders, without characters that a
// file name cannot hold, of at most 259 bytes. Empty for an empty name.
CStringA StoredZipName(WStringView name);

// True when the name ends like a file that is compressed already.
bool IsPackedFileName(const CStringA& name);

} // namespace tlvn
