// A settings file of the program, in which nothing is ever lost.
//
//   SettingsFile file;
//   if (file.Load(path, password) == SettingsFile::State::Locked)
//       ...ask for another password and load again...
//   if (!file.GetMessage().empty())
//       Tell(file.GetMessage());
//   file.Data().SetValue("List", "Sort", 1);
//   if (!file.Save())
//       Tell(file.GetMessage());
//
// Whatever the file is like, the program goes on with what could be read, or with nothing. A file
// that is there but could not be read is kept: saving first gives it another name, its own with
// ".kept" or ".kept2" and so on behind it. A file that is read-only is left as it is, and so is
// one that another program is using.

#pragma once

#include "persist/setting_data.h"

#include <string>

namespace tlvn {

class SettingsFile {
public:
    enum class State {
        Fresh,   // there was no file
        Loaded,  // also from an empty file
        Locked,  // it does not begin like a plain file, and the password does not open it
        Damaged, // it is there and could not be read
    };

    // Starts anew with the file at a narrow path; with a password that is not empty it is taken
    // for enciphered, and saved so. The data is empty unless loaded. A file that is not
    // enciphered is loaded whatever the password is.
    State Load(const std::string& path, const std::string& password);

    // Writes the data if it has changed. False when it could not be written; the data stays
    // changed, and the file is what it was.
    bool Save();

    // What the last loading or saving has to tell the user, in UTF-8; empty for nothing.
    const std::string& GetMessage() const { return m_message; }

    CSettingData& Data() { return m_data; }
    const CSettingData& Data() const { return m_data; }

private:
    bool KeepOldFile(std::string& keptAs);

    CSettingData m_data;
    State m_state = State::Fresh;
    std::string m_path;
    std::string m_message;
};

} // namespace tlvn
