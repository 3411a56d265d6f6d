// What the zip tests share: opening and making archives, and reading whole entries.

#pragma once

#include "TlvnMisc.h"
#include "persist/zip/zip_result.h"
#include "platform/nls.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

// The code of an operation that returned `done`; all one bits when the two do not agree.
inline DWORD Code(const CZip& zip, int done)
{
    const DWORD code = zip.GetLastErrorID();
    return done == (code == 0 ? 1 : 0) ? code : ~DWORD{0};
}

inline int OpenZip(CZip& zip, std::string& archive, const char* password = nullptr)
{
    return zip.OpenZip(archive.data(), static_cast<unsigned>(archive.size()), password);
}

inline int Create(CZip& zip, const TempFolder& folder, const char* password = nullptr,
                  const char* name = "a.zip")
{
    return zip.CreateZip(tlvn::WidenText(folder.Path(name)).c_str(), password);
}

inline int Add(CZip& zip, const WCHAR* name, std::string content)
{
    return zip.ZipAdd(name, content.data(), static_cast<unsigned>(content.size()));
}

// An archive of these names and contents, written by us.
inline std::string Pack(const std::vector<std::pair<tlvn::WString, std::string>>& entries,
                        const char* password = nullptr)
{
    const TempFolder folder;
    CZip zip;
    EXPECT_TRUE(Create(zip, folder, password));
    for (const auto& [name, content] : entries)
        EXPECT_TRUE(Add(zip, name.c_str(), content));
    EXPECT_TRUE(zip.Close());
    return folder.Read("a.zip");
}

// The whole entry in chunks of `chunk` bytes; `code` gets the last result.
inline std::string Unzip(CZip& zip, int index, unsigned chunk, int& code)
{
    ZIPENTRY entry;
    std::string content, buffer(chunk, '\0');
    if (!zip.GetZipItem(index, &entry)) {
        code = static_cast<int>(zip.GetLastErrorID());
        return {};
    }
    do {
        code = zip.UnzipItem(index, buffer.data(), chunk);
        const std::size_t left = static_cast<std::size_t>(entry.unc_size) - content.size();
        if (code == tlvn::kZipOk || code == tlvn::kZipMore)
            content += buffer.substr(0, left);
    } while (code == tlvn::kZipMore);
    return content;
}

// Since 1970; 0 for no time.
inline INT64 Seconds(const FILETIME& time)
{
    const UINT64 ticks = time.dwLowDateTime | UINT64{time.dwHighDateTime} << 32;
    return ticks == 0 ? 0 : static_cast<INT64>(ticks / 10000000) - 11644473600;
}

// Name of an entry in UTF-8, or its code as a number.
inline std::string NameOf(CZip& zip, int index)
{
    ZIPENTRY entry;
    if (!zip.GetZipItem(index, &entry))
        return std::to_string(zip.GetLastErrorID());
    return tlvn::Utf16ToUtf8(entry.name);
}

// The contents by the names of the entries that are no folders, "failed" where one cannot be had.
inline std::map<std::string, std::string> ReadZip(std::string archive, const char* password)
{
    std::map<std::string, std::string> contents;
    CZip zip;
    ZIPENTRY entry;
    OpenZip(zip, archive, password);
    for (int i = 0; zip.GetZipItem(i, &entry); ++i) {
        int code = 0;
        if ((entry.attr & 16) != 0)
            continue;
        const std::string content = Unzip(zip, i, 4096, code);
        contents[NameOf(zip, i)] = code == 0 ? content : "failed";
    }
    return contents;
}
