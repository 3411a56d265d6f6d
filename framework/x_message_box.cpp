#include "framework/x_message_box.h"

#include <algorithm>
#include <atomic>

namespace {

constexpr int kMostButtons = 3;
constexpr int kMaxCaption = 256; // with the terminator
std::atomic<tlvn::ButtonBoxProcedure> g_procedure = nullptr;

} // namespace

int XMessageBox(CWnd* owner, const char* text, UINT icon, const char* const* buttons, int count,
                int cancel)
{
    count = std::clamp(count, 1, kMostButtons);
    CStringW texts[kMostButtons];
    const WCHAR* buttonTexts[kMostButtons] = {};
    for (int i = 0; i < count; ++i) {
        texts[i] = buttons[i];
        buttonTexts[i] = texts[i].GetString();
    }

    const HWND top = owner != nullptr && owner->m_hWnd != nullptr
                         ? ::GetAncestor(owner->m_hWnd, GA_ROOT)
                         : nullptr;
    WCHAR caption[kMaxCaption] = {};
    if (top != nullptr)
        ::GetWindowTextW(top, caption, kMaxCaption);
    const CStringW wideText(text);
    const tlvn::ButtonBox box = {top,   wideText.GetString(),        caption, icon, buttonTexts,
                                 count, cancel < count ? cancel : -1};
    const tlvn::ButtonBoxProcedure procedure = g_procedure;
    return procedure != nullptr ? procedure(box) : tlvn::ShowSystemButtonBox(box);
}

namespace tlvn {

ButtonBoxProcedure SetButtonBoxProcedure(ButtonBoxProcedure procedure)
{
    return g_procedure.exchange(procedure);
}

} // namespace tlvn
