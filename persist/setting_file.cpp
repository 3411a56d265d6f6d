// Reading and writing the file of a CSettingData, and what the user is asked when that fails.

#include "foundation/str_exception.h"
#include "framework/x_message_box.h"
#include "persist/cipher_container.h"
#include "persist/setting_data.h"
#include "persist/wipe.h"
#include "platform/clock.h"

#include <climits>
#include <string>

namespace {

constexpr UINT kNotSavedMessage = 3171;
constexpr UINT kEmergencyMessage = 3172;
constexpr UINT kIgnoreQuestion = 3173;
constexpr UINT kRetryButton = 3191;
constexpr UINT kContinueButton = 3192;
constexpr UINT kCancelButton = 3193;

enum class Answer { Retry, Cancel, Continue };

// Wipes what a buffer held of the plain text of an enciphered file.
class WipedBuffer : public CBuffer {
public:
    explicit WipedBuffer(bool wipe) : m_wipe(wipe) {}
    ~WipedBuffer() override
    {
        if (m_wipe)
            tlvn::Wipe(GetBuffer(), static_cast<std::size_t>(GetAllocSize()));
    }
    WipedBuffer(const WipedBuffer&) = delete;
    WipedBuffer& operator=(const WipedBuffer&) = delete;

private:
    bool m_wipe;
};

// The whole content of a file, which others may read and write meanwhile.
tlvn::FileResult ReadWholeFile(const char* path, CBuffer& content)
{
    tlvn::FileHandle file = tlvn::kNoFile;
    tlvn::FileResult result =
        tlvn::OpenFile(path, tlvn::kFileRead, 0, tlvn::FileCreation::OpenExisting, file);
    if (!result)
        return result;
    INT64 size = 0;
    std::size_t done = 0;
    try {
        result = tlvn::GetFileSize(file, size);
        if (size > INT_MAX / 2)
            AfxThrowMemoryException();
        if (result && size > 0)
            result = tlvn::ReadFromFile(file, content.GetBuffer(static_cast<int>(size)),
                                        static_cast<std::size_t>(size), done);
    } catch (...) {
        tlvn::CloseFile(file);
        throw;
    }
    tlvn::CloseFile(file);
    content.ReleaseBuffer(static_cast<int>(done));
    return result;
}

Answer AskUser(const CString& text, IfErrAsk ask, CWnd* owner)
{
    const CString retry = tlvn::MessageText(kRetryButton);
    const CString cancel = tlvn::MessageText(kCancelButton);
    const CString goOn = tlvn::MessageText(kContinueButton);
    const char* buttons[3] = {retry};
    Answer answers[3] = {Answer::Retry};
    int count = 1;
    if (ask != ASK_RETRY_CONTINUE) {
        buttons[count] = cancel;
        answers[count++] = Answer::Cancel;
    }
    if (ask != ASK_RETRY_CANCEL) {
        buttons[count] = goOn;
        answers[count++] = Answer::Continue;
    }
    const int cancelIndex = ask != ASK_RETRY_CONTINUE ? 1 : -1;
    const int pressed = XMessageBox(owner, text, MB_ICONEXCLAMATION, buttons, count, cancelIndex);
    return pressed >= 0 && pressed < count ? answers[pressed] : Answer::Cancel;
}

int ShowBox(CWnd* owner, const char* text, UINT type)
{
    return owner != nullptr ? owner->MessageBox(text, nullptr, type) : AfxMessageBox(text, type);
}

bool ConfirmLoss(const char* question, CWnd* owner)
{
    const CString standard = tlvn::MessageText(kIgnoreQuestion);
    const bool given = question != nullptr && *question != '\0';
    return ShowBox(owner, given ? question : static_cast<const char*>(standard),
                   MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION) == IDYES;
}

// The part of a path behind the last separator.
const char* FileNameOf(const char* path)
{
    const char* name = path;
    for (const char* p = path; *p != '\0'; p += tlvn::IsDoubleByte(p) ? 2 : 1)
        if (tlvn::IsPathSeparator(*p) || *p == ':')
            name = p + 1;
    return name;
}

// "_" and the local time, for the name of a file.
CString TimeSuffix()
{
    std::tm now = {};
    tlvn::ToLocalTime(tlvn::GetSystemTime(), now);
    CString text;
    text.Format("_%02d%02d%02d_%02d%02d%02d", (now.tm_year + 1900) % 1000, now.tm_mon + 1,
                now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec);
    return text;
}

} // namespace

void CSettingData::SetError(const CString& text, const char* path, const CString& data)
{
    m_errorMessage = text;
    if (path != nullptr) {
        m_errorMessage += "\nFile: ";
        m_errorMessage += path;
    }
    if (!data.IsEmpty()) {
        m_errorMessage += "\nData: ";
        m_errorMessage += data;
    }
}

void CSettingData::SetFileError(const tlvn::FileResult& result, const char* path)
{
    const LONG systemError = static_cast<LONG>(result.systemError);
    CFileException error(CFileException::OsErrorToException(systemError), systemError, path);
    SetError(GetExceptionMessage(&error), path, CString());
}

int CSettingData::LoadFile(const char* path)
{
    if (m_loaded)
        return 1;
    m_path = path;
    m_keys.RemoveAll();
    m_updated = 0;
    int loaded = 0;
    try {
        loaded = ReadFile(m_path);
    } catch (CException* e) {
        SetError(GetExceptionMessage(e), m_path, CString());
        e->Delete();
    }
    if (loaded == 0) {
        m_keys.RemoveAll();
        m_image.reset();
        m_updated = 0;
    }
    m_loaded = loaded;
    return loaded;
}

int CSettingData::ReadFile(const char* path)
{
    m_image = tlvn::GuardMemory([&] { return std::make_unique<WipedBuffer>(IsEnciphered()); });
    CBuffer& text = *m_image;
    const tlvn::FileResult result = ReadWholeFile(path, text);
    if (!result) {
        SetFileError(result, path);
        return 0;
    }
    if (IsEnciphered()) {
        WipedBuffer plain(true);
        CString message;
        const auto* const bytes = reinterpret_cast<const unsigned char*>(text.GetBuffer());
        if (DecodeBlowFish(m_cryptKey, bytes, text.GetLength(), plain, message) == 0) {
            SetError(message, path, CString());
            return 0;
        }
        text.MoveFrom(plain);
    }

    // The content of a buffer is aligned for units; an odd byte at its end counts for nothing.
    const tlvn::WStringView units(reinterpret_cast<const WCHAR*>(text.GetBuffer()),
                                  static_cast<std::size_t>(text.GetLength()) / sizeof(WCHAR));
    const tlvn::SettingTextResult read = tlvn::ReadSettingText(units, m_keys);
    if (read.message != 0) {
        SetError(tlvn::MessageText(read.message), path, read.data);
        return 0;
    }
    m_updated = read.duplicates;
    return 1;
}

int CSettingData::WriteFile(const char* path)
{
    try {
        WipedBuffer text(IsEnciphered());
        tlvn::WriteSettingText(m_keys, text);
        CBuffer container;
        const CBuffer* image = &text;
        if (IsEnciphered()) {
            EncodeBlowFish(m_cryptKey, reinterpret_cast<const unsigned char*>(text.GetBuffer()),
                           text.GetLength(), container);
            image = &container;
        }
        const tlvn::FileResult result = tlvn::WriteWholeFile(
            path, image->GetBuffer(), static_cast<std::size_t>(image->GetLength()));
        if (result)
            return 1;
        SetFileError(result, path);
    } catch (CException* e) {
        SetError(GetExceptionMessage(e), path, CString());
        e->Delete();
    }
    return 0;
}

int CSettingData::SaveFile(const char* path)
{
    if (WriteFile(path) == 0)
        return 0;
    m_updated = 0;
    return 1;
}

int CSettingData::SaveEmergencyCopy(const char* path, CWnd* owner)
{
    CString copy(tlvn::GetTempFolder().c_str());
    copy += FileNameOf(path);
    copy += TimeSuffix();
    if (WriteFile(copy) == 0)
        return 0;
    CString text;
    text.Format(tlvn::MessageText(kEmergencyMessage), static_cast<const char*>(copy), path);
    ShowBox(owner, text, MB_OK | MB_ICONINFORMATION);
    return 1;
}

int CSettingData::SaveSdWithRetry(const char* path, IfErrAsk ask, int emergencySave,
                                  const char* ignoreQuestion, CString* message, CWnd* owner)
{
    if (message != nullptr)
        message->Empty();
    if (!m_updated)
        return 1;
    const CString target(path != nullptr ? path : static_cast<const char*>(m_path));

    while (SaveFile(target) == 0) {
        const CString text = tlvn::MessageText(kNotSavedMessage) + "\n" + m_errorMessage;
        if (message != nullptr)
            *message = text;
        if (ask != ASK_RETRY_CANCEL && ask != ASK_RETRY_CONTINUE &&
            ask != ASK_RETRY_CANCEL_CONTINUE)
            return 0;

        Answer answer = AskUser(text, ask, owner);
        while (answer == Answer::Continue && !ConfirmLoss(ignoreQuestion, owner))
            answer = AskUser(text, ask, owner);
        if (answer == Answer::Cancel)
            return 0;
        if (answer == Answer::Continue) {
            if (emergencySave != 0)
                SaveEmergencyCopy(target, owner);
            break;
        }
    }
    if (message != nullptr)
        message->Empty();
    return 1;
}
