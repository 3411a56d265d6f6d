#include "viewer/key_settings.h"

#include "ui/accel_data.h"

#include <cstdlib>

namespace tlvn {

namespace {

// Stands in for a table without keys, so that it does not look like one that was never stored.
const char kNoKeys[] = "0";

} // namespace

bool LoadKeys(const CSettingData& settings, const char* section, const char* prefix,
              int firstCommand, int lastCommand, CAccelData& keys)
{
    CStringArray values;
    if (settings.GetValueBegin(section, prefix, values) == 0)
        return false;

    keys.SetSize(0);
    CAccelData parsed;
    parsed.SetSize(1);
    for (int i = 0; i < static_cast<int>(values.GetSize()); ++i) {
        char* name = nullptr;
        const long command = std::strtol(values[i], &name, 10);
        if (command < firstCommand || command > lastCommand || *name != ' ')
            continue;
        parsed.SetAccelTextAt(0, name + 1);
        BYTE modifiers = 0;
        int key = 0;
        parsed.GetKeyAt(0, &modifiers, &key);
        if (key != 0)
            keys.SetCmdID(modifiers, key, static_cast<int>(command));
    }
    return true;
}

void SaveKeys(CSettingData& settings, const char* section, const char* prefix,
              const CAccelData& keys)
{
    CStringArray values;
    for (int i = 0; i < keys.GetSize(); ++i) {
        if (keys.GetData()[i].cmd == 0)
            continue;
        char text[CAccelData::kTextSize];
        keys.GetAccelTextAt(i, text);
        CString value;
        value.Format("%d %s", int{keys.GetData()[i].cmd}, text);
        values.Add(value);
    }
    if (values.GetSize() == 0)
        values.Add(kNoKeys);
    settings.SetValueBegin(section, prefix, values);
}

} // namespace tlvn
