// Images of settings files: any text is read or refused with a message, and what was read is
// written so that it reads the same, without a duplicate, and is written the same again.

#include "fuzz/fuzz.h"
#include "persist/setting_text.h"

#include <algorithm>
#include <cstring>

namespace {

tlvn::WString ToText(const void* data, std::size_t size)
{
    tlvn::WString text(size / sizeof(WCHAR), 0);
    if (!text.empty())
        std::memcpy(text.data(), data, text.size() * sizeof(WCHAR));
    return text;
}

// The lines of keys and pairs.
int CountLines(const tlvn::WString& text)
{
    int count = 0;
    bool first = true;
    for (std::size_t at = 0; (at = text.find_first_not_of(TW("\r\n"), at)) != text.npos;) {
        const std::size_t end = std::min(text.find_first_of(TW("\r\n"), at), text.size());
        const std::size_t mark = first && text[at] == 0xFEFF ? 1 : 0;
        const tlvn::WString line = text.substr(at + mark, end - at - mark);
        count += !line.empty() && line != TW("[DATA-START]") && line != TW("[DATA-END]") ? 1 : 0;
        first = false;
        at = end;
    }
    return count;
}

int CountItems(const tlvn::SettingKeyList& keys)
{
    int count = keys.GetSize();
    for (int i = 0; i < keys.GetSize(); ++i)
        count += keys.GetAt(i)->GetPairs().GetSize();
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const tlvn::WString input = ToText(data, size);
    tlvn::SettingKeyList keys;
    const tlvn::SettingTextResult result = tlvn::ReadSettingText(input, keys);
    if (result.message != 0)
        FUZZ_CHECK(result.message == 3100 || result.message == 3101 || result.message == 3163 ||
                   result.message == 3164);

    // Every line made a pair or a key, unless the text says a thing twice.
    if (result.message == 0)
        FUZZ_CHECK((CountLines(input) == CountItems(keys)) == !result.duplicates);

    CBuffer text, again;
    tlvn::WriteSettingText(keys, text);
    const tlvn::WString written =
        ToText(text.GetBuffer(), static_cast<std::size_t>(text.GetLength()));
    tlvn::SettingKeyList back;
    const tlvn::SettingTextResult second = tlvn::ReadSettingText(written, back);
    FUZZ_CHECK(second.message == 0 && !second.duplicates);
    FUZZ_CHECK(back.GetSize() == keys.GetSize());
    tlvn::WriteSettingText(back, again);
    FUZZ_CHECK(text == again);
    for (int i = 0; i < keys.GetSize(); ++i)
        FUZZ_CHECK(keys.Find(tlvn::ViewOf(keys.GetAt(i)->GetName())) == keys.GetAt(i));
    return 0;
}
