// Random edits, undo, redo, markers and wrapping against a simple model of the text.

#include "fuzz/fuzz.h"
#include "tests/support/edit_model.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzResult(CheckEditing(data, size));
}
