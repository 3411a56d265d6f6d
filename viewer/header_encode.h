// Writing header fields: encoded words (RFC 2047) and folding (RFC 5322).
//
// Texts are UTF-8 on one line: line ends and tabs in them become blanks, so that no field can be
// made to start another. The results are ASCII; a field reads back as the text without the
// blanks at its ends (viewer/header_text.h).

#pragma once

#include "foundation/code_type.h"
#include "viewer/mailbox.h"

namespace tlvn {

// The text with what is not plain ASCII in encoded words: of `preferred` when that holds all of
// it, else of UTF-8. A character is never cut over two words. The text is for a line on which
// `column` characters stand already: a word at its start leaves them room in the 76 of a line.
std::string EncodeHeaderText(std::string_view utf8, CodeType preferred, std::size_t column = 0);

// The addresses as the value of a field, their names encoded in the same way. The addresses
// themselves are written as they are.
std::string EncodeMailboxes(const std::vector<Mailbox>& mailboxes, CodeType preferred,
                            std::size_t column = 0);

// "Name: value" and CR LF, folded at blanks in lines of at most 76 characters where there are
// any. An empty value makes no field.
std::string FormatField(std::string_view name, std::string_view value);

} // namespace tlvn
