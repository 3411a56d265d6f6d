#include "editor/link_range.h"

#include "platform/multibyte.h"

namespace {

constexpr char kMailto[] = "mailto:";
constexpr int kMailtoLength = 7;

} // namespace

int IsRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text)
{
    if (kind == CEditorLineRange::ElRangeMail)
        return 1;
    return kind == CEditorLineRange::ElRangeUrl && text != nullptr &&
                   tlvn::CompareAsciiNNoCase(text, kMailto, kMailtoLength) == 0
               ? 1
               : 0;
}

CString GetRangeMailAddress(CEditorLineRange::ElRangeType kind, const char* text)
{
    if (!IsRangeMailAddress(kind, text))
        return CString();
    if (kind == CEditorLineRange::ElRangeMail)
        return CString(text);
    const CString address(text + kMailtoLength);
    const int query = address.Find('?');
    return query < 0 ? address : address.Left(query);
}
