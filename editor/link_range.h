// The links of a logical line, and the mail address that a link leads to.

#pragma once

#include "framework/framework.h"

// One URL or mail address in a line; `start` and `length` are in bytes of the line's data.
class CEditorLineRange {
public:
    enum ElRangeType : int {
        ElRangeNone = 0,
        ElRangeUrl = 1,
        ElRangeMail = 2,
    };

    int start = 0;
    int length = 0;
    ElRangeType type = ElRangeNone;
};

// 1 when the range leads to a mail address: a mail address itself, or a URL whose text begins
// with "mailto:" in any case; else 0.
TLVN_API int IsRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text);

// That address: the whole text, or of a URL what is between "mailto:" and the first "?". Empty
// when there is none.
TLVN_API CString GetRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text);
