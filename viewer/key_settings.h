// Tables of shortcut keys in a settings file.
//
// Each key is one value, the number of the command and the key's name: "40060 Ctrl+R". The names
// of the values are a prefix, which tells one table from others of the section, and a number.
// Names of keys are those of ui/accel_data.h; name the punctuation keys before.

#pragma once

#include "persist/setting_data.h"

class CAccelData;

namespace tlvn {

// Replaces the table by the one in the settings. False, and the table stays, when there is none.
// What is no key, and keys for commands outside [firstCommand, lastCommand], are left out.
bool LoadKeys(const CSettingData& settings, const char* section, const char* prefix,
              int firstCommand, int lastCommand, CAccelData& keys);

// A table without keys is stored as such.
void SaveKeys(CSettingData& settings, const char* section, const char* prefix,
              const CAccelData& keys);

} // namespace tlvn
