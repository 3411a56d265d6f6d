// What a line begins with: indentation, the prefix of a quotation.
//
// Texts are in the code type of the metrics (ChangeCodePage), lengths and results in bytes.
// Indentation is a run of characters of IndentList. A line is quoted when its first character is
// of QuoteList. The prefix goes on with every further one that follows at once or behind a single
// character of indentation, and has QuoteLen of them at most: mail programs write the marks of
// nested quotes together (">>") or apart ("> >"). A wider gap is taken for quoted text that
// itself begins with such a character, a drawing, say.

#pragma once

#include "editor/metrics.h"
#include "editor/text_code.h"

#include <string>

namespace tlvn {

// The rules by which prefixes are told, made once for many lines.
class TLVN_API QuoteRules {
public:
    explicit QuoteRules(const CEditorMetrics& metrics);

    // Length of the prefix, to behind its last quote character; 0 for a line that is not quoted.
    // Unless `marks` is null the quote characters are appended to it, without the indentation
    // between them: what the quotes of one depth have in common.
    int GetPrefixLength(const char* text, int length, std::string* marks = nullptr) const;

private:
    TextCode m_code;
    CodeSet m_quotes;
    CodeSet m_indents;
    int m_most;
};

TLVN_API int GetIndentLength(const CEditorMetrics& metrics, const char* text, int length);
// 1 when the text is indentation and nothing else, but not when it is empty.
TLVN_API int IsIndentTextAll(const CEditorMetrics& metrics, const char* text, int length);
// The prefix and the indentation behind it; 0 for a line that is not quoted.
TLVN_API int GetQuoteLength(const CEditorMetrics& metrics, const char* text, int length);

} // namespace tlvn
