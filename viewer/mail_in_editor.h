// A mail put into an editor window: the chief headers and the attachments as the header block,
// the text below.
//
// The editor holds the text in the edit form of its code type. When that cannot hold every
// character of the headers, or of the text, it holds UTF-16.

#pragma once

#include "editor/editor_wnd.h"
#include "viewer/mail_reader.h"

namespace tlvn {

void ShowMailInEditor(const Mail& mail, CEditorWnd& editor);

} // namespace tlvn
