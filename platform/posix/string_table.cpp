// The messages, compiled in.

#include "platform/string_table.h"

#include <algorithm>
#include <array>

namespace tlvn {

namespace {

struct Message {
    UINT id;
    WStringView text;
};

#define TLVN_STRING(id, text) Message{id, TW(text)},
constexpr auto kUnsorted = std::to_array<Message>({
#include "resources/strings.def"
});
#undef TLVN_STRING

constexpr bool ById(const Message& a, const Message& b)
{
    return a.id < b.id;
}

constexpr auto kMessages = [] {
    auto messages = kUnsorted;
    std::sort(messages.begin(), messages.end(), ById);
    return messages;
}();

static_assert(std::adjacent_find(kMessages.begin(), kMessages.end(),
                                 [](const Message& a, const Message& b) { return a.id == b.id; }) ==
                  kMessages.end(),
              "a number stands for one message");

} // namespace

WStringView FindMessage(UINT id)
{
    const auto found = std::lower_bound(kMessages.begin(), kMessages.end(), Message{id, {}}, ById);
    return found != kMessages.end() && found->id == id ? found->text : WStringView();
}

} // namespace tlvn
