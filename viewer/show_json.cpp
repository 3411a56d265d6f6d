#include "viewer/show_json.h"

#include "viewer/links.h"

namespace tlvn {

namespace {

void AppendPair(const char* name1, std::string_view value1, const char* name2,
                std::string_view value2, std::string& json)
{
    json += "    {";
    AppendJsonString(name1, json);
    json += ": ";
    AppendJsonString(value1, json);
    json += ", ";
    AppendJsonString(name2, json);
    json += ": ";
    AppendJsonString(value2, json);
    json += '}';
}

void AppendHeaders(const Mail& mail, std::string& json)
{
    const char* separator = "\n";
    json += "  \"headers\": [";
    for (const MailField& field : mail.GetFields()) {
        json += separator;
        separator = ",\n";
        AppendPair("name", field.name, "value", DecodeField(field), json);
    }
    json += "\n  ],\n";
}

void AppendLinks(std::string_view text, std::string& json)
{
    const char* separator = "\n";
    json += "  \"links\": [";
    for (const Link& link : FindLinks(text)) {
        json += separator;
        separator = ",\n";
        AppendPair("kind", GetLinkKindName(link.kind), "text", link.text, json);
    }
    json += "\n  ]\n";
}

} // namespace

void AppendJsonString(std::string_view utf8, std::string& json)
{
    constexpr char kHexDigits[] = "0123456789abcdef";
    json += '"';
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (c == '\n') {
            json += "\\n";
        } else if (c == '\t') {
            json += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            json += "\\u00";
            json += kHexDigits[byte >> 4];
            json += kHexDigits[byte & 15];
        } else {
            json += c;
        }
    }
    json += '"';
}

std::string FormatMailJson(const Mail& mail)
{
    const MailText text = mail.ReadText();
    const std::string utf8 = ToUtf8(text);
    std::string json = "{\n";
    AppendHeaders(mail, json);
    json += "  \"charset\": ";
    if (text.charset.empty()) {
        json += "null";
    } else {
        std::string label;
        ConvertTextToUtf8(DetectTextCode(text.charset), text.charset, label);
        AppendJsonString(label, json);
    }
    json += ",\n  \"codeType\": " + std::to_string(static_cast<int>(text.code.type));
    json += text.code.labelled ? ",\n  \"how\": \"label\"" : ",\n  \"how\": \"detected\"";
    json += ",\n  \"text\": ";
    AppendJsonString(utf8, json);
    json += ",\n";
    AppendLinks(utf8, json);
    json += "}\n";
    return json;
}

} // namespace tlvn
