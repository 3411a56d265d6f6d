#include "viewer/marker_file.h"

#include "persist/md5.h"

#include <algorithm>

namespace tlvn {

namespace {

const char kSection[] = "Markers";
constexpr std::size_t kMaxKey = 200;

// Names of the file are compared without regard to case, and are bounded here; what cannot be one
// as it stands is told by its digest.
std::string DigestOf(std::string_view text)
{
    Md5 md5;
    md5.Add(text.data(), text.size());
    unsigned char digest[16];
    md5.Finish(digest);
    constexpr char kDigits[] = "0123456789abcdef";
    std::string key = "md5:";
    for (const unsigned char byte : digest) {
        key += kDigits[byte >> 4];
        key += kDigits[byte & 15];
    }
    return key;
}

// The header as it was sent; the mails of an mbox file differ in it.
std::string_view GetHeader(const Mail& mail)
{
    const std::vector<MailField>& fields = mail.GetFields();
    if (fields.empty())
        return {};
    const char* const start = fields.front().name.data();
    const std::string_view last = fields.back().value;
    return {start, static_cast<std::size_t>(last.data() + last.size() - start)};
}

} // namespace

std::string MarkerFile::MakeKey(const Mail& mail, const std::string& path)
{
    const MailField* const field = FindField(mail.GetFields(), "Message-ID");
    const std::string_view value = field == nullptr ? std::string_view() : field->value;
    const std::size_t start = value.find('<');
    const std::size_t end = value.find('>', std::min(start, value.size()));
    const bool whole = start != value.npos && end != value.npos;
    const std::string identifier = whole ? std::string(value.substr(start, end + 1 - start))
                                         : path + std::string(GetHeader(mail));
    const bool plain = whole && identifier.size() > 2 && identifier.size() <= kMaxKey &&
                       std::all_of(identifier.begin(), identifier.end(),
                                   [](char c) { return c > ' ' && c <= '~'; });
    return plain ? identifier : DigestOf(identifier);
}

SettingsFile::State MarkerFile::Load(const std::string& path)
{
    if (path != m_path)
        m_unsaved.clear();
    m_path = path;
    const SettingsFile::State state = m_file.Load(path, {});
    for (const auto& [key, markers] : m_unsaved)
        Put(key, markers);
    return state;
}

bool MarkerFile::Save()
{
    if (m_unsaved.empty())
        return true;
    Load(m_path);
    if (!m_file.Save())
        return false;
    m_unsaved.clear();
    return true;
}

std::string MarkerFile::Get(const std::string& key) const
{
    CString markers;
    m_file.Data().GetValue(kSection, key.c_str(), markers);
    return markers.GetString();
}

void MarkerFile::Set(const std::string& key, const std::string& markers)
{
    m_unsaved[key] = markers;
    Put(key, markers);
}

void MarkerFile::Put(const std::string& key, const std::string& markers)
{
    if (markers.empty())
        m_file.Data().RemoveName(kSection, key.c_str());
    else
        m_file.Data().SetValue(kSection, key.c_str(), markers.c_str());
}

} // namespace tlvn
