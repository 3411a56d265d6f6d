#include "editor/color.h"

#include "persist/setting_data.h"

// In the order in which settings files have them.
const CEditorColor::SlotGroup CEditorColor::kGroups[] = {
    {"Text", kText, 1},
    {"Back", kBack, 1},
    {"SelText", kSelText, 1},
    {"SelBack", kSelBack, 1},
    {"QuotedText", kQuotedText, kQuoteLevels},
    {"Symbol", kSymbol, 1},
    {"URL", kUrl, 1},
    {"Katakana", kKatakana, 1},
    {"MachineDepend", kMachineDepend, 1},
    {"HeaderBack", kHeaderBack, 1},
    {"FindedText", kFindedText, 1},
    {"FindedBack", kFindedBack, 1},
    {"LineMarkerText", kMarkerText, kMarkerKinds},
    {"LineMarkerBack", kMarkerBack, kMarkerKinds},
};

namespace {

// What the key of the first quote colour was before there were several.
constexpr char kOldQuotedText[] = "QuoteText";

CString MakeKey(const char* key, int index, int count)
{
    CString name(key);
    if (count > 1)
        name.Format("%s%d", key, index);
    return name;
}

} // namespace

void CEditorColor::GetEditorColor(const CSettingData* settings, const char* section)
{
    ResetColor();
    if (settings == nullptr)
        return;
    for (const SlotGroup& group : kGroups) {
        for (int i = 0; i < group.count; ++i) {
            DWORD color = 0;
            const bool found =
                settings->GetHexValue(section, MakeKey(group.key, i, group.count), color) ||
                (group.first + i == kQuotedText &&
                 settings->GetHexValue(section, kOldQuotedText, color));
            if (!found)
                continue;
            if (group.count > 1)
                SetIndexed(group.first, i, group.count, color);
            else
                m_slots[group.first] = color;
        }
    }
}

void CEditorColor::SetEditorColor(CSettingData* settings, const char* section) const
{
    if (settings == nullptr)
        return;
    for (const SlotGroup& group : kGroups) {
        for (int i = 0; i < group.count; ++i)
            settings->SetHexValue(section, MakeKey(group.key, i, group.count),
                                  m_slots[group.first + i]);
    }
}
