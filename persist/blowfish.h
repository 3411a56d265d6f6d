// The Blowfish block cipher (B. Schneier, 1993) in electronic code book mode.
//
//   CBlowFish cipher;
//   cipher.Initialize(key, keyLength);
//   const DWORD size = cipher.Encode(data, enciphered, length);   // a multiple of 8
//   cipher.Decode(enciphered, data, size);
//
// A block is 8 bytes; its halves are little-endian 32-bit words, the left one first. (The
// published vectors have big-endian words.) Stored files depend on this order.
//
// The key schedule is wiped when the object goes.

#pragma once

#include "platform/types.h"

class TLVN_API CBlowFish {
public:
    // Without a key yet: the tables are those that every key schedule starts from.
    CBlowFish();
    ~CBlowFish();
    CBlowFish(const CBlowFish&) = delete;
    CBlowFish& operator=(const CBlowFish&) = delete;

    // Keys the cipher with `keyLength` bytes, of which the first 72 count. An earlier key is
    // forgotten. With a null key or a length below 1 the tables stay without a key.
    void Initialize(unsigned char key[], int keyLength);

    // `length` rounded up to a multiple of 8; lengths above 0xFFFFFFF8 give 0.
    static DWORD GetOutputLength(DWORD length);

    // Enciphers GetOutputLength(length) bytes into `output`, which has room for them, and
    // returns that number; 0 when there is nothing to encipher. The last block is filled up with
    // zeros. `output` may be `input` (which then needs that room too), but may not overlap it
    // otherwise.
    DWORD Encode(unsigned char* input, unsigned char* output, DWORD length);
    // Deciphers the whole blocks of `length` bytes into `output`, which may be `input`.
    void Decode(unsigned char* input, unsigned char* output, DWORD length);

private:
    void Blowfish_encipher(DWORD* left, DWORD* right) const;
    void Blowfish_decipher(DWORD* left, DWORD* right) const;

    // What the key makes of the digits of pi.
    struct Schedule {
        DWORD p[18];
        DWORD s[4][256];
    };

    // Enciphers or deciphers so many blocks at once: independent of each other, they keep the
    // processor busy while each waits for its own table look-ups.
    template <bool kEncipher, std::size_t kBlocks>
    static void Crypt(const Schedule& schedule, DWORD (&left)[kBlocks], DWORD (&right)[kBlocks]);
    template <bool kEncipher>
    static void CryptBlocks(const Schedule& schedule, const unsigned char* input,
                            unsigned char* output, std::size_t blocks);
    template <bool kEncipher, std::size_t kBlocks>
    static void CryptAt(const Schedule& schedule, const unsigned char* input,
                        unsigned char* output);

    Schedule m_schedule;
};
