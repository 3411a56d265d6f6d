// The tree of the folders in which mails are: folders of .eml files, and mbox files.
//
//   FolderTree tree;
//   if (!tree.Open(path, error))
//       return Fail(error);
//   while (tree.Step(20))                       // for 20 ms each
//       ShowProgress(tree.GetCount());
//
// The tree is an array in which a folder stands behind the one it is in, and those of one folder
// stand together; the first is the root. Folders are read breadth first, each once however many
// links lead to it, so that a link to a folder above ends there. Names that start with "." are
// passed over. An mbox file is one named *.mbox or *.mbx, or without an extension, that begins like
// one.

#pragma once

#include "platform/folder.h"

#include <deque>
#include <set>
#include <string>
#include <vector>

namespace tlvn {

struct MailFolder {
    std::string name; // UTF-8, without control characters
    std::string path; // of platform/folder.h
    int parent = -1;
    int depth = 0;      // of the root 0
    bool mbox = false;  // a file
    int mails = -1;     // .eml files in it; -1 while not known, and of an mbox file
    int firstChild = 0; // the place of the first of the folders in it, when there are any
    int childCount = 0;
};

class FolderTree {
public:
    static constexpr int kMaxDepth = 64;
    static constexpr std::size_t kMaxFolders = 20'000;

    // Starts anew with a folder or an mbox file as the root. False with the reason.
    bool Open(const std::string& path, std::string& error);

    // Reads on until `milliseconds` have gone by. True while there is more to read. When a folder
    // has been read, those in it take the next places, sorted by name; places do not change.
    bool Step(int milliseconds);
    bool IsReading() const { return m_reading >= 0 || !m_waiting.empty(); }
    // There are folders deeper than kMaxDepth or more than kMaxFolders, which are left out.
    bool IsCut() const { return m_cut; }

    int GetCount() const { return static_cast<int>(m_folders.size()); }
    const MailFolder& Get(int index) const { return m_folders[static_cast<std::size_t>(index)]; }

private:
    void OpenNext();
    void ReadEntry();
    void FinishFolder();
    bool IsMboxFile(const std::string& name) const;

    std::vector<MailFolder> m_folders;
    std::deque<int> m_waiting; // not yet read
    std::set<FolderIdentity> m_seen;
    bool m_cut = false;

    int m_reading = -1; // the folder being read, or -1
    FolderReader m_reader;
    FolderEntry m_entry;
    std::vector<MailFolder> m_found; // in it
};

} // namespace tlvn
