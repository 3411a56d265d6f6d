#include "tests/support/test.h"
#include "ui/pane_layout.h"

namespace {

using tlvn::ArrangePanes;
using tlvn::PaneAxis;
using tlvn::PaneLayout;
using tlvn::PaneState;

PaneState MakeState(int type, const PaneAxis& across = {}, const PaneAxis& down = {})
{
    return {static_cast<SplitType>(type), across, down};
}

// Each pane has its place in each type, with borders at 100 and 200.
TEST(PaneLayout, Types)
{
    const CRect expected[6][3] = {{{0, 0, 100, 400}, {105, 0, 600, 100}, {105, 105, 600, 400}},
                                  {{0, 0, 600, 100}, {0, 105, 100, 400}, {105, 105, 600, 400}},
                                  {{0, 0, 100, 100}, {0, 105, 100, 400}, {105, 0, 600, 400}},
                                  {{0, 0, 100, 100}, {105, 0, 600, 100}, {0, 105, 600, 400}},
                                  {{0, 0, 100, 400}, {105, 0, 200, 400}, {205, 0, 600, 400}},
                                  {{0, 0, 600, 100}, {0, 105, 600, 200}, {0, 205, 600, 400}}};
    for (int type = 0; type <= 5; ++type) {
        PaneState state = MakeState(type);
        const PaneLayout layout = ArrangePanes(state, {600, 400}, {}, true);
        for (int pane = 0; pane < 3; ++pane)
            EXPECT_EQ(layout.panes[pane], expected[type][pane]) << type << ", " << pane;
    }
}

// Of a length of 600, with windows of 100 and 300 in panes 0 and 2: folds and positions -> where
// pane 0 ends, pane 1 begins and ends, and the positions then.
TEST(PaneLayout, FoldsAndLimits)
{
    const struct {
        bool two; // borders
        PaneAxis axis;
        int end0, begin1, end1, position, position2;
    } cases[] = {
        {true, {1, 1, 150, 250}, 150, 155, 250, 150, 250},
        {true, {0, 1, 150, 250}, 1, 6, 250, 150, 250},
        {true, {2, 1, 150, 250}, 244, 249, 250, 150, 250},
        {true, {1, 2, 150, 250}, 150, 155, 594, 150, 250},
        {true, {0, 2, 150, 250}, 1, 6, 594, 150, 250},
        {true, {2, 0, 150, 250}, 588, 593, 594, 150, 250},
        {true, {1, 2, INT_MAX, 250}, 289, 294, 594, 289, 250},
        {true, {1, 0, INT_MAX, 250}, 588, 593, 594, 588, 250},
        {true, {1, 1, INT_MIN, INT_MIN}, 1, 6, 106, 1, 106},
        {true, {1, 1, INT_MAX, 200}, 289, 294, 294, 289, 200},
        {true, {2, 1, 150, INT_MIN}, 1, 6, 7, 150, 7},
        {false, {0, 0, 150, INT_MAX}, 1, 6, 600, 150, INT_MAX},
        {false, {2, 0, 150, INT_MIN}, 594, 599, 600, 150, INT_MIN},
        {false, {1, 1, INT_MAX, 250}, 594, 599, 600, 594, 250},
    };
    for (const auto& c : cases) {
        for (const bool turned : {false, true}) {
            PaneState state = MakeState(!c.two ? 0 : turned ? 5 : 4);
            PaneAxis& axis = turned ? state.down : state.across;
            axis = c.axis;
            const PaneLayout layout =
                ArrangePanes(state, {600, 600}, {{100, 100}, {300, 300}}, true);
            // In type 0 what lies along the second axis are panes 1 and 2.
            const CRect a = layout.panes[turned && !c.two ? 1 : 0];
            const CRect b = layout.panes[turned && !c.two ? 2 : 1];
            const std::vector<int> got = {turned ? a.bottom : a.right, turned ? b.top : b.left,
                                          turned ? b.bottom : b.right, axis.position,
                                          axis.position2};
            EXPECT_EQ(got, std::vector<int>({c.end0, c.begin1, c.end1, c.position, c.position2}))
                << &c - cases << (turned ? " down" : " across");
        }
    }
}

// Limits go by the sizes that the windows have, old or not; arranged again with the sizes that
// came out, every pane has room. An empty client area leaves the positions alone.
TEST(PaneLayout, OldSizesAndEmptyAreas)
{
    const struct {
        int position, position2, size0, size2, width; // before
        int first, first2;                            // positions
        int again, again2;
    } cases[] = {
        {100, 50, 0, 0, 600, 100, 50, 99, 106},  // the second border before the first
        {100, 200, 100, 395, 50, 1, 106, 1, 44}, // after the area shrank
    };
    for (const auto& c : cases) {
        PaneState state = MakeState(4, {1, 1, c.position, c.position2});
        PaneLayout layout = ArrangePanes(state, {c.width, 300}, {{c.size0, 0}, {c.size2, 0}}, true);
        EXPECT_EQ(state.across.position, c.first);
        EXPECT_EQ(state.across.position2, c.first2);
        EXPECT_TRUE(layout.HasEmptyPane());
        const tlvn::PaneWindowSizes sizes = {layout.panes[0].Size(), layout.panes[2].Size()};
        layout = ArrangePanes(state, {c.width, 300}, sizes, true);
        EXPECT_EQ(state.across.position, c.again);
        EXPECT_EQ(state.across.position2, c.again2);
        EXPECT_FALSE(layout.HasEmptyPane());
    }
    PaneState state = MakeState(4);
    ArrangePanes(state, {-5, 9}, {}, true);
    EXPECT_EQ(state.across.position, 100);
    tlvn::ChangeSplitType(state, SPLIT_LEFT, {0, 9});
    EXPECT_EQ(state.down.position2, 200) << "there are no thirds of nothing";
}

// Kinds along a border, by distance from its middle.
TEST(PaneLayout, HitsBordersAndButtons)
{
    const auto kindAt = [](int type, int x, int y) {
        PaneState state = MakeState(type);
        return static_cast<int>(ArrangePanes(state, {600, 400}, {}, true).HitTest({x, y}));
    };
    const struct {
        int type, x, y, kind;
    } cases[] = {
        {0, 99, 200, 0},   {0, 100, 200, 7},  {0, 104, 245, 7}, {0, 105, 245, 0}, {0, 102, 246, 1},
        {0, 102, 199, 5},  {0, 102, 154, 5},  {0, 102, 153, 1}, {0, 102, 399, 1}, {0, 102, 400, 0},
        {0, 351, 102, 9},  {0, 352, 102, 11}, {1, 102, 102, 3}, {1, 102, 105, 1}, {2, 95, 102, 11},
        {2, 105, 102, 0},  {3, 102, 105, 0},  {4, 202, 199, 6}, {4, 202, 200, 8}, {4, 202, 0, 2},
        {5, 299, 202, 10}, {5, 300, 202, 12}, {5, 0, 202, 4},
    };
    for (const auto& c : cases)
        EXPECT_EQ(kindAt(c.type, c.x, c.y), c.kind) << c.type << ": " << c.x << "," << c.y;
}

// Button, states before -> states after; each pair of states is (first, second border).
TEST(PaneLayout, ButtonsFoldAndUnfold)
{
    const struct {
        int type, button, fold, fold2, newFold, newFold2;
    } cases[] = {
        {0, 5, 0, 1, 1, 1}, {0, 5, 1, 1, 0, 1}, {0, 5, 2, 1, 0, 1}, {0, 7, 0, 1, 2, 1},
        {0, 7, 1, 1, 2, 1}, {0, 7, 2, 1, 1, 1}, {0, 7, 0, 0, 2, 0}, {4, 7, 1, 0, 1, 0},
        {4, 7, 1, 2, 2, 2}, {4, 6, 1, 0, 1, 1}, {4, 6, 0, 1, 0, 0}, {4, 6, 0, 2, 0, 0},
        {4, 6, 2, 1, 2, 1}, {4, 8, 1, 0, 1, 2}, {4, 8, 2, 1, 2, 2}, {4, 8, 1, 2, 1, 1},
    };
    for (const auto& c : cases) {
        // The second time turned by a quarter: down, in type 5.
        for (const bool turned : {false, true}) {
            PaneState state = MakeState(c.type == 4 && turned ? 5 : c.type);
            PaneAxis& axis = turned ? state.down : state.across;
            axis = {c.fold, c.fold2};
            const auto button = static_cast<CursorOn>(c.button + (turned ? 4 : 0));
            EXPECT_EQ(tlvn::ClickPaneButton(state, button),
                      c.fold != c.newFold || c.fold2 != c.newFold2);
            EXPECT_EQ(axis.fold, c.newFold) << button << c.fold << c.fold2;
            EXPECT_EQ(axis.fold2, c.newFold2) << button << c.fold << c.fold2;
        }
    }
}

// From type to type: whether borders stay, with every other pair of kinds.
TEST(PaneLayout, ChangesOfType)
{
    const auto numbers = [](const PaneAxis& a) {
        return std::vector<int>{a.fold, a.fold2, a.position, a.position2};
    };
    using Numbers = std::vector<int>;
    for (int i = 0; i < 36; ++i) {
        const int from = i / 6, to = i % 6;
        PaneState state = MakeState(from, {0, 2, 11, 22}, {2, 0, 33, 44});
        const bool kept = from == to || (from <= 3 && to <= 3);
        EXPECT_EQ(tlvn::ChangeSplitType(state, static_cast<SplitType>(to), {100, 50}), kept);
        EXPECT_EQ(numbers(state.across), kept ? Numbers({0, 2, 11, 22}) : Numbers({1, 1, 33, 66}));
        EXPECT_EQ(numbers(state.down), kept ? Numbers({2, 0, 33, 44}) : Numbers({1, 1, 16, 33}));
    }
}

} // namespace
