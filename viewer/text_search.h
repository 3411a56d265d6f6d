// Search in the text of an editor.
//
//   TextSearch search;
//   if (!search.SetPattern(typed, {}, error))
//       return Tell(error);
//   CEditorTextViewRangeArray hits;             // see HitArray
//   search.FindAll(editor.GetDoc(), hits);
//   editor.AddFoundArray(hits);
//   const int next = FindNextHit(editor.GetFoundArray(), start, end, false);
//
// Every logical line is searched by itself, the header block too, with the regular expressions of
// persist/regexp/regexp.h. Hits are not empty and do not overlap. A pattern that starts with "^"
// has one hit in a line at most.

#pragma once

#include "editor/document.h"
#include "persist/regexp/regexp.h"

#include <string>

namespace tlvn {

struct SearchOptions {
    bool matchCase = false;
    bool plain = false; // the pattern stands for itself
};

// Ranges that end with the array.
class HitArray : public CEditorTextViewRangeArray {
public:
    ~HitArray() override { ClearTextViewRangeArray(*this); }
};

class TextSearch {
public:
    // A search with more hits ends there.
    static constexpr int kMaxHits = 10'000;

    // Takes a pattern (UTF-8). False with the reason when it is empty or none.
    bool SetPattern(const std::string& utf8, const SearchOptions& options, std::string& error);

    // Replaces `hits` by those in the text, both forms of their positions set. False when there
    // are more than kMaxHits; also false, without hits, when the pattern has characters that the
    // code of the text does not have.
    bool FindAll(const Document& document, CEditorTextViewRangeArray& hits);

private:
    bool FindInLine(const Document& document, int line, CEditorTextViewRangeArray& hits);

    CRegExp m_regexp;
    bool m_anchored = false;
    CBuffer m_line; // terminated
};

// The hit behind `end` or, backwards, before `start` (the bounds of the selection), going around
// at the ends of the text; -1 when there is none.
int FindNextHit(const CEditorTextViewRangeArray& hits, const CTextPos& start, const CTextPos& end,
                bool backward);

} // namespace tlvn
