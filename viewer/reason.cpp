#include "viewer/reason.h"

#include <cstddef>

namespace tlvn {

namespace {

bool g_japanese = false;

const struct {
    const char* english;
    const char* japanese;
} kTexts[] = {
#define TLVN_REASON(name, english, japanese) {english, japanese},
#include "viewer/reasons.def"
#undef TLVN_REASON
};

} // namespace

const char* GetText(Reason reason)
{
    const auto& text = kTexts[static_cast<std::size_t>(reason)];
    return g_japanese ? text.japanese : text.english;
}

void SetReasonsJapanese(bool on)
{
    g_japanese = on;
}

} // namespace tlvn
