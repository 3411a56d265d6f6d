#include "viewer/show_source.h"

#include "mailtext/transfer_encoding.h"
#include "platform/multibyte.h"

namespace tlvn {

namespace {

enum class LineEnds { CrLf, Lf, Mixed };

// Without any line end CR LF, that of mails.
LineEnds FindLineEnds(std::string_view text)
{
    std::size_t pairs = 0;
    std::size_t returns = 0;
    std::size_t feeds = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        returns += text[i] == '\r';
        feeds += text[i] == '\n';
        pairs += text[i] == '\n' && i > 0 && text[i - 1] == '\r';
    }
    if (pairs == returns && pairs == feeds)
        return LineEnds::CrLf;
    return returns == 0 ? LineEnds::Lf : LineEnds::Mixed;
}

bool IsContentField(const MailField& field)
{
    constexpr std::string_view kPrefix = "content-";
    return field.name.size() > kPrefix.size() &&
           CompareAsciiNNoCase(field.name.data(), kPrefix.data(),
                               static_cast<int>(kPrefix.size())) == 0;
}

void AppendFields(const std::vector<MailField>& fields, bool content, std::string_view lineEnd,
                  std::string& out)
{
    for (const MailField& field : fields) {
        if (IsContentField(field) != content)
            continue;
        out += field.name;
        out += ':';
        out += field.value;
        out += lineEnd;
    }
}

// Encoders write CR LF.
void RemoveReturns(std::string& text)
{
    std::erase(text, '\r');
}

} // namespace

int FormatMailSource(const Mail& mail, std::string& source, std::string& error)
{
    if (mail.GetTextPart() < 0) {
        error = "there is no text in it";
        return 0;
    }
    const MailPart& part = mail.GetParts()[static_cast<std::size_t>(mail.GetTextPart())];
    const std::string text = DecodeBody(part, part.body.size());
    const LineEnds lineEnds = FindLineEnds(text);

    const std::string encoding = part.encoding == "uuencode" ? "x-uuencode" : part.encoding;
    CBuffer encoded;
    EncodeBody(encoding.c_str(), reinterpret_cast<const unsigned char*>(text.data()),
               static_cast<int>(text.size()), lineEnds != LineEnds::Mixed ? 1 : 0, encoded);
    std::string body(encoded, static_cast<std::size_t>(encoded.GetLength()));
    if (lineEnds == LineEnds::Lf)
        RemoveReturns(body);

    MailPart written;
    written.encoding = part.encoding;
    written.body = body;
    if (DecodeBody(written, body.size()) != text) {
        error = "its text does not come back from its encoding";
        return 0;
    }
    const std::string_view lineEnd = lineEnds == LineEnds::CrLf ? "\r\n" : "\n";
    source.clear();
    AppendFields(mail.GetFields(), false, lineEnd, source);
    AppendFields(part.fields, true, lineEnd, source);
    source += lineEnd;
    source += body;
    return 1;
}

} // namespace tlvn
