#include "editor/open_url.h"

#include "mailtext/url_finder.h"
#include "platform/browser.h"
#include "platform/multibyte.h"

#include <cstring>

namespace tlvn {

namespace {

constexpr char kMailto[] = "mailto:";

bool HasPrefix(const char* text, const char* prefix)
{
    return CompareAsciiNNoCase(text, prefix, static_cast<int>(std::strlen(prefix))) == 0;
}

// The target as an address that can stand in a command line.
WString MakeAddress(const char* target)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    WString address;
    for (const WCHAR c : WidenText(target)) {
        if (c < ' ' || c == 0x7F || c == '"') {
            address += '%';
            address += static_cast<WCHAR>(kDigits[c >> 4]);
            address += static_cast<WCHAR>(kDigits[c & 0xF]);
        } else {
            address += c;
        }
    }
    return address;
}

int OpenBySystem(const char* target)
{
    for (const char* const scheme : {kMailto, "http:", "https:"}) {
        if (HasPrefix(target, scheme))
            return OpenByScheme(MakeAddress(target)) ? 1 : 0;
    }
    return OpenInWebBrowser(MakeAddress(target)) ? 1 : 0;
}

LinkOpener g_opener = nullptr; // null: OpenBySystem

} // namespace

CString MakeLinkTarget(CEditorLineRange::ElRangeType type, const char* text, const char* mailtoFrom)
{
    if (type == CEditorLineRange::ElRangeNone || text == nullptr || *text == '\0')
        return CString();
    CString target(type == CEditorLineRange::ElRangeMail ? kMailto : "");
    target += text;
    if (mailtoFrom != nullptr && *mailtoFrom != '\0' && HasPrefix(target, kMailto))
        AddMailtoParam("From", mailtoFrom, target);
    return target;
}

int OpenLink(CEditorLineRange::ElRangeType type, const char* text, const char* mailtoFrom)
{
    const CString target = MakeLinkTarget(type, text, mailtoFrom);
    if (target.IsEmpty())
        return 0;
    return g_opener != nullptr ? g_opener(target) : OpenBySystem(target);
}

LinkOpener SetLinkOpener(LinkOpener opener)
{
    const LinkOpener previous = g_opener;
    g_opener = opener;
    return previous;
}

} // namespace tlvn
