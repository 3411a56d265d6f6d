// What the tests of settings files share: a file that goes with the test, its raw content, and
// an object that can be saved without questions.

#pragma once

#include "TlvnMisc.h"
#include "tests/support/temp_folder.h"

#include <string>

// The path of a file in a folder of its own, and the file's raw content.
class TempFile {
public:
    const char* Path() const { return m_path.c_str(); }
    std::string Read() const { return m_folder.Read("s"); }
    void Write(const std::string& content) const { m_folder.Write("s", content); }
    void Write(tlvn::WStringView text) const { Write(ToBytes(text)); }
    // UTF-16 as it stands in a file.
    static std::string ToBytes(tlvn::WStringView text)
    {
        std::string bytes;
        for (const WCHAR c : text) {
            bytes += static_cast<char>(c);
            bytes += static_cast<char>(c >> 8);
        }
        return bytes;
    }

private:
    const TempFolder m_folder;
    const std::string m_path = m_folder.Path("s");
};

class Settings : public CSettingData {
public:
    using CSettingData::SaveFile;

    CStringW Get(const char* key, const char* name) const
    {
        CStringW value(TW("(none)"));
        GetValue(key, name, value);
        return value;
    }
};

// The keys and pairs in order: "key: name=value name=value; key: ...".
inline std::string Dump(const CSettingData& data)
{
    std::string text;
    for (int i = 0; i < data.GetKeyList().GetSize(); ++i) {
        const CSettingDataKey& key = *data.GetKeyList()[i];
        text += std::string(key.GetName()) + ":";
        for (int k = 0; k < key.GetPairs().GetSize(); ++k) {
            const CSettingDataPair& pair = *key.GetPairs()[k];
            text += " " + std::string(pair.GetName()) + "=";
            text += CString(pair.GetValue());
        }
        text += "; ";
    }
    return text;
}

inline CString Message(UINT id)
{
    CString text;
    text.LoadString(id);
    return text;
}
