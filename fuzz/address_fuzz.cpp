// Address lists, single addresses and dates take any text.

#include "fuzz/fuzz.h"

#include "mailtext/address.h"
#include "mailtext/address_check.h"
#include "mailtext/address_list.h"
#include "mailtext/address_trim.h"
#include "mailtext/mail_date.h"

#include <string>

namespace {

// The items of a list are found again at every offset inside them, and split as they are.
void CheckList(const std::string& text)
{
    CStringArray items, addresses, names, pieces;
    CString message;
    const int sound = GetAddrArray2(text.c_str(), items, message);
    FUZZ_CHECK(message.IsEmpty() == sound);
    int length = 0;
    for (int i = 0; i < items.GetSize(); ++i) {
        FUZZ_CHECK(!items[i].IsEmpty());
        length += items[i].GetLength();
    }
    FUZZ_CHECK(length <= static_cast<int>(text.size()));
    GetAddrNameArray(text.c_str(), addresses, names);
    FUZZ_CHECK(addresses.GetSize() == items.GetSize() && names.GetSize() == items.GetSize());
    FUZZ_CHECK(ParseAddrList(text.c_str(), pieces) == pieces.GetSize());

    for (int offset = 0; offset <= static_cast<int>(text.size()); offset += 7) {
        int start, end;
        if (GetAddressRange(text.c_str(), offset, start, end))
            FUZZ_CHECK(start <= offset && offset <= end && end <= static_cast<int>(text.size()));
    }
    if (items.GetSize() > 0 && SplitMailAddr(items[0], addresses[0], names[0], message))
        FUZZ_CHECK(IsAddressIncluded(addresses[0], 0, text.c_str()) == 1);
}

void CheckSingle(const std::string& text)
{
    CString address, name, message;
    const int sound = SplitMailAddr(text.c_str(), address, name, message);
    FUZZ_CHECK(message.IsEmpty() == sound);
    FUZZ_CHECK(address.GetLength() + name.GetLength() <= static_cast<int>(text.size()));
}

void CheckDates(const std::string& text)
{
    CTime day;
    for (const INT64 time : {GetRFC822Time(text.c_str()), GetAsciiTime(text.c_str())}) {
        FUZZ_CHECK(time >= -1);
        if (time >= 0)
            FUZZ_CHECK(GetRFC822Time(GetRFC822TimeText(CTime(time))) == time);
    }
    const INT64 date = GetStringDate(text.c_str(), day);
    FUZZ_CHECK(date >= 0 && date == day.GetTime());
    const int form = GetTimeTextFormat(text.c_str());
    FUZZ_CHECK(form >= 0 && form <= 2);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string text(bytes.c_str());
    CheckList(text);
    CheckSingle(text);
    CheckDates(text);
    CString message;
    CheckEMailAddress(text.c_str(), message);
    CheckEMailName(text.c_str(), message);
    CString trimmed(text.c_str());
    ExtractLastMessageID(trimmed);
    ExcludeQuote(trimmed);
    ExcludeAngleBracket(trimmed);
    FUZZ_CHECK(trimmed.GetLength() <= static_cast<int>(text.size()));
    return 0;
}
