#include "framework/headless/display_list.h"

#include "framework/headless/region.h"

namespace tlvn::headless {

namespace {
constexpr std::size_t kPoolSlack = 4096;
} // namespace

WStringView DisplayList::TextOf(const DrawOperation& op) const
{
    return WStringView(m_text).substr(Index(op.first), Index(op.count));
}

const int* DisplayList::AdvancesOf(const DrawOperation& op) const
{
    return op.advances < 0 ? nullptr : &m_advances[Index(op.advances)];
}

void DisplayList::Clear()
{
    m_operations.clear();
    m_text.clear();
    m_points.clear();
    m_advances.clear();
    m_usedText = m_usedPoints = 0;
}

void DisplayList::Drop(const RECT& rect)
{
    std::erase_if(m_operations, [&](const DrawOperation& op) {
        if (!Contains(rect, op.Visible()))
            return false;
        if (op.kind == DrawKind::Text)
            m_usedText -= Index(op.count);
        else if (op.kind == DrawKind::Polyline || op.kind == DrawKind::Polygon)
            m_usedPoints -= Index(op.count);
        return true;
    });
    if (m_operations.empty())
        Clear();
    else if (m_text.size() > 2 * m_usedText + kPoolSlack ||
             m_points.size() > 2 * m_usedPoints + kPoolSlack)
        CompactPools();
}

void DisplayList::CompactPools()
{
    DisplayList compact;
    compact.m_operations.reserve(m_operations.size());
    for (const DrawOperation& op : m_operations)
        compact.AddCopy(*this, op);
    // The larger memory is kept: it will be needed again.
    m_operations = compact.m_operations;
    m_text = compact.m_text;
    m_points = compact.m_points;
    m_advances = compact.m_advances;
    m_usedText = compact.m_usedText;
    m_usedPoints = compact.m_usedPoints;
}

void DisplayList::Fill(const RECT& rect, const RECT& clip, COLORREF color)
{
    const RECT visible = Intersect(rect, clip);
    if (IsEmpty(visible))
        return;
    Drop(visible);
    DrawOperation op;
    op.kind = DrawKind::Fill;
    op.bounds = op.clip = visible;
    op.color = color;
    m_operations.push_back(op);
}

void DisplayList::Text(DrawOperation op, const WCHAR* text, int length, const int* advances)
{
    if (length <= 0 || IsEmpty(op.Visible()))
        return;
    op.kind = DrawKind::Text;
    op.first = static_cast<int>(m_text.size());
    op.count = length;
    m_text.append(text, Index(length));
    m_usedText += Index(length);
    op.advances = -1;
    if (advances != nullptr) {
        op.advances = static_cast<int>(m_advances.size());
        m_advances.insert(m_advances.end(), advances, advances + length);
    }
    m_operations.push_back(op);
}

void DisplayList::Points(DrawOperation op, const POINT* points, int count)
{
    if (count <= 0 || IsEmpty(op.Visible()))
        return;
    op.first = static_cast<int>(m_points.size());
    op.count = count;
    m_points.insert(m_points.end(), points, points + count);
    m_usedPoints += Index(count);
    m_operations.push_back(op);
}

void DisplayList::Invert(const RECT& rect, const RECT& clip)
{
    const RECT visible = Intersect(rect, clip);
    if (IsEmpty(visible))
        return;
    // Inverting twice restores: a drag rectangle leaves nothing behind.
    if (!m_operations.empty() && m_operations.back().kind == DrawKind::Invert &&
        Equal(m_operations.back().bounds, visible)) {
        m_operations.pop_back();
        return;
    }
    DrawOperation op;
    op.kind = DrawKind::Invert;
    op.bounds = op.clip = visible;
    m_operations.push_back(op);
}

void DisplayList::AddCopy(const DisplayList& source, DrawOperation op)
{
    switch (op.kind) {
    case DrawKind::Text:
        Text(op, source.m_text.data() + op.first, op.count, source.AdvancesOf(op));
        break;
    case DrawKind::Polyline:
    case DrawKind::Polygon:
        Points(op, source.PointsOf(op), op.count);
        break;
    case DrawKind::Fill:
    case DrawKind::Invert:
        m_operations.push_back(op);
        break;
    }
}

void DisplayList::Scroll(const RECT& source, LONG dx, LONG dy, const RECT& target,
                         const RECT& erased)
{
    DisplayList result;
    result.m_operations.reserve(m_operations.size());
    for (const DrawOperation& op : m_operations) {
        const RECT visible = op.Visible();
        Region rest(visible);
        rest.Subtract(target);
        rest.Subtract(erased);
        for (const RECT& piece : rest.Rects()) {
            DrawOperation left = op;
            left.clip = piece;
            result.AddCopy(*this, left);
        }
        DrawOperation moved = op;
        moved.bounds = Offset(op.bounds, dx, dy);
        moved.clip = Intersect(Offset(Intersect(visible, source), dx, dy), target);
        if (IsEmpty(moved.clip))
            continue;
        if (op.kind == DrawKind::Fill || op.kind == DrawKind::Invert)
            moved.bounds = moved.clip;
        const std::size_t before = result.m_points.size();
        result.AddCopy(*this, moved);
        for (std::size_t i = before; i < result.m_points.size(); ++i) {
            result.m_points[i].x += dx;
            result.m_points[i].y += dy;
        }
    }
    *this = std::move(result);
}

void DisplayList::Compose(const DisplayList& source, const RECT& area, LONG dx, LONG dy,
                          const RECT& clip)
{
    const RECT target = Intersect(Offset(area, dx, dy), clip);
    if (IsEmpty(target))
        return;
    // A list composed over itself would read what it writes.
    const DisplayList copy = &source == this ? source : DisplayList();
    const DisplayList& from = &source == this ? copy : source;
    Drop(target);
    for (DrawOperation op : from.m_operations) {
        op.bounds = Offset(op.bounds, dx, dy);
        op.clip = Intersect(Offset(op.clip, dx, dy), target);
        if (IsEmpty(op.Visible()))
            continue;
        const std::size_t before = m_points.size();
        AddCopy(from, op);
        for (std::size_t i = before; i < m_points.size(); ++i) {
            m_points[i].x += dx;
            m_points[i].y += dy;
        }
    }
}

COLORREF DisplayList::ColorAt(LONG x, LONG y, COLORREF fallback) const
{
    bool inverted = false;
    COLORREF color = fallback;
    for (auto op = m_operations.rbegin(); op != m_operations.rend(); ++op) {
        if (!Contains(op->Visible(), x, y))
            continue;
        if (op->kind == DrawKind::Invert)
            inverted = !inverted;
        if (op->kind == DrawKind::Fill) {
            color = op->color;
            break;
        }
    }
    return inverted ? color ^ 0xFFFFFF : color;
}

} // namespace tlvn::headless
