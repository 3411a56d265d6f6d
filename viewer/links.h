// Links in the text of a mail: addresses of the web and mail addresses.
//
// A URL starts with http://, https://, ftp:// or mailto: (any case), not directly behind a
// letter or digit, and runs over the ASCII characters a URL may have; punctuation of the
// sentence at its end and a closing bracket that it did not open are not part of it. A mail
// address is plain text of the form local@domain with a dot in the domain.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tlvn {

enum class LinkKind { Url, Mail };

struct Link {
    LinkKind kind;
    std::string_view text; // into the text searched
};

// In the order of the text, without overlap. Time is in proportion to the text (UTF-8).
std::vector<Link> FindLinks(std::string_view utf8);

// "url" or "mail".
const char* GetLinkKindName(LinkKind kind);

} // namespace tlvn
