#include "editor/input_method.h"

#include <algorithm>

CImeOn::CImeOn(CWnd* window) : m_window(window != nullptr ? window->m_hWnd : nullptr)
{
    const tlvn::InputContext context(m_window);
    if (context.Get() != nullptr && !::ImmGetOpenStatus(context.Get()))
        m_changed = ::ImmSetOpenStatus(context.Get(), TRUE) != 0;
}

CImeOn::~CImeOn()
{
    if (m_changed == 0)
        return;
    const tlvn::InputContext context(m_window);
    if (context.Get() != nullptr)
        ::ImmSetOpenStatus(context.Get(), FALSE);
}

namespace tlvn {

WString InputContext::GetText(DWORD kind) const
{
    WString text;
    const LONG size =
        m_context != nullptr ? ::ImmGetCompositionStringW(m_context, kind, nullptr, 0) : 0;
    if (size <= 0)
        return text;
    text.resize(static_cast<std::size_t>(size) / sizeof(WCHAR));
    const LONG given =
        ::ImmGetCompositionStringW(m_context, kind, text.data(), static_cast<DWORD>(size));
    text.resize(
        std::min(text.size(), static_cast<std::size_t>(std::max<LONG>(given, 0)) / sizeof(WCHAR)));
    return text;
}

} // namespace tlvn
