// Regular expressions over text in any code type.
//
// A pattern is given once, in one code type, and matched against texts of any: for each code
// type it is converted and compiled when a text of that type first comes.
//
//   CRegExp regexp;
//   CStringA error;
//   if (!regexp.ParseRegExp("{[a-z]+}@\\0", CT_SJIS, 0, error))
//       return Complain(error);
//   const char* start;
//   const char* end;
//   if (regexp.Match(text, CT_SJIS, &start, &end))
//       ...                                           // the match is [start, end) of text
//
// The language is described in persist/regexp/parser.h. Worth knowing: "|" binds more tightly
// than a row of characters ("ab|cd" is a, then b or c, then d), "." matches line ends too, {}
// makes a group to refer to and () none, and what follows an unmatched closing bracket is not
// read. The first match counts, not the longest.
//
// Text of a Unicode type is UTF-16, passed through the same char pointers (aligned as WCHAR);
// all text is terminated. A match is never found at the very end of a text, so an empty text
// never matches; a match of "$" takes in the terminator.
//
// Without regard to case, small letters match capitals, also full-width ones; in narrow text
// small kana match the normal ones, too.
//
// An object must not be used by two threads at a time, and changes the multibyte code page
// while it works (CApplyLocale).

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

// A pattern compiled for one code type. It owns program and context, whose width of character
// the code type tells; both are null when the pattern does not compile for that type.
class TLVN_API CREItem {
public:
    CREItem() = default;
    CREItem(const CREItem& other);
    CREItem& operator=(const CREItem& other);
    ~CREItem();

    void* m_program = nullptr;        // CREProgram
    void* m_context = nullptr;        // CREMatchContext
    CodeType m_codeType = CT_UNKNOWN; // of the pattern and the texts
};

class TLVN_API CRegExp {
public:
    CRegExp();
    virtual ~CRegExp();
    CRegExp(const CRegExp&) = delete;
    CRegExp& operator=(const CRegExp&) = delete;

    // Replaces the pattern and compiles it for `codeType`. Returns 1, or 0 with the reason in
    // errorMessage (in the multibyte code page). A null or empty pattern is an error, and the
    // object is then empty.
    int ParseRegExp(const char* pattern, CodeType codeType, int caseSensitive,
                    CStringA& errorMessage);

    // 1 when the pattern can be matched against text of `codeType`, for which it is compiled
    // now if it has not been. 0 when not: with the reason, or with no message when the pattern
    // cannot be converted without loss or the failure is not a new one.
    int IsParsedOK(CodeType codeType, CStringA& errorMessage);

    // Looks for the first match. Returns 1 with its bounds, pointers into `text`, or 0. The
    // bounds may be null. A null text does not match.
    int Match(const char* text, CodeType codeType, const char** matchStart, const char** matchEnd);

    // Forgets the pattern.
    void ClearRegExp();
    // Not 0 while there is a pattern, whether or not it compiles.
    int IsParsed() const { return m_pattern.IsEmpty() ? 0 : 1; }

protected:
    // Compiles a pattern in `codeType` and keeps the result, also when that is an error.
    // Returns 1, or 0 with the reason in errorMessage.
    int Parse2(const char* pattern, CodeType codeType, CStringA& errorMessage);

private:
    CREItem* FindItem(CodeType codeType) const;

    CBuffer m_pattern; // UTF-16 for a Unicode type
    CodeType m_codeType = CT_UNKNOWN;
    int m_caseSensitive = 0;
    CTypedPtrArray<CPtrArray, CREItem*> m_items; // owned, one for each code type tried
};
