// Draws docs/panes.svg: the six arrangements of C3PaneWnd, unfolded and folded.
//
//   scripts/draw-panes.sh

#include "framework/headless/headless.h"
#include "ui/three_pane_wnd.h"

#include <cstdio>
#include <list>
#include <string>

namespace {

constexpr int kCellWidth = 230;
constexpr int kCellHeight = 170;
constexpr int kGap = 16;
constexpr int kCaption = 24;

class CNumberedPane : public CWnd {
public:
    explicit CNumberedPane(int number) : m_number(number) {}

protected:
    afx_msg void OnPaint()
    {
        static constexpr COLORREF colors[] = {RGB(255, 244, 214), RGB(221, 238, 255),
                                              RGB(226, 245, 222)};
        CPaintDC dc(this);
        CRect client;
        GetClientRect(&client);
        dc.FillSolidRect(&client, colors[m_number]);
        if (client.Width() < 20 || client.Height() < 20)
            return;
        const CPoint at = client.CenterPoint();
        dc.TextOut(at.x - 4, at.y - 8, CStringA(static_cast<char>('0' + m_number)));
    }
    DECLARE_MESSAGE_MAP()

private:
    int m_number;
};

BEGIN_MESSAGE_MAP(CNumberedPane, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

class CSheet : public CWnd {
protected:
    afx_msg void OnPaint()
    {
        CPaintDC dc(this);
        CRect client;
        GetClientRect(&client);
        dc.FillSolidRect(&client, RGB(255, 255, 255));
        for (int type = 0; type < 6; ++type) {
            CStringA caption;
            caption.Format("type %d", type);
            dc.TextOut(kGap + type * (kCellWidth + kGap), 6, caption);
        }
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CSheet, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

struct Cell {
    C3PaneWnd panes;
    CNumberedPane windows[3] = {CNumberedPane(0), CNumberedPane(1), CNumberedPane(2)};
};

// The first row is unfolded, in the second one border is at its minimum, in the third one at
// its maximum.
void Fold(C3PaneWnd& panes, int type, int row)
{
    if (row == 1)
        type == SPLIT_THREE_ROWS ? panes.ClickUpButton() : panes.ClickLeftButton();
    if (row == 2) {
        if (type == SPLIT_THREE_COLUMNS)
            panes.ClickRightButton2();
        else if (type == SPLIT_THREE_ROWS)
            panes.ClickDownButton2();
        else
            panes.ClickDownButton();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const int width = 6 * (kCellWidth + kGap) + kGap;
    const int height = kCaption + 3 * (kCellHeight + kGap);
    tlvn::headless::SetScreenSize(width, height);
    CSheet sheet;
    sheet.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, width, height,
                   nullptr, nullptr);
    std::list<Cell> cells;
    for (int row = 0; row < 3; ++row) {
        for (int type = 0; type < 6; ++type) {
            Cell& cell = cells.emplace_back();
            const int x = kGap + type * (kCellWidth + kGap);
            const int y = kCaption + row * (kCellHeight + kGap);
            cell.panes.Create(nullptr, "", WS_CHILD | WS_VISIBLE,
                              CRect(x, y, x + kCellWidth, y + kCellHeight), &sheet, 1);
            for (CWnd& window : cell.windows)
                window.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 0, 0), &cell.panes,
                              2);
            cell.panes.SetPaneWnd(&cell.windows[0], &cell.windows[1], &cell.windows[2]);
            cell.panes.InitPaneSize(nullptr, nullptr, static_cast<SplitType>(type), VFOLD_NORMAL,
                                    VFOLD_NORMAL, HFOLD_NORMAL, HFOLD_NORMAL, 105, 150, 60, 105);
            Fold(cell.panes, type, row);
        }
    }
    std::string svg;
    tlvn::WriteWindowSvg(sheet.m_hWnd, svg);
    sheet.DestroyWindow();
    std::FILE* const out = argc > 1 ? std::fopen(argv[1], "wb") : stdout;
    if (out == nullptr)
        return 1;
    const bool written = std::fwrite(svg.data(), 1, svg.size(), out) == svg.size();
    return std::fclose(out) == 0 && written ? 0 : 1;
}
