#include "viewer/mail_export.h"

#include "platform/clock.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "viewer/mail_file.h"
#include "viewer/reason.h"

#include <algorithm>
#include <cstring>

namespace tlvn {

namespace {

constexpr std::size_t kMaxNameUnits = 80;
constexpr int kMostParts = 99;
const char kExtension[] = ".eml";

std::string LowerCase(std::string_view utf8)
{
    WString wide = Utf8ToUtf16(utf8);
    std::transform(wide.begin(), wide.end(), wide.begin(), ToLowerW);
    return Utf16ToUtf8(wide);
}

bool IsBadInName(WCHAR c)
{
    return c < ' ' || c == 0x7F || (c < 0x80 && std::strchr("\\/:*?\"<>|", c) != nullptr);
}

// Windows takes names that begin so for devices, whatever stands behind the first point.
bool IsDeviceName(WStringView name)
{
    static const char* const kDevices[] = {"con", "prn", "aux", "nul"};
    std::string device = LowerCase(Utf16ToUtf8(name.substr(0, name.find(TW('.')))));
    device.resize(device.find_last_not_of(' ') + 1);
    if (std::find(std::begin(kDevices), std::end(kDevices), device) != std::end(kDevices))
        return true;
    const std::string_view port = std::string_view(device).substr(0, 3);
    const std::string_view number = std::string_view(device).substr(port.size());
    return (port == "com" || port == "lpt") &&
           ((number.size() == 1 && number >= "1" && number <= "9") || number == "¹" ||
            number == "²" || number == "³");
}

// The name in front of ".eml", when it ends so.
std::string_view WithoutExtension(std::string_view name)
{
    const std::size_t length = sizeof kExtension - 1;
    const bool has =
        name.size() > length && LowerCase(name.substr(name.size() - length)) == kExtension;
    return has ? name.substr(0, name.size() - length) : name;
}

} // namespace

std::string MakeMailFileName(std::string_view subject, int number)
{
    WString name = Utf8ToUtf16(subject);
    std::replace_if(name.begin(), name.end(), IsBadInName, TW('_'));
    if (name.size() > kMaxNameUnits)
        name.resize((name[kMaxNameUnits - 1] & 0xFC00) == 0xD800 ? kMaxNameUnits - 1
                                                                 : kMaxNameUnits);
    // Windows drops points and blanks at the end of a name; one at its start hides it elsewhere.
    const auto isPad = [](WCHAR c) { return c == '.' || IsSpaceW(c); };
    while (!name.empty() && isPad(name.back()))
        name.pop_back();
    name.erase(name.begin(), std::find_if_not(name.begin(), name.end(), isPad));
    if (IsDeviceName(name))
        name.insert(name.begin(), TW('_'));
    return (name.empty() ? std::to_string(number) : Utf16ToUtf8(name)) + kExtension;
}

MailExport::MailExport(const MailList& list, std::vector<int> rows)
    : m_list(list), m_rows(std::move(rows))
{}

MailExport::~MailExport()
{
    GiveUp();
}

bool MailExport::Start(const std::string& path, const std::string& password, std::string& error)
{
    GiveUp();
    m_done = 0;
    m_names.clear();
    if (!ToNarrowPath(path, m_target)) {
        error = GetText(Reason::NameNotInPage);
        return false;
    }
    std::string narrowPassword;
    if (ConvertFromUtf16(GetMultibytePage(), Utf8ToUtf16(password), narrowPassword) != kConverted) {
        error = GetText(Reason::PasswordNotInPage);
        return false;
    }
    if (!ReservePart(error))
        return false;
    if (m_zip.CreateZip(Utf8ToUtf16(FromNarrowPath(m_part)).c_str(), narrowPassword.c_str()) != 0)
        return true;
    error = Utf16ToUtf8(m_zip.GetLastErrorMsg().GetString());
    GiveUp();
    return false;
}

// Makes the empty file in which the archive is written: what has that name already is the user's.
bool MailExport::ReservePart(std::string& error)
{
    FileResult made;
    for (int i = 1; i <= kMostParts; ++i) {
        const std::string part = m_target + ".part" + (i > 1 ? std::to_string(i) : "");
        FileHandle file = kNoFile;
        made = OpenFile(part.c_str(), kFileWrite, 0, FileCreation::CreateNew, file);
        if (made) {
            CloseFile(file);
            m_part = part;
            return true;
        }
        if (made.error != FileError::AlreadyExists)
            break;
    }
    error = DescribeWriteError(made.error);
    return false;
}

bool MailExport::Step(int milliseconds, std::string& error)
{
    error.clear();
    if (m_part.empty())
        return false;
    const DWORD start = GetTickMilliseconds();
    do {
        if (m_done == GetTotal())
            return Finish(error);
        if (!AddMail(m_rows[static_cast<std::size_t>(m_done)], error)) {
            GiveUp();
            return false;
        }
        ++m_done;
    } while (GetTickMilliseconds() - start < static_cast<DWORD>(milliseconds));
    return true;
}

bool MailExport::AddMail(int row, std::string& error)
{
    std::string bytes;
    const std::string name = MakeName(row);
    if (!m_list.LoadMail(row, bytes, error)) {
        error = name + ": " + error;
        return false;
    }
    if (m_zip.ZipAdd(Utf8ToUtf16(name).c_str(), bytes.data(),
                     static_cast<unsigned>(bytes.size())) != 0)
        return true;
    error = Utf16ToUtf8(m_zip.GetLastErrorMsg().GetString());
    return false;
}

// Always false: there is no more to do.
bool MailExport::Finish(std::string& error)
{
    if (m_zip.Close() == 0) {
        error = Utf16ToUtf8(m_zip.GetLastErrorMsg().GetString());
        GiveUp();
        return false;
    }
    if (!ReplaceFileWith(m_part.c_str(), m_target.c_str())) {
        error = GetText(Reason::ArchiveNotPlaced) + FromNarrowPath(m_target);
        GiveUp();
        return false;
    }
    m_part.clear();
    return false;
}

void MailExport::GiveUp()
{
    if (m_part.empty())
        return;
    m_zip.Close();
    RemoveFile(m_part.c_str());
    m_part.clear();
}

std::string MailExport::MakeName(int row)
{
    const std::string path = m_list.GetPath(row);
    const std::string_view file = GetLastName(path);
    const std::string_view stem = WithoutExtension(file);
    const int number = m_list.GetMailOfRow(row) + 1;
    std::string name;
    if (stem.size() == file.size()) {
        name = MakeMailFileName(m_list.GetRow(row).subject, number);
    } else {
        // What is a name here may be a path where the archive is unpacked.
        const WString wide = Utf8ToUtf16(stem);
        const bool good = std::none_of(wide.begin(), wide.end(), IsBadInName);
        name = good ? std::string(file) : MakeMailFileName(stem, number);
    }
    std::string unique = name;
    int& used = m_names[LowerCase(name)];
    while (used > 0) {
        unique =
            std::string(WithoutExtension(name)) + " (" + std::to_string(++used) + ")" + kExtension;
        if (m_names.emplace(LowerCase(unique), 1).second)
            return unique;
    }
    used = 1;
    return unique;
}

} // namespace tlvn
