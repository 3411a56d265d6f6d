// Archives made by hand, also such as no writer makes: every field can be a lie.

#pragma once

#include "TlvnMisc.h"
#include "persist/zip/zip_format.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace zip_maker {

struct Field {
    int bytes;
    UINT64 value;
};

inline std::string Bytes(std::initializer_list<Field> fields)
{
    std::string out;
    for (const Field& field : fields)
        tlvn::PutZip(out, field.bytes, field.value);
    return out;
}

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
    return "\1" + Bytes({{2, data.size()}, {2, ~data.size()}}) + data;
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
    std::string files, directory;
    for (const Member& m : members) {
        const std::string packed = m.method == 8 ? Deflated(m.content) : m.content;
        const UINT64 offset = files.size() + m.offsetLie;
        const std::string common = Bytes({{4, m.dosTime},
                                          {4, Crc(m.content) + m.crcLie},
                                          {4, packed.size() + m.packedLie},
                                          {4, m.content.size() + m.sizeLie}});
        files += Bytes({{4, tlvn::kZipLocalSignature}, {2, 20}, {2, m.flags}}) +
                 Bytes({{2, m.method + m.localMethodLie}}) + common +
                 Bytes({{2, m.name.size() + m.nameLie}, {2, m.localExtra.size()}}) + m.name +
                 m.localExtra + packed;
        // Between the lengths and the attributes: comment, volume, internal attributes.
        directory += Bytes({{4, m.centralSignature}, {2, m.madeBy}, {2, 20}, {2, m.flags}}) +
                     Bytes({{2, m.method}}) + common +
                     Bytes({{2, m.name.size()}, {2, m.centralExtra.size()}, {6, 0}}) +
                     Bytes({{4, m.attributes}, {4, offset}}) + m.name + m.centralExtra;
    }
    const UINT64 count = members.size() + lies.count;
    return before + files + directory +
           Bytes({{4, tlvn::kZipEndSignature}, {4, 0}, {2, count}, {2, count}}) +
           Bytes({{4, directory.size() + lies.size}, {4, files.size() + lies.offset}}) +
           Bytes({{2, comment.size()}}) + comment;
}

} // namespace zip_maker
