// Texts of the framework's strings as views, and the library's messages as strings.

#pragma once

#include "framework/framework.h"
#include "framework/text_ops.h"

#include <string>
#include <string_view>

namespace tlvn {

inline std::string_view ViewOf(const CStringA& text)
{
    return {static_cast<const char*>(text), static_cast<std::size_t>(text.GetLength())};
}
inline WStringView ViewOf(const CStringW& text)
{
    return {static_cast<const WCHAR*>(text), static_cast<std::size_t>(text.GetLength())};
}
// Null is the empty text.
inline std::string_view ViewOf(const char* text)
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

inline CStringA ToString(std::string_view text)
{
    return CStringA(text.data(), static_cast<int>(text.size()));
}
inline CStringW ToString(WStringView text)
{
    return CStringW(text.data(), static_cast<int>(text.size()));
}

inline CString MessageText(UINT id)
{
    std::string text;
    LoadMessage(id, text);
    return ToString(std::string_view(text));
}

} // namespace tlvn
