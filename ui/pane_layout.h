// The arithmetic of three panes in a rectangle: where they and the borders between them are.
// Knows no window.
//
//      type 0      type 1      type 2      type 3      type 4      type 5
//     +--+----+   +-------+   +--+----+   +--+----+   +--+--+--+   +-------+
//     |  | 1  |   |   0   |   |0 |    |   |0 | 1  |   |  |  |  |   |   0   |
//     |0 +----+   +--+----+   +--+ 2  |   +--+----+   |0 |1 |2 |   +---1---+
//     |  | 2  |   |1 | 2  |   |1 |    |   |   2   |   |  |  |  |   |   2   |
//     +--+----+   +--+----+   +--+----+   +-------+   +--+--+--+   +-------+
//
// The same rules hold across (vertical borders) and down (horizontal borders): PaneAxis is
// either. An axis has one border in types 0 to 3; in type 4 two across and none down, in type 5
// two down and none across. A border lies where the user put it (its position, in client
// pixels) unless it is folded to one end.
//
// Limits are meant to keep every pane at least one pixel wide. Those of types 4 and 5 speak of
// the sizes that the windows of panes 0 and 2 have *before* the layout: dragging one border then
// moves no other pane than the two beside it.

#pragma once

#include "framework/framework.h"

enum SplitType : int {
    SPLIT_LEFT = 0,   // a column on the left, two rows on the right
    SPLIT_TOP = 1,    // a row at the top, two columns below
    SPLIT_RIGHT = 2,  // two rows on the left, a column on the right
    SPLIT_BOTTOM = 3, // two columns at the top, a row below
    SPLIT_THREE_COLUMNS = 4,
    SPLIT_THREE_ROWS = 5,
};

// State of a vertical border. The pane before it collapses, or takes all the room it may.
enum VFolding : int { VFOLD_MIN = 0, VFOLD_NORMAL = 1, VFOLD_MAX = 2 };
// The same of a horizontal border.
enum HFolding : int { HFOLD_MIN = 0, HFOLD_NORMAL = 1, HFOLD_MAX = 2 };

// What a point is on. A border's first button is the left or upper one.
enum CursorOn : int {
    ON_NOTHING = 0,
    ON_LEFT_BORDER = 1,
    ON_CENTER_BORDER = 2,
    ON_TOP_BORDER = 3,
    ON_MIDDLE_BORDER = 4,
    ON_LEFT_BUTTON1 = 5,
    ON_CENTER_BUTTON1 = 6,
    ON_LEFT_BUTTON2 = 7,
    ON_CENTER_BUTTON2 = 8,
    ON_TOP_BUTTON1 = 9,
    ON_MIDDLE_BUTTON1 = 10,
    ON_TOP_BUTTON2 = 11,
    ON_MIDDLE_BUTTON2 = 12,
};

namespace tlvn {

constexpr int kPaneBorder = 5;      // thickness
constexpr int kPaneButton = 46;     // length
constexpr int kPaneVisibleSize = 2; // a pane narrower than this counts as folded away

// States of a border, of either direction.
enum PaneFold : int { kFoldMin = 0, kFoldNormal = 1, kFoldMax = 2 };

// One direction: the borders that cross it.
struct TLVN_API PaneAxis {
    int fold = kFoldNormal;
    int fold2 = kFoldNormal;
    int position = 100;
    int position2 = 200; // of the second border, where there is one
};

struct TLVN_API PaneState {
    SplitType type = SPLIT_LEFT;
    PaneAxis across; // x: left and centre border
    PaneAxis down;   // y: top and middle border
};

// Sizes of the windows of panes 0 and 2 as they are; 0 for a window that does not exist.
struct PaneWindowSizes {
    SIZE pane0 = {0, 0};
    SIZE pane2 = {0, 0};
};

struct TLVN_API PaneBorder {
    CursorOn kind = ON_NOTHING; // which of the four borders
    CRect rect;

    bool IsVertical() const { return kind == ON_LEFT_BORDER || kind == ON_CENTER_BORDER; }
    // The first (0) or second (1) button, cut to the border.
    CRect Button(int index) const;
    CursorOn ButtonKind(int index) const;
};

// Everything lies in the client area; what has no room in it is empty.
struct TLVN_API PaneLayout {
    CRect panes[3];
    PaneBorder borders[2];

    CursorOn HitTest(POINT point) const;
    bool HasEmptyPane() const;
};

// Clamps the positions of borders that are not folded (if `clamp`; an empty client area clamps
// nothing, so that they survive it) and lays the panes out. In types 4 and 5, window sizes that
// do not fit the client area may leave a pane no room; arranging again with the sizes that came
// out then gives it some. Folding the first border of three columns or rows to the maximum and
// the second to the minimum leaves panes 1 and 2 one pixel each.
TLVN_API PaneLayout ArrangePanes(PaneState& state, SIZE client, const PaneWindowSizes& sizes,
                                 bool clamp);

// Another arrangement of the same panes. Between types 0 to 3 the borders stay; into or out of
// types 4 and 5 all unfold and go to thirds of the client area, in whole pixels. Returns whether
// the new positions are to be clamped.
TLVN_API bool ChangeSplitType(PaneState& state, SplitType type, SIZE client);

// What a click on a button does to the state of its border. The first button folds to the
// minimum and unfolds only from there; the second folds to the maximum, even from the minimum,
// and unfolds only from the maximum. False when the button does nothing: in types 4 and 5 the
// second button of the first border while the second border is at the minimum, the first button
// of the second border while the first border is at the maximum.
TLVN_API bool ClickPaneButton(PaneState& state, CursorOn button);

// The state with borders folded so that `pane` (0 to 2) has all the room there is.
TLVN_API PaneState FoldedAround(PaneState state, int pane);

// Whether all four borders are folded alike.
TLVN_API bool HaveSameFolds(const PaneState& a, const PaneState& b);

TLVN_API bool IsSplitType(int value);
TLVN_API bool IsFold(int value);
// True for the permutations of 0, 1 and 2.
TLVN_API bool IsPaneOrder(int a, int b, int c);

} // namespace tlvn
