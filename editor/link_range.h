// The links of a logical line: URLs, paths of files and mail addresses.
//
//   std::vector<CEditorLineRange> links;
//   tlvn::FindLinks(text, length, CT_SJIS, links);
//   const int i = tlvn::FindLinkFrom(links, byte);
//   if (i < links.size() && links[i].start <= byte)
//       ...                                          // the byte is in a link
//
// What a link is say the finders (mailtext/url_finder.h, mail_finder.h). URLs are found first;
// addresses are what is found in the text between them. So an address inside a URL is none of
// its own, and one that runs into the beginning of a URL ends there.
//
// Positions and lengths are in bytes of the line's data.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

#include <vector>

// One URL or mail address in a line.
class CEditorLineRange {
public:
    // What a link leads to. None stands for no link.
    enum ElRangeType : int {
        ElRangeNone = 0,
        ElRangeUrl = 1,
        ElRangeMail = 2,
    };

    // Behind its last byte.
    int GetEnd() const { return start + length; }

    // Bytes of the line.
    int start = 0;
    int length = 0;
    ElRangeType type = ElRangeNone;
};

// 1 when the range leads to a mail address: a mail address itself, or a URL whose text begins
// with "mailto:" in any case; else 0.
TLVN_API int IsRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text);

// That address: the text, or of one that begins with "mailto:" what is between that and the first
// "?". Empty when there is none.
TLVN_API CString GetRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text);

namespace tlvn {

// Replaces `links` by those of the text, in order, none overlapping another. The text is UTF-16
// (at any address) when the code type is a Unicode one, else in the multibyte code page; a null
// one is empty. Time is in proportion to the length, whatever the text.
TLVN_API void FindLinks(const char* text, int length, CodeType codeType,
                        std::vector<CEditorLineRange>& links);

// Index of the first link that ends behind `byte`, or links.size(). O(log n).
TLVN_API std::size_t FindLinkFrom(const std::vector<CEditorLineRange>& links, int byte);

} // namespace tlvn
