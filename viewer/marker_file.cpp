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

} // namespace

std::string MarkerFile::MakeKey(const Mail& mail, const std::string& path)
{
    const MailField* const field = FindField(mail.GetFields(), "Message-ID");
    const std::string_view value = field == nullptr ? std::string_view() : field->value;
    const std::size_t start = value.find('<');
    const std::size_t end = value.find('>', std::min(start, value.size()));
    const bool whole = start != value.npos && end != value.npos;
    const std::string_view identifier = whole ? value.substr(start, end + 1 - start) : path;
    const bool plain = whole && identifier.size() > 2 && identifier.size() <= kMaxKey &&
                       std::all_of(identifier.begin(), identifier.end(),
                                   [](char c) { return c > ' ' && c <= '~'; });
    return plain ? std::string(identifier) : DigestOf(identifier);
}

std::string MarkerFile::Get(const std::string& key) const
{
    CString markers;
    m_file.Data().GetValue(kSection, key.c_str(), markers);
    return markers.GetString();
}

void MarkerFile::Set(const std::string& key, const std::string& markers)
{
    if (markers.empty())
        m_file.Data().RemoveName(kSection, key.c_str());
    else
        m_file.Data().SetValue(kSection, key.c_str(), markers.c_str());
}

} // namespace tlvn
