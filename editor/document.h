// The text of an editor: logical lines without their terminators, in one code type.
//
// A line ends at CR LF, at a lone CR or at a lone LF; behind the last terminator stands one more
// line, which may be empty. Text in a Unicode code type is UTF-16, any other in the multibyte
// code page of its type, where a lead byte is taken with its trail byte. Lengths are in bytes.
//
// The first lines may be the header block of a mail.

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"
#include "platform/nls.h"

#include <vector>

namespace tlvn {

class TLVN_API Document {
public:
    // One empty line, CT_ASCII.
    Document();

    // Replaces everything, header block included.
    void Set(CodeType codeType, const char* text, int length);

    // Puts the lines of `text` in front as the header block, in place of the present one.
    void SetHeader(const char* text, int length);

    CodeType GetCodeType() const { return m_codeType; }
    bool IsWide() const;
    int GetHeaderLineCount() const { return m_headerLines; }

    int GetLineCount() const { return static_cast<int>(m_lines.size()); }
    const CBuffer& GetLine(int line) const { return m_lines[static_cast<std::size_t>(line)]; }

    // The start of the line as UTF-16, for drawing: all of it, or at least maxUnits units. Bytes
    // that have no character show as the code page decodes them.
    void GetLineUnits(int line, int maxUnits, WString& out) const;

    // Columns of half a character's height that the line takes at most, each tab one: bytes of a
    // narrow text; in UTF-16, Latin letters and half-width forms take one, all others two.
    int CountColumns(int line) const;

private:
    std::vector<CBuffer> SplitLines(const char* text, int length) const;

    CodeType m_codeType;
    std::vector<CBuffer> m_lines; // never empty
    int m_headerLines;
};

} // namespace tlvn
