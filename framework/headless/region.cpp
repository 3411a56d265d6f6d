#include "framework/headless/region.h"

namespace tlvn::headless {

RECT Region::Bounds() const
{
    RECT bounds = {};
    for (const RECT& r : m_rects)
        bounds = Union(bounds, r);
    return bounds;
}

bool Region::Contains(LONG x, LONG y) const
{
    return std::any_of(m_rects.begin(), m_rects.end(),
                       [&](const RECT& r) { return headless::Contains(r, x, y); });
}

void Region::Set(const RECT& rect)
{
    m_rects.clear();
    if (!headless::IsEmpty(rect))
        m_rects.push_back(rect);
}

void Region::Add(const RECT& rect)
{
    if (headless::IsEmpty(rect))
        return;
    for (const RECT& r : m_rects) {
        if (headless::Contains(r, rect))
            return;
    }
    Subtract(rect);
    m_rects.push_back(rect);
}

void Region::Add(const Region& other)
{
    for (const RECT& r : other.m_rects)
        Add(r);
}

void Region::Subtract(const RECT& rect)
{
    const std::size_t count = m_rects.size();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const RECT r = m_rects[i];
        const RECT hole = Intersect(r, rect);
        if (headless::IsEmpty(hole)) {
            m_rects[kept++] = r;
            continue;
        }
        // Up to four pieces remain: above, below, left and right of the hole.
        const RECT pieces[] = {{r.left, r.top, r.right, hole.top},
                               {r.left, hole.bottom, r.right, r.bottom},
                               {r.left, hole.top, hole.left, hole.bottom},
                               {hole.right, hole.top, r.right, hole.bottom}};
        for (const RECT& piece : pieces) {
            if (!headless::IsEmpty(piece))
                m_rects.push_back(piece);
        }
    }
    m_rects.erase(m_rects.begin() + static_cast<std::ptrdiff_t>(kept),
                  m_rects.begin() + static_cast<std::ptrdiff_t>(count));
}

void Region::Subtract(const Region& other)
{
    for (const RECT& r : other.m_rects)
        Subtract(r);
}

void Region::IntersectWith(const RECT& rect)
{
    for (RECT& r : m_rects)
        r = Intersect(r, rect);
    std::erase_if(m_rects, [](const RECT& r) { return headless::IsEmpty(r); });
}

void Region::IntersectWith(const Region& other)
{
    if (other.m_rects.size() == 1)
        return IntersectWith(other.m_rects.front());
    std::vector<RECT> common;
    for (const RECT& a : m_rects) {
        for (const RECT& b : other.m_rects) {
            const RECT r = Intersect(a, b);
            if (!headless::IsEmpty(r))
                common.push_back(r);
        }
    }
    m_rects = std::move(common);
}

void Region::Offset(LONG dx, LONG dy)
{
    for (RECT& r : m_rects)
        r = headless::Offset(r, dx, dy);
}

bool Equal(const Region& a, const Region& b)
{
    Region left = a;
    left.Subtract(b);
    Region right = b;
    right.Subtract(a);
    return left.IsEmpty() && right.IsEmpty();
}

} // namespace tlvn::headless
