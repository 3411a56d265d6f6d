#include "viewer/links.h"

#include "platform/multibyte.h"

#include <algorithm>

namespace tlvn {

namespace {

// RFC 5321: 64 bytes before the "@", 255 behind it.
constexpr std::size_t kMaxLocalPart = 64;
constexpr std::size_t kMaxDomain = 255;
constexpr std::string_view kSchemes[] = {"https://", "http://", "ftp://", "mailto:"};

bool IsUrlCharacter(char c)
{
    constexpr std::string_view kExcluded = "\"<>\\^`{|}";
    return c > ' ' && c < '\x7F' && kExcluded.find(c) == kExcluded.npos;
}

bool IsLocalCharacter(char c)
{
    constexpr std::string_view kSpecial = "!#$%&'*+-/=?^_`{|}~.";
    return IsAlnum(c) || kSpecial.find(c) != kSpecial.npos;
}

bool IsDomainCharacter(char c)
{
    return IsAlnum(c) || c == '-' || c == '.';
}

std::size_t SchemeLength(std::string_view text)
{
    for (const std::string_view scheme : kSchemes) {
        if (text.size() > scheme.size() &&
            std::equal(scheme.begin(), scheme.end(), text.begin(),
                       [](char a, char b) { return a == ToLowerAscii(b); }))
            return scheme.size();
    }
    return 0;
}

// Takes away what belongs to the sentence around the URL.
std::string_view TrimUrl(std::string_view url)
{
    constexpr std::string_view kPunctuation = ".,;:!?'*~";
    const auto opened = std::count(url.begin(), url.end(), '(');
    auto closed = std::count(url.begin(), url.end(), ')');
    const auto openedSquare = std::count(url.begin(), url.end(), '[');
    auto closedSquare = std::count(url.begin(), url.end(), ']');
    for (; !url.empty(); url.remove_suffix(1)) {
        const char last = url.back();
        if (last == ')' && closed > opened)
            --closed;
        else if (last == ']' && closedSquare > openedSquare)
            --closedSquare;
        else if (kPunctuation.find(last) == kPunctuation.npos)
            break;
    }
    return url;
}

// The address around the "@" at `at`, not starting before `from`; empty when there is none.
std::string_view AddressAt(std::string_view text, std::size_t at, std::size_t from)
{
    const std::size_t limit = std::max(from, at > kMaxLocalPart ? at - kMaxLocalPart : 0);
    std::size_t begin = at;
    while (begin > limit && IsLocalCharacter(text[begin - 1]))
        --begin;
    while (begin < at && text[begin] == '.')
        ++begin;

    std::size_t end = at + 1;
    while (end < text.size() && end - at <= kMaxDomain && IsDomainCharacter(text[end]))
        ++end;
    while (!IsAlnum(text[end - 1]) && end - 1 > at)
        --end;

    const std::string_view domain = text.substr(at + 1, end - at - 1);
    const std::size_t dot = domain.rfind('.');
    const bool wellFormed = begin < at && dot != domain.npos && dot > 0 &&
                            IsAlpha(domain[dot + 1]) && domain.find("..") == domain.npos;
    return wellFormed ? text.substr(begin, end - begin) : std::string_view();
}

} // namespace

std::vector<Link> FindLinks(std::string_view utf8)
{
    std::vector<Link> links;
    std::size_t from = 0; // end of the last link
    for (std::size_t i = 0; i < utf8.size();) {
        const char c = ToLowerAscii(utf8[i]);
        if (c == '@') {
            const std::string_view address = AddressAt(utf8, i, from);
            ++i;
            if (!address.empty()) {
                links.push_back({LinkKind::Mail, address});
                from = i = static_cast<std::size_t>(address.data() - utf8.data()) + address.size();
            }
            continue;
        }
        const bool mayStart =
            (c == 'h' || c == 'f' || c == 'm') && (i == 0 || !IsAlnum(utf8[i - 1]));
        const std::size_t scheme = mayStart ? SchemeLength(utf8.substr(i)) : 0;
        if (scheme == 0) {
            ++i;
            continue;
        }
        std::size_t end = i + scheme;
        while (end < utf8.size() && IsUrlCharacter(utf8[end]))
            ++end;
        const std::string_view url = TrimUrl(utf8.substr(i, end - i));
        if (url.size() > scheme) {
            links.push_back({LinkKind::Url, url});
            end = i + url.size();
        }
        from = i = end;
    }
    return links;
}

const char* GetLinkKindName(LinkKind kind)
{
    return kind == LinkKind::Mail ? "mail" : "url";
}

} // namespace tlvn
