// The zip format: signatures, sizes, and little-endian fields (PKWARE APPNOTE.TXT).

#pragma once

#include "platform/types.h"

#include <string>

namespace tlvn {

constexpr DWORD kZipLocalSignature = 0x04034B50;
constexpr DWORD kZipDescriptorSignature = 0x08074B50;
constexpr DWORD kZipCentralSignature = 0x02014B50;
constexpr DWORD kZipEndSignature = 0x06054B50;
constexpr DWORD kZip64EndSignature = 0x06064B50;
constexpr DWORD kZip64LocatorSignature = 0x07064B50;

// Of the fixed part of each record.
constexpr unsigned kZipLocalSize = 30;
constexpr unsigned kZipCentralSize = 46;
constexpr unsigned kZipEndSize = 22;
constexpr unsigned kZip64EndSize = 56;

enum ZipFlag : unsigned { kZipEncrypted = 1, kZipDescriptor = 8, kZipUtf8 = 0x800 };
enum ZipMethod : unsigned { kZipStored = 0, kZipDeflated = 8 };

// Identifiers of extra fields.
constexpr unsigned kZip64Extra = 1;
constexpr unsigned kZipTimeExtra = 'U' | 'T' << 8;

inline unsigned GetZip16(const BYTE* p)
{
    return p[0] | unsigned{p[1]} << 8;
}
inline DWORD GetZip32(const BYTE* p)
{
    return static_cast<DWORD>(GetZip16(p) | GetZip16(p + 2) << 16);
}
inline UINT64 GetZip64(const BYTE* p)
{
    return GetZip32(p) | UINT64{GetZip32(p + 4)} << 32;
}

// Appends the lowest `bytes` bytes of `value`.
inline void PutZip(std::string& out, int bytes, UINT64 value)
{
    for (; bytes > 0; --bytes, value >>= 8)
        out += static_cast<char>(value & 255);
}

// A field of an extra area: [data, data + size).
struct ZipExtra {
    const BYTE* data = nullptr; // null: there is no such field
    unsigned size = 0;
};

// The first field `id` of the extra area of `size` bytes. A field that runs over the end of the
// area is none.
inline ZipExtra FindZipExtra(const BYTE* area, unsigned size, unsigned id)
{
    while (size >= 4) {
        const unsigned length = GetZip16(area + 2);
        if (length > size - 4)
            break;
        if (GetZip16(area) == id)
            return {area + 4, length};
        area += 4 + length;
        size -= 4 + length;
    }
    return {};
}

} // namespace tlvn
