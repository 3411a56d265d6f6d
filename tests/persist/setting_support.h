// What the tests of settings files share: a file that goes with the test, its raw content, and
// an object that can be saved without questions.

#pragma once

#include "TlvnMisc.h"

#include <fstream>
#include <iterator>
#include <string>

// A path in the folder for temporary files; the file there is removed at both ends of its life.
class TempFile {
public:
    TempFile()
    {
        m_path = tlvn::GetTempFolder() + "tlvn_setting_" + std::to_string(GetRandom());
        Remove();
    }
    ~TempFile() { Remove(); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* Path() const { return m_path.c_str(); }
    bool Exists() const
    {
        tlvn::FileInfo info;
        return static_cast<bool>(tlvn::GetFileInfo(Path(), info));
    }
    std::string Read() const
    {
        std::ifstream in(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void Write(const std::string& content) const
    {
        std::ofstream(m_path, std::ios::binary) << content;
    }
    // The content as UTF-16.
    tlvn::WString ReadWide() const
    {
        const std::string bytes = Read();
        tlvn::WString text;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            text += static_cast<WCHAR>(static_cast<BYTE>(bytes[i]) | static_cast<BYTE>(bytes[i + 1])
                                                                         << 8);
        return text;
    }
    void WriteWide(tlvn::WStringView text) const
    {
        std::string bytes;
        for (const WCHAR c : text) {
            bytes += static_cast<char>(c);
            bytes += static_cast<char>(c >> 8);
        }
        Write(bytes);
    }

private:
    void Remove() const
    {
        tlvn::SetFileReadOnly(Path(), false);
        tlvn::RemoveFile(Path());
    }

    std::string m_path;
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
