// The traditional PKWARE encryption: a stream cipher over three key registers.
//
//   ZipCipher cipher(password);
//   cipher.Decipher(header, plain, ZipCipher::kHeaderSize);   // before the data, 12 bytes
//
// The last byte of the header is a check on the password (see ZipEntryData). The registers are
// wiped when the object goes.

#pragma once

#include "platform/types.h"

#include <string_view>

namespace tlvn {

class ZipCipher {
public:
    static constexpr unsigned kHeaderSize = 12;

    explicit ZipCipher(std::string_view password);
    ~ZipCipher();
    ZipCipher(const ZipCipher&) = default;
    ZipCipher& operator=(const ZipCipher&) = default;

    // `out` may be `in`.
    void Encipher(const BYTE* in, BYTE* out, std::size_t size);
    void Decipher(const BYTE* in, BYTE* out, std::size_t size);

private:
    struct Registers {
        DWORD key[3];
        void Update(BYTE plain);
        BYTE Stream() const;
    };
    Registers m_registers;
};

} // namespace tlvn
