#include "editor/color.h"

namespace {

constexpr COLORREF kSystemColor = static_cast<COLORREF>(-1);

} // namespace

CEditorColor::CEditorColor()
{
    ResetColor();
}

COLORREF CEditorColor::GetTextColor() const
{
    return m_text != kSystemColor ? m_text : GetSysColor(COLOR_WINDOWTEXT);
}

COLORREF CEditorColor::GetBackColor() const
{
    return m_back != kSystemColor ? m_back : GetSysColor(COLOR_WINDOW);
}

void CEditorColor::ResetColor()
{
    m_text = kSystemColor;
    m_back = kSystemColor;
    m_headerBack = 0xD0FFD0;
}
