#include "viewer/links.h"

#include "mailtext/mail_finder.h"
#include "mailtext/url_finder.h"
#include "platform/nls.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr UINT kUtf8Page = 65001;

// The next link of one kind in a line, found when it is asked for. All counts are in units.
class LinkSource {
public:
    using Finder = int (*)(const WCHAR* text, int length, int& foundLength);

    LinkSource(WStringView line, Finder find) : m_line(line), m_find(find) {}

    // Sets the first link at or after `from`, or its start to the end of the line.
    void MoveTo(std::size_t from)
    {
        if (m_searched && (m_start >= from || m_start == m_line.size()))
            return;
        m_searched = true;
        int length = 0;
        const int found =
            m_find(m_line.data() + from, static_cast<int>((m_line.size() - from) * 2), length);
        m_start = found < 0 ? m_line.size() : from + static_cast<std::size_t>(found / 2);
        m_length = static_cast<std::size_t>(length / 2);
    }

    std::size_t GetStart() const { return m_start; }
    std::size_t GetEnd() const { return m_start + m_length; }

private:
    WStringView m_line;
    Finder m_find;
    bool m_searched = false;
    std::size_t m_start = 0;
    std::size_t m_length = 0;
};

void AppendLinksOfLine(WStringView line, std::vector<Link>& links)
{
    LinkSource urls(line, FindUrlW);
    LinkSource addresses(line, FindEMailW);
    for (std::size_t from = 0;;) {
        urls.MoveTo(from);
        addresses.MoveTo(from);
        const bool isMail = addresses.GetStart() < urls.GetStart();
        const LinkSource& first = isMail ? addresses : urls;
        if (first.GetStart() == line.size())
            return;
        Link link{isMail ? LinkKind::Mail : LinkKind::Url, {}};
        ConvertFromUtf16(
            kUtf8Page, line.substr(first.GetStart(), first.GetEnd() - first.GetStart()), link.text);
        links.push_back(std::move(link));
        from = first.GetEnd();
    }
}

} // namespace

std::vector<Link> FindLinks(std::string_view utf8)
{
    std::vector<Link> links;
    WString wide;
    while (!utf8.empty()) {
        const std::size_t length = std::min(utf8.find('\n'), utf8.size());
        const std::string_view line = utf8.substr(0, length);
        // No link is without one of these.
        if (line.find_first_of(":\\@") != line.npos) {
            ConvertToUtf16(kUtf8Page, line, wide);
            AppendLinksOfLine(wide, links);
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
