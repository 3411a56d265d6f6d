// Takes a mail apart into header fields and parts, in one pass and without recursion.
//
// The rules and limits are those of viewer/mail_reader.h.

#pragma once

#include "viewer/mail_reader.h"

namespace tlvn {

// The parts of the mail, at least one. Their views point into `bytes`.
std::vector<MailPart> ScanParts(std::string_view bytes);

} // namespace tlvn
