// The editor's settings: behaviour and layout.

#pragma once

#include "editor/font_info.h"

class TLVN_API CEditorMetrics {
public:
    CEditorMetrics();

    const CFontInfo& GetFont() const { return m_font; }
    void SetFont(const CFontInfo& font) { m_font = font; }

    // Pixels between lines, never below 0.
    int GetLineSpace() const { return m_lineSpace; }
    void SetLineSpace(int pixels) { m_lineSpace = pixels > 0 ? pixels : 0; }

    // Columns from one tab stop to the next; 0 and less give 4.
    int GetTabColumn() const { return m_tabColumn; }
    void SetTabColumn(int columns) { m_tabColumn = columns > 0 ? columns : 4; }

private:
    CFontInfo m_font;
    int m_lineSpace;
    int m_tabColumn;
};
