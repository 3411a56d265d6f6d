// A folder that goes with the test, and files in it. Names are UTF-8.

#pragma once

#include "TlvnMisc.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempFolder {
public:
    TempFolder()
        : m_path(std::filesystem::temp_directory_path() / ("tlvn_" + std::to_string(GetRandom())))
    {
        std::filesystem::create_directory(m_path);
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::filesystem::path Native(const std::string& name) const
    {
        return m_path / std::filesystem::path(std::u8string(name.begin(), name.end()));
    }
    // The path of a name, or of the folder itself.
    std::string Path(const std::string& name = {}) const
    {
        const std::u8string path = (name.empty() ? m_path : Native(name)).u8string();
        return std::string(path.begin(), path.end());
    }
    void Write(const std::string& name, const std::string& content) const
    {
        std::filesystem::create_directories(Native(name).parent_path());
        std::ofstream(Native(name), std::ios::binary) << content;
    }
    std::string Read(const std::string& name) const
    {
        std::ifstream in(Native(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    // The name, or `plain` where files cannot have it: Wine has no other characters than those of
    // the locale of the system around it.
    std::string Name(const std::string& name, const std::string& plain) const
    {
        std::error_code failed;
        std::filesystem::create_directory(Native(name), failed);
        if (failed)
            return plain;
        std::filesystem::remove(Native(name));
        return name;
    }
    bool Exists(const std::string& name) const { return std::filesystem::exists(Native(name)); }

private:
    std::filesystem::path m_path;
};
