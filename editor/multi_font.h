// The fonts of an editor, one for each character set that the user chose one for.
//
//   CMultiFont fonts;                                    // the default font
//   fonts.SetFont(CFontInfo("SimSun", 10, 134));         // and one for simplified Chinese
//   fonts.GetFont(CT_GB2312).GetFaceName();              // "SimSun"
//   fonts.GetFont(CT_KOI8R).GetFaceName();               // that of the first font, by index
//
// A font's index is the character set of a LOGFONT (CharSetCode2FontCharSet), the number by which
// Windows tells the code pages of fonts apart.

#pragma once

#include "editor/font_info.h"
#include "foundation/code_type.h"

#include <vector>

class TLVN_API CMultiFont {
public:
    // The default font alone.
    CMultiFont();

    int GetCount() const { return static_cast<int>(m_fonts.size()); } // at least 1
    const CFontInfo& GetAt(int i) const { return m_fonts[static_cast<std::size_t>(i)]; }

    // The font of that index, or null.
    const CFontInfo* FindFont(int index) const;
    // The font for text of the code type: the one of its character set, else the first.
    const CFontInfo& GetFont(CodeType codeType) const;

    // Puts the font in place of the one of its index, or among the others.
    void SetFont(const CFontInfo& font);
    // The last font stays.
    void RemoveFont(int index);

    // Reads the fonts of the character sets 0 to 255 whose face is in the section; the default
    // font when there is none.
    void GetMultiFont(const CSettingData* settings, const char* section);
    // Writes all fonts, and removes from the section those that are not there.
    void SetMultiFont(CSettingData* settings, const char* section) const;

    bool operator==(const CMultiFont& other) const { return m_fonts == other.m_fonts; }
    bool operator!=(const CMultiFont& other) const { return !(*this == other); }

private:
    std::vector<CFontInfo> m_fonts; // not empty, by index, no two of one
};
