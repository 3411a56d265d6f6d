// A set of pixels, kept as rectangles that do not overlap.
//
// Meant for the handful of rectangles that invalidation and clipping make; every operation is
// linear in their number.

#pragma once

#include "framework/headless/rect.h"

#include <vector>

namespace tlvn::headless {

class Region {
public:
    Region() = default;
    explicit Region(const RECT& rect) { Add(rect); }

    bool IsEmpty() const { return m_rects.empty(); }
    const std::vector<RECT>& Rects() const { return m_rects; }
    RECT Bounds() const; // all zero when empty
    bool Contains(LONG x, LONG y) const;

    void Clear() { m_rects.clear(); }
    void Set(const RECT& rect);
    void Add(const RECT& rect);
    void Add(const Region& other);
    void Subtract(const RECT& rect);
    void Subtract(const Region& other);
    void IntersectWith(const RECT& rect);
    void IntersectWith(const Region& other);
    void Offset(LONG dx, LONG dy);

private:
    std::vector<RECT> m_rects;
};

// True when both hold the same pixels.
bool Equal(const Region& a, const Region& b);

} // namespace tlvn::headless
