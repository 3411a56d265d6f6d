// The data of one zip entry, decoded chunk by chunk: deciphered, inflated, checked.
//
// The packed bytes are read where they lie; only encrypted ones go through a buffer. The inflater
// is kept from one entry to the next.

#pragma once

#include "persist/zip/zip_cipher.h"
#include "persist/zip/zip_directory.h"

#include <zlib.h>

#include <array>
#include <optional>
#include <string_view>

namespace tlvn {

class ZipEntryData {
public:
    ZipEntryData() = default;
    ~ZipEntryData();
    ZipEntryData(const ZipEntryData&) = delete;
    ZipEntryData& operator=(const ZipEntryData&) = delete;

    // Begins with an entry of which item.entry.comp_size bytes lie at `packed`. Gives kZipOk,
    // kZipPassword, kZipData or kZipNoMemory.
    DWORD Begin(const BYTE* packed, const ZipItem& item, std::string_view password);

    // Decodes up to `size` bytes. Gives kZipOk when the entry is complete and right, kZipMore when
    // `size` bytes were delivered and more remain, else as Begin. After anything but kZipMore the
    // entry is done with.
    DWORD Read(BYTE* buffer, unsigned size);

private:
    DWORD BeginCipher(const ZipItem& item, std::string_view password);
    DWORD BeginInflate();
    DWORD Inflate(BYTE* out, unsigned size, unsigned& done);
    void FillInput();
    // The content ends where it should and has the right CRC. Packed bytes behind its end do not
    // matter.
    bool IsWhole();
    DWORD Damage() const;

    const BYTE* m_packed = nullptr; // what has not been read yet
    unsigned m_packedSize = 0;
    unsigned m_left = 0; // bytes to deliver
    bool m_deflated = false;
    DWORD m_wantedCrc = 0;
    uLong m_crc = 0;

    std::optional<ZipCipher> m_cipher;
    bool m_passwordSure = true; // the second check byte agrees, or there is none

    z_stream m_stream = {};
    bool m_streamReady = false;
    bool m_streamEnded = false;
    std::array<BYTE, 16384> m_plain; // deciphered, not yet inflated
};

} // namespace tlvn
