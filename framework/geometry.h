// CPoint, CSize and CRect: POINT, SIZE and RECT with operations.
//
// A rectangle holds its left and top edges and not its right and bottom ones; it is normal when
// left <= right and top <= bottom.

#pragma once

#include "platform/types.h"

#include <algorithm>

class CSize : public SIZE {
public:
    constexpr CSize() noexcept : SIZE{0, 0} {}
    // --- widths and heights, added and compared one by one ---
    constexpr CSize(int width, int height) noexcept : SIZE{width, height} {}
    constexpr CSize(const SIZE& size) noexcept : SIZE(size) {}

    constexpr bool operator==(const CSize& b) const noexcept
    {
        return *this == static_cast<const SIZE&>(b);
    }
    constexpr bool operator==(const SIZE& b) const noexcept { return cx == b.cx && cy == b.cy; }
    constexpr CSize operator+(const SIZE& b) const noexcept { return {cx + b.cx, cy + b.cy}; }
    constexpr CSize operator-(const SIZE& b) const noexcept { return {cx - b.cx, cy - b.cy}; }
    constexpr CSize operator-() const noexcept { return {-cx, -cy}; }
    constexpr CSize& operator+=(const SIZE& b) noexcept { return *this = *this + b; }
    constexpr CSize& operator-=(const SIZE& b) noexcept { return *this = *this - b; }
    constexpr void SetSize(int width, int height) noexcept { *this = CSize(width, height); }
};

class CPoint : public POINT {
public:
    constexpr CPoint() noexcept : POINT{0, 0} {}
    // --- coordinates, added and compared one by one ---
    constexpr CPoint(int px, int py) noexcept : POINT{px, py} {}
    constexpr CPoint(const POINT& point) noexcept : POINT(point) {}
    // The coordinates of a mouse message: signed 16-bit x below, y above.
    constexpr explicit CPoint(LPARAM position) noexcept
        : POINT{static_cast<SHORT>(position & 0xFFFF), static_cast<SHORT>(position >> 16 & 0xFFFF)}
    {}

    constexpr bool operator==(const CPoint& b) const noexcept
    {
        return *this == static_cast<const POINT&>(b);
    }
    constexpr bool operator==(const POINT& b) const noexcept { return x == b.x && y == b.y; }
    constexpr CPoint operator+(const SIZE& b) const noexcept { return {x + b.cx, y + b.cy}; }
    constexpr CPoint operator-(const SIZE& b) const noexcept { return {x - b.cx, y - b.cy}; }
    constexpr CPoint operator+(const POINT& b) const noexcept { return {x + b.x, y + b.y}; }
    constexpr CSize operator-(const POINT& b) const noexcept { return {x - b.x, y - b.y}; }
    constexpr CPoint operator-() const noexcept { return {-x, -y}; }
    constexpr CPoint& operator+=(const SIZE& b) noexcept { return *this = *this + b; }
    constexpr CPoint& operator-=(const SIZE& b) noexcept { return *this = *this - b; }
    constexpr CPoint& operator+=(const POINT& b) noexcept { return *this = *this + b; }
    constexpr CPoint& operator-=(const POINT& b) noexcept { return *this = {x - b.x, y - b.y}; }
    constexpr void Offset(int dx, int dy) noexcept { *this = {x + dx, y + dy}; }
    constexpr void Offset(const POINT& by) noexcept { Offset(by.x, by.y); }
    constexpr void SetPoint(int px, int py) noexcept { *this = {px, py}; }
};

class CRect : public RECT {
public:
    constexpr CRect() noexcept : RECT{0, 0, 0, 0} {}
    // --- making rectangles of edges, or of a corner and a size ---
    constexpr CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
    constexpr CRect(const RECT& rect) noexcept : RECT(rect) {}
    constexpr explicit CRect(const RECT* rect) noexcept : RECT(*rect) {}
    constexpr CRect(const POINT& topLeft, const SIZE& size) noexcept
        : RECT{topLeft.x, topLeft.y, topLeft.x + size.cx, topLeft.y + size.cy}
    {}
    constexpr CRect(const POINT& topLeft, const POINT& bottomRight) noexcept
        : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y}
    {}

    // --- measures and corners ---
    constexpr int Width() const noexcept { return right - left; }
    constexpr int Height() const noexcept { return bottom - top; }
    constexpr CSize Size() const noexcept { return {Width(), Height()}; }
    constexpr CPoint TopLeft() const noexcept { return {left, top}; }
    constexpr CPoint BottomRight() const noexcept { return {right, bottom}; }
    constexpr CPoint CenterPoint() const noexcept
    {
        return {(left + right) / 2, (top + bottom) / 2};
    }
    // The rectangle itself, for functions of the Windows API.
    constexpr operator RECT*() noexcept { return this; }
    constexpr operator const RECT*() const noexcept { return this; }

    // Without width or height, or not normal.
    constexpr BOOL IsRectEmpty() const noexcept { return left >= right || top >= bottom; }
    constexpr BOOL IsRectNull() const noexcept { return *this == RECT{0, 0, 0, 0}; }
    constexpr BOOL PtInRect(const POINT& p) const noexcept
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }

    constexpr void SetRect(int l, int t, int r, int b) noexcept { *this = {l, t, r, b}; }
    constexpr void SetRectEmpty() noexcept { *this = CRect(); }
    constexpr void CopyRect(const RECT* source) noexcept { *this = CRect(source); }
    // TRUE when all four edges are equal.
    constexpr BOOL EqualRect(const RECT* b) const noexcept { return *this == *b; }

    // Moves the edges outwards, or inwards for DeflateRect.
    constexpr void InflateRect(int x, int y) noexcept { InflateRect(x, y, x, y); }
    constexpr void InflateRect(const SIZE& by) noexcept { InflateRect(by.cx, by.cy); }
    constexpr void InflateRect(int l, int t, int r, int b) noexcept
    {
        *this = {left - l, top - t, right + r, bottom + b};
    }
    constexpr void DeflateRect(int x, int y) noexcept { InflateRect(-x, -y); }
    constexpr void DeflateRect(const SIZE& by) noexcept { InflateRect(-by.cx, -by.cy); }
    constexpr void DeflateRect(int l, int t, int r, int b) noexcept { InflateRect(-l, -t, -r, -b); }

    constexpr void OffsetRect(int x, int y) noexcept
    {
        *this = {left + x, top + y, right + x, bottom + y};
    }
    constexpr void OffsetRect(const POINT& by) noexcept { OffsetRect(by.x, by.y); }
    constexpr void OffsetRect(const SIZE& by) noexcept { OffsetRect(by.cx, by.cy); }
    constexpr void MoveToX(int x) noexcept { OffsetRect(x - left, 0); }
    constexpr void MoveToY(int y) noexcept { OffsetRect(0, y - top); }
    constexpr void MoveToXY(int x, int y) noexcept { OffsetRect(x - left, y - top); }
    constexpr void MoveToXY(const POINT& p) noexcept { MoveToXY(p.x, p.y); }
    // Swaps edges so that the rectangle is normal.
    constexpr void NormalizeRect() noexcept
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }

    // Becomes the part two rectangles have in common, or the smallest one around both (an
    // empty one is left out). FALSE when the result is empty; it is then all zero.
    constexpr BOOL IntersectRect(const RECT* a, const RECT* b) noexcept
    {
        *this = {std::max(a->left, b->left), std::max(a->top, b->top), std::min(a->right, b->right),
                 std::min(a->bottom, b->bottom)};
        if (IsRectEmpty())
            SetRectEmpty();
        return !IsRectEmpty();
    }
    constexpr BOOL UnionRect(const RECT* a, const RECT* b) noexcept
    {
        const CRect first(a);
        const CRect second(b);
        if (first.IsRectEmpty() || second.IsRectEmpty())
            *this = first.IsRectEmpty() ? second : first;
        else
            *this = {std::min(a->left, b->left), std::min(a->top, b->top),
                     std::max(a->right, b->right), std::max(a->bottom, b->bottom)};
        if (IsRectEmpty())
            SetRectEmpty();
        return !IsRectEmpty();
    }

    constexpr bool operator==(const CRect& b) const noexcept
    {
        return *this == static_cast<const RECT&>(b);
    }
    constexpr bool operator==(const RECT& b) const noexcept
    {
        return left == b.left && top == b.top && right == b.right && bottom == b.bottom;
    }
    constexpr void operator+=(const POINT& by) noexcept { OffsetRect(by); }
    constexpr void operator+=(const SIZE& by) noexcept { OffsetRect(by); }
    constexpr void operator-=(const POINT& by) noexcept { OffsetRect(-by.x, -by.y); }
    constexpr void operator-=(const SIZE& by) noexcept { OffsetRect(-by.cx, -by.cy); }
    constexpr void operator&=(const RECT& b) noexcept { IntersectRect(this, &b); }
    constexpr void operator|=(const RECT& b) noexcept { UnionRect(this, &b); }
    constexpr CRect operator+(const POINT& by) const noexcept
    {
        return CRect(*this).Moved(by.x, by.y);
    }
    constexpr CRect operator-(const POINT& by) const noexcept
    {
        return CRect(*this).Moved(-by.x, -by.y);
    }
    constexpr CRect operator&(const RECT& b) const noexcept
    {
        CRect result;
        result.IntersectRect(this, &b);
        return result;
    }
    constexpr CRect operator|(const RECT& b) const noexcept
    {
        CRect result;
        result.UnionRect(this, &b);
        return result;
    }

private:
    constexpr CRect Moved(int x, int y) const noexcept
    {
        return {left + x, top + y, right + x, bottom + y};
    }
};
