#include "viewer/mailbox.h"

#include "mailtext/address_list.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "viewer/header_text.h"

#include <algorithm>

namespace tlvn {

namespace {

std::string Narrow(const CStringW& wide)
{
    return Utf16ToUtf8(WStringView(wide, static_cast<std::size_t>(wide.GetLength())));
}

std::string_view Trim(std::string_view text)
{
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string Unquote(std::string_view name)
{
    name = Trim(name);
    if (name.size() < 2 || name.front() != '"' || name.back() != '"')
        return std::string(name);
    name = name.substr(1, name.size() - 2);
    std::string plain;
    plain.reserve(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '\\' && i + 1 < name.size())
            ++i;
        plain += name[i];
    }
    return plain;
}

// Whether the next angle bracket of the text is a closing one.
bool ClosesBracket(std::string_view text)
{
    const std::size_t next = text.find_first_of("<>");
    return next != text.npos && text[next] == '>';
}

// Position of the first `wanted` outside quotes and parentheses, and of a comma outside angle
// brackets, or npos. A quote or bracket that is never closed is a character like others.
std::size_t FindOutside(std::string_view text, char wanted)
{
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == wanted && depth == 0)
            return i;
        if (c == '"' && depth == 0) {
            std::size_t end = i + 1;
            while (end < text.size() && text[end] != '"')
                end += text[end] == '\\' ? 2 : 1;
            if (end >= text.size())
                return text.find(wanted, i + 1);
            i = end;
        } else if (c == '<' && wanted == ',' && depth == 0 && ClosesBracket(text.substr(i + 1))) {
            i = text.find('>', i);
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' && depth > 0) {
            --depth;
        }
    }
    return text.npos;
}

// ASCII without escape sequences: encoded words are decoded after the structure is read, as a
// comma or a bracket in one is none of the list.
bool IsPlainAscii(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) >= 0x80 || c == '\x1B';
    });
}

bool HasEncodedWord(std::string_view text)
{
    return text.find("=?") != text.npos;
}

void DecodeName(Mailbox& mailbox)
{
    if (HasEncodedWord(mailbox.name))
        mailbox.name = DecodeHeaderValue(mailbox.name);
}

// The library parts a list at the commas of a route, too: "<@a,@b:user@c>". The item in which the
// angle bracket is closed that item `first` leaves open, or `first`.
int FindLastPiece(const CArray<CStringW>& items, int first)
{
    const std::string item = Narrow(items[first]);
    const std::size_t open = FindOutside(item, '<');
    if (open == item.npos || item.find('>', open) != item.npos)
        return first;
    for (int i = first + 1; i < items.GetSize(); ++i) {
        const std::string next = Narrow(items[i]);
        if (next.find_first_of("<>") != next.npos)
            return ClosesBracket(next) ? i : first;
    }
    return first;
}

} // namespace

Mailbox SplitMailbox(std::string_view text)
{
    text = Trim(text);
    std::size_t bracket = FindOutside(text, '<');
    if (text.ends_with('>'))
        bracket = text.rfind('<');
    if (bracket != text.npos) {
        const std::size_t end = std::min(text.find('>', bracket), text.size());
        std::string name(Trim(text.substr(0, bracket)));
        const std::string_view behind = Trim(text.substr(std::min(end + 1, text.size())));
        if (!behind.empty())
            name += (name.empty() ? "" : " ") + std::string(behind);
        return {Unquote(name), std::string(Trim(text.substr(bracket + 1, end - bracket - 1)))};
    }
    const std::size_t open = text.find('(');
    if (text.ends_with(')') && open != text.npos && text.find('@') < open)
        return {std::string(Trim(text.substr(open + 1, text.size() - open - 2))),
                std::string(Trim(text.substr(0, open)))};
    const bool quoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    if (!quoted && text.find('@') != text.npos)
        return {{}, std::string(text)};
    return {Unquote(text), {}};
}

bool SplitMailboxList(std::string_view utf8, std::vector<Mailbox>& mailboxes, std::string& error)
{
    CArray<CStringW> items;
    CStringW message;
    const bool good = GetAddrArray2(Utf8ToUtf16(utf8).c_str(), items, message) != 0;
    for (int i = 0; i < items.GetSize(); ++i) {
        std::string item = Narrow(items[i]);
        for (const int last = FindLastPiece(items, i); i < last;)
            item += ',' + Narrow(items[++i]);
        mailboxes.push_back(SplitMailbox(item));
    }
    if (!good)
        error = Narrow(message);
    return good;
}

std::vector<Mailbox> ReadMailboxField(std::string_view value)
{
    const std::string list = IsPlainAscii(value) ? UnfoldValue(value) : DecodeHeaderValue(value);
    std::vector<Mailbox> mailboxes;
    std::string error;
    SplitMailboxList(list, mailboxes, error);
    for (Mailbox& mailbox : mailboxes)
        DecodeName(mailbox);
    return mailboxes;
}

Mailbox ReadFirstMailbox(std::string_view value)
{
    const std::string list = IsPlainAscii(value) ? UnfoldValue(value) : DecodeHeaderValue(value);
    std::string_view first = list;
    for (;;) {
        const std::size_t comma = FindOutside(first, ',');
        const std::string_view item = Trim(first.substr(0, comma));
        if (!item.empty() || comma == first.npos) {
            Mailbox mailbox = SplitMailbox(item);
            DecodeName(mailbox);
            return mailbox;
        }
        first.remove_prefix(comma + 1);
    }
}

std::string FormatMailbox(const Mailbox& mailbox)
{
    if (mailbox.name.empty())
        return mailbox.address;
    std::string text;
    if (mailbox.name.find_first_of("()<>[]:;@,.\"\\") == std::string::npos) {
        text = mailbox.name;
    } else {
        text = '"';
        for (const char c : mailbox.name) {
            if (c == '"' || c == '\\')
                text += '\\';
            text += c;
        }
        text += '"';
    }
    return mailbox.address.empty() ? text : text + " <" + mailbox.address + '>';
}

} // namespace tlvn
