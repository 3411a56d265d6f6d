// What is typed: characters, line breaks, tabs and indentation.

#include "editor/char_widths.h"
#include "editor/columns.h"
#include "editor/editor_wnd.h"
#include "editor/text_units.h"
#include "foundation/multibyte.h"

#include <algorithm>
#include <climits>

namespace {

constexpr bool IsHighSurrogate(UINT unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool IsLowSurrogate(UINT unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}
constexpr bool IsControl(UINT c)
{
    return c < ' ' || (c >= 0x7F && c < 0xA0);
}

int CheckedLength(std::size_t length)
{
    if (length > INT_MAX)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

// As many as UTF-16 text may have. More are refused before there is an attempt to hold them.
constexpr INT64 kMostUnits = INT_MAX / sizeof(WCHAR);

void CheckUnits(INT64 count)
{
    if (count > kMostUnits)
        AfxThrowMemoryException();
}

// Blanks that `repeat` typed tabs are worth. Where lines are cut at a column no tab goes beyond
// it.
INT64 CountTabBlanks(const CEditorMetrics& metrics, INT64 column, INT64 repeat)
{
    const INT64 tab = metrics.GetTabColumn();
    const INT64 width =
        metrics.GetAutoTurn() == CEditorMetrics::kTurnAtColumn ? metrics.GetTurnCols() : 0;
    if (width > 0)
        column %= width;
    INT64 stop = (column + tab) / tab * tab;
    if (width > 0 && stop % width < tab)
        stop -= stop % width;
    return (repeat - 1) * tab - column + stop;
}

} // namespace

// --- messages ----------------------------------------------------------------------------------

// Without a window the handlers take what those of a Unicode window get.
bool CEditorWnd::TakesBytes() const
{
    return HasWindow() && !::IsWindowUnicode(m_hWnd);
}

void CEditorWnd::OnChar(UINT character, UINT repeat, UINT)
{
    // Programs that send characters often leave the count out.
    repeat = std::max(repeat, 1U);
    // A program that made this an ANSI window may still hand characters on as units.
    if (TakesBytes() && character <= 0xFF)
        TakeByte(character, repeat);
    else
        TakeUnit(character, repeat);
}

LRESULT CEditorWnd::OnImeChar(WPARAM wParam, LPARAM)
{
    const UINT character = static_cast<UINT>(wParam & 0xFFFF);
    if (!TakesBytes()) {
        TakeUnit(character, 1);
        return 0;
    }
    // A double-byte character comes whole, the lead byte above the trail byte.
    if (character > 0xFF)
        TakeByte(character >> 8, 1);
    TakeByte(character & 0xFF, 1);
    return 0;
}

void CEditorWnd::TakeUnit(UINT unit, UINT repeat)
{
    const UINT half = m_typedHalf;
    m_typedHalf = 0;
    // No key gives a control character from U+0080 on: a program sends us text by bytes.
    const bool isByte = (unit >= 0x80 && unit < 0xA0) || (half != 0 && half < 0x100);
    if (IsHighSurrogate(unit)) {
        m_typedHalf = unit;
    } else if (IsLowSurrogate(unit)) {
        if (IsHighSurrogate(half))
            InputChar(0x10000 + ((half - 0xD800) << 10) + (unit - 0xDC00), repeat);
    } else if (isByte && unit < 0x100) {
        m_typedHalf = half < 0x100 ? half : 0;
        TakeByte(unit, repeat);
    } else {
        InputChar(unit, repeat);
    }
}

void CEditorWnd::TakeByte(UINT byte, UINT repeat)
{
    const CApplyLocale locale(GetCodeType());
    const char text[2] = {static_cast<char>(m_typedHalf), static_cast<char>(byte)};
    m_typedHalf = 0;
    // A first byte that the second does not go with is lost.
    const bool whole = tlvn::IsDoubleByte(text);
    if (!whole && tlvn::IsLeadByte(text[1])) {
        m_typedHalf = byte & 0xFF;
        return;
    }
    tlvn::WString units;
    tlvn::ConvertToUtf16(GetMultibyteCodePage(),
                         whole ? std::string_view(text, 2) : std::string_view(text + 1, 1), units);
    if (units.size() == 1)
        InputChar(units[0], repeat);
}

// --- typing ------------------------------------------------------------------------------------

void CEditorWnd::InputChar(UINT ch, UINT repeat)
{
    if (m_readOnly != 0 || repeat == 0 || ch > 0x10FFFF)
        return;
    if (ch == '\r' || ch == '\n') {
        CheckUnits(repeat);
        const tlvn::ChangeGroup group(m_model);
        for (; repeat > 0; --repeat)
            InsertCR();
        return;
    }
    if (ch == '\t') {
        const int count = static_cast<int>(std::min<UINT>(repeat, INT_MAX));
        if (Indent(::GetKeyState(VK_SHIFT) >= 0, count) == 0)
            TypeTabs(repeat);
        return;
    }
    if (IsControl(ch))
        return;
    CheckUnits(repeat);
    tlvn::GuardMemory([&] {
        tlvn::WString units;
        if (ch < 0x10000) {
            units.assign(repeat, static_cast<WCHAR>(ch));
        } else {
            const WCHAR pair[] = {static_cast<WCHAR>(0xD7C0 + (ch >> 10)),
                                  static_cast<WCHAR>(0xDC00 + (ch & 0x3FF))};
            for (; repeat > 0; --repeat)
                units.append(pair, 2);
        }
        TypeUnits(units);
    });
}

void CEditorWnd::TypeTabs(UINT count)
{
    CheckUnits(count);
    tlvn::GuardMemory([&] {
        if (m_metrics.GetTab2Space() == 0)
            return TypeUnits(tlvn::WString(count, static_cast<WCHAR>('\t')));
        CTextPos at = GetCaretViewPos();
        CTextPos end;
        if (IsTextSelected() != 0)
            GetSelectRange(at, end);
        const INT64 blanks = CountTabBlanks(m_metrics, GetColumn(at), count);
        CheckUnits(blanks);
        TypeUnits(tlvn::WString(static_cast<std::size_t>(blanks), static_cast<WCHAR>(' ')));
    });
}

void CEditorWnd::TypeUnits(tlvn::WStringView units)
{
    std::string text;
    MakeOwnText(units, text);
    TypeText(text.data(), CheckedLength(text.size()));
}

void CEditorWnd::MakeOwnText(tlvn::WStringView units, std::string& text)
{
    if (tlvn::UnitsToText(GetCodeType(), units, text))
        return;
    OnTextNotInCode();
    tlvn::UnitsToText(GetCodeType(), units, text);
}

void CEditorWnd::TypeText(const char* text, int length)
{
    if (m_readOnly != 0 || length <= 0)
        return;
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    if (IsTextSelected() == 0 && m_insertMode == 0) {
        const tlvn::TextCode& code = m_widths->GetCode();
        const char* const behind = text + length;
        for (const char* p = text; p < behind; code.Next(p, behind)) {
            if (end.logicalByte >= GetDoc().GetLineByteCountL(end.line))
                break;
            GetDoc().ToNextChar(end);
        }
    }
    ReplaceText(start, end, text, length);
}

void CEditorWnd::ReplaceText(const CTextPos& from, const CTextPos& to, const char* text, int length)
{
    BeginChanges();
    CTextPos caret = from;
    try {
        const tlvn::ChangeGroup group(m_model);
        if (!tlvn::IsSameL(from, to))
            caret = m_model.DeleteText(from, to);
        if (length > 0)
            caret = m_model.InsertText(caret, text, length);
    } catch (CMemoryException*) {
        FollowChanges(caret);
        throw;
    }
    FollowChanges(caret);
}

void CEditorWnd::InsertCR()
{
    if (m_readOnly != 0)
        return;
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    // A caret behind the text leaves no blanks in its line.
    if (start.line < GetDoc().GetLineCount())
        GetDoc().ToText(start);
    else
        start = CTextPos(start.line, 0);
    if (IsTextSelected() == 0)
        end = start;

    CBuffer text;
    if (GetDoc().IsWide())
        text = TW("\r\n");
    else
        text = "\r\n";
    if (m_metrics.GetAutoIndent() != 0 && start.line < GetDoc().GetLineCount()) {
        const char* const line = GetDoc().GetLine(start.line).GetText();
        text.Add(line, GetIndentLength(line, start.logicalByte));
    }
    ReplaceText(start, end, text, text.GetLength());
}

// --- indentation -------------------------------------------------------------------------------

// The lines that a selection over a line end reaches into.
bool CEditorWnd::GetSelectedLines(int& first, int& end) const
{
    CTextPos start;
    CTextPos last;
    GetSelectRange(start, last);
    first = start.line;
    end = std::min(last.logicalByte > 0 || last.byte > 0 ? last.line + 1 : last.line,
                   GetDoc().GetLineCount());
    return start.line < last.line && first < end;
}

int CEditorWnd::Indent(int indent, int count)
{
    int first = 0;
    int end = 0;
    if (m_readOnly != 0 || count <= 0 || !GetSelectedLines(first, end))
        return 0;
    const bool caretFirst = IsCaretSelectStartPos() != 0;
    const CTextPos start(first, 0);
    BeginChanges();
    try {
        const tlvn::ChangeGroup group(m_model);
        CBuffer scratch;
        for (int line = first; line < end; ++line)
            IndentBy(line, indent != 0 ? count : -count, scratch);
    } catch (CMemoryException*) {
        FollowChanges(start);
        throw;
    }
    CTextPos last(end - 1, 0);
    if (end < GetDoc().GetLineCount())
        last = CTextPos(end, 0);
    else
        GetDoc().ToLogicalLineEnd(last);
    FollowChanges(caretFirst ? start : last);
    SelectText(caretFirst ? last : start, caretFirst ? start : last, 1, 1);
    return 1;
}

int CEditorWnd::IndentLine(int line, int count)
{
    if (m_readOnly != 0 || line < 0 || line >= GetDoc().GetLineCount())
        return 0;
    CTextPos caret = m_caretPos;
    BeginChanges();
    CBuffer scratch;
    const int added = IndentBy(line, count, scratch);
    if (caret.line == line)
        caret.logicalByte = std::max(caret.logicalByte + added, 0);
    ToPlace(caret);
    FollowChanges(caret);
    return added != 0;
}

// Returns how many bytes longer the line is.
int CEditorWnd::IndentBy(int line, int count, CBuffer& scratch)
{
    const CLLineData& data = GetDoc().GetLine(line);
    const CTextPos start(line, 0);
    const bool wide = GetDoc().IsWide();
    const INT64 tab = m_metrics.GetTabColumn();
    if (count > 0) {
        if (data.GetLength() == 0)
            return 0;
        const bool blanks = m_metrics.GetTab2Space() != 0;
        const INT64 characters = blanks ? count * tab : count;
        CheckUnits(characters);
        const char c = blanks ? ' ' : '\t';
        scratch.Empty();
        if (wide)
            scratch.Insert(static_cast<WCHAR>(c), static_cast<int>(characters), 0);
        else
            scratch.Insert(c, static_cast<int>(characters), 0);
        m_model.InsertText(start, scratch, scratch.GetLength());
        return scratch.GetLength();
    }
    const tlvn::TextCode& code = m_widths->GetCode();
    const char* const text = data.GetText();
    const char* const end = text + GetIndentLength(text, data.GetLength());
    const char* p = text;
    for (INT64 column = 0; p < end && column < -INT64{count} * tab;) {
        const char* const from = p;
        code.Next(p, end);
        column = tlvn::CountColumns(code, from, static_cast<int>(p - from), static_cast<int>(tab),
                                    static_cast<int>(column));
    }
    const int removed = static_cast<int>(p - text);
    if (removed > 0)
        m_model.DeleteText(start, CTextPos(line, removed));
    return -removed;
}
