// What kind of character stands in a text: for selecting words and for finding where a URL ends.
//
// The class is a set of flags: CHARTYPE_SINGLE or CHARTYPE_DOUBLE, and a kind. A word for the eye
// is a run of characters of one class:
//
//   GetCharType(text, len, p, CT_SJIS) == (CHARTYPE_DOUBLE | CHARTYPE_KATAKANA)
//
// Shift_JIS and other multibyte text is classified by the codes of its characters, listed in the
// source. A voicing mark or prolonged-sound mark is hiragana when the characters before it, other
// such marks left out, end in a hiragana; otherwise, and at the start of the text, katakana.
//
// UTF-16 is classified by a table of the Unicode characters. The first of these rules that
// applies decides:
//  1. Space: the white space of the wide space test (IsSpaceW). Single in Latin-1, else double.
//  2. Half-width katakana U+FF61-FF9F, with its punctuation and voicing marks as in Shift_JIS:
//     single, katakana.
//  3. Kanji, double: CJK ideographs with their extensions (all of planes 2 and 3), compatibility
//     ideographs, radicals, the iteration marks U+3005 and 303B, U+3006, the numerals U+3007,
//     3021-3029 and 3038-303A, the selectors of ideographic variants U+E0100-E01EF, and the
//     private use area U+E000-F8FF, where user-defined characters are.
//  4. Marks of both kana, double: U+3031-3035, 3099-309C, 30FC. Inside a text they are resolved:
//     the nearest character before them that is not of both kinds decides, hiragana making them
//     hiragana and anything else katakana; at the start of the text they keep both bits.
//  5. Hiragana and katakana letters, iteration marks and digraphs, double: also the small, the
//     historical and the variant ones; but not signs made of them (circled, squared), nor U+30A0
//     and the middle dot.
//  6. Word: letters and marks of every script, decimal digits, letter numbers, connector
//     punctuation ("_") and the two joiners U+200C and 200D. Double when its East Asian width is
//     wide or full-width, and for Hangul other than half-width; else single.
//  7. Other: everything else. Double when wide, full-width or, outside Latin-1, of ambiguous
//     width, as most signs of the East Asian codes are; else single. So are units without their
//     partner.
// Both units of a surrogate pair have the class of the character.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

enum : int {
    CHARTYPE_SPACE = 0x01,
    CHARTYPE_OTHER = 0x02,
    CHARTYPE_WORD = 0x04,
    CHARTYPE_HIRAGANA = 0x08,
    CHARTYPE_KATAKANA = 0x10,
    CHARTYPE_KANJI = 0x20,
    CHARTYPE_SINGLE = 0x100,
    CHARTYPE_DOUBLE = 0x200,
};

// The class of the character at p in text, where `len` is in bytes, also of UTF-16 (any address;
// below 0: up to the zero). ct is the code type of the text: a Unicode one makes it UTF-16,
// a Japanese one has the kinds of Japanese characters; in any other a double-byte character is of
// the kind "other". Half a character at p counts as a single byte, except in UTF-16.
//
// 0 when text or p is null, or p is not in the text or at its end. Takes constant time, for the
// marks of both kana in proportion to how many stand together.
TLVN_API int GetCharType(const char* text, int len, const char* p, CodeType ct);

namespace tlvn {

// Whether the character at p, p < end, is a mark of both kana, of which several that stand together
// are of one kind.
TLVN_API bool IsBothKanaMark(const char* p, const char* end, CodeType ct);

} // namespace tlvn
