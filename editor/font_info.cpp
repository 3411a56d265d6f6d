#include "editor/font_info.h"

#include "persist/setting_data.h"
#include "platform/nls.h"

#include <algorithm>
#include <limits>

namespace {

const char kFaceKey[] = "FontFaceName_";
const char kPointKey[] = "FontPoint_";

constexpr int kDefaultPoints = 9;

CString KeyOf(const char* name, int index)
{
    CString key;
    key.Format("%s%d", name, index);
    return key;
}

int PointsOf(int points)
{
    return points > 0 ? points : kDefaultPoints;
}

} // namespace

CFontInfo::CFontInfo()
    : CFontInfo(tlvn::NarrowText(TW("\xFF2D\xFF33 \x30B4\x30B7\x30C3\x30AF")).c_str(),
                kDefaultPoints)
{}

CFontInfo::CFontInfo(const char* faceName, int points, int index)
    : m_index(index), m_faceName(faceName), m_points(PointsOf(points))
{}

int CFontInfo::GetFontInfo(const CSettingData* settings, const char* section, int index)
{
    m_index = index;
    m_faceName.Empty();
    m_points = kDefaultPoints;
    if (settings == nullptr)
        return 0;
    settings->GetValue(section, KeyOf(kPointKey, index), m_points);
    m_points = PointsOf(m_points);
    return settings->GetValue(section, KeyOf(kFaceKey, index), m_faceName);
}

void CFontInfo::SetFontInfo(CSettingData* settings, const char* section) const
{
    settings->SetValue(section, KeyOf(kFaceKey, m_index), m_faceName);
    settings->SetValue(section, KeyOf(kPointKey, m_index), m_points);
}

void CFontInfo::RemoveFontInfo(CSettingData* settings, const char* section, int index)
{
    settings->RemoveName(section, KeyOf(kFaceKey, index));
    settings->RemoveName(section, KeyOf(kPointKey, index));
}

LOGFONTW CFontInfo::MakeLogFont(int dotsPerInch, int charSet) const
{
    // More is no size of a font, and the product stays an int.
    constexpr int kMostPoints = 10000;
    LOGFONTW font{};
    const INT64 pixels = (INT64{std::min(m_points, kMostPoints)} * dotsPerInch + 36) / 72;
    font.lfHeight = -static_cast<LONG>(std::min<INT64>(pixels, std::numeric_limits<LONG>::max()));
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
    return m_index == other.m_index && m_points == other.m_points && m_faceName == other.m_faceName;
}
