// The character code of a piece of a mail, and the piece in UTF-8.
//
// A label is believed unless the bytes contradict it. They do when
//   - the label names a 7-bit code (ISO-2022-JP, US-ASCII, UTF-7) and a byte has its high bit
//     set, or the label is US-ASCII and there is an escape sequence;
//   - the label names another code than UTF-8 and the bytes are well-formed UTF-8 with a
//     sequence of three bytes or more, which text of no other code is by accident;
//   - the bytes do not convert without loss;
// and then detection finds a code in which they do. With no label, or one that is not known,
// the code is detected.

#pragma once

#include "foundation/code_type.h"

#include <string>
#include <string_view>

namespace tlvn {

struct TextCode {
    CodeType type = CT_ASCII;
    bool labelled = false; // taken from the label, not detected
};

TextCode ChooseTextCode(std::string_view label, std::string_view bytes);

// The code of bytes without a label; the first bytes that are not ASCII decide, wherever they
// stand. UTF-16 is considered only when there are zero bytes.
CodeType DetectTextCode(std::string_view bytes);

// Replaces `utf8` by the text, without a byte order mark. False when something was lost; the
// text is then what could be read.
bool ConvertTextToUtf8(CodeType type, std::string_view bytes, std::string& utf8);

} // namespace tlvn
