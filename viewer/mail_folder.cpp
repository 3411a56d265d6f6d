#include "viewer/mail_folder.h"

#include "platform/clock.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "viewer/mail_file.h"
#include "viewer/mail_list.h"
#include "viewer/mbox.h"
#include "viewer/show_text.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr int kEntriesBetweenLooks = 64; // at the clock

// The extension in lower case, without its dot; empty for none.
std::string GetExtension(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    std::string extension(dot == name.npos ? std::string_view() : name.substr(dot + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(), ToLowerAscii);
    return extension;
}

std::string CollationKey(const std::string& utf8)
{
    std::string key;
    MakeCollationKey(Utf8ToUtf16(utf8), key);
    return key;
}

MailFolder MakeRoot(const std::string& path)
{
    MailFolder root;
    root.name = MakeHarmless(GetLastName(path), false);
    root.path = path;
    return root;
}

} // namespace

bool FolderTree::Open(const std::string& path, std::string& error)
{
    m_folders.clear();
    m_waiting.clear();
    m_seen.clear();
    m_found.clear();
    m_cut = false;
    m_reading = -1;

    MailFolder root = MakeRoot(path);
    if (!m_reader.Open(path)) {
        MailList list;
        if (!list.Open(path, error))
            return false;
        root.mbox = true;
        m_folders.push_back(std::move(root));
        return true;
    }
    m_seen.insert(m_reader.GetIdentity());
    m_folders.push_back(std::move(root));
    m_folders.front().mails = 0;
    m_reading = 0;
    return true;
}

bool FolderTree::Step(int milliseconds)
{
    const DWORD start = GetTickMilliseconds();
    for (int steps = 1; IsReading(); ++steps) {
        if (m_reading < 0)
            OpenNext();
        else
            ReadEntry();
        if (steps % kEntriesBetweenLooks == 0 &&
            GetTickMilliseconds() - start >= static_cast<DWORD>(std::max(milliseconds, 0)))
            break;
    }
    return IsReading();
}

void FolderTree::OpenNext()
{
    const int index = m_waiting.front();
    m_waiting.pop_front();
    MailFolder& folder = m_folders[static_cast<std::size_t>(index)];
    // One that cannot be opened stays in the tree, its mails unknown.
    if (!m_reader.Open(folder.path))
        return;
    const FolderIdentity identity = m_reader.GetIdentity();
    if (identity != FolderIdentity() && !m_seen.insert(identity).second)
        return;
    folder.mails = 0;
    m_reading = index;
}

bool FolderTree::IsMboxFile(const std::string& name) const
{
    const std::string extension = GetExtension(name);
    if (!extension.empty() && extension != "mbox" && extension != "mbx")
        return false;
    char head[64];
    std::size_t done = 0;
    INT64 size = -1;
    return m_reader.ReadHead(name.c_str(), head, sizeof head, done, size) &&
           IsMboxBeginning({head, done});
}

void FolderTree::ReadEntry()
{
    if (!m_reader.Next(m_entry)) {
        FinishFolder();
        return;
    }
    if (m_entry.name.starts_with('.') || m_entry.kind == EntryKind::Other)
        return;
    MailFolder& parent = m_folders[static_cast<std::size_t>(m_reading)];
    const bool file = m_entry.kind == EntryKind::File;
    if (file && GetExtension(m_entry.name) == "eml") {
        ++parent.mails;
        return;
    }
    if (file && !IsMboxFile(m_entry.name))
        return;
    if (parent.depth == kMaxDepth || m_folders.size() + m_found.size() >= kMaxFolders) {
        m_cut = true;
        return;
    }
    MailFolder found;
    found.name = MakeHarmless(m_entry.name, false);
    found.path = JoinPath(parent.path, m_entry.name);
    found.parent = m_reading;
    found.depth = parent.depth + 1;
    found.mbox = file;
    m_found.push_back(std::move(found));
}

void FolderTree::FinishFolder()
{
    std::vector<std::pair<std::string, std::size_t>> keys;
    for (std::size_t i = 0; i < m_found.size(); ++i)
        keys.emplace_back(CollationKey(m_found[i].name), i);
    std::sort(keys.begin(), keys.end());
    MailFolder& parent = m_folders[static_cast<std::size_t>(m_reading)];
    parent.firstChild = GetCount();
    parent.childCount = static_cast<int>(keys.size());
    for (const auto& [key, i] : keys) {
        if (!m_found[i].mbox)
            m_waiting.push_back(GetCount());
        m_folders.push_back(std::move(m_found[i]));
    }
    m_found.clear();
    m_reader.Close();
    m_reading = -1;
}

} // namespace tlvn
