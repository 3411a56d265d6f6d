// A parent with a child that paints lines of Japanese text and notes what it is told.

#pragma once

#include "framework/framework.h"

#include <string>
#include <vector>

constexpr UINT kCommandCopy = 40001;
constexpr UINT kCommandPaste = 40002;
constexpr UINT kFirstZoom = 40010;
constexpr UINT kLastZoom = 40019;
constexpr UINT kMessagePing = WM_APP + 7;
constexpr UINT kNoteId = 77;

class CSampleNote : public CWnd {
public:
    std::vector<std::string> log; // what the handlers saw, in order
    std::vector<CStringW> lines;
    int top = 0; // first line shown
    bool failCreation = false;
    bool throwWhilePainting = false;
    int paintCount = 0;
    int translated = 0; // messages PreTranslateMessage swallowed
    CFont font;

    int LineHeight() const { return 16; }
    void ScrollTo(int line);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void PostNcDestroy() override { log.push_back("postncdestroy"); }

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnDestroy();
    afx_msg void OnNcDestroy();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnShowWindow(BOOL show, UINT status);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSetFocus(CWnd* oldWindow);
    afx_msg void OnKillFocus(CWnd* newWindow);
    afx_msg void OnChar(UINT character, UINT repeat, UINT flags);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* scrollBar);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnCaptureChanged(CWnd* window);
    afx_msg LRESULT OnPing(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()
};

class CSampleFrame : public CWnd {
public:
    std::vector<std::string> log;

protected:
    afx_msg void OnCopy();
    afx_msg void OnZoom(UINT command);
    afx_msg void OnNoteText(NMHDR* header, LRESULT* result);
    afx_msg void OnSetFocus(CWnd* oldWindow);
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    DECLARE_MESSAGE_MAP()
};

// Both windows, 400 by 300 in the client area, shown, the note filling it.
class SampleWindows {
public:
    SampleWindows();
    ~SampleWindows();
    SampleWindows(const SampleWindows&) = delete;
    SampleWindows& operator=(const SampleWindows&) = delete;

    CSampleFrame frame;
    CSampleNote note;
};
