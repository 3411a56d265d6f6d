// The MD5 message digest (RFC 1321) and the keyed code HMAC-MD5 (RFC 2104).
//
// MD5 resists no forger any more; it is here for the formats and protocols that are made of it.
// Whatever a digest was made from is wiped from the memory it passed through.

#pragma once

#include "platform/types.h"

// The digest of the terminated `text`; null is the empty text.
TLVN_API void MD5String(char* text, unsigned char digest[16]);
// The digest of `length` bytes.
TLVN_API void MD5Void(void* data, unsigned int length, unsigned char digest[16]);
// HMAC-MD5; a key of more than 64 bytes counts by its digest. Lengths below 0 count as 0.
TLVN_API void hmac_md5(unsigned char* text, int textLength, unsigned char* key, int keyLength,
                       unsigned char digest[16]);

namespace tlvn {

// A digest in the making:
//
//   Md5 md5;
//   md5.Add(head, headSize);
//   md5.Add(body, bodySize);
//   md5.Finish(digest);
class TLVN_API Md5 {
public:
    Md5();
    ~Md5();
    Md5(const Md5&) = delete;
    Md5& operator=(const Md5&) = delete;

    // Goes on with the message, by `size` bytes.
    void Add(const void* data, std::size_t size);
    // Ends the message; nothing may be added afterwards.
    void Finish(unsigned char digest[16]);

private:
    void AddBlocks(const unsigned char* data, std::size_t blocks);

    DWORD m_state[4];
    std::uint64_t m_size;        // bytes added so far
    unsigned char m_pending[64]; // the m_size % 64 bytes that make no block yet
};

} // namespace tlvn
