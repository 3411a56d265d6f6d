// Text and the clipboard.
//
//   SetTextClipboard(text, length, CT_SJIS, this);
//
//   CBuffer text;
//   if (tlvn::GetTextClipboard(CT_UNICODE, window, text)) ...

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

// Replaces the content of the clipboard by a text of `length` bytes in the code type: as Unicode
// text, and as ANSI text in the multibyte code page. `owner` becomes the clipboard's owner; null
// for none. Returns 1, or 0 when the clipboard does not open or take the text. An empty text
// leaves an empty text there.
TLVN_API int SetTextClipboard(const char* text, int length, CodeType codeType, CWnd* owner);

namespace tlvn {

// Whether the clipboard holds text.
TLVN_API bool HasTextClipboard();

// Replaces `out` by the text of the clipboard in the code type: its Unicode text or, when there
// is none, its ANSI text, up to the first zero; what the code lacks becomes "?". False when the
// clipboard does not open or holds no text.
TLVN_API bool GetTextClipboard(CodeType codeType, CWnd* window, CBuffer& out);

} // namespace tlvn
