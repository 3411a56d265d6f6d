// Input method contexts that remember what they are told.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

InputContext* FindContext(HIMC handle)
{
    return Desk().inputContexts.Find(handle);
}

} // namespace

void SetCompositionText(HWND window, WStringView composing)
{
    InputContext* const context = FindContext(ImmGetContext(window));
    if (context == nullptr)
        return;
    const bool started = context->compositionText.empty();
    context->compositionText = composing;
    context->cursor = static_cast<LONG>(composing.size());
    if (started && !composing.empty())
        SendMessageW(window, WM_IME_STARTCOMPOSITION, 0, 0);
    SendMessageW(window, WM_IME_COMPOSITION, composing.empty() ? 0 : composing.back(),
                 static_cast<LPARAM>(GCS_COMPSTR | GCS_CURSORPOS));
    if (composing.empty())
        SendMessageW(window, WM_IME_ENDCOMPOSITION, 0, 0);
}

void CommitCompositionText(HWND window, WStringView result)
{
    InputContext* const context = FindContext(ImmGetContext(window));
    if (context == nullptr)
        return;
    context->resultText = result;
    context->compositionText.clear();
    SendMessageW(window, WM_IME_COMPOSITION, result.empty() ? 0 : result.back(),
                 static_cast<LPARAM>(GCS_RESULTSTR));
    SendMessageW(window, WM_IME_ENDCOMPOSITION, 0, 0);
}

} // namespace tlvn::headless

using namespace tlvn::headless;

HIMC ImmCreateContext()
{
    return Desk().inputContexts.Add(std::make_unique<InputContext>());
}

BOOL ImmDestroyContext(HIMC context)
{
    return context != Desk().defaultContext && Desk().inputContexts.Remove(context) != nullptr;
}

HIMC ImmGetContext(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr ? window->inputContext : nullptr;
}

BOOL ImmReleaseContext(HWND, HIMC context)
{
    return FindContext(context) != nullptr;
}

HIMC ImmAssociateContext(HWND handle, HIMC context)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return nullptr;
    const HIMC previous = window->inputContext;
    window->inputContext = context;
    return previous;
}

BOOL ImmSetCompositionWindow(HIMC handle, COMPOSITIONFORM* form)
{
    InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return FALSE;
    context->composition = *form;
    return TRUE;
}

BOOL ImmGetCompositionWindow(HIMC handle, COMPOSITIONFORM* form)
{
    const InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return FALSE;
    *form = context->composition;
    return TRUE;
}

BOOL ImmSetCandidateWindow(HIMC handle, CANDIDATEFORM* form)
{
    InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return FALSE;
    context->candidate = *form;
    return TRUE;
}

BOOL ImmSetCompositionFontW(HIMC handle, LOGFONTW* font)
{
    InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return FALSE;
    context->font = *font;
    return TRUE;
}

BOOL ImmGetCompositionFontW(HIMC handle, LOGFONTW* font)
{
    const InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return FALSE;
    *font = context->font;
    return TRUE;
}

LONG ImmGetCompositionStringW(HIMC handle, DWORD index, LPVOID data, DWORD size)
{
    const InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return -1;
    if (index == GCS_CURSORPOS)
        return context->cursor;
    if (index != GCS_COMPSTR && index != GCS_RESULTSTR)
        return 0;
    const tlvn::WString& text =
        index == GCS_COMPSTR ? context->compositionText : context->resultText;
    const std::size_t bytes = text.size() * sizeof(WCHAR);
    if (size == 0)
        return static_cast<LONG>(bytes);
    // As on Windows: no terminator, at most `size` bytes.
    const std::size_t copied = std::min<std::size_t>(bytes, size);
    std::copy_n(reinterpret_cast<const char*>(text.data()), copied, static_cast<char*>(data));
    return static_cast<LONG>(copied);
}

BOOL ImmNotifyIME(HIMC handle, DWORD action, DWORD index, DWORD)
{
    InputContext* const context = FindContext(handle);
    if (context == nullptr || action != NI_COMPOSITIONSTR)
        return FALSE;
    if (index == CPS_COMPLETE)
        context->resultText = context->compositionText;
    if (index == CPS_COMPLETE || index == CPS_CANCEL)
        context->compositionText.clear();
    return TRUE;
}

BOOL ImmGetOpenStatus(HIMC handle)
{
    const InputContext* const context = FindContext(handle);
    return context != nullptr && context->open;
}

BOOL ImmSetOpenStatus(HIMC handle, BOOL open)
{
    InputContext* const context = FindContext(handle);
    if (context == nullptr)
        return FALSE;
    context->open = open != 0;
    return TRUE;
}
