// Reading and writing the editor's settings.

#include "editor/metrics.h"

#include "persist/setting_data.h"
#include "platform/nls.h"

#include <string>

namespace {

constexpr UINT kShiftJis = 932;

struct Flag {
    const char* key;
    int (CEditorMetrics::*get)() const;
    void (CEditorMetrics::*set)(int);
};

#define FLAG(name)                                                                                 \
    {                                                                                              \
#name, &CEditorMetrics::Get##name, &CEditorMetrics::Set##name                              \
    }
constexpr Flag kFlags[] = {
    FLAG(FreeCursor),     FLAG(FixCursorPos),  FLAG(AutoIndent),     FLAG(Tab2Space),
    FLAG(SingleClickURL), FLAG(NoTurnQuoted),  FLAG(NoTurnURL),      FLAG(ShowCR),
    FLAG(ShowEOF),        FLAG(ShowTab),       FLAG(ShowSpace),      FLAG(ShowZenSpace),
    FLAG(ShowColRuler),   FLAG(ShowLineRuler), FLAG(PhisicalLineNo), FLAG(WordWrap),
};
// What the setters do to a number out of range is what reading does.
constexpr Flag kNumbers[] = {
    FLAG(QuoteLen), FLAG(LineSpace), FLAG(AutoTurn), FLAG(TurnCols), FLAG(TabColumn),
};
#undef FLAG

struct Text {
    const char* key;
    const CBuffer& (CEditorMetrics::*get)() const;
    void (CEditorMetrics::*set)(const CBuffer&);
};

constexpr Text kTexts[] = {
    {"IndentList", &CEditorMetrics::GetIndentList, &CEditorMetrics::SetIndentList},
    {"QuoteList", &CEditorMetrics::GetQuoteList, &CEditorMetrics::SetQuoteList},
    {"QuoteMark", &CEditorMetrics::GetQuoteMark, &CEditorMetrics::SetQuoteMark},
    {"Tail2Next", &CEditorMetrics::GetTail2Next, &CEditorMetrics::SetTail2Next},
};
const char kShowCaret[] = "ShowCaret";
const char kHead2Prev[] = "Head2Prev";

// The lists are Shift_JIS, the settings UTF-16, whatever the multibyte code page.
bool ReadList(const CSettingData& settings, const char* section, const char* key, CBuffer& list)
{
    CStringW value;
    if (!settings.GetValue(section, key, value))
        return false;
    std::string bytes;
    tlvn::ConvertFromUtf16(
        kShiftJis, {value.GetString(), static_cast<std::size_t>(value.GetLength())}, bytes, '\0');
    list.Set(bytes.data(), static_cast<int>(bytes.size()));
    return true;
}

void WriteList(CSettingData& settings, const char* section, const char* key, const CBuffer& list)
{
    tlvn::WString units;
    tlvn::ConvertToUtf16(kShiftJis, {list, static_cast<std::size_t>(list.GetLength())}, units);
    settings.SetValue(section, key, CStringW(units.data(), static_cast<int>(units.size())));
}

} // namespace

void CEditorMetrics::GetEditorMetrics(const CSettingData* settings, const char* section, int viewer)
{
    const CodeType codeType = m_codeType;
    *this = CEditorMetrics();
    if (viewer != 0) {
        m_showCaret = 0;
        m_noTurnQuoted = 0;
        m_noTurnURL = 0;
        m_autoTurn = kTurnAtWindow;
    }
    if (settings != nullptr) {
        if (viewer != 0)
            m_showCaret = settings->GetBoolValue(section, kShowCaret, m_showCaret);
        for (const Flag& flag : kFlags)
            (this->*flag.set)(settings->GetBoolValue(section, flag.key, (this->*flag.get)()));
        for (const Flag& number : kNumbers) {
            int value = (this->*number.get)();
            settings->GetValue(section, number.key, value);
            (this->*number.set)(value);
        }
        CBuffer text;
        for (const Text& list : kTexts)
            if (ReadList(*settings, section, list.key, text))
                (this->*list.set)(text);
        if (ReadList(*settings, section, kHead2Prev, text)) {
            text += ' ';
            SetHead2Prev(text);
        }
        m_fonts.GetMultiFont(settings, section);
    }
    ChangeCodePage(codeType);
}

void CEditorMetrics::SetEditorMetrics(CSettingData* settings, const char* section) const
{
    if (settings == nullptr)
        return;
    settings->SetValue(section, kShowCaret, m_showCaret);
    for (const Flag& flag : kFlags)
        settings->SetValue(section, flag.key, (this->*flag.get)());
    for (const Flag& number : kNumbers)
        settings->SetValue(section, number.key, (this->*number.get)());
    for (const Text& list : kTexts)
        WriteList(*settings, section, list.key, (this->*list.get)());
    CBuffer head = m_head2Prev.list;
    if (head.EndWith(" ", 0, 0))
        head.Truncate(head.GetLength() - 1);
    WriteList(*settings, section, kHead2Prev, head);
    m_fonts.SetMultiFont(settings, section);
}
