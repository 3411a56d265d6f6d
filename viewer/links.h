// Links in the text of a mail: URLs, paths of files, mail addresses.
//
// They are those that the editor finds (editor/link_range.h) in each line, taken as UTF-16.

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
