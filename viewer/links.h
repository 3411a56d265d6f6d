// Links in the text of a mail: URLs, paths of files, mail addresses.
//
// They are those that the library's finders give (mailtext/url_finder.h, mail_finder.h) on each
// line in UTF-16, the first first; where two would overlap, the one that starts first counts, of
// two at one place the URL.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tlvn {

enum class LinkKind { Url, Mail };

struct Link {
    LinkKind kind;
    std::string text; // UTF-8
};

// In the order of the text, without overlap. Time is in proportion to the text (UTF-8).
std::vector<Link> FindLinks(std::string_view utf8);

// "url" or "mail".
const char* GetLinkKindName(LinkKind kind);

} // namespace tlvn
