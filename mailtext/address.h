// One mail address of a header field (RFC 5322, section 3.4): taking it apart and putting it
// together.
//
//   CString address, name, message;
//   SplitMailAddr("\"Sato, Ken\" <ken@example.jp>", address, name, message);
//                                        // address "ken@example.jp", name "Sato, Ken"
//   MakeAddress(address, name, 1);       // and back
//
// Text is in the multibyte code page, decoded, without line ends inside. A null text counts as
// empty. White space around addresses and names is dropped.

#pragma once

#include "framework/framework.h"

// Splits `text` into the address proper and the display name, which loses its double quotes and
// backslashes when it stands in quotes. Each can be empty:
//   name <address>        "<" counts outside quotes and parentheses, unless ">" ends the text:
//                         then the last "<" does; what follows another ">" is part of the name
//   address (name)        see GetParenthesisToken for nested parentheses
//   address               a text with "@", in quotes at most at its start
//   %(...)                a placeholder, kept as the address
//   name                  anything else
// Returns 1, or 0 for a malformed text, which then becomes the name; `message` tells the user
// why, and is empty otherwise.
TLVN_API int SplitMailAddr(const char* text, CString& address, CString& name, CString& message);

// The address as a header field has it: name <address>, or the address alone when the name is
// empty. With `quote` other than 0 the name is quoted as far as it needs to: quotes that it has
// around it already come off first; a backslash is put before every backslash and double quote;
// and double quotes around it when there were such, or one of ()<>[]:;@,.
TLVN_API CString MakeAddress(const char* address, const char* name, int quote);
// The same, but the name as it stands when the address is empty.
TLVN_API CString MakeAddress2(const char* address, const char* name, int quote);

// `text`, a header's address, with another address proper and another name, put together by
// MakeAddress. Null keeps the one that is there, an empty name removes it. A malformed text is
// returned as it is.
TLVN_API CString CustomizeAddress(const char* text, const char* address, const char* name,
                                  int quote);
