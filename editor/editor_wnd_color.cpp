// Colours of runs, links, characters that need a warning.

#include "charcode/charset.h"
#include "editor/editor_wnd.h"
#include "editor/flagged_search.h"
#include "editor/open_url.h"
#include "editor/run_color.h"
#include "framework/display_settings.h"

int CEditorWnd::ChangeEditorColors(const CEditorColor& colors)
{
    if (m_colors == colors)
        return 0;
    m_colors = colors;
    UpdateDrawColors();
    if (HasWindow())
        Invalidate(FALSE);
    return 1;
}

// For high contrast nothing is told by a colour of ours: quotes and flagged characters look like
// other text, links are underlined in the system's colour, what is laid over the text looks like
// a selection.
void CEditorWnd::UpdateDrawColors()
{
    m_drawColors = m_colors;
    if (!tlvn::IsHighContrast())
        return;
    const COLORREF system = 0xFFFFFFFF;
    m_drawColors.SetTextColor(system);
    m_drawColors.SetBackColor(system);
    m_drawColors.SetSelTextColor(system);
    m_drawColors.SetSelBackColor(system);
    const COLORREF text = m_drawColors.GetTextColor();
    for (int level = 0; level < 4; ++level)
        m_drawColors.SetQuotedTextColor(level, text);
    m_drawColors.SetSymbolColor(::GetSysColor(COLOR_GRAYTEXT));
    m_drawColors.SetUrlColor(::GetSysColor(COLOR_HOTLIGHT));
    m_drawColors.SetKatakanaColor(text);
    m_drawColors.SetMacnDependColor(text);
    m_drawColors.SetHeaderBackColor(m_drawColors.GetBackColor());
    m_drawColors.SetFindedTextColor(m_drawColors.GetSelTextColor());
    m_drawColors.SetFindedBackColor(m_drawColors.GetSelBackColor());
    for (int kind = 0; kind < CEditorColor::GetLineMarkerKindCt(); ++kind) {
        m_drawColors.SetLineMarkerTextColor(kind, m_drawColors.GetSelTextColor());
        m_drawColors.SetLineMarkerBackColor(kind, m_drawColors.GetSelBackColor());
    }
}

int CEditorWnd::GetDrawColor(const CTextPos& at, int& length, COLORREF& text, COLORREF& back,
                             int& underline) const
{
    CTextPos pos = GetDoc().Completed(at);
    GetDoc().L2PByteIndex(pos);
    tlvn::DrawRun run;
    if (GetDoc().IsInText(pos)) {
        const CLLineData& line = GetDoc().GetLine(pos.line);
        tlvn::DrawLine row;
        row.line = pos.line;
        row.text = line.GetText();
        row.start = line.GetStart(pos.physical);
        row.end = line.GetEnd(pos.physical);
        row.links = &GetDoc().GetLinks(pos.line);
        tlvn::RunColor::GetBaseColors(m_drawColors, pos.line < GetHeaderLineL(),
                                      GetDoc().GetQuotes().GetLevel(line.GetQuoteEntry()),
                                      row.baseText, row.baseBack);
        tlvn::RunColor coloring(m_drawColors, GetCodeType());
        coloring.SetSelection(m_selAnchor, m_selEnd);
        coloring.SetFoundRanges(&m_found);
        coloring.SetMarkers(&GetLineMarkerArray());
        coloring.SetLine(row);
        coloring.GetRun(pos.logicalByte, run);
    }
    length = run.length;
    text = run.text;
    back = run.back;
    underline = run.underline;
    return run.special;
}

CEditorLineRange::ElRangeType CEditorWnd::GetURLOn(CPoint point, CString* text) const
{
    if (text != nullptr)
        text->Empty();
    // What is scrolled out of sight lies under the rulers.
    const CRect shown = GetTextRect();
    CTextPos pos;
    if (point.x < shown.left || point.y < shown.top || CursorPoint2TextPos(point, 0, pos) == 0)
        return CEditorLineRange::ElRangeNone;
    const auto& links = GetDoc().GetLinks(pos.line);
    const std::size_t index = tlvn::FindLinkFrom(links, pos.logicalByte);
    if (index == links.size() || links[index].start > pos.logicalByte)
        return CEditorLineRange::ElRangeNone;
    if (text == nullptr)
        return links[index].type;

    const char* const bytes = GetDoc().GetLine(pos.line).GetText() + links[index].start;
    if (GetDoc().IsWide()) {
        const auto length = static_cast<std::size_t>(links[index].length / 2);
        *text = tlvn::NarrowText({reinterpret_cast<const WCHAR*>(bytes), length}).c_str();
    } else {
        *text = CString(bytes, links[index].length);
    }
    return links[index].type;
}

int CEditorWnd::OpenURL(CEditorLineRange::ElRangeType type, const char* text) const
{
    return tlvn::OpenLink(type, text, m_mailtoFrom);
}

int CEditorWnd::MoveToFirstHanKanaOrMacnDepend(int which)
{
    CTextPos found;
    if (tlvn::FindFlaggedChar(GetDoc(), which, found) == 0)
        return 0;
    GetDoc().L2PByteIndex(found);
    MoveCaret(found, 0, 1, CaretMoveText);
    return 1;
}
