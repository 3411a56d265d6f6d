// Finds a phrase in a text, forwards or backwards, in time proportional to the text whatever
// the two hold.
//
//   PhraseSearch search(PhraseSearch::Character, phrase, length, false);
//   const char* hit = search.FindFirst(text, text + size);   // null when there is none
//
// The unit says where a match may start: at any byte, at a character of the multibyte code page
// (never on a trail byte), or at a UTF-16 unit. Ignoring case folds A-Z (Byte), also the
// full-width letters of the code page (Character), or by the simple case mapping of Unicode
// (Utf16).
//
// Two bytes of the phrase, chosen to be telling, in both their cases, are looked for at 16
// positions at a time; the phrase is compared only where both stand. Where that compares too much
// (a phrase and a text of one letter), the rest of the text is searched with the failure table of
// Knuth, Morris and Pratt.
//
// The phrase has to outlive the object.

#pragma once

#include "platform/types.h"

#include <vector>

namespace tlvn {

class TLVN_API PhraseSearch {
public:
    enum Unit { Byte, Character, Utf16 };

    // `length` in bytes; an empty phrase is never found.
    PhraseSearch(Unit unit, const void* phrase, int length, bool ignoreCase);

    // First occurrence in [from, end), where a character starts at `from`. Throws
    // CMemoryException*.
    const char* FindFirst(const char* from, const char* end) const;

    // Last occurrence that starts at or before `from` and ends at or before `end`, in a text that
    // starts at `begin`; in UTF-16 it starts a whole number of units before `from`. Throws
    // CMemoryException*.
    const char* FindLast(const char* begin, const char* from, const char* end) const;

private:
    // A byte that every match has at this offset, in one of two forms.
    struct Filter {
        int offset;
        char forms[2];
    };

    void SetFilters();
    const char* FindByTable(const char* from, const char* p, const char* end) const;
    const char* FindLastByTable(const char* begin, const char* end) const;
    std::vector<unsigned> Elements() const;
    bool PassesFilters(const char* p) const;
    bool Matches(const char* p, const char* end, INT64& cost) const;

    Unit m_unit;
    const char* m_phrase;
    int m_length;
    bool m_ignoreCase;
    bool m_endsInLead; // the phrase ends in half a character: no match may split one
    Filter m_filters[2];
};

} // namespace tlvn
