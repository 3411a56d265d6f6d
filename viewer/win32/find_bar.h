// The bar in which the text of a mail is searched: a field, two options, buttons, and what came of
// the search.
//
// The buttons and the keys Enter and Escape are the commands ID_SEARCH_NEXT and so on, sent to the
// parent. A change of field or options is told by kFindChanged, a message without parameters.

#pragma once

#include "framework/framework.h"
#include "viewer/text_search.h"

namespace tlvn {

constexpr UINT kFindChanged = WM_APP + 1;

class FindBar : public CWnd {
public:
    static int GetHeight();

    int CreateBar(CWnd* parent, UINT id);
    // Puts the focus into the field, its text selected.
    void Enter();

    std::string GetPattern() const; // UTF-8
    SearchOptions GetOptions() const;
    void SetResult(WStringView text);

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnSize(UINT type, int width, int height);
    DECLARE_MESSAGE_MAP()

private:
    // The field hands its Enter and Escape over.
    class Field : public CWnd {
    public:
        BOOL PreTranslateMessage(MSG* message) override;
    };

    void CreateControl(CWnd& control, const char* className, UINT text, DWORD style, UINT id);

    CWnd m_label;
    Field m_field;
    CWnd m_next;
    CWnd m_previous;
    CWnd m_regexp;
    CWnd m_case;
    CWnd m_result;
    CWnd m_close;
};

} // namespace tlvn
