// One font of the editor's settings: the face and size for one Windows character set.

#pragma once

#include "framework/framework.h"

class CSettingData;

class TLVN_API CFontInfo {
public:
    // ＭＳ ゴシック, 9 points, for the Japanese character set (128).
    CFontInfo();
    // `index` is the character set of a LOGFONT that the font is for. A size of 0 or less is 9.
    CFontInfo(const char* faceName, int points, int index = 128);

    int GetIndex() const { return m_index; }
    // In the multibyte code page; empty leaves the choice of a face to the system.
    const CStringA& GetFaceName() const { return m_faceName; }
    int GetPoints() const { return m_points; }

    // Reads "FontFaceName_" and "FontPoint_" with the index appended. A missing face is an empty
    // name, a missing size or one of 0 or less is 9. Returns 1 when there is a face, else 0. Null
    // settings hold nothing.
    int GetFontInfo(const CSettingData* settings, const char* section, int index);
    // Writes both under the font's index.
    void SetFontInfo(CSettingData* settings, const char* section) const;
    static void RemoveFontInfo(CSettingData* settings, const char* section, int index);

    // The description to create the font from, for a device of so many dots per inch.
    LOGFONTW MakeLogFont(int dotsPerInch, int charSet) const;

    bool operator==(const CFontInfo& other) const;
    bool operator!=(const CFontInfo& other) const { return !(*this == other); }

private:
    int m_index;
    CStringA m_faceName;
    int m_points;
};
