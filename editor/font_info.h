// A font as the editor's settings name it.

#pragma once

#include "framework/framework.h"

class TLVN_API CFontInfo {
public:
    // ＭＳ ゴシック, 9 points.
    CFontInfo();
    CFontInfo(const char* faceName, int points);

    // In the multibyte code page.
    const CStringA& GetFaceName() const { return m_faceName; }
    int GetPoints() const { return m_points; }

    // The description to create the font from, for a device of so many dots per inch.
    LOGFONTW MakeLogFont(int dotsPerInch, int charSet) const;

    bool operator==(const CFontInfo& other) const;
    bool operator!=(const CFontInfo& other) const { return !(*this == other); }

private:
    CStringA m_faceName;
    int m_points;
};
