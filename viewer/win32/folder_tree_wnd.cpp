#include "viewer/win32/folder_tree_wnd.h"

#include "viewer/win32/window_text.h"

namespace tlvn {

namespace {

WString NameOf(const MailFolder& folder)
{
    WString name = Utf8ToUtf16(folder.name);
    if (folder.mails > 0)
        name += TW(" (") + Utf8ToUtf16(std::to_string(folder.mails)) + TW(")");
    return name;
}

} // namespace

int FolderTreeWnd::CreateTree(CWnd* parent, UINT id)
{
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASLINES | TVS_HASBUTTONS |
                             TVS_LINESATROOT | TVS_SHOWSELALWAYS;
    if (!CreateEx(WS_EX_CLIENTEDGE, "SysTreeView32", "", kStyle, CRect(0, 0, 0, 0), parent, id))
        return 0;
    SetFont(GetDialogFont());
    return 1;
}

bool FolderTreeWnd::Open(const std::string& path, std::string& error)
{
    auto tree = std::make_unique<FolderTree>();
    if (!tree->Open(path, error))
        return false;
    // Items that go tell of changes, and theirs are the numbers of the old folders.
    m_tree = nullptr;
    SetRedraw(FALSE);
    SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    SetRedraw(TRUE);
    m_tree = std::move(tree);
    m_items.clear();
    m_counted = 0;
    ShowNew();
    SendMessage(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(m_items.front()));
    return true;
}

bool FolderTreeWnd::Step(int milliseconds)
{
    if (m_tree == nullptr || !m_tree->IsReading())
        return false;
    const bool more = m_tree->Step(milliseconds);
    ShowNew();
    ShowCounts();
    return more;
}

const MailFolder* FolderTreeWnd::GetChosen() const
{
    TVITEMW item = {};
    item.mask = TVIF_PARAM;
    item.hItem = reinterpret_cast<HTREEITEM>(SendMessage(TVM_GETNEXTITEM, TVGN_CARET, 0));
    if (m_tree == nullptr || item.hItem == nullptr ||
        !SendMessage(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)))
        return nullptr;
    return &m_tree->Get(static_cast<int>(item.lParam));
}

// A folder stands behind the one it is in, so that its item is there already.
void FolderTreeWnd::ShowNew()
{
    const int shown = static_cast<int>(m_items.size());
    for (int i = shown; i < m_tree->GetCount(); ++i) {
        const MailFolder& folder = m_tree->Get(i);
        WString name = NameOf(folder);
        TVINSERTSTRUCTW insert = {};
        insert.hParent =
            folder.parent < 0 ? TVI_ROOT : m_items[static_cast<std::size_t>(folder.parent)];
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        insert.item.pszText = name.data();
        insert.item.lParam = i;
        m_items.push_back(reinterpret_cast<HTREEITEM>(
            SendMessage(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert))));
    }
    if (shown < static_cast<int>(m_items.size()))
        SendMessage(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(m_items.front()));
}

// Folders are read in their order, and only then are their mails known.
void FolderTreeWnd::ShowCounts()
{
    for (; m_counted < m_items.size(); ++m_counted) {
        const MailFolder& folder = m_tree->Get(static_cast<int>(m_counted));
        if (folder.mails < 0 && !folder.mbox && m_tree->IsReading())
            return;
        WString name = NameOf(folder);
        TVITEMW item = {};
        item.mask = TVIF_TEXT;
        item.hItem = m_items[m_counted];
        item.pszText = name.data();
        SendMessage(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

} // namespace tlvn
