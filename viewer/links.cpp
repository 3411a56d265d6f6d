#include "viewer/links.h"

#include "editor/link_range.h"
#include "platform/nls.h"

#include <algorithm>

namespace tlvn {

namespace {

void AppendLinksOfLine(WStringView line, std::vector<CEditorLineRange>& ranges,
                       std::vector<Link>& links)
{
    FindLinks(reinterpret_cast<const char*>(line.data()), static_cast<int>(line.size() * 2),
              CT_UNICODE, ranges);
    for (const CEditorLineRange& range : ranges) {
        const bool isMail = range.type == CEditorLineRange::ElRangeMail;
        Link link{isMail ? LinkKind::Mail : LinkKind::Url, {}};
        link.text = Utf16ToUtf8(line.substr(static_cast<std::size_t>(range.start / 2),
                                            static_cast<std::size_t>(range.length / 2)));
        links.push_back(std::move(link));
    }
}

} // namespace

std::vector<Link> FindLinks(std::string_view utf8)
{
    std::vector<Link> links;
    WString wide;
    std::vector<CEditorLineRange> ranges;
    while (!utf8.empty()) {
        const std::size_t length = std::min(utf8.find('\n'), utf8.size());
        const std::string_view line = utf8.substr(0, length);
        // No link is without one of these.
        if (line.find_first_of(":\\@") != line.npos) {
            AppendLinksOfLine(Utf8ToUtf16(line), ranges, links);
        }
        utf8.remove_prefix(std::min(length + 1, utf8.size()));
    }
    return links;
}

const char* GetLinkKindName(LinkKind kind)
{
    return kind == LinkKind::Mail ? "mail" : "url";
}

} // namespace tlvn
