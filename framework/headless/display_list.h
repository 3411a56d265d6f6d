// What was drawn on a surface (a window or a bitmap), as a list of operations.
//
// Later operations lie over earlier ones; an opaque one drops the operations it covers wholly,
// so that a surface that is painted again and again keeps a bounded list. Texts, points and
// character advances are kept in pools that operations refer to; a repaint of the same content
// reuses their memory. Coordinates are pixels from the surface's top left corner.

#pragma once

#include "framework/headless/cell_metrics.h"
#include "framework/headless/rect.h"
#include "platform/nls.h"

#include <vector>

namespace tlvn::headless {

enum class DrawKind : BYTE {
    Fill,     // bounds in `color`, opaque
    Text,     // at bounds.left, bounds.top in `color`; its background is a Fill of its own
    Polyline, // points in `color`, `penWidth`
    Polygon,  // points filled in `color`; the outline is a Polyline of its own
    Invert,   // colours of bounds inverted
};

struct DrawOperation {
    DrawKind kind = DrawKind::Fill;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    RECT bounds = {}; // not clipped
    RECT clip = {};   // never empty, inside the surface
    COLORREF color = 0;
    int penWidth = 1;
    CellFont font;
    int first = 0; // into the pool of texts or points
    int count = 0;
    int advances = -1; // into the pool of advances (count of them), -1: the font's own

    RECT Visible() const { return Intersect(bounds, clip); }
};

class TLVN_API DisplayList {
public:
    const std::vector<DrawOperation>& Operations() const { return m_operations; }
    WStringView TextOf(const DrawOperation& op) const;
    const POINT* PointsOf(const DrawOperation& op) const { return &m_points[Index(op.first)]; }
    // Null when the characters stand at the font's own advances.
    const int* AdvancesOf(const DrawOperation& op) const;

    void Clear();
    // `clip` limits every operation; nothing is recorded when nothing of it is visible.
    void Fill(const RECT& rect, const RECT& clip, COLORREF color);
    // `op` carries kind, attributes, bounds and clip.
    void Text(DrawOperation op, const WCHAR* text, int length, const int* advances);
    void Points(DrawOperation op, const POINT* points, int count);
    void Invert(const RECT& rect, const RECT& clip);
    // Drops what lies wholly in `rect`.
    void Drop(const RECT& rect);
    // Copies what is drawn in `source` to `target`, a part of `source` moved by (dx, dy). What
    // `target` and `erased` held is lost.
    void Scroll(const RECT& source, LONG dx, LONG dy, const RECT& target, const RECT& erased);
    // Draws the part `area` of `source`, moved by (dx, dy), within `clip` over this list.
    void Compose(const DisplayList& source, const RECT& area, LONG dx, LONG dy, const RECT& clip);

    // The colour that fills, lines excepted, leave at a pixel; `fallback` where there is none.
    COLORREF ColorAt(LONG x, LONG y, COLORREF fallback) const;

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    void AddCopy(const DisplayList& source, DrawOperation op);
    void CompactPools();

    std::vector<DrawOperation> m_operations;
    WString m_text;
    std::vector<POINT> m_points;
    std::vector<int> m_advances;
    // What the operations still refer to, to know when the pools are mostly waste.
    std::size_t m_usedText = 0;
    std::size_t m_usedPoints = 0;
};

} // namespace tlvn::headless
