// What holds for every mail, whatever its bytes: shared by the random test and the fuzz target.

#pragma once

#include "platform/nls.h"
#include "viewer/header_text.h"
#include "viewer/links.h"
#include "viewer/mail_reader.h"
#include "viewer/show_json.h"
#include "viewer/show_source.h"
#include "viewer/show_text.h"

#include <string>
#include <string_view>

inline bool IsWellFormedUtf8(std::string_view text)
{
    tlvn::WString units;
    return tlvn::ConvertToUtf16(65001, std::string(text), units) == tlvn::kConverted;
}

// Whether some line of the body is the boundary's, closing or not.
inline bool HasBoundaryLine(std::string_view body, std::string boundary)
{
    while (boundary.ends_with(' '))
        boundary.pop_back();
    while (!body.empty()) {
        const std::size_t end = body.find('\n');
        std::string line(body.substr(0, end));
        while (!line.empty() && std::string_view(" \t\r\v\f").find(line.back()) != line.npos)
            line.pop_back();
        if (line == "--" + boundary || line == "--" + boundary + "--")
            return true;
        body.remove_prefix(end == body.npos ? body.size() : end + 1);
    }
    return false;
}

// The property the mail violates, or empty.
inline std::string CheckMail(const std::string& bytes)
{
    using namespace tlvn;
    const Mail mail(bytes);
    const auto& parts = mail.GetParts();
    const char* lastEnd = nullptr;
    for (const MailPart& part : parts) {
        if (part.body.data() != nullptr && part.body.data() < lastEnd)
            return "bodies overlap or are out of order";
        if (part.body.data() != nullptr)
            lastEnd = part.body.data() + part.body.size();
        DecodeBody(part, 100'000);
        for (int outer = part.parent; outer >= 0;) {
            const MailPart& multipart = parts[static_cast<std::size_t>(outer)];
            const ParameterList type(FindField(multipart.fields, "content-type")->value);
            if (!multipart.container)
                return "a part inside of a part that is no multipart";
            if (HasBoundaryLine(part.body, std::string(type.Find("boundary"))))
                return "a body goes past the boundary of a multipart it is in";
            outer = multipart.parent;
        }
        if (!IsWellFormedUtf8(part.fileName))
            return "a file name is no UTF-8";
    }

    if (!IsWellFormedUtf8(FormatMailJson(mail)))
        return "the JSON is no UTF-8";
    const std::string shown = FormatMailText(mail);
    if (shown != MakeHarmless(shown, true))
        return "the text shown is not harmless";

    const std::string text = ToUtf8(mail.ReadText());
    std::size_t linkEnd = 0;
    for (const Link& link : FindLinks(text)) {
        const std::size_t start = text.find(link.text, linkEnd);
        if (link.text.empty() || start == text.npos)
            return "links are empty, overlap or are out of order";
        linkEnd = start + link.text.size();
        if (link.text.find('\n') != link.text.npos)
            return "a link goes past its line";
    }
    std::string source;
    std::string error;
    if (FormatMailSource(mail, source, error) == 0 && mail.GetTextPart() >= 0)
        return "the text does not come back from its encoding";
    return {};
}
