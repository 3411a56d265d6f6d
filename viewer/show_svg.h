// A mail as a picture of how the editor shows it.

#pragma once

#include "viewer/mail_reader.h"

#include <string>

namespace tlvn {

// Writes the picture (SVG) to the file. Returns 1, or 0 with one line in `error`.
int WriteMailSvg(const Mail& mail, const std::string& path, std::string& error);

} // namespace tlvn
