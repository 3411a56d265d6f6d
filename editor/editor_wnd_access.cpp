// What a screen reader asks: the text and the selection, as of a system's edit control.
//
// The text is UTF-16 with CR LF between the lines; positions count its units.

#include "charcode/charset.h"
#include "editor/editor_wnd.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr INT64 kLineBreakUnits = 2;

INT64 CountUnits(const tlvn::Document& document, const char* text, int length,
                 tlvn::WString& scratch)
{
    if (document.IsWide())
        return length / 2;
    tlvn::ConvertToUtf16(CharSetCode2CodePage(document.GetCodeType()),
                         std::string_view(text, static_cast<std::size_t>(length)), scratch);
    return static_cast<INT64>(scratch.size());
}

INT64 CountUnitsBefore(const tlvn::Document& document, const CTextPos& pos, tlvn::WString& scratch)
{
    INT64 units = 0;
    for (int i = 0; i < std::min(pos.line, document.GetLineCount()); ++i) {
        const CLLineData& line = document.GetLine(i);
        units += CountUnits(document, line.GetText(), line.GetLength(), scratch) + kLineBreakUnits;
    }
    if (pos.line >= document.GetLineCount())
        return std::max<INT64>(units - kLineBreakUnits, 0);
    const CLLineData& line = document.GetLine(pos.line);
    return units + CountUnits(document, line.GetText(), std::min(pos.logicalByte, line.GetLength()),
                              scratch);
}

// The position so many units from the start; the end of the text when there are fewer.
CTextPos FindUnit(const tlvn::Document& document, INT64 units, tlvn::WString& scratch)
{
    for (int i = 0; i < document.GetLineCount(); ++i) {
        const CLLineData& line = document.GetLine(i);
        const INT64 count = CountUnits(document, line.GetText(), line.GetLength(), scratch);
        if (units > count) {
            units = std::max<INT64>(units - count - kLineBreakUnits, 0);
            continue;
        }
        CTextPos pos(i, 0);
        document.L2PByteIndex(pos);
        for (INT64 done = 0; done < units;) {
            const int from = pos.logicalByte;
            if (document.ToNextChar(pos) == 0)
                break;
            done += CountUnits(document, line.GetText() + from, pos.logicalByte - from, scratch);
        }
        return pos;
    }
    return document.GetDocEnd();
}

} // namespace

LRESULT CEditorWnd::OnGetText(WPARAM wParam, LPARAM lParam)
{
    WCHAR* const out = reinterpret_cast<WCHAR*>(lParam);
    if (out == nullptr || wParam == 0)
        return 0;
    const std::size_t room = wParam - 1;
    std::size_t length = 0;
    const auto add = [&](const WCHAR* units, std::size_t count) {
        count = std::min(count, room - length);
        std::copy_n(units, count, out + length);
        length += count;
    };
    tlvn::WString units;
    for (int i = 0; i < GetDoc().GetLineCount() && length < room; ++i) {
        if (i > 0)
            add(TW("\r\n"), 2);
        GetDoc().GetLineUnits(i, static_cast<int>(std::min<std::size_t>(room - length, INT_MAX)),
                              units);
        add(units.data(), units.size());
    }
    out[length] = 0;
    return static_cast<LRESULT>(length);
}

LRESULT CEditorWnd::OnGetTextLength(WPARAM, LPARAM)
{
    tlvn::WString scratch;
    return static_cast<LRESULT>(CountUnitsBefore(GetDoc(), GetDoc().GetDocEnd(), scratch));
}

LRESULT CEditorWnd::OnGetSel(WPARAM wParam, LPARAM lParam)
{
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    tlvn::WString scratch;
    const INT64 first = CountUnitsBefore(GetDoc(), start, scratch);
    const INT64 last = CountUnitsBefore(GetDoc(), end, scratch);
    if (wParam != 0)
        *reinterpret_cast<DWORD*>(wParam) = static_cast<DWORD>(first);
    if (lParam != 0)
        *reinterpret_cast<DWORD*>(lParam) = static_cast<DWORD>(last);
    if (last > 0xFFFF)
        return -1;
    return MAKELONG(static_cast<WORD>(first), static_cast<WORD>(last));
}

LRESULT CEditorWnd::OnSetSel(WPARAM wParam, LPARAM lParam)
{
    const auto start = static_cast<INT64>(wParam);
    const auto end = static_cast<INT64>(lParam);
    if (static_cast<int>(start) == -1) {
        ClearTextSelect(1);
        return 0;
    }
    tlvn::WString scratch;
    const CTextPos last =
        static_cast<int>(end) == -1 ? GetDoc().GetDocEnd() : FindUnit(GetDoc(), end, scratch);
    SelectText(FindUnit(GetDoc(), start, scratch), last, 1, 1);
    return 0;
}
