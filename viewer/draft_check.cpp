#include "viewer/draft_check.h"

#include "charcode/charset.h"
#include "charcode/flagged_char.h"
#include "charcode/kana.h"
#include "platform/nls.h"

#include <algorithm>
#include <cstring>

namespace tlvn {

namespace {

constexpr UINT kShiftJisPage = 932;
constexpr WCHAR kFirstKatakana = 0xFF61; // of half width, with its punctuation
constexpr WCHAR kLastKatakana = 0xFF9F;

std::string_view View(const CBuffer& buffer)
{
    return {buffer, static_cast<std::size_t>(buffer.GetLength())};
}

bool IsHalfWidthKatakana(WCHAR c)
{
    return c >= kFirstKatakana && c <= kLastKatakana;
}

// --- finding -------------------------------------------------------------------------------------

// The next run from `start` of the text in Shift_JIS. Each kind is looked for again only when its
// last find has been passed.
class ShiftJisFinder {
public:
    explicit ShiftJisFinder(std::string_view text) : m_text(text) {}

    bool Next(std::size_t start, TextFlaw& flaw)
    {
        Find(m_katakana, FindHankakuKatakana, start);
        Find(m_machine, FindMachineDependChar, start);
        const std::size_t found = std::min(m_katakana, m_machine);
        if (found >= m_text.size())
            return false;
        const char* const p = m_text.data() + found;
        const int rest = static_cast<int>(m_text.size() - found);
        const bool katakana = found == m_katakana;
        flaw = {katakana ? FlawKind::HalfWidthKatakana : FlawKind::MachineDependent,
                static_cast<int>(found),
                katakana ? GetHankakuKatakanaLen(p, rest) : GetMachineDependCharLen(p, rest)};
        return true;
    }

private:
    // A position below `start` is none yet.
    void Find(std::size_t& position, int (*find)(const char*, int), std::size_t start) const
    {
        if (position != kUnknown && position >= start)
            return;
        const int found = find(m_text.data() + start, static_cast<int>(m_text.size() - start));
        position = found < 0 ? m_text.size() : start + static_cast<std::size_t>(found);
    }

    static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

    std::string_view m_text;
    std::size_t m_katakana = kUnknown;
    std::size_t m_machine = kUnknown;
};

std::vector<TextFlaw> FindShiftJisFlaws(std::string_view text)
{
    std::vector<TextFlaw> flaws;
    ShiftJisFinder finder(text);
    TextFlaw flaw;
    for (std::size_t pos = 0; finder.Next(pos, flaw);
         pos = static_cast<std::size_t>(flaw.start + flaw.length))
        flaws.push_back(flaw);
    return flaws;
}

WString ToUnits(std::string_view bytes)
{
    WString units(bytes.size() / sizeof(WCHAR), WCHAR{});
    if (!units.empty())
        std::memcpy(units.data(), bytes.data(), units.size() * sizeof(WCHAR));
    return units;
}

std::vector<TextFlaw> FindWideFlaws(WStringView text)
{
    constexpr int kUnit = static_cast<int>(sizeof(WCHAR));
    std::vector<TextFlaw> flaws;
    bool inRun = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool katakana = IsHalfWidthKatakana(text[i]);
        if (katakana && inRun)
            flaws.back().length += kUnit;
        else if (katakana)
            flaws.push_back({FlawKind::HalfWidthKatakana, static_cast<int>(i) * kUnit, kUnit});
        inRun = katakana;
    }
    return flaws;
}

std::vector<TextFlaw> FindFlaws(CodeType type, std::string_view text)
{
    if (IsCodeTypeJapanese(type))
        return FindShiftJisFlaws(text);
    return IsCodeTypeUnicode(type) ? FindWideFlaws(ToUnits(text)) : std::vector<TextFlaw>();
}

// The subject in the edit form of the type.
std::string SubjectInEditForm(const Draft& draft)
{
    const WString wide = Utf8ToUtf16(draft.subject);
    std::string text;
    if (IsCodeTypeJapanese(draft.codeType))
        ConvertFromUtf16(kShiftJisPage, wide, text);
    else
        text.assign(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(WCHAR));
    return text;
}

void Count(const std::vector<TextFlaw>& found, CodeType type, DraftFlaws& flaws)
{
    for (const TextFlaw& flaw : found) {
        if (flaw.kind == FlawKind::MachineDependent)
            flaws.machineDependent += flaw.length / 2;
        else
            flaws.halfWidthKatakana += flaw.length / (IsCodeTypeUnicode(type) ? 2 : 1);
    }
}

// --- replacing -----------------------------------------------------------------------------------

// Plain forms of characters outside the standard; series are told by their first and last.
std::string PlainForm(WCHAR c)
{
    static const struct {
        WCHAR c;
        const char* plain;
    } kForms[] = {
        {0x2116, "No."},    {0x2121, "TEL"},        {0x3231, "(株)"},       {0x3232, "(有)"},
        {0x3239, "(代)"},   {0x3303, "アール"},     {0x330D, "カロリー"},   {0x3314, "キロ"},
        {0x3318, "グラム"}, {0x3322, "センチ"},     {0x3323, "セント"},     {0x3326, "ドル"},
        {0x3327, "トン"},   {0x332B, "パーセント"}, {0x3336, "ヘクタール"}, {0x333B, "ページ"},
        {0x3349, "ミリ"},   {0x334A, "ミリバール"}, {0x334D, "メートル"},   {0x3351, "リットル"},
        {0x3357, "ワット"}, {0x337B, "平成"},       {0x337C, "昭和"},       {0x337D, "大正"},
        {0x337E, "明治"},   {0x338E, "mg"},         {0x338F, "kg"},         {0x339C, "mm"},
        {0x339D, "cm"},     {0x339E, "km"},         {0x33A1, "m2"},         {0x33C4, "cc"},
        {0x33CD, "K.K."},   {0x32A4, "(上)"},       {0x32A5, "(中)"},       {0x32A6, "(下)"},
        {0x32A7, "(左)"},   {0x32A8, "(右)"},
    };
    static const char* const kRoman[] = {"I",  "II",  "III",  "IV", "V",
                                         "VI", "VII", "VIII", "IX", "X"};
    if (c >= 0x2460 && c <= 0x2473)
        return '(' + std::to_string(c - 0x2460 + 1) + ')';
    if (c >= 0x2160 && c <= 0x2169)
        return kRoman[c - 0x2160];
    if (c >= 0x2170 && c <= 0x2179) {
        std::string small = kRoman[c - 0x2170];
        for (char& letter : small)
            letter = static_cast<char>(letter + ('a' - 'A'));
        return small;
    }
    const auto* const form =
        std::find_if(std::begin(kForms), std::end(kForms), [c](const auto& f) { return f.c == c; });
    return form == std::end(kForms) ? std::string() : form->plain;
}

// The run in the same code, put right as far as it can be.
std::string ReplaceMachineDependent(std::string_view run)
{
    std::string out;
    WString wide;
    std::string plain;
    for (std::size_t i = 0; i + 2 <= run.size(); i += 2) {
        const std::string_view character = run.substr(i, 2);
        ConvertToUtf16(kShiftJisPage, character, wide);
        const std::string form = wide.size() == 1 ? PlainForm(wide[0]) : std::string();
        ConvertFromUtf16(kShiftJisPage, Utf8ToUtf16(form), plain);
        out += form.empty() ? character : std::string_view(plain);
    }
    return out;
}

std::string ReplaceKatakana(std::string_view run, bool wide)
{
    if (!wide) {
        CStringA text(run.data(), static_cast<int>(run.size()));
        KatakanaHanToZen(text);
        return std::string(text, static_cast<std::size_t>(text.GetLength()));
    }
    const WString units = ToUnits(run);
    CStringW text(units.data(), static_cast<int>(units.size()));
    KatakanaHanToZen(text);
    return std::string(reinterpret_cast<const char*>(text.GetString()),
                       static_cast<std::size_t>(text.GetLength()) * sizeof(WCHAR));
}

// Returns how many runs were replaced.
int ReplaceFlaws(CodeType type, std::string& text)
{
    int replaced = 0;
    std::string out;
    std::size_t copied = 0;
    for (const TextFlaw& flaw : FindFlaws(type, text)) {
        const auto start = static_cast<std::size_t>(flaw.start);
        const auto length = static_cast<std::size_t>(flaw.length);
        const std::string_view run = std::string_view(text).substr(start, length);
        const std::string plain = flaw.kind == FlawKind::MachineDependent
                                      ? ReplaceMachineDependent(run)
                                      : ReplaceKatakana(run, IsCodeTypeUnicode(type) != 0);
        replaced += plain != run;
        out += std::string_view(text).substr(copied, start - copied);
        out += plain;
        copied = start + length;
    }
    if (replaced > 0)
        text = out + text.substr(copied);
    return replaced;
}

} // namespace

DraftFlaws FindDraftFlaws(const Draft& draft)
{
    DraftFlaws flaws;
    flaws.text = FindFlaws(draft.codeType, View(draft.text));
    Count(flaws.text, draft.codeType, flaws);
    const std::vector<TextFlaw> subject = FindFlaws(draft.codeType, SubjectInEditForm(draft));
    Count(subject, draft.codeType, flaws);
    flaws.inSubject = !subject.empty();
    return flaws;
}

int ReplaceDraftFlaws(Draft& draft)
{
    std::string text(View(draft.text));
    int replaced = ReplaceFlaws(draft.codeType, text);
    if (replaced > 0)
        draft.text.Set(text.data(), static_cast<int>(text.size()));

    // The subject is put right in a form that holds all of it.
    WString wide = Utf8ToUtf16(draft.subject);
    std::string subject;
    const bool narrow = IsCodeTypeJapanese(draft.codeType) &&
                        ConvertFromUtf16(kShiftJisPage, wide, subject) == kConverted;
    const CodeType form = narrow ? CT_SJIS : CT_UNICODE;
    if (!narrow)
        subject.assign(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(WCHAR));
    if (FindDraftFlaws(draft).inSubject) {
        const int inSubject = ReplaceFlaws(form, subject);
        if (narrow)
            ConvertToUtf16(kShiftJisPage, subject, wide);
        else
            wide = ToUnits(subject);
        if (inSubject > 0)
            draft.subject = Utf16ToUtf8(wide);
        replaced += inSubject;
    }
    return replaced;
}

} // namespace tlvn
