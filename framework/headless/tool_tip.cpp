// The window class "tooltips_class32": it keeps its tools and their texts and shows nothing.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

std::size_t FindTool(const ToolTip& tips, HWND owner, UINT_PTR id)
{
    for (std::size_t i = 0; i < tips.tools.size(); ++i) {
        if (tips.tools[i].hwnd == owner && tips.tools[i].uId == id)
            return i;
    }
    return tips.tools.size();
}

bool IsOnDemand(const TOOLINFOW& tool)
{
    return tool.lpszText == LPSTR_TEXTCALLBACKW;
}

WString TextOf(const TOOLINFOW& tool)
{
    return tool.lpszText == nullptr || IsOnDemand(tool) ? WString() : WString(tool.lpszText);
}

} // namespace

LRESULT CALLBACK ToolTipProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    ToolTip& tips = Desk().toolTips[window];
    const auto* const tool = reinterpret_cast<const TOOLINFOW*>(lParam);
    switch (message) {
    case TTM_ADDTOOLW:
        tips.tools.push_back(*tool);
        tips.texts.push_back(TextOf(*tool));
        return TRUE;
    case TTM_DELTOOLW: {
        const std::size_t index = FindTool(tips, tool->hwnd, tool->uId);
        if (index < tips.tools.size()) {
            tips.tools.erase(tips.tools.begin() + static_cast<std::ptrdiff_t>(index));
            tips.texts.erase(tips.texts.begin() + static_cast<std::ptrdiff_t>(index));
        }
        return 0;
    }
    case TTM_UPDATETIPTEXTW: {
        const std::size_t index = FindTool(tips, tool->hwnd, tool->uId);
        if (index < tips.tools.size()) {
            tips.tools[index].lpszText = tool->lpszText;
            tips.texts[index] = TextOf(*tool);
        }
        return 0;
    }
    case TTM_NEWTOOLRECTW: {
        const std::size_t index = FindTool(tips, tool->hwnd, tool->uId);
        if (index < tips.tools.size())
            tips.tools[index].rect = tool->rect;
        return 0;
    }
    case TTM_GETTOOLCOUNT:
        return static_cast<LRESULT>(tips.tools.size());
    case WM_NCDESTROY:
        Desk().toolTips.erase(window);
        return 0;
    default:
        return message >= WM_USER ? 0 : DefWindowProcW(window, message, wParam, lParam);
    }
}

WString GetToolTipText(HWND toolTip, HWND owner, UINT_PTR id)
{
    const auto found = Desk().toolTips.find(toolTip);
    if (found == Desk().toolTips.end())
        return {};
    const std::size_t index = FindTool(found->second, owner, id);
    if (index == found->second.tools.size())
        return {};
    if (!IsOnDemand(found->second.tools[index]))
        return found->second.texts[index];
    NMTTDISPINFOW info = {};
    info.hdr = {toolTip, id, TTN_GETDISPINFOW};
    info.lpszText = info.szText;
    info.uFlags = found->second.tools[index].uFlags;
    info.lParam = found->second.tools[index].lParam;
    SendMessageW(owner, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&info));
    return info.lpszText != nullptr ? WString(info.lpszText) : WString();
}

} // namespace tlvn::headless

// The class is there from the start.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX*)
{
    return TRUE;
}
