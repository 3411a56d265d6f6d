#include "persist/md5.h"

#include "persist/wipe.h"

#include <bit>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kBlockSize = 64;
constexpr std::size_t kDigestSize = 16;

constexpr DWORD kSine[64] = {
#include "persist/tables/md5_table.inc"
};

constexpr int kRotation[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

DWORD LoadWord(const unsigned char* p)
{
    return static_cast<DWORD>(p[0]) | static_cast<DWORD>(p[1]) << 8 |
           static_cast<DWORD>(p[2]) << 16 | static_cast<DWORD>(p[3]) << 24;
}

void StoreWord(unsigned char* p, DWORD word)
{
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<unsigned char>(word >> 8 * i);
}

// Step kStep of 64: a = b + ((a + f(b, c, d) + word + constant) <<< rotation). `b` is what the
// step before has just made, so whatever does not need it is done first; the second round's
// function is a sum of two disjoint sets of bits to the same end.
template <int kStep>
inline void Step(DWORD& a, DWORD b, DWORD c, DWORD d, const unsigned char* block)
{
    constexpr int kRound = kStep / 16;
    constexpr int kWord = (kRound == 0   ? kStep
                           : kRound == 1 ? 5 * kStep + 1
                           : kRound == 2 ? 3 * kStep + 5
                                         : 7 * kStep) %
                          16;
    a += LoadWord(block + 4 * kWord) + kSine[kStep];
    if constexpr (kRound == 0) {
        a += d ^ (b & (c ^ d));
    } else if constexpr (kRound == 1) {
        a += c & ~d;
        a += b & d;
    } else if constexpr (kRound == 2) {
        a += b ^ (c ^ d);
    } else {
        a += c ^ (b | ~d);
    }
    a = std::rotl(a, kRotation[kRound][kStep % 4]) + b;
}

template <int... kFours>
inline void Steps(DWORD (&s)[4], const unsigned char* block, std::integer_sequence<int, kFours...>)
{
    DWORD a = s[0];
    DWORD b = s[1];
    DWORD c = s[2];
    DWORD d = s[3];
    ((Step<4 * kFours>(a, b, c, d, block), Step<4 * kFours + 1>(d, a, b, c, block),
      Step<4 * kFours + 2>(c, d, a, b, block), Step<4 * kFours + 3>(b, c, d, a, block)),
     ...);
    s[0] += a;
    s[1] += b;
    s[2] += c;
    s[3] += d;
}

} // namespace

namespace tlvn {

Md5::Md5() : m_state{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476}, m_size(0) {}

Md5::~Md5()
{
    Wipe(m_state, sizeof m_state);
    Wipe(m_pending, sizeof m_pending);
}

void Md5::AddBlocks(const unsigned char* data, std::size_t blocks)
{
    DWORD state[4];
    std::memcpy(state, m_state, sizeof state);
    for (; blocks > 0; --blocks, data += kBlockSize)
        Steps(state, data, std::make_integer_sequence<int, 16>());
    std::memcpy(m_state, state, sizeof state);
}

void Md5::Add(const void* data, std::size_t size)
{
    if (size == 0)
        return;
    const unsigned char* p = static_cast<const unsigned char*>(data);
    const std::size_t pending = static_cast<std::size_t>(m_size % kBlockSize);
    m_size += size;
    if (pending > 0) {
        const std::size_t missing = kBlockSize - pending;
        if (size < missing) {
            std::memcpy(m_pending + pending, p, size);
            return;
        }
        std::memcpy(m_pending + pending, p, missing);
        AddBlocks(m_pending, 1);
        p += missing;
        size -= missing;
    }
    AddBlocks(p, size / kBlockSize);
    const std::size_t rest = size % kBlockSize;
    std::memcpy(m_pending, p + (size - rest), rest);
}

void Md5::Finish(unsigned char digest[16])
{
    const std::uint64_t bits = m_size * 8;
    unsigned char end[kBlockSize] = {0x80};
    // Up to eight bytes before the end of a block.
    Add(end, (2 * kBlockSize - 9 - m_size % kBlockSize) % kBlockSize + 1);
    StoreWord(end, static_cast<DWORD>(bits));
    StoreWord(end + 4, static_cast<DWORD>(bits >> 32));
    Add(end, 8);
    for (int i = 0; i < 4; ++i)
        StoreWord(digest + 4 * i, m_state[i]);
}

} // namespace tlvn

void MD5String(char* text, unsigned char digest[16])
{
    tlvn::Md5 md5;
    if (text != nullptr)
        md5.Add(text, std::strlen(text));
    md5.Finish(digest);
}

void MD5Void(void* data, unsigned int length, unsigned char digest[16])
{
    tlvn::Md5 md5;
    if (data != nullptr)
        md5.Add(data, length);
    md5.Finish(digest);
}

void hmac_md5(unsigned char* text, int textLength, unsigned char* key, int keyLength,
              unsigned char digest[16])
{
    unsigned char block[kBlockSize] = {};
    const tlvn::WipeGuard guard(block, sizeof block);
    if (key != nullptr && keyLength > static_cast<int>(kBlockSize))
        MD5Void(key, static_cast<unsigned>(keyLength), block);
    else if (key != nullptr && keyLength > 0)
        std::memcpy(block, key, static_cast<std::size_t>(keyLength));

    for (unsigned char& byte : block)
        byte ^= 0x36;
    tlvn::Md5 inner;
    inner.Add(block, sizeof block);
    if (text != nullptr && textLength > 0)
        inner.Add(text, static_cast<std::size_t>(textLength));
    unsigned char innerDigest[kDigestSize];
    const tlvn::WipeGuard innerGuard(innerDigest, sizeof innerDigest);
    inner.Finish(innerDigest);

    for (unsigned char& byte : block)
        byte ^= 0x36 ^ 0x5C;
    tlvn::Md5 outer;
    outer.Add(block, sizeof block);
    outer.Add(innerDigest, sizeof innerDigest);
    outer.Finish(digest);
}
