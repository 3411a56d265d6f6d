#include "editor/link_range.h"

#include "framework/guard_memory.h"
#include "mailtext/mail_finder.h"
#include "mailtext/url_finder.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr char kMailto[] = "mailto:";
constexpr int kMailtoLength = 7;

// Finds links in one text, narrow or UTF-16. Positions are in bytes from the start of the text.
class LinkSearch {
public:
    LinkSearch(const char* text, CodeType codeType)
        : m_text(text), m_codeType(codeType), m_wide(IsCodeTypeUnicode(codeType) != 0)
    {}

    // Sets the first URL or address that lies in [from, end). False when there is none.
    bool FindUrl(int from, int end, CEditorLineRange& link) const
    {
        const char* const p = m_text + from;
        const int found = m_wide ? FindUrlW(Wide(p), end - from, link.length)
                                 : FindUrlA(p, end - from, m_codeType, link.length);
        return Set(CEditorLineRange::ElRangeUrl, from, found, link);
    }
    bool FindMail(int from, int end, CEditorLineRange& link) const
    {
        const char* const p = m_text + from;
        const int found = m_wide ? FindEMailW(Wide(p), end - from, link.length)
                                 : FindEMailA(p, end - from, link.length);
        return Set(CEditorLineRange::ElRangeMail, from, found, link);
    }

private:
    static const WCHAR* Wide(const char* p) { return reinterpret_cast<const WCHAR*>(p); }

    static bool Set(CEditorLineRange::ElRangeType type, int from, int found, CEditorLineRange& link)
    {
        link.start = from + found;
        link.type = type;
        return found >= 0;
    }

    const char* m_text;
    CodeType m_codeType;
    bool m_wide;
};

// The search for URLs comes first, because its outcome bounds the other: an address that were
// taken first could cut the head off a URL that reaches to the end of the line, again and again,
// and each time the rest of the line would have to be searched anew.
void AppendLinks(const LinkSearch& search, int length, std::vector<CEditorLineRange>& links)
{
    for (int from = 0; from < length;) {
        CEditorLineRange url;
        const bool hasUrl = search.FindUrl(from, length, url);
        const int gapEnd = hasUrl ? url.start : length;
        CEditorLineRange mail;
        while (from < gapEnd && search.FindMail(from, gapEnd, mail)) {
            links.push_back(mail);
            from = mail.GetEnd();
        }
        if (!hasUrl)
            return;
        links.push_back(url);
        from = url.GetEnd();
    }
}

bool BeginsWithMailto(const char* text)
{
    return text != nullptr && tlvn::CompareAsciiNNoCase(text, kMailto, kMailtoLength) == 0;
}

bool IsAligned(const char* p)
{
    return reinterpret_cast<std::uintptr_t>(p) % alignof(WCHAR) == 0;
}

} // namespace

int IsRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text)
{
    return kind == CEditorLineRange::ElRangeMail ||
           (kind == CEditorLineRange::ElRangeUrl && BeginsWithMailto(text));
}

CString GetRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text)
{
    if (!IsRangeMailAddress(kind, text))
        return CString();
    if (!BeginsWithMailto(text))
        return CString(text);
    const CString address(text + kMailtoLength);
    const int query = address.Find('?');
    return query < 0 ? address : address.Left(query);
}

namespace tlvn {

void FindLinks(const char* text, int length, CodeType codeType,
               std::vector<CEditorLineRange>& links)
{
    links.clear();
    if (text == nullptr || length <= 0)
        return;
    GuardMemory([&] {
        if (IsCodeTypeUnicode(codeType) == 0 || IsAligned(text)) {
            AppendLinks(LinkSearch(text, codeType), length, links);
            return;
        }
        WString aligned(static_cast<std::size_t>(length / 2), WCHAR{});
        std::memcpy(aligned.data(), text, aligned.size() * sizeof(WCHAR));
        const char* const copy = reinterpret_cast<const char*>(aligned.data());
        AppendLinks(LinkSearch(copy, codeType), length & ~1, links);
    });
}

std::size_t FindLinkFrom(const std::vector<CEditorLineRange>& links, int byte)
{
    const auto found =
        std::partition_point(links.begin(), links.end(), [byte](const CEditorLineRange& link) {
            return link.GetEnd() <= byte;
        });
    return static_cast<std::size_t>(found - links.begin());
}

} // namespace tlvn
