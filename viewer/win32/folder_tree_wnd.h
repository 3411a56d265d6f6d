// The tree of folders, a tree control filled while the folders are being read.
//
//   FolderTreeWnd tree;
//   tree.CreateTree(&panes, ID);
//   tree.Open(path, error);
//   while (tree.Step(20))                       // from a timer
//       ;
//
// The control tells its parent of a choice by TVN_SELCHANGED; GetChosen has the folder then.

#pragma once

#include "framework/framework.h"
#include "viewer/mail_folder.h"

#include <memory>

namespace tlvn {

class FolderTreeWnd : public CWnd {
public:
    int CreateTree(CWnd* parent, UINT id);

    // Starts anew with the folder or mbox file, which is chosen. False with the reason.
    bool Open(const std::string& path, std::string& error);
    // Reads and shows more folders. True while there is more.
    bool Step(int milliseconds);

    // Null for none; valid until the next step.
    const MailFolder* GetChosen() const;

private:
    void ShowNew();
    void ShowCounts();

    std::unique_ptr<FolderTree> m_tree; // null before the first
    std::vector<HTREEITEM> m_items;     // of the folders shown
    std::size_t m_counted = 0;          // of them, those whose mails are counted
};

} // namespace tlvn
