#include "framework/geometry.h"
#include "tests/support/test.h"

namespace {

// The rows: apart, touching, overlapping, one inside the other, one empty.
TEST(Rect, IntersectionAndUnion)
{
    const struct {
        CRect a, b, common, around;
    } cases[] = {
        {{0, 0, 2, 2}, {5, 5, 6, 6}, {0, 0, 0, 0}, {0, 0, 6, 6}},
        {{0, 0, 2, 2}, {2, 0, 4, 2}, {0, 0, 0, 0}, {0, 0, 4, 2}},
        {{0, 0, 4, 4}, {2, 1, 6, 3}, {2, 1, 4, 3}, {0, 0, 6, 4}},
        {{0, 0, 9, 9}, {1, 2, 3, 4}, {1, 2, 3, 4}, {0, 0, 9, 9}},
        {{3, 3, 3, 8}, {1, 1, 2, 2}, {0, 0, 0, 0}, {1, 1, 2, 2}},
        {{3, 3, 3, 3}, {4, 4, 4, 4}, {0, 0, 0, 0}, {0, 0, 0, 0}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.a & c.b, c.common);
        EXPECT_EQ(c.a | c.b, c.around);
        CRect result(7, 7, 8, 8);
        EXPECT_EQ(result.IntersectRect(c.a, c.b), !c.common.IsRectEmpty());
        EXPECT_EQ(result.UnionRect(c.a, c.b), !c.around.IsRectEmpty());
    }
}

TEST(Rect, EdgesAndMoves)
{
    CRect rect(1, 2, 11, 22);
    EXPECT_TRUE(rect.PtInRect(CPoint(1, 2)));
    EXPECT_FALSE(rect.PtInRect(CPoint(11, 2)));
    EXPECT_FALSE(rect.PtInRect(CPoint(1, 22)));
    EXPECT_EQ(rect.Size(), CSize(10, 20));
    rect.InflateRect(1, 2);
    EXPECT_EQ(rect, CRect(0, 0, 12, 24));
    rect.DeflateRect(1, 2, 3, 4);
    EXPECT_EQ(rect, CRect(1, 2, 9, 20));
    rect.MoveToXY(10, 10);
    EXPECT_EQ(rect, CRect(10, 10, 18, 28));
    rect -= CPoint(10, 10);
    EXPECT_EQ(rect + CPoint(1, 1), CRect(1, 1, 9, 19));
    EXPECT_EQ(rect.CenterPoint(), CPoint(4, 9));
    CRect turned(5, 6, 1, 2);
    EXPECT_TRUE(turned.IsRectEmpty());
    turned.NormalizeRect();
    EXPECT_EQ(turned, CRect(1, 2, 5, 6));
    EXPECT_EQ(CRect(CPoint(1, 2), CSize(3, 4)), CRect(CPoint(1, 2), CPoint(4, 6)));
}

} // namespace
