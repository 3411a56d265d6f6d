#include "persist/zip/zip_cipher.h"

#include "persist/wipe.h"

#include <zlib.h>

namespace tlvn {

namespace {

DWORD CrcStep(DWORD crc, BYTE c)
{
    // The table of the CRC-32 that zip uses everywhere.
    static const z_crc_t* const table = get_crc_table();
    return static_cast<DWORD>(table[(crc ^ c) & 255] ^ crc >> 8);
}

} // namespace

void ZipCipher::Registers::Update(BYTE plain)
{
    key[0] = CrcStep(key[0], plain);
    key[1] = (key[1] + (key[0] & 255)) * 134775813 + 1;
    key[2] = CrcStep(key[2], static_cast<BYTE>(key[1] >> 24));
}

BYTE ZipCipher::Registers::Stream() const
{
    const DWORD temp = (key[2] & 0xFFFF) | 2;
    return static_cast<BYTE>(temp * (temp ^ 1) >> 8);
}

ZipCipher::ZipCipher(std::string_view password) : m_registers{{0x12345678, 0x23456789, 0x34567890}}
{
    for (const char c : password)
        m_registers.Update(static_cast<BYTE>(c));
}

ZipCipher::~ZipCipher()
{
    Wipe(&m_registers, sizeof m_registers);
}

void ZipCipher::Encipher(const BYTE* in, BYTE* out, std::size_t size)
{
    Registers registers = m_registers;
    for (std::size_t i = 0; i < size; ++i) {
        const BYTE plain = in[i];
        out[i] = plain ^ registers.Stream();
        registers.Update(plain);
    }
    m_registers = registers;
}

void ZipCipher::Decipher(const BYTE* in, BYTE* out, std::size_t size)
{
    Registers registers = m_registers;
    for (std::size_t i = 0; i < size; ++i) {
        out[i] = in[i] ^ registers.Stream();
        registers.Update(out[i]);
    }
    m_registers = registers;
}

} // namespace tlvn
