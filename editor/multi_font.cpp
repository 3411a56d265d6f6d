#include "editor/multi_font.h"

#include "charcode/charset.h"
#include "framework/guard_memory.h"
#include "persist/setting_data.h"

#include <algorithm>

namespace {

constexpr int kCharSets = 256;

auto HasIndex(int index)
{
    return [index](const CFontInfo& font) { return font.GetIndex() == index; };
}

} // namespace

CMultiFont::CMultiFont() : m_fonts(1) {}

const CFontInfo* CMultiFont::FindFont(int index) const
{
    const auto found = std::find_if(m_fonts.begin(), m_fonts.end(), HasIndex(index));
    return found != m_fonts.end() ? &*found : nullptr;
}

const CFontInfo& CMultiFont::GetFont(CodeType codeType) const
{
    const CFontInfo* const font = FindFont(CharSetCode2FontCharSet(codeType));
    return font != nullptr ? *font : m_fonts.front();
}

void CMultiFont::SetFont(const CFontInfo& font)
{
    const auto place = std::find_if(m_fonts.begin(), m_fonts.end(), [&](const CFontInfo& f) {
        return f.GetIndex() >= font.GetIndex();
    });
    if (place != m_fonts.end() && place->GetIndex() == font.GetIndex())
        *place = font;
    else
        tlvn::GuardMemory([&] { m_fonts.insert(place, font); });
}

void CMultiFont::RemoveFont(int index)
{
    if (m_fonts.size() > 1)
        std::erase_if(m_fonts, HasIndex(index));
}

void CMultiFont::GetMultiFont(const CSettingData* settings, const char* section)
{
    std::vector<CFontInfo> fonts;
    for (int index = 0; index < kCharSets; ++index) {
        CFontInfo font;
        if (font.GetFontInfo(settings, section, index))
            tlvn::GuardMemory([&] { fonts.push_back(font); });
    }
    if (fonts.empty())
        *this = CMultiFont();
    else
        m_fonts = std::move(fonts);
}

void CMultiFont::SetMultiFont(CSettingData* settings, const char* section) const
{
    for (int index = 0; index < kCharSets; ++index)
        if (FindFont(index) == nullptr)
            CFontInfo::RemoveFontInfo(settings, section, index);
    for (const CFontInfo& font : m_fonts)
        font.SetFontInfo(settings, section);
}
