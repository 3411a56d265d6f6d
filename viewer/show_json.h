// A mail as one JSON object (RFC 8259).
//
//   headers   array of {name, value}: every field in the order of the mail, values decoded
//   charset   the label of the text, or null
//   codeType  the CodeType of the text, a number
//   how       "label" or "detected": where the code type is from
//   text      the text, line ends LF; of one above kMaxTextBytes, the beginning
//   links     array of {kind, text} in the order of the text; kind is "url" or "mail"

#pragma once

#include "viewer/mail_reader.h"

#include <string>
#include <string_view>

namespace tlvn {

// The object in UTF-8, with a line feed at its end.
std::string FormatMailJson(const Mail& mail);

// Appends the text as a JSON string. `utf8` is well-formed.
void AppendJsonString(std::string_view utf8, std::string& json);

} // namespace tlvn
