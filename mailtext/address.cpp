#include "mailtext/address.h"

#include "foundation/quoted_text.h"
#include "mailtext/address_list.h"
#include "mailtext/character_set.h"
#include "platform/multibyte.h"

#include <string>

using namespace tlvn;

namespace {

constexpr CharacterSet kSpecials("()<>[]:;@,.");
constexpr CharacterSet kEscaped("\\\"");

bool IsWrapped(const CString& text, const char* open, char close)
{
    const int openLength = CString::StringLength(open);
    return text.GetLength() > openLength && CompareAsciiNNoCase(text, open, openLength) == 0 &&
           text[text.GetLength() - 1] == close;
}

// Trims a name and takes the quoting off one that starts with a double quote.
void UnquoteName(CString& name)
{
    name.Trim();
    if (name.IsEmpty() || name[0] != '"')
        return;
    name.Delete(0);
    if (!name.IsEmpty() && name[name.GetLength() - 1] == '"')
        name.Truncate(name.GetLength() - 1);
    GetQuotedToken(name);
}

void SetBoth(const CString& newAddress, const CString& newName, CString& address, CString& name)
{
    address = newAddress;
    address.Trim();
    name = newName;
    UnquoteName(name);
}

// A text without "<".
void SplitBare(const CString& text, CString& address, CString& name)
{
    constexpr int kShortestPlaceholder = 4;
    if (text.GetLength() >= kShortestPlaceholder && IsWrapped(text, "%(", ')')) {
        address = text;
        return;
    }
    CString comment;
    CString rest;
    if (GetParenthesisToken(text, comment, rest) >= 0) {
        address = rest.Trim();
        name = comment.Trim();
        return;
    }
    const bool quoted = text[0] == '"';
    const bool closed = text[text.GetLength() - 1] == '"';
    if (!(quoted && closed) && text.Find('@') >= 0) {
        address = text;
        return;
    }
    name = text;
    UnquoteName(name);
}

// The name as it goes into a header: in quotes when it needs them.
CString QuotedName(const char* name)
{
    const char* end = name + CString::StringLength(name);
    const bool wrapped = end - name >= 3 && name[0] == '"' && end[-1] == '"';
    if (wrapped && (end[-2] != '\\' || IsInsideCharacter(name, end - 2, end))) {
        ++name;
        --end;
    }
    bool needsQuotes = false;
    std::string text = GuardMemory([&] {
        std::string out(1, '"');
        out.reserve(static_cast<std::size_t>(end - name) + 2);
        for (const char* p = name; p != end;) {
            const int length = CharLength(p, end);
            if (length == 1 && kEscaped.Has(*p)) {
                out += '\\';
                needsQuotes = true;
            } else if (length == 1 && kSpecials.Has(*p)) {
                needsQuotes = true;
            }
            out.append(p, static_cast<std::size_t>(length));
            p += length;
        }
        return out += '"';
    });
    if (text.size() > INT_MAX)
        AfxThrowMemoryException();
    const int length = static_cast<int>(text.size());
    return needsQuotes ? CString(text.data(), length) : CString(text.data() + 1, length - 2);
}

} // namespace

int SplitMailAddr(const char* text, CString& address, CString& name, CString& message)
{
    CString whole(text);
    whole.Trim();
    address.Empty();
    name.Empty();
    message.Empty();
    if (whole.IsEmpty())
        return 1;

    const int length = whole.GetLength();
    int open = whole[length - 1] == '>' ? whole.ReverseFind('<') : -1;
    if (open >= 0) {
        SetBoth(whole.Mid(open + 1, length - open - 2), whole.Left(open), address, name);
        return 1;
    }
    int close = -1;
    if (!FindAddrDelimiter(whole, 0, '<', open, message) ||
        (open >= 0 && !FindAddrDelimiter(whole, open, '>', close, message))) {
        name = whole;
        return 0;
    }
    if (open < 0)
        SplitBare(whole, address, name);
    else if (close < 0)
        SetBoth(whole.Mid(open + 1), whole.Left(open), address, name);
    else
        SetBoth(whole.Mid(open + 1, close - open - 1), whole.Left(open) + whole.Mid(close + 1),
                address, name);
    return 1;
}

CString MakeAddress(const char* address, const char* name, int quote)
{
    CString prepared(name);
    if (quote != 0 && !prepared.IsEmpty())
        prepared = QuotedName(prepared);
    if (prepared.IsEmpty())
        return CString(address);
    prepared += " <";
    prepared += address;
    prepared += '>';
    return prepared;
}

CString MakeAddress2(const char* address, const char* name, int quote)
{
    if (address == nullptr || *address == '\0')
        return CString(name);
    return MakeAddress(address, name, quote);
}

CString CustomizeAddress(const char* text, const char* address, const char* name, int quote)
{
    CString oldAddress;
    CString oldName;
    CString message;
    if (!SplitMailAddr(text, oldAddress, oldName, message))
        return CString(text);
    return MakeAddress(address != nullptr ? address : static_cast<const char*>(oldAddress),
                       name != nullptr ? name : static_cast<const char*>(oldName), quote);
}
