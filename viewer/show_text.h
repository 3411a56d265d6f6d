// A mail as text for a terminal.

#pragma once

#include "viewer/mail_reader.h"

#include <string>
#include <string_view>

namespace tlvn {

// Chief headers, attachments, the code type and how it was found, the text and its links. In
// UTF-8 with LF line ends, and harmless to a terminal.
std::string FormatMailText(const Mail& mail);

// The chief headers, decoded, and the attachments: a line each, "Name:" and the value.
std::string FormatMailHeader(const Mail& mail);

// The text with every control character made visible as U+FFFD: those of ASCII and of Latin-1,
// and the ones that change the direction of writing. With `keepLines`, line feeds and tabs
// stay; else they become blanks. Broken UTF-8 becomes U+FFFD too.
std::string MakeHarmless(std::string_view utf8, bool keepLines);

// The name of the code type for people, such as "ISO-2022-JP".
std::string GetCodeTypeName(CodeType type);

} // namespace tlvn
