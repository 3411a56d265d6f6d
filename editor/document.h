// The text of an editor: logical lines without their terminators, in one code type, each cut
// into physical lines by the layout that the owner gives.
//
//   tlvn::Document document;
//   document.SetLayout(&layout);                  // none: one physical line per line
//   document.Set(CT_SJIS, text, length);
//   const CTextPos end = document.Insert(CTextPos(3, 10), "abc", 3);
//   document.Delete(CTextPos(3, 10), end);
//
// A line ends at CR LF, at a lone CR or at a lone LF; behind the last terminator stands one more
// line, which may be empty. Text in a Unicode code type is UTF-16 (half a unit at the end of a
// text is left out), any other in the multibyte code page of its type, where a lead byte goes
// with its trail byte. A character is such a pair, a surrogate pair, or a single byte or unit.
// Lengths and positions are in bytes; a null text, or one of negative length, is empty.
//
// The first lines may be the header block of a mail.
//
// Lines stand in a LineIndex; texts as they were loaded share blocks (TextPool). A change wraps
// again only its own lines. Operations throw CMemoryException* for lack of memory.

#pragma once

#include "editor/line_index.h"
#include "editor/line_layout.h"
#include "editor/quote_table.h"
#include "editor/text_pool.h"
#include "editor/text_pos.h"
#include "foundation/buffer.h"
#include "platform/nls.h"

#include <string>
#include <string_view>

namespace tlvn {

// How text is copied out.
struct TextForm {
    std::string_view quoteMark; // in front of every line but an empty last one
    bool lineBreaks = true;     // CR LF between the lines, else nothing
    bool finalBreak = false;    // with lineBreaks: CR LF at the end when none stands there
};

class TLVN_API Document {
public:
    // No lines.
    Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    // Removes all lines, the header block and the quote table.
    void Clear();

    CodeType GetCodeType() const { return m_codeType; }
    bool IsWide() const { return IsCodeTypeUnicode(m_codeType) != 0; }
    // Between narrow and Unicode types the text is converted, what does not convert becoming "?";
    // otherwise the same bytes are read as text of the new type. Wraps anew.
    void SetCodeType(CodeType codeType);

    // `layout` stays the caller's. Wraps anew; RewrapAll does so after the layout has changed.
    void SetLayout(const LineLayout* layout);
    void RewrapAll();
    // The quote prefixes of the lines, in the order of appearance.
    const QuoteTable& GetQuotes() const { return m_quotes; }

    // With the free cursor positions behind the text are positions like others.
    bool IsFreeCursor() const { return m_freeCursor; }
    void SetFreeCursor(bool on) { m_freeCursor = on; }

    // --- Loading (document_load.cpp) ---

    // Replaces everything, header block included.
    void Set(CodeType codeType, const char* text, int length);
    // Appends the lines of `text` (one, if it has no terminator) behind the last line; each
    // behind the quote mark.
    void Append(const char* text, int length, std::string_view quoteMark = {});
    // Appends the other document's lines, converted to this one's code type.
    void Append(const Document& other);

    // Lines in the header block; at most all.
    int GetHeaderLineCount() const { return m_headerLines; }
    // Physical lines in it.
    int GetHeaderPhysicalCount() const { return m_lines.GetSerial(m_headerLines); }
    // Makes the first `count` lines the header block.
    void SetHeaderLineCount(int count);
    // Puts the lines of `text` in front of all lines, as the (new) start of the header block.
    // Returns how many there are.
    int InsertHeader(const char* text, int length);
    // Removes the lines of the header block and returns how many there were.
    int RemoveHeader();

    // --- Copying out (document_copy.cpp) ---

    // Replaces `out` by the lines from firstLine on, or by the text in [from, to) (by the logical
    // forms; in either order).
    void CopyLines(int firstLine, const TextForm& form, CBuffer& out) const;
    void CopyRange(const CTextPos& from, const CTextPos& to, const TextForm& form,
                   CBuffer& out) const;
    // The same into `size` bytes: as many whole characters as there is room for in front of a
    // zero byte (a zero unit in UTF-16 text). Returns their length, -1 without room for the zero.
    int CopyRange(const CTextPos& from, const CTextPos& to, const TextForm& form, char* out,
                  int size) const;

    // --- Editing (document_edit.cpp) ---

    // Inserts the text, which is not part of this document, at the logical form of `at`, which is
    // brought into the text (see ToText). Returns the position behind the inserted text, both
    // forms: bytewise, that is inside a character if the end of the text joined with what follows.
    CTextPos Insert(const CTextPos& at, const char* text, int length);
    // Deletes [from, to), by the logical forms, from being no later than to. Both are brought into
    // the text. Returns from.
    CTextPos Delete(const CTextPos& from, const CTextPos& to);

    // --- Lines and positions (document_position.cpp) ---
    //
    // Lines and positions behind the end are no error.

    int GetLineCount() const { return m_lines.GetCount(); }
    // All physical lines.
    int GetPhysicalCount() const { return m_lines.GetPhysicalCount(); }
    // 0 <= line < GetLineCount().
    const CLLineData& GetLine(int line) const { return m_lines.GetLine(line); }
    const std::vector<CEditorLineRange>& GetLinks(int line) const;
    // Width of the widest physical line, in pixels.
    int GetWidest() const { return m_lines.GetWidest(); }

    // Serial number of a physical line, counted from the top; lines behind the end count as one
    // physical line each. O(log n).
    int GetSerialLineP(int line, int physical) const;
    // The start of the physical line with this serial number, both forms; a number behind the
    // end gives a line behind the end, one below 0 the top. O(log n).
    CTextPos FindSerialLineP(int serial) const;
    // Physical lines of a line; behind the end 1 with the free cursor, else 0.
    int GetLineCountP(int line) const;
    // Bytes of a physical line; 0 behind the end.
    int GetLineByteCountP(int line, int physical) const;
    // Bytes of a line; 0 behind the end.
    int GetLineByteCountL(int line) const;

    // Sets the display form from the logical form. A byte at a break between physical lines
    // belongs to the one behind; bytes behind the end of the line are counted on in the last.
    void L2PByteIndex(CTextPos& pos) const;
    // Sets the logical byte from the display form: 0 for the start of a line and for every line
    // behind the end. With `clamp` a byte behind the end of the physical line is first brought
    // back to it. A physical line behind the last is taken as the end of the last.
    void P2LByteIndex(CTextPos& pos, int clamp) const;
    // The position with both forms, where it has one alone, as the constructors of CTextPos leave
    // it: that which is not 0 gives the other.
    CTextPos Completed(CTextPos pos) const;
    void ByteL2ViewIndex(int line, int byte, CTextPos& pos) const;
    int ViewIndex2ByteL(const CTextPos& pos) const;

    // Brings the logical form into the text: to the end of its line or of the document; sets the
    // display form.
    void ToText(CTextPos& pos) const;
    // The same, and from inside a character to its start.
    void ToCharTop(CTextPos& pos) const;
    bool IsInText(const CTextPos& pos) const;

    CTextPos GetDocEnd() const;

    // --- Moving positions (document_move.cpp) ---
    //
    // They start from the logical form and set both. Without the free cursor a position behind
    // the text counts as the end of its line or of the document. The int results are 1 when the
    // position moved, else 0.

    void ToLogicalLineHome(CTextPos& pos) const;
    void ToLogicalLineEnd(CTextPos& pos) const;
    // The start of the next line; the end of the document in the last one.
    int ToNextLogicalLine(CTextPos& pos) const;
    // These two look at the physical line of the display form. The end of a physical line that
    // another follows is told as the byte behind its last character in the same physical line;
    // L2PByteIndex turns that into the start of the next.
    void ToPhysicalLineHome(CTextPos& pos) const;
    void ToPhysicalLineEnd(CTextPos& pos) const;
    // Byte 0 of the next physical line, also from line to line; in the very last the end.
    int ToNextPhysicalLine(CTextPos& pos) const;
    // Over one character, or from the end of a line to the start of the next, or back. With the
    // free cursor, over one byte or unit behind the text.
    int ToNextChar(CTextPos& pos) const;
    int ToPrevChar(CTextPos& pos) const;
    // |count| times ToNextChar, or ToPrevChar for a negative count.
    void MoveTextPos(CTextPos& pos, int count) const;
    // Words are runs of characters of one GetCharType. The start of the word that holds the
    // character at `pos`; at the end of a line that of the last word.
    void ToWordTop(CTextPos& pos) const;
    // Behind that word.
    void ToWordEnd(CTextPos& pos) const;
    // The start of the next word: behind this one and the white space that follows, but not
    // beyond the end of the line; from there the start of the next line.
    int ToNextWordTop(CTextPos& pos) const;
    // The start of the word before `pos`, white space skipped; from the start of a line the end
    // of the one before.
    int ToPrevWordTop(CTextPos& pos) const;
    // With the free cursor: from behind the text of a line to the start of the next, from behind
    // the last line to the end of the document. Other positions stay.
    int ToNextTextIfFree(CTextPos& pos) const;

    // --- For drawing ---

    // The start of the line as UTF-16: all of it, or at least maxUnits units. Bytes that have no
    // character show as the code page decodes them.
    void GetLineUnits(int line, int maxUnits, WString& out) const;

private:
    int CheckedLength(const char* text, int length) const;
    void WrapLine(CLLineData& line);
    void WrapChangedLine(CLLineData& line, int byte, int removed, int inserted, bool linksMatter);
    void SetQuoteEntry(CLLineData& line);
    void ReplaceInLine(int line, int byte, int removed, const char* text, int length);
    template <class Put>
    void ForEachPiece(const CTextPos& from, const CTextPos& to, const TextForm& form,
                      Put put) const;
    void MakeLines(const char* text, int length, std::vector<CLLineData>& lines);
    void DropText(int from, int to);
    void CompactText();
    CTextPos MakePos(int line, int byte) const;
    int GetUnitSize() const { return IsWide() ? 2 : 1; }
    int GetNextCharL(const CLLineData& line, int byte) const;
    int GetPrevCharL(const CLLineData& line, int byte) const;
    bool IsCharTop(const CLLineData& line, int byte) const;
    int GetCharTypeL(const CLLineData& line, int byte) const;
    bool AreBothMarks(const CLLineData& line, int byte, int next) const;

    CodeType m_codeType;
    LineIndex m_lines;
    TextPool m_pool;
    int m_headerLines = 0;
    bool m_freeCursor = false;
    const LineLayout* m_layout = nullptr;
    QuoteTable m_quotes;
    // Of the line being wrapped.
    std::vector<PhysicalLine> m_rows;
    std::string m_quoteMarks;
};

} // namespace tlvn
