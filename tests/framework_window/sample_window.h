// A parent with a child that notes what it is told.

#pragma once

#include "framework/framework.h"
#include "tests/support/test.h"

constexpr UINT kCommandCopy = 40001;
constexpr UINT kCommandPaste = 40002;
constexpr UINT kFirstZoom = 40010;
constexpr UINT kLastZoom = 40019;
constexpr UINT kMessagePing = WM_APP + 7;
constexpr UINT kNoteId = 77;

// What the handlers saw, in order.
class Log {
public:
    template <class... Parts>
    void Add(const char* what, Parts... parts)
    {
        m_entries.push_back(what);
        ((m_entries.back() += ' ' + std::to_string(parts)), ...);
    }
    int Count(const std::string& entry) const
    {
        return static_cast<int>(std::count(m_entries.begin(), m_entries.end(), entry));
    }
    // The entries that are in `wanted` are these, in their order, and none is in `unwanted`:
    // systems send more than these.
    void Expect(const std::vector<std::string>& wanted,
                const std::vector<std::string>& unwanted = {}) const
    {
        std::vector<std::string> kept;
        for (const std::string& entry : m_entries) {
            if (std::count(wanted.begin(), wanted.end(), entry) +
                    std::count(unwanted.begin(), unwanted.end(), entry) >
                0)
                kept.push_back(entry);
        }
        EXPECT_EQ(kept, wanted);
    }

private:
    std::vector<std::string> m_entries;
};

class CSampleNote : public CWnd {
public:
    Log log;
    bool failCreation = false;
    bool throwWhilePainting = false;

    BOOL PreTranslateMessage(MSG* message) override
    {
        return (message->message == WM_KEYDOWN && message->wParam == VK_F5) ||
               CWnd::PreTranslateMessage(message);
    }

protected:
    void PostNcDestroy() override { log.Add("postncdestroy"); }

    afx_msg int OnCreate(LPCREATESTRUCT create)
    {
        log.Add(create->lpszName);
        return failCreation ? -1 : CWnd::OnCreate(create);
    }
    afx_msg void OnDestroy()
    {
        log.Add("destroy");
        CWnd::OnDestroy();
    }
    afx_msg void OnNcDestroy()
    {
        log.Add("ncdestroy");
        CWnd::OnNcDestroy();
    }
    afx_msg void OnSize(UINT, int width, int height) { log.Add("size", width, height); }
    afx_msg void OnShowWindow(BOOL show, UINT) { log.Add("show", show); }
    afx_msg void OnPaint()
    {
        if (throwWhilePainting)
            AfxThrowMemoryException();
        CWnd::OnPaint();
    }
    afx_msg void OnChar(UINT character, UINT, UINT) { log.Add("char", character); }
    afx_msg void OnKeyDown(UINT key, UINT, UINT) { log.Add("key", key); }
    afx_msg BOOL OnMouseWheel(UINT, short delta, CPoint)
    {
        log.Add("wheel", delta);
        return delta < 0; // turning up is for the parent
    }
    afx_msg void OnTimer(UINT_PTR id) { log.Add("timer", id); }
    afx_msg LRESULT OnPing(WPARAM wParam, LPARAM lParam)
    {
        return static_cast<LRESULT>(wParam) * 10 + lParam;
    }
    DECLARE_MESSAGE_MAP()
};

class CSampleFrame : public CWnd {
public:
    Log log;

protected:
    afx_msg void OnCopy() { log.Add("copy"); }
    afx_msg void OnZoom(UINT command) { log.Add("zoom", command - kFirstZoom); }
    afx_msg void OnNoteText(NMHDR*, LRESULT* result) { *result = 42; }
    afx_msg BOOL OnMouseWheel(UINT, short delta, CPoint)
    {
        log.Add("wheel", delta);
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

// Both windows, 400 by 300 in the client area, shown, the note filling it.
class SampleWindows : public testing::Test {
protected:
    SampleWindows();
    ~SampleWindows() override;

    CSampleFrame frame;
    CSampleNote note;
};
