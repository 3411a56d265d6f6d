// Arithmetic on RECT: half-open, empty when either side is not positive.

#pragma once

#include "platform/types.h"

#include <algorithm>
#include <climits>

namespace tlvn::headless {

constexpr RECT kEverything = {-(1 << 30), -(1 << 30), 1 << 30, 1 << 30};

constexpr bool IsEmpty(const RECT& r)
{
    return r.right <= r.left || r.bottom <= r.top;
}
constexpr LONG Width(const RECT& r)
{
    return r.right - r.left;
}
constexpr LONG Height(const RECT& r)
{
    return r.bottom - r.top;
}
constexpr RECT Intersect(const RECT& a, const RECT& b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}
constexpr RECT Union(const RECT& a, const RECT& b)
{
    if (IsEmpty(a))
        return b;
    if (IsEmpty(b))
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}
constexpr RECT Offset(const RECT& r, LONG dx, LONG dy)
{
    return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}
// True when `inner` lies wholly in `outer`.
constexpr bool Contains(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}
constexpr bool Contains(const RECT& r, LONG x, LONG y)
{
    return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}
constexpr bool Equal(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
// Coordinates beyond these are of no use to any window, and sums of them cannot overflow.
constexpr LONG ClampCoordinate(INT64 value)
{
    return static_cast<LONG>(std::clamp<INT64>(value, -(1 << 28), 1 << 28));
}
constexpr RECT ClampRect(const RECT& r)
{
    return {ClampCoordinate(r.left), ClampCoordinate(r.top), ClampCoordinate(r.right),
            ClampCoordinate(r.bottom)};
}

} // namespace tlvn::headless
