// A window with nothing but an editor in it. What is written there is printed when it is closed.

#include <TlvnMisc.h>

#include <cstdio>

class CNoteWnd : public CWnd {
public:
    // Opens the window with a text in UTF-8. 0 when the system refuses.
    int Open(const CBuffer& text)
    {
        CRect rect(80, 60, 720, 480);
        if (!CreateEx(0, nullptr, "Note", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, rect, nullptr, 0))
            return 0;
        CEditorMetrics metrics; // those of a composer
        metrics.SetAutoTurn(CEditorMetrics::kTurnAtWindow);
        metrics.SetShowLineRuler(1);
        CEditorColor colors;
        colors.SetBackColor(RGB(255, 255, 240));
        GetClientRect(&rect);
        if (!m_editor.CreateEditorWnd(0, WS_CHILD | WS_VISIBLE | WS_VSCROLL, rect, this, 1, metrics,
                                      colors))
            return 0;
        m_editor.SetEditorNotifyProc(
            [](CEditorWnd* editor, EditorNotify what, DWORD) {
                if (what == EditorNotifyText && editor->IsDocModified())
                    editor->GetParent()->SetWindowText("Note *");
            },
            0);
        CBuffer editable; // UTF-16, as all text of a Unicode code type is edited
        ConvertToEditable(CT_UTF8, text, text.GetLength(), editable);
        m_editor.SetDocument(CodeTypeSave2Edit(CT_UTF8), editable, editable.GetLength());
        ShowWindow(SW_SHOW);
        m_editor.SetFocus();
        return 1;
    }
    // The text as it stands now, in UTF-8.
    void GetText(CBuffer& text) const
    {
        CBuffer editable;
        m_editor.GetDocument(1, 0, 1, 0, editable);
        ConvertToOtherCodeType2(m_editor.GetCodeType(), editable, editable.GetLength(), CT_UTF8,
                                text, 0);
    }

protected:
    DECLARE_MESSAGE_MAP()
    afx_msg void OnSize(UINT, int width, int height)
    {
        if (m_editor.GetSafeHwnd() != nullptr)
            m_editor.MoveWindow(0, 0, width, height);
    }
    afx_msg void OnSetFocus(CWnd*) { m_editor.SetFocus(); }
    afx_msg void OnDestroy() { ::PostQuitMessage(0); }

    CEditorWnd m_editor;
};

BEGIN_MESSAGE_MAP(CNoteWnd, CWnd)
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_DESTROY()
END_MESSAGE_MAP()

int main()
{
    SetDefaultEditorKeys(CEditorWnd::GetAccelData());
    CNoteWnd note;
    CBuffer text("拝啓\r\n\r\n敬具");
    if (!note.Open(text))
        return 1;
    tlvn::RunMessageLoop();
    note.GetText(text);
    std::printf("%.*s\n", text.GetLength(), static_cast<const char*>(text));
}
