// The text of a mail on its way back into a mail: encoded anew.

#pragma once

#include "viewer/mail_reader.h"

#include <string>

namespace tlvn {

// Sets `source` to a mail of the header and the text alone, the text in the transfer encoding
// that it had, encoded by EncodeBody. It decodes to the same bytes, and is in the line ends of
// the text. 1, or 0 with one line of `error` when there is no text or it would not come back.
int FormatMailSource(const Mail& mail, std::string& source, std::string& error);

} // namespace tlvn
