#include "viewer/show_text.h"

#include "charcode/charset.h"
#include "viewer/links.h"

namespace tlvn {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// Reads one character of UTF-8 at the front. Returns its length, or 0 when it is broken.
std::size_t ReadCharacter(std::string_view text, char32_t& c)
{
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) {
        c = first;
        return 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || length > text.size())
        return 0;
    c = first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return 0;
        c = c << 6 | (next & 0x3F);
    }
    return length;
}

bool IsHarmful(char32_t c)
{
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool direction = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return control || direction;
}

void AppendLine(std::string_view label, std::string_view value, std::string& out)
{
    constexpr std::size_t kLabelWidth = 10;
    out += label;
    out.append(label.size() < kLabelWidth ? kLabelWidth - label.size() : 1, ' ');
    out += MakeHarmless(value, false);
    out += '\n';
}

} // namespace

std::string MakeHarmless(std::string_view utf8, bool keepLines)
{
    std::string harmless;
    harmless.reserve(utf8.size());
    while (!utf8.empty()) {
        char32_t c = 0;
        const std::size_t length = ReadCharacter(utf8, c);
        if (length > 0 && (c == '\n' || c == '\t'))
            harmless += keepLines ? static_cast<char>(c) : ' ';
        else if (length == 0 || IsHarmful(c))
            harmless += kReplacement;
        else
            harmless += utf8.substr(0, length);
        utf8.remove_prefix(length > 0 ? length : 1);
    }
    return harmless;
}

std::string GetCodeTypeName(CodeType type)
{
    if (const char* const name = CharSetCode2Name(type))
        return name;
    return type == CT_UNICODE ? "UTF-16" : "unknown";
}

std::string FormatMailHeader(const Mail& mail)
{
    std::string out;
    for (const char* name : {"From", "To", "Cc", "Date", "Subject"}) {
        if (const MailField* const field = FindField(mail.GetFields(), name))
            AppendLine(std::string(name) + ':', DecodeField(*field), out);
    }
    for (const int index : mail.GetAttachments()) {
        const MailPart& part = mail.GetParts()[static_cast<std::size_t>(index)];
        const std::string name = part.fileName.empty() ? "(no name)" : part.fileName;
        AppendLine("Attached:", name + " (" + part.type + ")", out);
    }
    return out;
}

std::string FormatMailText(const Mail& mail)
{
    std::string out = FormatMailHeader(mail);
    const MailText text = mail.ReadText();
    std::string code = GetCodeTypeName(text.code.type);
    code += text.code.labelled ? ", by its label" : ", detected";
    if (!text.code.labelled && !text.charset.empty())
        code += " (the label says " + text.charset + ")";
    AppendLine("Code:", code, out);

    const std::string utf8 = ToUtf8(text);
    out += '\n';
    out += MakeHarmless(utf8, true);
    if (!out.ends_with('\n'))
        out += '\n';
    if (text.cut)
        out += "[The text is longer; the rest is left out.]\n";

    const std::vector<Link> links = FindLinks(utf8);
    if (!links.empty())
        out += "\nLinks:\n";
    for (const Link& link : links) {
        out += "  ";
        AppendLine(GetLinkKindName(link.kind), link.text, out);
    }
    return out;
}

} // namespace tlvn
