// Checks of what users type into the fields of accounts and addresses.
//
// Each returns what is wrong, and a message for the user, in the multibyte code page; the first
// fault in the order of the numbers of each function's comment counts. A double-byte character is
// never taken for a forbidden one by its trail byte. A null text counts as empty.

#pragma once

#include "framework/framework.h"

enum : int {
    ADDRCHECK_EMPTY = -1,
    ADDRCHECK_OK = 0,           // the message is empty
    ADDRCHECK_NO_AT = 1,        // no "@"
    ADDRCHECK_FORBIDDEN = 2,    // one of ( ) < > ; " and the backslash
    ADDRCHECK_NOT_PORTABLE = 3, // a character that not every mail system takes
};

// A mail address: EMPTY, NO_AT, FORBIDDEN, NOT_PORTABLE for double-byte characters and half-width
// katakana. The second is for a pattern (see wildicmp), which needs no "@".
TLVN_API int CheckEMailAddress(const char* address, CString& message);
TLVN_API int CheckWildEMailAddress(const char* address, CString& message);

// A display name and an organisation, which may be empty: NOT_PORTABLE for half-width katakana
// and machine-dependent characters.
TLVN_API int CheckEMailName(const char* name, CString& message);
TLVN_API int CheckEMailOrgani(const char* organisation, CString& message);

// The name of a server: EMPTY unless mayBeEmpty is other than 0, FORBIDDEN, NOT_PORTABLE for
// double-byte characters.
TLVN_API int CheckServerName(const char* server, int mayBeEmpty, CString& message);

// The name of an account: EMPTY, NOT_PORTABLE for double-byte characters.
TLVN_API int CheckAccountName(const char* account, CString& message);
