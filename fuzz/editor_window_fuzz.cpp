// Window messages, keys, mouse events, edits and sizes against an editor window, with its text
// kept beside it.

#include "fuzz/fuzz.h"
#include "tests/support/editor_window_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzResult(CheckEditorWindow(data, size));
}
