// The multibyte code page of the process, and the tests that keep double-byte characters whole.
//
// Narrow text everywhere in the library is in this code page: 932 (Shift_JIS) unless the
// system's ANSI code page is another double-byte one (936, 949, 950) or the caller sets one.
// platform/multibyte.h has the functions that work on such text.

#pragma once

#include "foundation/code_type.h"
#include "platform/multibyte.h"

// Sets the code page: 932, 936, 949, 950, or another, in which every byte is a character.
TLVN_API void SetMultibyteCodePage(UINT codePage);
TLVN_API UINT GetMultibyteCodePage();

// 1 when the bytes i and i + 1 of s are the lead and the trail byte of a double-byte character;
// 0 when not, when s is null, when i < 0, or when i + 1 does not lie below len (a negative len
// sets no limit).
TLVN_API int IsTLead(const char* s, int i, int len);
// UTF-16 text has no such characters: always 0.
TLVN_API int IsTLead(const WCHAR* s, int i, int len);

// Puts the code page of a code type in force for a scope:
//
//   CApplyLocale locale(CT_GB2312);
//
// The Japanese types and ASCII give 932, Chinese 936 and 950, Korean 949, the other narrow ones
// a page without double-byte characters; a Unicode type and CT_UNKNOWN change nothing.
class TLVN_API CApplyLocale {
public:
    // Until the end of the scope.
    explicit CApplyLocale(CodeType codeType);
    ~CApplyLocale();
    CApplyLocale(const CApplyLocale&) = delete;
    CApplyLocale& operator=(const CApplyLocale&) = delete;

private:
    UINT m_previousPage;
};
