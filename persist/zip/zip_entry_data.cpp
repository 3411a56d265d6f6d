#include "persist/zip/zip_entry_data.h"

#include "persist/wipe.h"
#include "persist/zip/zip_format.h"

#include <algorithm>
#include <cstring>

namespace tlvn {

namespace {

// Inflated and then summed up in pieces that stay in the cache in between.
constexpr unsigned kPiece = 1 << 17;

} // namespace

ZipEntryData::~ZipEntryData()
{
    if (m_streamReady)
        inflateEnd(&m_stream);
    Wipe(m_plain.data(), m_plain.size());
}

DWORD ZipEntryData::Begin(const BYTE* packed, const ZipItem& item, std::string_view password)
{
    m_packed = packed;
    m_packedSize = static_cast<unsigned>(item.entry.comp_size);
    m_left = static_cast<unsigned>(item.entry.unc_size);
    m_wantedCrc = item.crc;
    m_crc = crc32(0, nullptr, 0);
    m_cipher.reset();
    m_passwordSure = true;

    if ((item.flags & kZipEncrypted) != 0) {
        const DWORD result = BeginCipher(item, password);
        if (result != kZipOk)
            return result;
    }
    // Some writers call an empty entry deflated and leave out even the end mark.
    m_deflated = item.method == kZipDeflated && (m_packedSize > 0 || m_left > 0);
    if (m_deflated)
        return BeginInflate();
    const bool known = item.method == kZipStored || item.method == kZipDeflated;
    return known && m_packedSize == m_left ? kZipOk : Damage();
}

DWORD ZipEntryData::BeginCipher(const ZipItem& item, std::string_view password)
{
    if (password.empty())
        return kZipPassword;
    if (m_packedSize < ZipCipher::kHeaderSize)
        return kZipData;
    BYTE header[ZipCipher::kHeaderSize];
    m_cipher.emplace(password);
    m_cipher->Decipher(m_packed, header, sizeof header);
    m_packed += ZipCipher::kHeaderSize;
    m_packedSize -= ZipCipher::kHeaderSize;

    // The last two bytes are the high half of the CRC, or the DOS time in an entry that was
    // written before its CRC was known; but some writers have the CRC there all the same. Of the
    // two bytes only the last one is in use everywhere.
    const unsigned check = GetZip16(header + 10);
    const unsigned byCrc = item.crc >> 16 & 0xFFFF;
    const unsigned byTime = (item.flags & kZipDescriptor) != 0 ? item.dosTime & 0xFFFF : byCrc;
    if (check >> 8 != byCrc >> 8 && check >> 8 != byTime >> 8)
        return kZipPassword;
    m_passwordSure = check == byCrc || check == byTime;
    return kZipOk;
}

DWORD ZipEntryData::BeginInflate()
{
    m_stream.next_in = nullptr;
    m_stream.avail_in = 0;
    m_streamEnded = false;
    const int result =
        m_streamReady ? inflateReset(&m_stream) : inflateInit2(&m_stream, -MAX_WBITS);
    m_streamReady = result == Z_OK;
    return m_streamReady ? kZipOk : kZipNoMemory;
}

DWORD ZipEntryData::Read(BYTE* buffer, unsigned size)
{
    while (size > 0 && m_left > 0) {
        const unsigned wanted = std::min({size, m_left, kPiece});
        unsigned done = wanted;
        if (m_deflated) {
            const DWORD result = Inflate(buffer, wanted, done);
            if (result != kZipOk)
                return result;
        } else {
            if (m_cipher)
                m_cipher->Decipher(m_packed, buffer, wanted);
            else
                std::memcpy(buffer, m_packed, wanted);
            m_packed += wanted;
            m_packedSize -= wanted;
        }
        m_crc = crc32(m_crc, buffer, done);
        buffer += done;
        size -= done;
        m_left -= done;
    }
    if (m_left > 0)
        return kZipMore;
    return IsWhole() ? kZipOk : Damage();
}

// Some bytes, at least one, or a failure.
DWORD ZipEntryData::Inflate(BYTE* out, unsigned size, unsigned& done)
{
    m_stream.next_out = out;
    m_stream.avail_out = size;
    while (m_stream.avail_out == size && !m_streamEnded) {
        FillInput();
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        if (result == Z_MEM_ERROR)
            return kZipNoMemory;
        if (result == Z_STREAM_END)
            m_streamEnded = true;
        else if (result != Z_OK)
            return Damage();
    }
    done = size - m_stream.avail_out;
    return done > 0 ? kZipOk : Damage();
}

void ZipEntryData::FillInput()
{
    if (m_stream.avail_in > 0)
        return;
    unsigned taken = m_packedSize;
    if (m_cipher) {
        taken = std::min(taken, static_cast<unsigned>(m_plain.size()));
        m_cipher->Decipher(m_packed, m_plain.data(), taken);
        m_stream.next_in = m_plain.data();
    } else {
        m_stream.next_in = const_cast<BYTE*>(m_packed);
    }
    m_stream.avail_in = taken;
    m_packed += taken;
    m_packedSize -= taken;
}

bool ZipEntryData::IsWhole()
{
    if (m_deflated && !m_streamEnded) {
        // The end mark must be next, no further byte of content.
        BYTE beyond;
        unsigned done = 0;
        Inflate(&beyond, 1, done);
        if (done != 0 || !m_streamEnded)
            return false;
    }
    return static_cast<DWORD>(m_crc) == m_wantedCrc;
}

// A wrong password shows as damage when it has passed for right at the beginning.
DWORD ZipEntryData::Damage() const
{
    return m_passwordSure ? kZipData : kZipPassword;
}

} // namespace tlvn
