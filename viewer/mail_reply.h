// The reply to a mail: its recipients, its subject, what ties it to the mail, and the quoted text.

#pragma once

#include "viewer/mail_compose.h"
#include "viewer/mail_reader.h"

namespace tlvn {

struct ReplyOptions {
    std::string from;            // the user's own address; UTF-8, may be empty
    bool all = false;            // to everybody who got the mail
    std::string quoteMark = ">"; // UTF-8, in front of each quoted line
};

// The draft of a reply.
//
//   - It goes to the addresses of Reply-To, else of From; to those of To when the mail is the
//     user's own. A reply to all has the addresses of To and Cc in its Cc. Nobody gets it twice,
//     and the user only when there is nobody else.
//   - The subject has one "Re: " in front, however many there were.
//   - In-Reply-To and References are those of RFC 5322, section 3.6.4; of very long References the
//     middle is left out.
//   - Behind a line that tells date and sender each line of the text follows with the mark.
//   - The code type is that of the mail's text (GetPriorCodeType with what the first line needs),
//     a plain ASCII one becoming that of Japanese mail. A text that its edit form cannot hold
//     brings the reply to UTF-8.
Draft MakeReply(const Mail& mail, const ReplyOptions& options);

} // namespace tlvn
