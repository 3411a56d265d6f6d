// C3PaneWnd: a child window that lays out three windows of the caller's (the panes), with
// borders between them that are dragged, or folded by two small buttons at their middle.
//
//   C3PaneWnd panes;
//   panes.Create(nullptr, "", WS_CHILD | WS_VISIBLE, rect, &frame, ID_PANES);
//   ... create folders, list, view with &panes as their parent ...
//   panes.SetPaneWnd(&folders, &list, &view);
//   panes.InitPaneSize(&settings, "Layout", SPLIT_LEFT, VFOLD_NORMAL, VFOLD_NORMAL, HFOLD_NORMAL,
//                      HFOLD_NORMAL, 200, 400, 150, 300);
//   ...
//   panes.Save3Pane();
//
// pane_layout.h has the six arrangements and all arithmetic. A pane is a place (0, 1, 2), a
// window number says which of the three windows sits there. Nothing is laid out before
// InitPaneSize; from then on every change is. The window objects and the settings have to live
// as long as this window uses them.
//
// Dragging a border unfolds it with the first movement, so that it follows the mouse; the right
// button, or losing the mouse, puts it back. A click on a button takes effect when the mouse
// goes up on it. Buttons show an arrow the way their border will go, gray when it will not.

#pragma once

#include "ui/pane_layout.h"

class CSettingData;

class TLVN_API C3PaneWnd : public CWnd {
    DECLARE_DYNAMIC(C3PaneWnd)
public:
    C3PaneWnd() = default;
    ~C3PaneWnd() override;

    // --- arrangement -----------------------------------------------------------------------
    // Takes the arrangement that the settings have under `section`, or else the values given
    // and the panes in the order 0, 1, 2; a value that is none of its enumeration is SPLIT_LEFT,
    // or normal. Positions are client pixels. `settings` and `section` (either may be null)
    // are kept for Save3Pane.
    void InitPaneSize(CSettingData* settings, const char* section, SplitType type,
                      VFolding vertical, VFolding vertical2, HFolding horizontal,
                      HFolding horizontal2, int leftPaneRight, int centerPaneRight,
                      int topPaneBottom, int middlePaneBottom);
    // Writes the arrangement under the section; without settings or section does nothing.
    void Save3Pane();

    SplitType GetSplitType() const { return m_state.type; }
    // Between types 0 to 3 the borders stay; any other change unfolds all and puts the borders
    // at thirds. A value that is no type does nothing.
    void SetSplitType(SplitType type);
    void SetHorzFolding(HFolding folding);

    // --- windows and panes -----------------------------------------------------------------
    // Windows 0, 1 and 2. Null, and a window not created yet, leave their pane empty.
    void SetPaneWnd(CWnd* window0, CWnd* window1, CWnd* window2);
    // The window in a pane; null when there is none, or no such pane.
    CWnd* GetPaneWnd(int pane) const;
    // The pane that a window sits in, or -1.
    int GetPaneIdx(CWnd* window) const;
    // Numbers of the windows in panes 0, 1 and 2; only a permutation of 0, 1, 2 is taken.
    void SetWinIdx(int pane0, int pane1, int pane2);
    void GetWinIdx(int& pane0, int& pane1, int& pane2) const;
    // For going from pane to pane by key: the window of the next visible pane in the order
    // 0, 1, 2 and around, or before (`step` below 0), counted from the pane that `window` or a
    // parent of it sits in, and from outside when there is none. `wrapped` becomes 1 when the
    // way led around the end, else 0. Null when no pane is visible.
    CWnd* GetNextWnd(CWnd* window, int step, int& wrapped) const;

    // Whether the pane's window is at least 2 pixels wide and high.
    int IsPaneVisible(int pane) const;
    int IsPaneVisible(CWnd* window) const;
    // Folds the other panes away. For the pane that has all the room already: back to the
    // folds there were before. Another pane may be maximized in between.
    void MaximizePane(int pane);

    // --- what the fold buttons do (ClickPaneButton of pane_layout.h) -------------------------
    void ClickLeftButton() { Click(ON_LEFT_BUTTON1); }
    void ClickRightButton() { Click(ON_LEFT_BUTTON2); }
    void ClickLeftButton2() { Click(ON_CENTER_BUTTON1); }
    void ClickRightButton2() { Click(ON_CENTER_BUTTON2); }
    void ClickUpButton() { Click(ON_TOP_BUTTON1); }
    void ClickDownButton() { Click(ON_TOP_BUTTON2); }
    void ClickUpButton2() { Click(ON_MIDDLE_BUTTON1); }
    void ClickDownButton2() { Click(ON_MIDDLE_BUTTON2); }

    // What a point of the client area is on, as laid out last.
    CursorOn HitTest(POINT point) const { return m_layout.HitTest(point); }

protected:
    // Reads the arrangement; 1, or 0 (and nothing taken) when a value is missing or not valid.
    int Load3Pane(CSettingData* settings, const char* section);
    // Lays out, after bringing the positions of unfolded borders into their limits (`clamp`).
    void RecalcPanes(int clamp);

    // A border dragged to a client coordinate: it lies centred under the mouse.
    void MoveVBorderL(int x);
    void MoveVBorderC(int x);
    void MoveHBorderT(int y);
    void MoveHBorderM(int y);

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnRButtonDown(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* window);
    afx_msg void OnSetFocus(CWnd* oldWindow);
    afx_msg BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    afx_msg void OnSysColorChange();
    afx_msg BOOL OnToolTipNeedText(UINT id, NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    void Click(CursorOn button);
    void MoveBorder(CursorOn border, int coordinate);
    void DragTo(CPoint point);
    void EndDrag(bool putBack);
    tlvn::PaneWindowSizes GetPaneWindowSizes() const;
    SIZE GetClientSize() const;
    void Layout(int clamp, const tlvn::PaneWindowSizes& sizes);
    void MovePanes();
    void InvalidateBorders();
    void DrawButton(CDC& dc, const tlvn::PaneBorder& border, int index);
    UINT GetButtonMessage(CursorOn button) const;
    HCURSOR GetCursorOn(CursorOn on) const;
    void CreateToolTips();
    void UpdateToolTips();

    tlvn::PaneState m_state;
    tlvn::PaneState m_beforeMaximize; // its folds are what counts
    CWnd* m_windows[3] = {};
    int m_order[3] = {0, 1, 2}; // number of the window in each pane
    HCURSOR m_leftRightCursor = nullptr;
    HCURSOR m_upDownCursor = nullptr;
    HCURSOR m_handCursor = nullptr;
    CursorOn m_dragged = ON_NOTHING; // border or button under the pressed mouse
    CPoint m_dragStart;
    bool m_dragMoved = false;
    int m_foldBeforeDrag = tlvn::kFoldNormal; // of the border
    int m_positionBeforeDrag = 0;
    CSettingData* m_settings = nullptr;
    CString m_section;
    int m_initialized = 0;
    tlvn::PaneLayout m_layout;
    CWnd m_toolTip;
};
