// The editor's colours.
//
// Colours are Windows colour references, 0x00BBGGRR. -1 in one of the first slots stands for
// the system's colour, which the getter then returns; the getter ending in Org returns what the
// slot holds.

#pragma once

#include "framework/framework.h"

class TLVN_API CEditorColor {
public:
    CEditorColor();

    COLORREF GetTextColor() const;
    COLORREF GetTextColorOrg() const { return m_text; }
    void SetTextColor(COLORREF color) { m_text = color; }

    COLORREF GetBackColor() const;
    COLORREF GetBackColorOrg() const { return m_back; }
    void SetBackColor(COLORREF color) { m_back = color; }

    // Behind the header block.
    COLORREF GetHeaderBackColor() const { return m_headerBack; }
    void SetHeaderBackColor(COLORREF color) { m_headerBack = color; }

    void ResetColor();

private:
    COLORREF m_text;
    COLORREF m_back;
    COLORREF m_headerBack;
};
