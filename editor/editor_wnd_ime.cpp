// The input method.

#include "editor/editor_wnd.h"
#include "editor/input_method.h"
#include "editor/text_units.h"

#include <algorithm>
#include <cstring>

namespace {

// Bytes of the line around the selection that the input method is given, before and behind; it
// takes no selection longer than these.
constexpr int kContextBytes = 400;
constexpr int kMostSelectedBytes = 800;

// All that tells of a result: GCS_RESULTREADSTR to GCS_RESULTCLAUSE.
constexpr LPARAM kResultFlags = 0x1E00;

} // namespace

// --- composing ---------------------------------------------------------------------------------

LRESULT CEditorWnd::OnImeStartComposition(WPARAM, LPARAM)
{
    m_composing = true;
    EnsureCaretVisible(1);
    PlaceCaret();
    PlaceComposition();
    LOGFONTW font{};
    m_font.GetLogFont(&font);
    const tlvn::InputContext context(m_hWnd);
    if (context.Get() != nullptr)
        ::ImmSetCompositionFontW(context.Get(), &font);
    return Default();
}

// Without its result the default treatment makes no WM_IME_CHAR of the message.
LRESULT CEditorWnd::OnImeComposition(WPARAM wParam, LPARAM lParam)
{
    if ((lParam & static_cast<LPARAM>(GCS_RESULTSTR)) == 0)
        return Default();
    const tlvn::WString result =
        tlvn::GuardMemory([&] { return tlvn::InputContext(m_hWnd).GetText(GCS_RESULTSTR); });
    if (result.empty())
        return Default();
    tlvn::GuardMemory([&] { TypeUnits(result); });
    return DefWindowProc(WM_IME_COMPOSITION, wParam, lParam & ~kResultFlags);
}

LRESULT CEditorWnd::OnImeEndComposition(WPARAM, LPARAM)
{
    m_composing = false;
    return Default();
}

// The composition begins at the caret and goes on in the lines below, within the text.
COMPOSITIONFORM CEditorWnd::GetCompositionForm() const
{
    COMPOSITIONFORM form{};
    form.dwStyle = CFS_RECT;
    form.ptCurrentPos = GetCaretPoint();
    form.rcArea = GetTextRect();
    return form;
}

void CEditorWnd::PlaceComposition()
{
    const tlvn::InputContext context(m_hWnd);
    if (context.Get() == nullptr)
        return;
    COMPOSITIONFORM form = GetCompositionForm();
    ::ImmSetCompositionWindow(context.Get(), &form);
}

// --- what the input method asks ----------------------------------------------------------------

LRESULT CEditorWnd::OnImeRequest(WPARAM wParam, LPARAM lParam)
{
    const bool asksForText = wParam == IMR_RECONVERTSTRING || wParam == IMR_DOCUMENTFEED;
    if (m_readOnly != 0 || (lParam == 0 && !asksForText))
        return Default();
    switch (wParam) {
    case IMR_COMPOSITIONWINDOW:
        *reinterpret_cast<COMPOSITIONFORM*>(lParam) = GetCompositionForm();
        return 1;
    case IMR_COMPOSITIONFONT:
        return m_font.GetLogFont(reinterpret_cast<LOGFONTW*>(lParam)) != 0;
    case IMR_QUERYCHARPOSITION:
        return GiveCharPosition(*reinterpret_cast<IMECHARPOSITION*>(lParam));
    case IMR_RECONVERTSTRING:
    case IMR_DOCUMENTFEED:
        return GiveSurroundings(reinterpret_cast<RECONVERTSTRING*>(lParam),
                                wParam == IMR_RECONVERTSTRING);
    case IMR_CONFIRMRECONVERTSTRING:
        return SelectForReconversion(*reinterpret_cast<const RECONVERTSTRING*>(lParam));
    default:
        return Default();
    }
}

LRESULT CEditorWnd::GiveCharPosition(IMECHARPOSITION& position)
{
    if (position.dwSize < sizeof(IMECHARPOSITION))
        return 0;
    CPoint point = GetCaretPoint();
    const tlvn::WString composing = tlvn::InputContext(m_hWnd).GetText(GCS_COMPSTR);
    const int before =
        static_cast<int>(std::min<std::size_t>(position.dwCharPos, composing.size()));
    if (before > 0) {
        CClientDC dc(this);
        CFont* const old = dc.SelectObject(&m_font);
        point.x += dc.GetTextExtent(composing.data(), before).cx;
        dc.SelectObject(old);
    }
    ClientToScreen(&point);
    CRect text = GetTextRect();
    ClientToScreen(&text);
    position.pt = point;
    position.cLineHeight = static_cast<UINT>(m_charHeight);
    position.rcDocument = text;
    return 1;
}

// A selection over a line end cannot be converted again.
bool CEditorWnd::GetSurroundings(Surroundings& around) const
{
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    if (!GetDoc().IsInText(start) || !GetDoc().IsInText(end) || start.line != end.line ||
        end.logicalByte - start.logicalByte > kMostSelectedBytes)
        return false;
    const CLLineData& line = GetDoc().GetLine(start.line);
    around.start = CTextPos(start.line, std::max(start.logicalByte - kContextBytes, 0));
    GetDoc().ToCharTop(around.start);
    CTextPos last(start.line,
                  end.logicalByte + std::min(line.GetLength() - end.logicalByte, kContextBytes));
    GetDoc().ToCharTop(last);

    tlvn::WString piece;
    around.units.clear();
    const auto add = [&](const CTextPos& from, const CTextPos& to) {
        const auto length = static_cast<std::size_t>(to.logicalByte - from.logicalByte);
        tlvn::TextToUnits(GetCodeType(),
                          std::string_view(line.GetText() + from.logicalByte, length), piece);
        around.units += piece;
        return static_cast<int>(piece.size());
    };
    around.selStart = add(around.start, start);
    around.selLength = add(start, end);
    add(end, last);
    return true;
}

LRESULT CEditorWnd::GiveSurroundings(RECONVERTSTRING* out, bool withSelection) const
{
    Surroundings around;
    if (!::IsWindowUnicode(m_hWnd) || !GetSurroundings(around))
        return 0;
    const std::size_t bytes = around.units.size() * sizeof(WCHAR);
    const std::size_t size = sizeof(RECONVERTSTRING) + bytes + sizeof(WCHAR);
    if (out == nullptr)
        return static_cast<LRESULT>(size);
    if (out->dwSize < size)
        return 0;
    out->dwVersion = 0;
    out->dwStrLen = static_cast<DWORD>(around.units.size());
    out->dwStrOffset = sizeof(RECONVERTSTRING);
    out->dwCompStrLen = out->dwTargetStrLen =
        withSelection ? static_cast<DWORD>(around.selLength) : 0;
    out->dwCompStrOffset = out->dwTargetStrOffset =
        static_cast<DWORD>(around.selStart) * static_cast<DWORD>(sizeof(WCHAR));
    std::memcpy(out + 1, around.units.c_str(), bytes + sizeof(WCHAR));
    return static_cast<LRESULT>(size);
}

// The input method has chosen what it converts again of the text that GiveSurroundings gave.
LRESULT CEditorWnd::SelectForReconversion(const RECONVERTSTRING& wanted)
{
    Surroundings around;
    if (!::IsWindowUnicode(m_hWnd) || !GetSurroundings(around))
        return 0;
    const std::size_t from = wanted.dwCompStrOffset / sizeof(WCHAR);
    const std::size_t to = from + wanted.dwCompStrLen;
    if (wanted.dwCompStrLen == 0 || to > around.units.size())
        return 0;
    const CLLineData& line = GetDoc().GetLine(around.start.line);
    tlvn::WString character;
    CTextPos pos = around.start;
    const auto advance = [&](std::size_t& done, std::size_t units) {
        while (done < units && pos.logicalByte < line.GetLength()) {
            const int byte = pos.logicalByte;
            GetDoc().ToNextChar(pos);
            const auto length = static_cast<std::size_t>(pos.logicalByte - byte);
            tlvn::TextToUnits(GetCodeType(), std::string_view(line.GetText() + byte, length),
                              character);
            done += character.size();
        }
    };
    std::size_t done = 0;
    advance(done, from);
    const CTextPos start = pos;
    advance(done, to);
    SelectText(start, pos, 1, 0);
    return 1;
}
