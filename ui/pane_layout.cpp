#include "ui/pane_layout.h"

#include <algorithm>
#include <iterator>

namespace tlvn {
namespace {

// No window reaches as far, and sums of a few such numbers do not overflow.
constexpr int kFar = 1 << 28;

// How many borders cross an axis, and one direction of the client area.
struct Extent {
    int borders;
    int length;
    int size0, size2; // of the windows of panes 0 and 2
};

int BordersAcross(SplitType type)
{
    return type == SPLIT_THREE_COLUMNS ? 2 : type == SPLIT_THREE_ROWS ? 0 : 1;
}

int BordersDown(SplitType type)
{
    return type == SPLIT_THREE_ROWS ? 2 : type == SPLIT_THREE_COLUMNS ? 0 : 1;
}

Extent ExtentAcross(SplitType type, SIZE client, const PaneWindowSizes& sizes)
{
    return {BordersAcross(type), client.cx, sizes.pane0.cx, sizes.pane2.cx};
}

Extent ExtentDown(SplitType type, SIZE client, const PaneWindowSizes& sizes)
{
    return {BordersDown(type), client.cy, sizes.pane0.cy, sizes.pane2.cy};
}

struct Limits {
    int least, most;
};

Limits LimitsOfFirst(const PaneAxis& axis, const Extent& extent)
{
    if (extent.borders == 0)
        return {0, 0};
    if (extent.borders == 1)
        return {1, extent.length - 6};
    return {1, axis.fold2 != kFoldMin ? extent.length - extent.size2 - 11 : extent.length - 12};
}

Limits LimitsOfSecond(const PaneAxis& axis, const Extent& extent)
{
    return {axis.fold == kFoldMax ? 7 : extent.size0 + 6, extent.length - 6};
}

// The minimum wins.
int Clamp(int position, const Limits& limits)
{
    return std::max(std::min(position, limits.most), limits.least);
}

int Effective(int fold, int position, const Limits& limits)
{
    return fold == kFoldMin   ? limits.least
           : fold == kFoldMax ? limits.most
                              : std::clamp(position, -kFar, kFar);
}

void ClampAxis(PaneAxis& axis, const Extent& extent)
{
    if (extent.borders >= 1 && axis.fold == kFoldNormal)
        axis.position = Clamp(axis.position, LimitsOfFirst(axis, extent));
    if (extent.borders == 2 && axis.fold2 == kFoldNormal)
        axis.position2 = Clamp(axis.position2, LimitsOfSecond(axis, extent));
}

// Sizes of what lies before the first border and, where there are two, between them. The rest
// lies behind the last one.
struct Cut {
    int first, second;
};

Cut CutAxis(const PaneAxis& axis, const Extent& extent)
{
    const int first = Effective(axis.fold, axis.position, LimitsOfFirst(axis, extent));
    if (extent.borders < 2)
        return {first, 0};
    if (axis.fold2 == kFoldMin)
        return {first, 1};
    const int second = Effective(axis.fold2, axis.position2, LimitsOfSecond(axis, extent));
    const int before = axis.fold == kFoldMax ? second - 6 : first;
    return {before, second - (before + kPaneBorder)};
}

// The rectangle as far as it lies in the client area.
CRect Within(SIZE client, int x, int y, int width, int height)
{
    const int left = std::clamp<int>(x, 0, client.cx);
    const int top = std::clamp<int>(y, 0, client.cy);
    return CRect(left, top, std::clamp<int>(x + width, left, client.cx),
                 std::clamp<int>(y + height, top, client.cy));
}

PaneLayout Place(SplitType type, SIZE client, const Cut& across, const Cut& down)
{
    constexpr int B = kPaneBorder;
    const int w = client.cx;
    const int h = client.cy;
    const int l = across.first;
    const int t = down.first;
    const auto at = [&](int x, int y, int width, int height) {
        return Within(client, x, y, width, height);
    };
    switch (type) {
    case SPLIT_LEFT:
        return {{at(0, 0, l, h), at(l + B, 0, w - (l + B), t),
                 at(l + B, t + B, w - (l + B), h - (t + B))},
                {{ON_LEFT_BORDER, at(l, 0, B, h)}, {ON_TOP_BORDER, at(l + B, t, w - (l + B), B)}}};
    case SPLIT_TOP:
        return {{at(0, 0, w, t), at(0, t + B, l, h - (t + B)),
                 at(l + B, t + B, w - (l + B), h - (t + B))},
                {{ON_LEFT_BORDER, at(l, t + B, B, h - (t + B))}, {ON_TOP_BORDER, at(0, t, w, B)}}};
    case SPLIT_RIGHT:
        return {{at(0, 0, l, t), at(0, t + B, l, h - (t + B)), at(l + B, 0, w - (l + B), h)},
                {{ON_LEFT_BORDER, at(l, 0, B, h)}, {ON_TOP_BORDER, at(0, t, l, B)}}};
    case SPLIT_BOTTOM:
        return {{at(0, 0, l, t), at(l + B, 0, w - (l + B), t), at(0, t + B, w, h - (t + B))},
                {{ON_LEFT_BORDER, at(l, 0, B, t)}, {ON_TOP_BORDER, at(0, t, w, B)}}};
    case SPLIT_THREE_COLUMNS: {
        const int c = l + B + across.second;
        return {{at(0, 0, l, h), at(l + B, 0, across.second, h), at(c + B, 0, w - (c + B), h)},
                {{ON_LEFT_BORDER, at(l, 0, B, h)}, {ON_CENTER_BORDER, at(c, 0, B, h)}}};
    }
    case SPLIT_THREE_ROWS: {
        const int m = t + B + down.second;
        return {{at(0, 0, w, t), at(0, t + B, w, down.second), at(0, m + B, w, h - (m + B))},
                {{ON_TOP_BORDER, at(0, t, w, B)}, {ON_MIDDLE_BORDER, at(0, m, w, B)}}};
    }
    }
    return {};
}

bool HasTwoBorders(SplitType type)
{
    return type == SPLIT_THREE_COLUMNS || type == SPLIT_THREE_ROWS;
}

Cut NotNegative(const Cut& cut)
{
    return {std::max(cut.first, 0), std::max(cut.second, 0)};
}

SIZE Limited(SIZE size)
{
    return {std::clamp<LONG>(size.cx, 0, kFar), std::clamp<LONG>(size.cy, 0, kFar)};
}

} // namespace

CRect PaneBorder::Button(int index) const
{
    CRect button = rect;
    const LONG middle = IsVertical() ? (rect.top + rect.bottom) / 2 : (rect.left + rect.right) / 2;
    LONG& begin = IsVertical() ? button.top : button.left;
    LONG& end = IsVertical() ? button.bottom : button.right;
    if (index == 0) {
        end = middle;
        begin = std::max<LONG>(begin, middle - kPaneButton);
    } else {
        begin = middle;
        end = std::min<LONG>(end, middle + kPaneButton);
    }
    return button;
}

CursorOn PaneBorder::ButtonKind(int index) const
{
    switch (kind) {
    case ON_LEFT_BORDER:
        return index == 0 ? ON_LEFT_BUTTON1 : ON_LEFT_BUTTON2;
    case ON_CENTER_BORDER:
        return index == 0 ? ON_CENTER_BUTTON1 : ON_CENTER_BUTTON2;
    case ON_TOP_BORDER:
        return index == 0 ? ON_TOP_BUTTON1 : ON_TOP_BUTTON2;
    case ON_MIDDLE_BORDER:
        return index == 0 ? ON_MIDDLE_BUTTON1 : ON_MIDDLE_BUTTON2;
    default:
        return ON_NOTHING;
    }
}

CursorOn PaneLayout::HitTest(POINT point) const
{
    for (const PaneBorder& border : borders) {
        if (!border.rect.PtInRect(point))
            continue;
        for (const int i : {0, 1}) {
            if (border.Button(i).PtInRect(point))
                return border.ButtonKind(i);
        }
        return border.kind;
    }
    return ON_NOTHING;
}

bool PaneLayout::HasEmptyPane() const
{
    return std::any_of(std::begin(panes), std::end(panes),
                       [](const CRect& pane) { return pane.IsRectEmpty(); });
}

PaneLayout ArrangePanes(PaneState& state, SIZE client, const PaneWindowSizes& sizes, bool clamp)
{
    client = Limited(client);
    const PaneWindowSizes known = {Limited(sizes.pane0), Limited(sizes.pane2)};
    const Extent across = ExtentAcross(state.type, client, known);
    const Extent down = ExtentDown(state.type, client, known);
    if (clamp && client.cx > 0 && client.cy > 0) {
        ClampAxis(state.across, across);
        ClampAxis(state.down, down);
    }
    return Place(state.type, client, NotNegative(CutAxis(state.across, across)),
                 NotNegative(CutAxis(state.down, down)));
}

bool ChangeSplitType(PaneState& state, SplitType type, SIZE client)
{
    const bool kept = state.type == type || (!HasTwoBorders(state.type) && !HasTwoBorders(type));
    state.type = type;
    if (kept)
        return true;
    for (PaneAxis* const axis : {&state.across, &state.down}) {
        axis->fold = kFoldNormal;
        axis->fold2 = kFoldNormal;
        const LONG length = axis == &state.across ? client.cx : client.cy;
        // Of an area that is empty for now there are no thirds.
        if (client.cx <= 0 || client.cy <= 0)
            continue;
        axis->position = static_cast<int>(length / 3);
        axis->position2 = static_cast<int>(INT64{2} * length / 3);
    }
    return false;
}

bool ClickPaneButton(PaneState& state, CursorOn button)
{
    const auto toggle = [](int& fold, int end) { fold = fold == end ? kFoldNormal : end; };
    PaneAxis& across = state.across;
    PaneAxis& down = state.down;
    switch (button) {
    case ON_LEFT_BUTTON1:
        toggle(across.fold, kFoldMin);
        return true;
    case ON_LEFT_BUTTON2:
        if (state.type == SPLIT_THREE_COLUMNS && across.fold2 == kFoldMin)
            return false;
        toggle(across.fold, kFoldMax);
        return true;
    case ON_CENTER_BUTTON1:
        if (across.fold == kFoldMax)
            return false;
        toggle(across.fold2, kFoldMin);
        return true;
    case ON_CENTER_BUTTON2:
        toggle(across.fold2, kFoldMax);
        return true;
    case ON_TOP_BUTTON1:
        toggle(down.fold, kFoldMin);
        return true;
    case ON_TOP_BUTTON2:
        if (state.type == SPLIT_THREE_ROWS && down.fold2 == kFoldMin)
            return false;
        toggle(down.fold, kFoldMax);
        return true;
    case ON_MIDDLE_BUTTON1:
        if (down.fold == kFoldMax)
            return false;
        toggle(down.fold2, kFoldMin);
        return true;
    case ON_MIDDLE_BUTTON2:
        toggle(down.fold2, kFoldMax);
        return true;
    default:
        return false;
    }
}

PaneState FoldedAround(PaneState state, int pane)
{
    constexpr int kKeep = -1;
    // First and second border across, then down, for each type and pane.
    static constexpr int folds[6][3][4] = {
        {{2, kKeep, kKeep, kKeep}, {0, kKeep, 2, kKeep}, {0, kKeep, 0, kKeep}},
        {{kKeep, kKeep, 2, kKeep}, {2, kKeep, 0, kKeep}, {0, kKeep, 0, kKeep}},
        {{2, kKeep, 2, kKeep}, {2, kKeep, 0, kKeep}, {0, kKeep, kKeep, kKeep}},
        {{2, kKeep, 2, kKeep}, {0, kKeep, 2, kKeep}, {kKeep, kKeep, 0, kKeep}},
        {{2, 2, kKeep, kKeep}, {0, 2, kKeep, kKeep}, {0, 0, kKeep, kKeep}},
        {{kKeep, kKeep, 2, 2}, {kKeep, kKeep, 0, 2}, {kKeep, kKeep, 0, 0}},
    };
    int* const targets[] = {&state.across.fold, &state.across.fold2, &state.down.fold,
                            &state.down.fold2};
    for (int i = 0; i < 4; ++i) {
        if (const int fold = folds[state.type][pane][i]; fold != kKeep)
            *targets[i] = fold;
    }
    return state;
}

bool HaveSameFolds(const PaneState& a, const PaneState& b)
{
    return a.across.fold == b.across.fold && a.across.fold2 == b.across.fold2 &&
           a.down.fold == b.down.fold && a.down.fold2 == b.down.fold2;
}

bool IsSplitType(int value)
{
    return value >= SPLIT_LEFT && value <= SPLIT_THREE_ROWS;
}

bool IsFold(int value)
{
    return value >= kFoldMin && value <= kFoldMax;
}

bool IsPaneOrder(int a, int b, int c)
{
    const auto isPane = [](int value) { return value >= 0 && value <= 2; };
    return isPane(a) && isPane(b) && isPane(c) && a + b + c == 3 && a * b * c == 0;
}

} // namespace tlvn
