#include "viewer/settings_file.h"

#include "platform/nls.h"
#include "viewer/reason.h"

namespace tlvn {

namespace {

constexpr int kMostKept = 99;
constexpr char kByteOrderMark[] = {'\xFF', '\xFE'};

// A file that starts with a byte-order mark is plain.
bool IsPlain(const std::string& path)
{
    FileHandle file = kNoFile;
    if (!OpenFile(path.c_str(), kFileRead, 0, FileCreation::OpenExisting, file))
        return false;
    char mark[sizeof kByteOrderMark] = {};
    std::size_t done = 0;
    ReadFromFile(file, mark, sizeof mark, done);
    CloseFile(file);
    return done == 0 ||
           (done == sizeof mark && mark[0] == kByteOrderMark[0] && mark[1] == kByteOrderMark[1]);
}

bool IsReadable(const std::string& path)
{
    FileHandle file = kNoFile;
    if (!OpenFile(path.c_str(), kFileRead, 0, FileCreation::OpenExisting, file))
        return false;
    CloseFile(file);
    return true;
}

} // namespace

SettingsFile::State SettingsFile::Load(const std::string& path, const std::string& password)
{
    m_path = path;
    m_message.clear();
    m_data.InitSD();
    FileInfo info;
    if (const FileResult found = GetFileInfo(path.c_str(), info);
        found.error == FileError::NotFound || found.error == FileError::BadPath) {
        m_data.LoadNone();
        m_data.SetCryptKey(password.c_str());
        m_state = State::Fresh;
        return m_state;
    }
    const bool plain = IsPlain(path);
    m_data.SetCryptKey(plain ? "" : password.c_str());
    if (m_data.LoadFile(path.c_str()) != 0) {
        m_data.SetCryptKey(password.c_str());
        m_state = State::Loaded;
        return m_state;
    }
    m_message = Utf16ToUtf8(WidenText(m_data.GetErrorMessage().GetString()));
    m_state = !plain && IsReadable(path) ? State::Locked : State::Damaged;
    m_data.InitSD();
    m_data.LoadNone();
    m_data.SetCryptKey(password.c_str());
    return m_state;
}

bool SettingsFile::KeepOldFile(std::string& keptAs)
{
    for (int i = 1; i <= kMostKept; ++i) {
        keptAs = m_path + ".kept" + (i > 1 ? std::to_string(i) : "");
        const FileResult moved = RenameFile(m_path.c_str(), keptAs.c_str());
        if (moved)
            return true;
        if (moved.error == FileError::NotFound) {
            keptAs.clear();
            return true;
        }
        if (moved.error != FileError::AlreadyExists)
            return false;
    }
    return false;
}

bool SettingsFile::Save()
{
    m_message.clear();
    if (!m_data.IsUpdated())
        return true;
    FileInfo info;
    if (GetFileInfo(m_path.c_str(), info) && info.readOnly) {
        m_message = GetText(Reason::SettingsReadOnly) + Utf16ToUtf8(WidenText(m_path));
        return false;
    }
    const bool unread = m_state == State::Locked || m_state == State::Damaged;
    std::string keptAs;
    if (unread && !KeepOldFile(keptAs)) {
        m_message = GetText(Reason::SettingsNotPutAside) + Utf16ToUtf8(WidenText(m_path));
        return false;
    }
    CString error;
    const int saved =
        m_data.SaveSdWithRetry(m_path.c_str(), ASK_NOTHING, 0, nullptr, &error, nullptr);
    if (saved == 0) {
        m_message = Utf16ToUtf8(WidenText(error.GetString()));
        if (!keptAs.empty())
            RenameFile(keptAs.c_str(), m_path.c_str());
        return false;
    }
    m_state = State::Loaded;
    if (!keptAs.empty())
        m_message = GetText(Reason::SettingsKept) + Utf16ToUtf8(WidenText(keptAs));
    return true;
}

} // namespace tlvn
