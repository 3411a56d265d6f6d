#include "persist/blowfish.h"

#include "persist/wipe.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kRounds = 16;
constexpr DWORD kBlockSize = 8;
constexpr int kMaxKeyLength = 72; // what the P-array takes up

constexpr DWORD kInitialWords[18 + 4 * 256] = {
#include "persist/tables/blowfish_table.inc"
};

DWORD LoadWord(const unsigned char* p)
{
    return static_cast<DWORD>(p[0]) | static_cast<DWORD>(p[1]) << 8 |
           static_cast<DWORD>(p[2]) << 16 | static_cast<DWORD>(p[3]) << 24;
}

void StoreWord(unsigned char* p, DWORD word)
{
    p[0] = static_cast<unsigned char>(word);
    p[1] = static_cast<unsigned char>(word >> 8);
    p[2] = static_cast<unsigned char>(word >> 16);
    p[3] = static_cast<unsigned char>(word >> 24);
}

DWORD Mix(const DWORD (&s)[4][256], DWORD x)
{
    return ((s[0][x >> 24] + s[1][x >> 16 & 0xFF]) ^ s[2][x >> 8 & 0xFF]) + s[3][x & 0xFF];
}

} // namespace

template <bool kEncipher, std::size_t kBlocks>
inline void CBlowFish::Crypt(const Schedule& schedule, DWORD (&left)[kBlocks],
                             DWORD (&right)[kBlocks])
{
    // Deciphering is enciphering with the P-array from its end.
    const auto key = [&](int i) { return schedule.p[kEncipher ? i : kRounds + 1 - i]; };
    for (int round = 0; round < kRounds; round += 2) {
        const DWORD even = key(round);
        const DWORD odd = key(round + 1);
        for (std::size_t i = 0; i < kBlocks; ++i) {
            left[i] ^= even;
            right[i] ^= Mix(schedule.s, left[i]);
        }
        for (std::size_t i = 0; i < kBlocks; ++i) {
            right[i] ^= odd;
            left[i] ^= Mix(schedule.s, right[i]);
        }
    }
    for (std::size_t i = 0; i < kBlocks; ++i) {
        const DWORD last = left[i] ^ key(kRounds);
        left[i] = right[i] ^ key(kRounds + 1);
        right[i] = last;
    }
}

template <bool kEncipher, std::size_t kBlocks>
inline void CBlowFish::CryptAt(const Schedule& schedule, const unsigned char* input,
                               unsigned char* output)
{
    DWORD left[kBlocks], right[kBlocks];
    for (std::size_t i = 0; i < kBlocks; ++i) {
        left[i] = LoadWord(input + i * 8);
        right[i] = LoadWord(input + i * 8 + 4);
    }
    Crypt<kEncipher, kBlocks>(schedule, left, right);
    for (std::size_t i = 0; i < kBlocks; ++i) {
        StoreWord(output + i * 8, left[i]);
        StoreWord(output + i * 8 + 4, right[i]);
    }
}

template <bool kEncipher>
void CBlowFish::CryptBlocks(const Schedule& schedule, const unsigned char* input,
                            unsigned char* output, std::size_t blocks)
{
    constexpr std::size_t kAtOnce = 4;
    for (; blocks >= kAtOnce; blocks -= kAtOnce) {
        CryptAt<kEncipher, kAtOnce>(schedule, input, output);
        input += kAtOnce * kBlockSize;
        output += kAtOnce * kBlockSize;
    }
    for (; blocks > 0; --blocks) {
        CryptAt<kEncipher, 1>(schedule, input, output);
        input += kBlockSize;
        output += kBlockSize;
    }
}

CBlowFish::CBlowFish()
{
    Initialize(nullptr, 0);
}

CBlowFish::~CBlowFish()
{
    tlvn::Wipe(&m_schedule, sizeof m_schedule);
}

void CBlowFish::Initialize(unsigned char key[], int keyLength)
{
    static_assert(sizeof(Schedule) == sizeof kInitialWords);
    std::memcpy(&m_schedule, kInitialWords, sizeof m_schedule);
    if (key == nullptr || keyLength < 1)
        return;

    keyLength = std::min(keyLength, kMaxKeyLength);
    int next = 0;
    for (DWORD& word : m_schedule.p) {
        DWORD bytes = 0;
        for (int i = 0; i < 4; ++i) {
            bytes = bytes << 8 | key[next];
            next = next + 1 < keyLength ? next + 1 : 0;
        }
        word ^= bytes;
    }

    // The schedule enciphers itself, two words at a time, each with what was made so far.
    DWORD left = 0;
    DWORD right = 0;
    const auto fill = [&](DWORD* words, int count) {
        for (int i = 0; i < count; i += 2) {
            Blowfish_encipher(&left, &right);
            words[i] = left;
            words[i + 1] = right;
        }
    };
    fill(m_schedule.p, 18);
    for (auto& box : m_schedule.s)
        fill(box, 256);
}

DWORD CBlowFish::GetOutputLength(DWORD length)
{
    return (length + (kBlockSize - 1)) & ~(kBlockSize - 1);
}

DWORD CBlowFish::Encode(unsigned char* input, unsigned char* output, DWORD length)
{
    const DWORD size = GetOutputLength(length);
    if (input == nullptr || output == nullptr || size == 0)
        return 0;
    if (input == output) {
        std::memset(input + length, 0, size - length);
        CryptBlocks<true>(m_schedule, input, output, size / kBlockSize);
        return size;
    }
    const DWORD whole = length & ~(kBlockSize - 1);
    CryptBlocks<true>(m_schedule, input, output, whole / kBlockSize);
    if (whole < size) {
        unsigned char* const last = output + whole;
        std::memset(last, 0, kBlockSize);
        std::memcpy(last, input + whole, length - whole);
        CryptBlocks<true>(m_schedule, last, last, 1);
    }
    return size;
}

void CBlowFish::Decode(unsigned char* input, unsigned char* output, DWORD length)
{
    if (input == nullptr || output == nullptr)
        return;
    CryptBlocks<false>(m_schedule, input, output, length / kBlockSize);
}

void CBlowFish::Blowfish_encipher(DWORD* left, DWORD* right) const
{
    DWORD l[1] = {*left};
    DWORD r[1] = {*right};
    Crypt<true, 1>(m_schedule, l, r);
    *left = l[0];
    *right = r[0];
}

void CBlowFish::Blowfish_decipher(DWORD* left, DWORD* right) const
{
    DWORD l[1] = {*left};
    DWORD r[1] = {*right};
    Crypt<false, 1>(m_schedule, l, r);
    *left = l[0];
    *right = r[0];
}
