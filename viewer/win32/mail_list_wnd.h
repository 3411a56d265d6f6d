// The list of the mails in a folder: a virtual list control over a MailList, filled while the
// mails are being read.
//
//   MailListWnd list;
//   list.CreateList(&panes, ID, settings);
//   list.Open(path, error);
//   while (list.Step(15))                       // from a timer
//       ShowProgress(list.GetMails());
//
// Rows come in the order of their finding and are sorted when all are there, and whenever a
// column is clicked; what is chosen stays chosen. The control's parent hands its notifications to
// HandleNotify.

#pragma once

#include "framework/framework.h"
#include "viewer/view_settings.h"

namespace tlvn {

class MailListWnd : public CWnd {
public:
    int CreateList(CWnd* parent, UINT id, const ViewSettings& settings);
    void SaveTo(ViewSettings& settings) const;

    // Starts anew with the folder or mbox file. False with the reason; the list is then empty.
    bool Open(const std::string& path, std::string& error);
    // Reads on. True while there is more.
    bool Step(int milliseconds);

    const MailList& GetMails() const { return m_list; }
    const std::string& GetPath() const { return m_path; }
    // The row with the focus, when it is chosen; else -1.
    int GetFocusedRow() const;
    std::vector<int> GetChosenRows() const;
    int GetChosenCount() const;
    // Chooses this row alone and shows it; nothing for -1.
    void ChooseRow(int row);
    void ChooseAll();
    // The row of the mail whose file that is, -1 for none.
    int FindFile(std::string_view path) const;

    // What the list answers by itself: its texts and the clicks on its columns.
    bool HandleNotify(NMHDR* header);

private:
    void SetRowState(int row, UINT state);
    void Sort();
    void ShowOrder();
    void GiveText(LVITEMW& item);

    MailList m_list;
    std::string m_path;
    ListOrder m_order;
};

} // namespace tlvn
