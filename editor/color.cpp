#include "editor/color.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr COLORREF kDefault = static_cast<COLORREF>(-1);
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kGray = 0x808080;
constexpr COLORREF kWhite = 0xFFFFFF;

struct SlotColors {
    COLORREF initial;
    COLORREF monochrome;
};

// In the order of the slots.
constexpr SlotColors kColors[] = {
    {kDefault, kBlack}, // text
    {kDefault, kWhite}, // background
    {kDefault, kWhite}, // selected text
    {kDefault, kBlack}, // selected background
    {0x008000, kBlack}, // quoted text, 0 to 3
    {0x004080, kBlack}, {0x804000, kBlack}, {0x800080, kBlack}, {0x808000, kBlack}, // symbols
    {0xFF0000, kBlack},                                                             // links
    {0x0000FF, kBlack}, // half-width katakana
    {0x0000FF, kBlack}, // machine-dependent characters
    {0xD0FFD0, kWhite}, // header background
    {0xFFFFFF, kWhite}, // found text
    {0xFF00FF, kBlack}, // found background
    {kBlack, kWhite},   // line marker text, 0 to 5
    {kBlack, kWhite},   {kBlack, kWhite},   {kBlack, kWhite},   {kBlack, kWhite},
    {kBlack, kWhite},   {0x00FFFF, kBlack}, // line marker background, 0 to 5
    {0xFF00FF, kBlack}, {0xFFFF00, kBlack}, {0x4040FF, kBlack}, {0x40FF40, kBlack},
    {0xFF4040, kBlack},
};

} // namespace

CEditorColor::CEditorColor()
{
    static_assert(std::size(kColors) == kSlotCount);
    ResetColor();
}

COLORREF CEditorColor::GetTextColor() const
{
    return GetOrSystem(kText, COLOR_WINDOWTEXT);
}

COLORREF CEditorColor::GetBackColor() const
{
    return GetOrSystem(kBack, COLOR_WINDOW);
}

COLORREF CEditorColor::GetSelTextColor() const
{
    return GetOrSystem(kSelText, COLOR_HIGHLIGHTTEXT);
}

COLORREF CEditorColor::GetSelBackColor() const
{
    return GetOrSystem(kSelBack, COLOR_HIGHLIGHT);
}

COLORREF CEditorColor::GetQuotedTextColor(int level) const
{
    return level >= 0 && level < kQuoteLevels ? m_slots[kQuotedText + level] : kGray;
}

void CEditorColor::SetQuotedTextColor(int level, COLORREF color)
{
    SetIndexed(kQuotedText, level, kQuoteLevels, color);
}

COLORREF CEditorColor::GetLineMarkerTextColor(int kind) const
{
    return kind >= 0 && kind < kMarkerKinds ? m_slots[kMarkerText + kind] : kBlack;
}

void CEditorColor::SetLineMarkerTextColor(int kind, COLORREF color)
{
    SetIndexed(kMarkerText, kind, kMarkerKinds, color);
}

COLORREF CEditorColor::GetLineMarkerBackColor(int kind) const
{
    return kind >= 0 && kind < kMarkerKinds ? m_slots[kMarkerBack + kind] : kGray;
}

void CEditorColor::SetLineMarkerBackColor(int kind, COLORREF color)
{
    SetIndexed(kMarkerBack, kind, kMarkerKinds, color);
}

void CEditorColor::ResetColor()
{
    for (int slot = 0; slot < kSlotCount; ++slot)
        m_slots[slot] = kColors[slot].initial;
}

void CEditorColor::SetMonochromeColor()
{
    for (int slot = 0; slot < kSlotCount; ++slot)
        m_slots[slot] = kColors[slot].monochrome;
}

bool CEditorColor::operator==(const CEditorColor& other) const
{
    return std::equal(std::begin(m_slots), std::end(m_slots), std::begin(other.m_slots));
}

COLORREF CEditorColor::GetOrSystem(Slot slot, int systemColor) const
{
    return m_slots[slot] != kDefault ? m_slots[slot] : GetSysColor(systemColor);
}

void CEditorColor::SetIndexed(Slot first, int index, int count, COLORREF color)
{
    if (index < 0 || index >= count)
        return;
    const int slot = first + index;
    m_slots[slot] = color != kDefault ? color : kColors[slot].initial;
}
