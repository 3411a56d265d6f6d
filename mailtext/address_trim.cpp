#include "mailtext/address_trim.h"

namespace {

// None of the characters is the trail byte of a double-byte one.
template <class String, class Char>
void ExcludeEnds(String& text, Char open, Char close)
{
    text.Trim();
    if (!text.IsEmpty() && text[0] == open)
        text.Delete(0);
    const int last = text.GetLength() - 1;
    if (last >= 0 && text[last] == close)
        text.Truncate(last);
}

} // namespace

void ExcludeQuote(CString& text)
{
    ExcludeEnds(text, '"', '"');
}

void ExcludeQuote(CStringW& text)
{
    ExcludeEnds(text, WCHAR{'"'}, WCHAR{'"'});
}

void ExcludeAngleBracket(CString& text)
{
    ExcludeEnds(text, '<', '>');
}

void ExcludeAngleBracket(CStringW& text)
{
    ExcludeEnds(text, WCHAR{'<'}, WCHAR{'>'});
}

void ExtractLastMessageID(CString& text)
{
    text.Trim();
    const int open = text.ReverseFind('<');
    if (open < 0)
        return;
    const int close = text.Find('>', open + 1);
    if (close >= 0)
        text = text.Mid(open + 1, close - open - 1);
}
