// Takes a mail apart into header fields and parts, in one pass and without recursion.
//
// The rules and limits are those of viewer/mail_reader.h.

#pragma once

#include "viewer/mail_reader.h"

namespace tlvn {

// The parts of the mail, at least one. Their views point into `bytes`.
std::vector<MailPart> ScanParts(std::string_view bytes);

// The line without its end.
std::string_view WithoutLineEnd(std::string_view line);

// Length of the field name at the start of the line, or 0 when the line starts no field;
// `valueStart` is then untouched, else it is the place behind the colon.
std::size_t FieldNameLength(std::string_view line, std::size_t& valueStart);

} // namespace tlvn
