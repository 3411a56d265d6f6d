// The input method of a window: what turns keys into Japanese text.

#pragma once

#include "framework/framework.h"
#include "platform/nls.h"

// Turns a window's input method on for a scope, as for a field that takes Japanese text, and back
// off behind it if it was off. A window without an input method stays as it is.
//
//   CImeOn on(&subject);
class TLVN_API CImeOn {
public:
    // A null window has no input method.
    explicit CImeOn(CWnd* window);
    ~CImeOn();
    CImeOn(const CImeOn&) = delete;
    CImeOn& operator=(const CImeOn&) = delete;

    // Whether it was this object that turned it on.
    int IsChanged() const { return m_changed; }

private:
    HWND m_window;
    int m_changed = 0;
};

namespace tlvn {

// The input context of a window, as long as this object lives; null when it has none.
class TLVN_API InputContext {
public:
    // Of a window, or of none.
    explicit InputContext(HWND window) : m_window(window), m_context(::ImmGetContext(window)) {}
    ~InputContext()
    {
        if (m_context != nullptr)
            ::ImmReleaseContext(m_window, m_context);
    }
    InputContext(const InputContext&) = delete;
    InputContext& operator=(const InputContext&) = delete;

    // The handle, null for none.
    HIMC Get() const { return m_context; }
    // A text of the composition, GCS_COMPSTR or GCS_RESULTSTR.
    WString GetText(DWORD kind) const;

private:
    HWND m_window;
    HIMC m_context;
};

} // namespace tlvn
