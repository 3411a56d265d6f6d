// Archives made by hand, also such as no writer makes: every field can be a lie.

#pragma once

#include "TlvnMisc.h"
#include "persist/zip/zip_format.h"

#include <string>
#include <vector>

namespace zip_maker {

// CRC-32 bit by bit.
inline DWORD Crc(const std::string& data)
{
    DWORD crc = 0xFFFFFFFF;
    for (const char c : data) {
        crc ^= static_cast<BYTE>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

// The data as one stored block of a deflate stream.
inline std::string Deflated(const std::string& data)
{
    std::string out = "\1";
    tlvn::PutZip(out, 2, data.size());
    tlvn::PutZip(out, 2, ~data.size());
    return out + data;
}

// A member; what is left as it is gives a right one.
struct Member {
    std::string name = "name";
    std::string content = "the content of a member";
    unsigned method = 0;
    unsigned madeBy = 20;
    DWORD attributes = 32;
    DWORD dosTime = 0x5A6F6000; // 2025-03-15 12:00
    unsigned flags = 0;
    std::string localExtra = {};
    std::string centralExtra = {};
    // Added to what is right; "4 GB" is all one bits.
    UINT64 sizeLie = 0, packedLie = 0, offsetLie = 0;
    DWORD crcLie = 0;
    unsigned localMethodLie = 0, nameLie = 0;
    DWORD centralSignature = tlvn::kZipCentralSignature;
};

struct EndLies {
    unsigned count = 0;
    DWORD size = 0, offset = 0;
};

inline std::string Make(const std::vector<Member>& members, const EndLies& lies = {},
                        const std::string& before = {}, const std::string& comment = {})
{
    using tlvn::PutZip;
    std::string files, directory;
    for (const Member& m : members) {
        const std::string packed = m.method == 8 ? Deflated(m.content) : m.content;
        const UINT64 offset = files.size() + m.offsetLie;
        std::string common; // method to sizes
        PutZip(common, 4, m.dosTime);
        PutZip(common, 4, Crc(m.content) + m.crcLie);
        PutZip(common, 4, packed.size() + m.packedLie);
        PutZip(common, 4, m.content.size() + m.sizeLie);

        PutZip(files, 4, tlvn::kZipLocalSignature);
        PutZip(files, 2, 20);
        PutZip(files, 2, m.flags);
        PutZip(files, 2, m.method + m.localMethodLie);
        files += common;
        PutZip(files, 2, m.name.size() + m.nameLie);
        PutZip(files, 2, m.localExtra.size());
        files += m.name + m.localExtra + packed;

        PutZip(directory, 4, m.centralSignature);
        PutZip(directory, 2, m.madeBy);
        PutZip(directory, 2, 20);
        PutZip(directory, 2, m.flags);
        PutZip(directory, 2, m.method);
        directory += common;
        PutZip(directory, 2, m.name.size());
        PutZip(directory, 2, m.centralExtra.size());
        PutZip(directory, 6, 0); // comment, volume, internal attributes
        PutZip(directory, 4, m.attributes);
        PutZip(directory, 4, offset);
        directory += m.name + m.centralExtra;
    }
    std::string end;
    PutZip(end, 4, tlvn::kZipEndSignature);
    PutZip(end, 4, 0);
    PutZip(end, 2, members.size() + lies.count);
    PutZip(end, 2, members.size() + lies.count);
    PutZip(end, 4, directory.size() + lies.size);
    PutZip(end, 4, files.size() + lies.offset);
    PutZip(end, 2, comment.size());
    return before + files + directory + end + comment;
}

} // namespace zip_maker
