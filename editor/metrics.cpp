#include "editor/metrics.h"

#include "charcode/charset.h"
#include "platform/nls.h"

#include <algorithm>
#include <string>
#include <tuple>

namespace {

constexpr UINT kShiftJis = 932;

constexpr int kLeastTurnCols = 10;
constexpr int kMostTurnCols = 400;

const WCHAR kIndentList[] = TW(" \t\x3000");
// Of the quotation signs those that Japanese mail has: also full-width ones and a ruled line.
const WCHAR kQuoteList[] = TW(">\xFF1E|\xFF5C\x2502");
const WCHAR kQuoteMark[] = TW(">");
// 、。，．？！゛゜ヽヾゝゞ々）〕］｝〉》」』】 and half-width ､｡,.?!ﾞﾟ)]}｣, at the end the blank.
const WCHAR kHead2Prev[] = TW("\x3001\x3002\xFF0C\xFF0E\xFF1F\xFF01\x309B\x309C\x30FD\x30FE\x309D")
    TW("\x309E\x3005\xFF09\x3015\xFF3D\xFF5D\x3009\x300B\x300D\x300F\x3011")
        TW("\xFF64\xFF61,.?!\xFF9E\xFF9F)]}\xFF63 ");
// （〔［｛〈《「『【 and half-width ([{｢.
const WCHAR kTail2Next[] = TW("\xFF08\x3014\xFF3B\xFF5B\x3008\x300A\x300C\x300E\x3010([{\xFF62");

CBuffer ShiftJis(tlvn::WStringView text)
{
    std::string bytes;
    tlvn::ConvertFromUtf16(kShiftJis, text, bytes, '\0');
    CBuffer list;
    list.Set(bytes.data(), static_cast<int>(bytes.size()));
    return list;
}

} // namespace

CEditorMetrics::CEditorMetrics()
{
    SetList(m_indentList, ShiftJis(kIndentList));
    SetList(m_quoteList, ShiftJis(kQuoteList));
    SetList(m_quoteMark, ShiftJis(kQuoteMark));
    SetList(m_head2Prev, ShiftJis(kHead2Prev));
    SetList(m_tail2Next, ShiftJis(kTail2Next));
}

void CEditorMetrics::ChangeCodePage(CodeType codeType)
{
    m_codeType = codeType;
    for (List* list : {&m_indentList, &m_quoteList, &m_quoteMark, &m_head2Prev, &m_tail2Next})
        SetList(*list, list->list);
}

void CEditorMetrics::SetIndentList(const CBuffer& list)
{
    SetList(m_indentList, list);
}

void CEditorMetrics::SetQuoteList(const CBuffer& list)
{
    SetList(m_quoteList, list);
}

void CEditorMetrics::SetQuoteMark(const CBuffer& mark)
{
    SetList(m_quoteMark, mark);
}

void CEditorMetrics::SetHead2Prev(const CBuffer& list)
{
    SetList(m_head2Prev, list);
}

void CEditorMetrics::SetTail2Next(const CBuffer& list)
{
    SetList(m_tail2Next, list);
}

void CEditorMetrics::SetAutoTurn(int mode)
{
    if (mode >= kNoTurn && mode <= kTurnAtWindow)
        m_autoTurn = mode;
}

void CEditorMetrics::SetTurnCols(int columns)
{
    m_turnCols = std::clamp(columns, kLeastTurnCols, kMostTurnCols);
}

bool CEditorMetrics::operator==(const CEditorMetrics& other) const
{
    const auto settings = [](const CEditorMetrics& m) {
        return std::tie(m.m_showCaret, m.m_freeCursor, m.m_fixCursorPos, m.m_autoIndent,
                        m.m_tab2Space, m.m_indentList.list, m.m_singleClickURL, m.m_quoteList.list,
                        m.m_quoteLen, m.m_quoteMark.list, m.m_noTurnQuoted, m.m_noTurnURL,
                        m.m_lineSpace, m.m_showCR, m.m_showEOF, m.m_showTab, m.m_showSpace,
                        m.m_showZenSpace, m.m_showColRuler, m.m_showLineRuler, m.m_phisicalLineNo,
                        m.m_autoTurn, m.m_turnCols, m.m_head2Prev.list, m.m_tail2Next.list,
                        m.m_wordWrap, m.m_tabColumn, m.m_fonts);
    };
    return settings(*this) == settings(other);
}

// `text` may be list.list itself.
void CEditorMetrics::SetList(List& list, const CBuffer& text)
{
    list.list = text;
    const UINT page = CharSetCode2CodePage(CodeTypeSave2Edit(m_codeType));
    const bool wide = IsCodeTypeUnicode(m_codeType) != 0;
    if (!wide && (page == kShiftJis || page == 0)) {
        list.edit = text;
        return;
    }
    tlvn::WString units;
    tlvn::ConvertToUtf16(kShiftJis, {text, static_cast<std::size_t>(text.GetLength())}, units);
    if (wide) {
        list.edit.Set(units.data(), static_cast<int>(units.size() * sizeof(WCHAR)));
        return;
    }
    std::string bytes;
    tlvn::ConvertFromUtf16(page, units, bytes, '\0');
    list.edit.Set(bytes.data(), static_cast<int>(bytes.size()));
}
