#include "editor/font_info.h"

#include "platform/nls.h"

#include <algorithm>

CFontInfo::CFontInfo()
    : m_faceName(tlvn::NarrowText(TW("\xFF2D\xFF33 \x30B4\x30B7\x30C3\x30AF")).c_str()), m_points(9)
{}

CFontInfo::CFontInfo(const char* faceName, int points) : m_faceName(faceName), m_points(points) {}

LOGFONTW CFontInfo::MakeLogFont(int dotsPerInch, int charSet) const
{
    LOGFONTW font{};
    font.lfHeight = -((m_points * dotsPerInch + 36) / 72);
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = static_cast<BYTE>(charSet);
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    const tlvn::WString face = tlvn::WidenText(m_faceName.GetString());
    const std::size_t length = std::min<std::size_t>(face.size(), LF_FACESIZE - 1);
    std::copy_n(face.data(), length, font.lfFaceName);
    return font;
}

bool CFontInfo::operator==(const CFontInfo& other) const
{
    return m_points == other.m_points && m_faceName == other.m_faceName;
}
