#include "viewer/mail_reader.h"

#include "foundation/buffer.h"
#include "mailtext/base64.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/uuencode.h"
#include "platform/multibyte.h"
#include "viewer/header_text.h"
#include "viewer/part_scanner.h"

#include <algorithm>

namespace tlvn {

namespace {

// How far back a cut text is shortened to end at a line end.
constexpr std::size_t kCutSearch = 65'536;

bool EqualNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return ToLowerAscii(x) == ToLowerAscii(y);
           });
}

bool IsMultipart(const MailPart& part)
{
    return part.type.starts_with("multipart/");
}

// 0 for the kind of part whose text is shown first, -1 for one that is not shown.
int TextRank(const MailPart& part)
{
    if (part.container || part.attached)
        return -1;
    if (!part.fileName.empty())
        return part.type == "text/plain" ? 3 : -1;
    if (part.type == "text/plain")
        return 0;
    if (part.type == "text/html")
        return 1;
    return part.type.starts_with("text/") || IsMultipart(part) ? 2 : -1;
}

int ChooseTextPart(const std::vector<MailPart>& parts)
{
    int chosen = -1;
    int chosenRank = -1;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const int rank = TextRank(parts[i]);
        if (rank >= 0 && (chosenRank < 0 || rank < chosenRank)) {
            chosen = static_cast<int>(i);
            chosenRank = rank;
        }
    }
    return chosen;
}

// At most `limit` bytes of the text, whole lines where there are any near the end.
std::string_view CutText(std::string_view text, std::size_t limit)
{
    if (text.size() <= limit)
        return text;
    text = text.substr(0, limit);
    const std::size_t lineEnd = text.rfind('\n');
    if (lineEnd != text.npos && text.size() - lineEnd < kCutSearch)
        text = text.substr(0, lineEnd + 1);
    return text;
}

// The decoders read to a zero, which is a fault of the mail and no end of it.
std::string WithoutZeros(std::string_view body, std::string_view replacement)
{
    std::string whole;
    whole.reserve(body.size());
    for (const char c : body) {
        if (c == '\0')
            whole += replacement;
        else
            whole += c;
    }
    return whole;
}

std::string ToString(const CBuffer& buffer)
{
    return std::string(buffer.GetBuffer(), static_cast<std::size_t>(buffer.GetLength()));
}

} // namespace

const MailField* FindField(const std::vector<MailField>& fields, std::string_view name)
{
    const auto found = std::find_if(fields.begin(), fields.end(), [name](const MailField& field) {
        return EqualNoCase(field.name, name);
    });
    return found == fields.end() ? nullptr : &*found;
}

std::string DecodeField(const MailField& field)
{
    return DecodeHeaderValue(field.value.substr(0, kMaxValueBytes));
}

std::string DecodeBody(const MailPart& part, std::size_t limit)
{
    const std::string body(CutText(part.body, limit));
    CBuffer decoded;
    if (part.encoding == "base64") {
        DecodeBase64(WithoutZeros(body, "").c_str(), decoded);
        return ToString(decoded);
    }
    if (part.encoding == "quoted-printable") {
        DecodeQuotedPrintable(WithoutZeros(body, "=00").c_str(), decoded);
        return ToString(decoded);
    }
    const bool uuencoded = part.encoding == "x-uuencode" || part.encoding == "uuencode";
    if (uuencoded && DecodeUuencode(body.c_str(), nullptr, nullptr, &decoded) != 0)
        return ToString(decoded);
    return body;
}

std::string ToUtf8(const MailText& text)
{
    std::string utf8;
    ConvertTextToUtf8(text.code.type, text.bytes, utf8);

    std::size_t to = 0;
    for (std::size_t from = 0; from < utf8.size(); ++from) {
        if (utf8[from] != '\r')
            utf8[to++] = utf8[from];
        else if (from + 1 == utf8.size() || utf8[from + 1] != '\n')
            utf8[to++] = '\n';
    }
    utf8.resize(to);
    return utf8;
}

Mail::Mail(std::string bytes) : m_bytes(std::move(bytes)), m_parts(ScanParts(m_bytes))
{
    m_textPart = ChooseTextPart(m_parts);
}

std::string Mail::GetHeaderText(std::string_view name) const
{
    const MailField* const field = FindField(GetFields(), name);
    return field != nullptr ? DecodeField(*field) : std::string();
}

MailText Mail::ReadText() const
{
    MailText text;
    if (m_textPart < 0)
        return text;
    const MailPart& part = m_parts[static_cast<std::size_t>(m_textPart)];
    text.bytes = DecodeBody(part, kMaxTextBytes);
    text.charset = part.charset;
    text.code = ChooseTextCode(part.charset, text.bytes);
    text.cut = part.body.size() > kMaxTextBytes;
    return text;
}

std::vector<int> Mail::GetAttachments() const
{
    std::vector<int> attachments;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        const MailPart& part = m_parts[i];
        const int index = static_cast<int>(i);
        if (part.container || index == m_textPart)
            continue;
        const bool text = part.type.starts_with("text/") || IsMultipart(part);
        if (part.attached || !part.fileName.empty() || !text)
            attachments.push_back(index);
    }
    return attachments;
}

} // namespace tlvn
