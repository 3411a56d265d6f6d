// The addresses of header fields in UTF-8, whatever the multibyte code page can hold.
//
// Structure is read with the rules of mailtext/address.h and address_list.h.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tlvn {

struct Mailbox {
    std::string name;    // without quotes; may be empty
    std::string address; // without angle brackets; may be empty
};

// Splits one address: `name <address>`, `address (name)`, an address or a name alone. The text
// is decoded, or all ASCII. Takes time in proportion to it.
Mailbox SplitMailbox(std::string_view text);

// Appends the items of a decoded list, empty ones left out. False when the list is malformed;
// `error` then says why, and the items before the fault are there.
bool SplitMailboxList(std::string_view utf8, std::vector<Mailbox>& mailboxes, std::string& error);

// The value of a field as written: decoded where it has to be before it can be taken apart, and
// the names decoded behind that. What cannot be parted is one name.
std::vector<Mailbox> ReadMailboxField(std::string_view value);

// The same with an end at the first item.
Mailbox ReadFirstMailbox(std::string_view value);

// The address with its name as people write it: the name in quotes where it needs them.
std::string FormatMailbox(const Mailbox& mailbox);

} // namespace tlvn
