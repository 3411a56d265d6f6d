// What a list shows of a mail, read from the beginning of its bytes without taking it apart.
//
//   const MailHead head = ScanMailHead(bytes);
//   Show(GetShownSender(head.from), DecodeHeaderValue(head.subject), GetRFC822Time(...));
//
// A header has the same bounds here as with viewer/mail_reader.h, but for multiparts: the
// beginning of a mail is not searched for boundaries.

#pragma once

#include <string>
#include <string_view>

namespace tlvn {

struct MailHead {
    std::string_view from;    // folded and encoded, as they stand behind the colon; the first of
    std::string_view subject; // each name
    std::string_view date;
    bool complete = false; // the header ends within the bytes, or the three were found
};

// One pass over the header; the views point into `bytes`.
MailHead ScanMailHead(std::string_view bytes);

// The sender for people, in UTF-8: the name of the first address of the field, else the address,
// else what is written.
std::string GetShownSender(std::string_view from);

} // namespace tlvn
