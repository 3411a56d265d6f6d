#include "mailtext/address_list.h"

#include "foundation/text_compare.h"
#include "foundation/text_length.h"
#include "mailtext/address.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <cstring>
#include <string_view>

using namespace tlvn;

namespace {

constexpr UINT kQuoteNotClosed = 3161;
constexpr UINT kParenthesisNotClosed = 3162;

int LengthAt(const char* p, const char* end)
{
    return CharLength(p, end);
}

int LengthAt(const WCHAR*, const WCHAR*)
{
    return 1;
}

bool IsWhite(char c)
{
    return IsSpace(c);
}

bool IsWhite(WCHAR c)
{
    return IsSpaceW(c);
}

bool IsInside(const char* text, const char* p, const char* end)
{
    return IsInsideCharacter(text, p, end);
}

bool IsInside(const WCHAR*, const WCHAR*, const WCHAR*)
{
    return false;
}

template <class Char>
std::basic_string_view<Char> Trimmed(const Char* p, const Char* end)
{
    while (p != end && IsWhite(*p))
        ++p;
    while (p != end && IsWhite(end[-1]))
        --end;
    return {p, static_cast<std::size_t>(end - p)};
}

// The double quote that closes the one at `open`, or null.
template <class Char>
const Char* FindClosingQuote(const Char* open, const Char* end)
{
    bool afterBackslash = false;
    for (const Char* p = open + 1; p < end;) {
        if (*p == '\\') {
            afterBackslash = p + 1 != end && p[1] == '\\';
            ++p;
            if (p != end)
                p += LengthAt(p, end);
            continue;
        }
        if (*p == '"' && !afterBackslash)
            return p;
        afterBackslash = false;
        p += LengthAt(p, end);
    }
    return nullptr;
}

// Finds the delimiter in [start, end) of a text that begins at `text`. `found` becomes null when
// there is none. Returns 0, or the number of the message for a malformed text.
template <class Char>
UINT ScanDelimiter(const Char* text, const Char* start, const Char* end, Char delimiter,
                   const Char*& found)
{
    found = nullptr;
    const bool quotesCount =
        start != end && (*start != '"' || FindClosingQuote(start, end) != nullptr);
    bool afterBackslash = start != text && start[-1] == '\\' && !IsInside(text, start - 1, end);
    bool quoted = false;
    int depth = 0;
    for (const Char* p = start; p < end;) {
        const Char c = *p;
        const int length = LengthAt(p, end);
        if (length > 1) {
            afterBackslash = false;
            p += length;
            continue;
        }
        ++p;
        if (quoted && c == '\\') {
            afterBackslash = p != end && *p == '\\';
            if (p != end)
                p += LengthAt(p, end);
            continue;
        }
        if (c == '"' && depth == 0 && quotesCount && !afterBackslash) {
            quoted = !quoted;
        } else if (!quoted) {
            if (c == delimiter && depth == 0) {
                found = p - 1;
                return 0;
            }
            if (c == '(')
                ++depth;
            else if (c == ')' && depth > 0)
                --depth;
        }
        afterBackslash = c == '\\';
    }
    if (quoted)
        return kQuoteNotClosed;
    return depth > 0 ? kParenthesisNotClosed : 0;
}

template <class String, class Char>
void SetMessage(UINT id, const Char* rest, const Char* end, String& message)
{
    const std::basic_string_view<Char> text = Trimmed(rest, end);
    message.LoadString(id);
    message += '\n';
    message.Append(text.data(), static_cast<int>(text.size()));
}

template <class Char, class String>
int FindTopLevel(const Char* text, int start, Char delimiter, int& position, String& message)
{
    position = -1;
    message.Empty();
    const int length = text == nullptr ? 0 : TextLength(text);
    if (start < 0 || start >= length)
        return 1;
    const Char* found;
    const UINT error = ScanDelimiter(text, text + start, text + length, delimiter, found);
    if (found != nullptr)
        position = static_cast<int>(found - text);
    if (error == 0)
        return 1;
    SetMessage(error, text + start, text + length, message);
    return 0;
}

// Calls add(text, length) for each item that is not empty.
template <class Char, class String, class Add>
int SplitList(const Char* list, String& message, Add add)
{
    message.Empty();
    const int length = list == nullptr ? 0 : TextLength(list);
    const Char* const end = list + length;
    constexpr Char kComma = ',';
    for (const Char* item = list;;) {
        const Char* comma;
        const UINT error = ScanDelimiter(list, item, end, kComma, comma);
        const auto text = Trimmed(item, comma != nullptr ? comma : end);
        if (!text.empty())
            add(text.data(), static_cast<int>(text.size()));
        if (comma != nullptr) {
            item = comma + 1;
            continue;
        }
        if (error == 0)
            return 1;
        SetMessage(error, item, end, message);
        return 0;
    }
}

const char* OrEmpty(const char* text)
{
    return text == nullptr ? "" : text;
}

bool IsEmptyText(const char* text)
{
    return text == nullptr || *text == '\0';
}

} // namespace

int FindAddrDelimiter(const char* text, int start, char delimiter, int& position, CString& message)
{
    return FindTopLevel(text, start, delimiter, position, message);
}

int FindAddrDelimiter(const WCHAR* text, int start, WCHAR delimiter, int& position,
                      CStringW& message)
{
    return FindTopLevel(text, start, delimiter, position, message);
}

int GetAddrArray2(const char* list, CStringArray& addresses, CString& message)
{
    return SplitList(list, message,
                     [&](const char* item, int length) { addresses.Add(CString(item, length)); });
}

int GetAddrArray2(const WCHAR* list, CArray<CStringW>& addresses, CStringW& message)
{
    return SplitList(list, message,
                     [&](const WCHAR* item, int length) { addresses.Add(CStringW(item, length)); });
}

int ParseAddrList(const char* list, CStringArray& addresses)
{
    constexpr char kSeparators[] = ", \t\r\n";
    int count = 0;
    for (const char* p = OrEmpty(list);;) {
        p += std::strspn(p, kSeparators);
        if (*p == '\0')
            return count;
        const std::size_t length = std::strcspn(p, kSeparators);
        if (length > INT_MAX)
            AfxThrowMemoryException();
        addresses.Add(CString(p, static_cast<int>(length)));
        ++count;
        p += length;
    }
}

int GetAddrNameArray(const char* list, CStringArray& addresses, CStringArray& names)
{
    CString message;
    CString address;
    CString name;
    int allSplit = 1;
    const int listSplit = SplitList(list, message, [&](const char* item, int length) {
        CString reason;
        if (!SplitMailAddr(CString(item, length), address, name, reason))
            allSplit = 0;
        addresses.Add(address);
        names.Add(name);
    });
    return listSplit && allSplit ? 1 : 0;
}

int GetAddressRange(const char* list, int offset, int& start, int& end)
{
    if (list == nullptr || offset < 0)
        return 0;
    const int length = TextLength(list);
    if (offset > length)
        return 0;
    for (int item = 0;;) {
        while (item < length && IsSpace(list[item]))
            ++item;
        if (item > offset)
            return 0;
        const char* comma;
        if (ScanDelimiter(list, list + item, list + length, ',', comma) != 0)
            return 0;
        const int itemEnd = comma != nullptr ? static_cast<int>(comma - list) : length;
        if (offset <= itemEnd) {
            start = item;
            end = itemEnd;
            return 1;
        }
        item = itemEnd + 1;
    }
}

int LookupAddrNameArray(const CStringArray& addresses, const CStringArray& names,
                        const char* address, const char* name)
{
    if (!IsEmptyText(address))
        return LookupStringArray(addresses, address, 1);
    if (IsEmptyText(name))
        return -1;
    for (int i = 0; i < addresses.GetSize() && i < names.GetSize(); ++i) {
        if (addresses[i].IsEmpty() && CompareText(names[i], name, 1) == 0)
            return i;
    }
    return -1;
}

int IsAddressIncluded(const char* address, int other, const char* list)
{
    CStringArray items;
    CString message;
    GetAddrArray2(list, items, message);
    for (int i = 0; i < items.GetSize(); ++i) {
        CString itemAddress;
        CString name;
        if (!SplitMailAddr(items[i], itemAddress, name, message))
            continue;
        const bool same = CompareText(itemAddress, OrEmpty(address), 1) == 0;
        if (same == (other == 0))
            return 1;
    }
    return 0;
}

int IsWildAddrIncluded(const CStringArray& patterns, int other, const char* address)
{
    for (int i = 0; i < patterns.GetSize(); ++i) {
        const bool matches = wildicmp(OrEmpty(address), patterns[i]) == 0;
        if (matches == (other == 0))
            return 1;
    }
    return 0;
}
