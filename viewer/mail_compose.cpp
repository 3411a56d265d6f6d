#include "viewer/mail_compose.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "mailtext/address_check.h"
#include "mailtext/mail_date.h"
#include "mailtext/transfer_encoding.h"
#include "persist/random.h"
#include "persist/whole_file.h"
#include "platform/clock.h"
#include "platform/folder.h"
#include "platform/nls.h"
#include "viewer/header_encode.h"
#include "viewer/mail_file.h"
#include "viewer/reason.h"

#include <algorithm>
#include <cstring>

namespace tlvn {

namespace {

constexpr std::size_t kMaxLineBytes = 998; // RFC 5322
constexpr char kEscape = '\x1B';

std::string_view View(const CBuffer& buffer)
{
    return {buffer, static_cast<std::size_t>(buffer.GetLength())};
}

std::string ToUtf8(const CString& text)
{
    return Utf16ToUtf8(WidenText(text.GetString()));
}

bool IsAscii(std::string_view text)
{
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

// --- the text ------------------------------------------------------------------------------------

// The text with every line end, CR, LF or both, as CR LF.
template <class Text>
Text WithCrLf(const Text& text)
{
    using Unit = typename Text::value_type;
    Text lines;
    lines.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != Unit{'\r'} && text[i] != Unit{'\n'}) {
            lines += text[i];
            continue;
        }
        lines += Unit{'\r'};
        lines += Unit{'\n'};
        if (text[i] == Unit{'\r'} && i + 1 < text.size() && text[i + 1] == Unit{'\n'})
            ++i;
    }
    return lines;
}

std::string NormalizeLines(std::string_view text, bool wide)
{
    if (!wide)
        return WithCrLf(std::string(text));
    WString units(text.size() / sizeof(WCHAR), WCHAR{});
    if (!units.empty())
        std::memcpy(units.data(), text.data(), units.size() * sizeof(WCHAR));
    units = WithCrLf(units);
    std::string bytes(units.size() * sizeof(WCHAR), '\0');
    if (!bytes.empty())
        std::memcpy(bytes.data(), units.data(), bytes.size());
    return bytes;
}

// True when the text, in the edit form `edit`, comes back from the type.
bool ConvertWithReturn(CodeType edit, std::string_view text, CodeType type, std::string& bytes)
{
    CBuffer converted;
    CBuffer back;
    if (ConvertToOtherCodeType2(edit, text.data(), static_cast<int>(text.size()), type, converted,
                                0) != 0 ||
        ConvertToOtherCodeType2(type, converted, converted.GetLength(), edit, back, 0) != 0 ||
        View(back) != text)
        return false;
    bytes = View(converted);
    return true;
}

bool EncodeText(const Draft& draft, DraftSource& source, std::string& body, std::string& error)
{
    const CodeType type = draft.codeType == CT_UNKNOWN ? CT_JIS : draft.codeType;
    const CodeType edit = CodeTypeSave2Edit(type);
    const std::string text = NormalizeLines(View(draft.text), IsCodeTypeUnicode(edit) != 0);

    if (ConvertWithReturn(edit, text, CT_UTF8, body) && IsAscii(body) &&
        body.find(kEscape) == body.npos) {
        source.codeType = CT_ASCII;
        return true;
    }
    for (const CodeType send : {CodeType2DefSend(type), CT_UTF8}) {
        const bool sendable = send != CT_ASCII && CharSetCode2Name(send) != nullptr;
        // What has no row in JIS X 0208 would go as it stands.
        const bool sevenBit = send == CT_JIS || send == CT_UTF7;
        if (sendable && ConvertWithReturn(edit, text, send, body) && (!sevenBit || IsAscii(body))) {
            source.codeType = send;
            return true;
        }
    }
    error = GetText(Reason::TextNotInCode);
    return false;
}

bool HasShortLines(std::string_view body)
{
    for (std::size_t start = 0; start < body.size();) {
        const std::size_t end = std::min(body.find('\n', start), body.size());
        if (end - start > kMaxLineBytes)
            return false;
        start = end + 1;
    }
    return true;
}

// --- the header ----------------------------------------------------------------------------------

void CheckAddress(const Mailbox& mailbox, std::string& error)
{
    CString message;
    const int fault = CheckEMailAddress(NarrowText(Utf8ToUtf16(mailbox.address)).c_str(), message);
    if (fault == ADDRCHECK_OK && IsAscii(mailbox.address))
        return;
    std::string why = ToUtf8(message);
    // Characters that the code page does not have went to the check as "?".
    if (why.empty())
        why = GetText(Reason::AddressNotAscii);
    error += (error.empty() ? "" : "\n") + FormatMailbox(mailbox) + ": " + why;
}

// The list's addresses; what is wrong with them goes behind `error`.
std::vector<Mailbox> ReadAddresses(const std::string& list, std::string& error)
{
    std::vector<Mailbox> mailboxes;
    std::string fault;
    if (!SplitMailboxList(list, mailboxes, fault))
        error += (error.empty() ? "" : "\n") + fault;
    for (const Mailbox& mailbox : mailboxes)
        CheckAddress(mailbox, error);
    return mailboxes;
}

bool IsFieldName(std::string_view name)
{
    return !name.empty() && name.size() <= 76 && std::all_of(name.begin(), name.end(), [](char c) {
        return c > ' ' && c <= '~' && c != ':';
    });
}

bool FormatHeader(const Draft& draft, CodeType type, std::string& header, std::string& error)
{
    constexpr std::size_t kColon = 2; // and the blank behind it
    const std::pair<std::string_view, const std::string*> lists[] = {
        {"From", &draft.from}, {"To", &draft.to}, {"Cc", &draft.cc}};
    for (const auto& [name, list] : lists)
        header += FormatField(
            name, EncodeMailboxes(ReadAddresses(*list, error), type, name.size() + kColon));
    constexpr std::string_view kSubject = "Subject";
    header +=
        FormatField(kSubject, EncodeHeaderText(draft.subject, type, kSubject.size() + kColon));
    for (const auto& [name, value] : draft.fields) {
        if (!IsFieldName(name))
            error += (error.empty() ? "" : "\n") + name + ": " + GetText(Reason::NoFieldName);
        header += FormatField(name, EncodeHeaderText(value, type, name.size() + kColon));
    }
    return error.empty();
}

} // namespace

std::string MakeMessageId(const std::string& from)
{
    constexpr char kDigits[] = "0123456789abcdefghijklmnopqrstuv";
    std::string id = "<";
    for (int i = 0; i < 4; ++i) {
        auto number = static_cast<unsigned>(GetRandom());
        for (int digit = 0; digit < 6; ++digit, number /= 32)
            id += kDigits[number % 32];
    }
    const std::string address = ReadFirstMailbox(from).address;
    const std::size_t at = address.rfind('@');
    const std::string domain = at == address.npos ? std::string() : address.substr(at + 1);
    const bool plain = !domain.empty() && domain.size() < 256 &&
                       std::all_of(domain.begin(), domain.end(), [](char c) {
                           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                                  (c >= 'A' && c <= 'Z') || c == '.' || c == '-';
                       });
    return id + '@' + (plain ? domain : "localhost") + '>';
}

bool FormatDraft(const Draft& draft, INT64 date, const std::string& messageId, DraftSource& source,
                 std::string& error)
{
    error.clear();
    source = {};
    std::string body;
    std::string header;
    if (!EncodeText(draft, source, body, error) ||
        !FormatHeader(draft, source.codeType, header, error))
        return false;

    const bool noZeros = body.find('\0') == body.npos;
    const char* const encoding =
        GetDefaultSendEncoding(HasShortLines(body), noZeros, source.codeType);
    CBuffer encoded;
    EncodeBody(encoding, reinterpret_cast<const unsigned char*>(body.data()),
               static_cast<int>(body.size()), 1, encoded);

    header += FormatField("Date", GetRFC822TimeText(CTime(date)).GetString());
    header += FormatField("Message-ID", messageId);
    header += FormatField("MIME-Version", "1.0");
    header += FormatField("Content-Type",
                          std::string("text/plain; charset=") + CharSetCode2Name(source.codeType));
    header += FormatField("Content-Transfer-Encoding", encoding);
    source.bytes = std::move(header);
    source.bytes += "\r\n";
    source.bytes += View(encoded);
    return true;
}

bool SaveDraft(const Draft& draft, const std::string& path, std::string& error)
{
    DraftSource source;
    if (!FormatDraft(draft, GetSystemTime(), MakeMessageId(draft.from), source, error))
        return false;
    std::string narrow;
    if (!ToNarrowPath(path, narrow)) {
        error = GetText(Reason::NameNotInPage);
        return false;
    }
    const FileResult written =
        WriteWholeFile(narrow.c_str(), source.bytes.data(), source.bytes.size());
    if (!written)
        error = DescribeWriteError(written.error);
    return static_cast<bool>(written);
}

} // namespace tlvn
