// Blowfish, MD5, HMAC-MD5 against published vectors; the container and the enciphered texts.

#include "TlvnMisc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <new>
#include <random>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes FromHex(const std::string& hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

std::string ToHex(const unsigned char* bytes, std::size_t size)
{
    std::string hex;
    for (std::size_t i = 0; i < size; ++i) {
        hex += "0123456789abcdef"[bytes[i] >> 4];
        hex += "0123456789abcdef"[bytes[i] & 15];
    }
    return hex;
}

Bytes FromText(const std::string& text)
{
    return Bytes(text.begin(), text.end());
}

// The published vectors have big-endian words, our blocks little-endian ones.
Bytes SwapWords(Bytes block)
{
    std::reverse(block.begin(), block.begin() + 4);
    std::reverse(block.begin() + 4, block.begin() + 8);
    return block;
}

Bytes RandomBytes(std::mt19937& random, int size)
{
    Bytes bytes(static_cast<std::size_t>(size));
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(random());
    return bytes;
}

const unsigned char* Data(const CBuffer& buffer)
{
    return reinterpret_cast<const unsigned char*>(buffer.GetBuffer());
}

Bytes Content(const CBuffer& buffer)
{
    return Bytes(Data(buffer), Data(buffer) + buffer.GetLength());
}

} // namespace

TEST(BlowFish, PublishedVectors)
{
    const struct {
        const char* key;
        const char* plain;
        const char* cipher;
    } cases[] = {
        {"0000000000000000", "0000000000000000", "4ef997456198dd78"},
        {"ffffffffffffffff", "ffffffffffffffff", "51866fd5b85ecb8a"},
        {"3000000000000000", "1000000000000001", "7d856f9a613063f2"},
        {"1111111111111111", "1111111111111111", "2466dd878b963c9d"},
        {"0123456789abcdef", "1111111111111111", "61f9c3802281b096"},
        {"fedcba9876543210", "0123456789abcdef", "0aceab0fc6a0a28d"},
        {"7ca110454a1a6e57", "01a1d6d039776742", "59c68245eb05282b"},
        // Keys that are shorter, longer and no multiple of a word.
        {"f0", "fedcba9876543210", "f9ad597c49db005e"},
        {"f0e1d2c3b4a596", "fedcba9876543210", "8bb77032f960629d"},
        {"f0e1d2c3b4a5968778695a4b3c2d1e0f", "fedcba9876543210", "93142887ee3be15c"},
        {"f0e1d2c3b4a5968778695a4b3c2d1e0f0011223344556677", "fedcba9876543210",
         "05044b62fa52d080"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        Bytes key = FromHex(c.key);
        const Bytes plain = SwapWords(FromHex(c.plain));
        CBlowFish cipher;
        cipher.Initialize(key.data(), static_cast<int>(key.size()));
        Bytes block = plain;
        EXPECT_EQ(cipher.Encode(block.data(), block.data(), 8), 8u);
        EXPECT_EQ(SwapWords(block), FromHex(c.cipher));
        cipher.Decode(block.data(), block.data(), 8);
        EXPECT_EQ(block, plain);
    }
}

TEST(BlowFish, OutputLength)
{
    const struct {
        DWORD length, expected;
    } cases[] = {
        {0, 0},         {1, 8}, {7, 8}, {8, 8}, {16, 16}, {17, 24}, {0xFFFFFFF8, 0xFFFFFFF8},
        {0xFFFFFFF9, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(CBlowFish::GetOutputLength(c.length), c.expected) << c.length;
}

// Several blocks are worked on at once: each must come out as if it were alone, in place or not,
// and the last one filled up with zeros. Bytes behind the output stay.
TEST(BlowFish, BlocksAreIndependent)
{
    std::mt19937 random(1);
    Bytes key = RandomBytes(random, 16);
    CBlowFish cipher;
    cipher.Initialize(key.data(), 16);
    for (int length = 0; length <= 100; ++length) {
        Bytes plain = RandomBytes(random, length);
        const DWORD size = CBlowFish::GetOutputLength(static_cast<DWORD>(length));
        Bytes expected = plain;
        expected.resize(size + 8, 0);
        for (DWORD i = 0; i < size; i += 8)
            cipher.Encode(&expected[i], &expected[i], 8);

        Bytes apart(size + 8, 0xAA);
        Bytes input = plain;
        input.resize(static_cast<std::size_t>(length) + 1);
        EXPECT_EQ(cipher.Encode(input.data(), apart.data(), static_cast<DWORD>(length)), size);
        EXPECT_TRUE(std::equal(apart.begin(), apart.begin() + size, expected.begin())) << length;
        EXPECT_EQ(apart[size], 0xAA);

        Bytes same = plain;
        same.resize(size + 8, 0xAA);
        EXPECT_EQ(cipher.Encode(same.data(), same.data(), static_cast<DWORD>(length)), size);
        EXPECT_TRUE(std::equal(same.begin(), same.begin() + size, expected.begin())) << length;

        Bytes back(size + 8, 0xAA);
        cipher.Decode(same.data(), back.data(), size);
        EXPECT_TRUE(std::equal(plain.begin(), plain.end(), back.begin()));
        EXPECT_EQ(back[size], 0xAA);
    }
}

TEST(BlowFish, KeyingAgainForgetsTheFirstKey)
{
    unsigned char first[] = "first", second[] = "second";
    CBlowFish once, twice;
    once.Initialize(second, 6);
    twice.Initialize(first, 5);
    twice.Initialize(second, 6);
    Bytes a(8, 1), b(8, 1);
    once.Encode(a.data(), a.data(), 8);
    twice.Encode(b.data(), b.data(), 8);
    EXPECT_EQ(a, b);
}

// Fails when the compiler leaves out the wiping of an object that ends.
TEST(BlowFish, WipesItsKey)
{
    alignas(CBlowFish) static unsigned char place[sizeof(CBlowFish)];
    unsigned char key[] = "key";
    CBlowFish* const cipher = new (place) CBlowFish;
    cipher->Initialize(key, 3);
    EXPECT_NE(std::count(std::begin(place), std::end(place), 0),
              static_cast<std::ptrdiff_t>(sizeof place));
    cipher->~CBlowFish();
    EXPECT_EQ(std::count(std::begin(place), std::end(place), 0),
              static_cast<std::ptrdiff_t>(sizeof place));
}

TEST(Md5, PublishedVectors)
{
    const struct {
        const char* text;
        const char* digest;
    } cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& c : cases) {
        std::string text = c.text;
        unsigned char digest[16];
        MD5String(text.data(), digest);
        EXPECT_EQ(ToHex(digest, 16), c.digest) << c.text;
        MD5Void(text.data(), static_cast<unsigned>(text.size()), digest);
        EXPECT_EQ(ToHex(digest, 16), c.digest) << c.text;
    }
    unsigned char digest[16];
    MD5String(nullptr, digest);
    EXPECT_EQ(ToHex(digest, 16), cases[0].digest);
}

// A message in pieces of any size has the digest of the whole. Lengths on both sides of each
// place where the padding changes; the sum over all of them is fixed by another implementation.
TEST(Md5, PiecesAndPadding)
{
    std::mt19937 random(2);
    tlvn::Md5 sum;
    for (int length = 0; length < 200; ++length) {
        Bytes message(static_cast<std::size_t>(length));
        for (int i = 0; i < length; ++i)
            message[static_cast<std::size_t>(i)] = static_cast<unsigned char>(i * 7 + length);
        unsigned char whole[16], pieces[16];
        MD5Void(message.data(), static_cast<unsigned>(length), whole);
        sum.Add(whole, 16);

        tlvn::Md5 md5;
        for (std::size_t pos = 0; pos < message.size();) {
            const std::size_t piece = std::min<std::size_t>(random() % 70, message.size() - pos);
            md5.Add(message.data() + pos, piece);
            pos += piece;
        }
        md5.Finish(pieces);
        EXPECT_EQ(ToHex(pieces, 16), ToHex(whole, 16)) << length;
    }
    unsigned char digest[16];
    sum.Finish(digest);
    EXPECT_EQ(ToHex(digest, 16), "0e31983fb09e7f80b96e5ec823d6bb1a");
}

TEST(HmacMd5, PublishedVectors)
{
    const struct {
        Bytes key;
        Bytes text;
        const char* code;
    } cases[] = {
        {Bytes(16, 0x0B), FromText("Hi There"), "9294727a3638bb1c13f48ef8158bfc9d"},
        {FromText("Jefe"), FromText("what do ya want for nothing?"),
         "750c783e6ab0b503eaa86e310a5db738"},
        {Bytes(16, 0xAA), Bytes(50, 0xDD), "56be34521d144c88dbb8c733f0e8b3f6"},
        {Bytes(80, 0xAA), FromText("Test Using Larger Than Block-Size Key - Hash Key First"),
         "6b1ab7fe4bd7bf8f0b62e6ce61b9d0cd"},
        {Bytes(80, 0xAA),
         FromText("Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data"),
         "6f630fad67cda0ee1fb1f562db3aa53e"},
        {{}, {}, "74e6f7298a9c2d168935f58c001bad88"},
    };
    for (auto c : cases) {
        unsigned char code[16];
        hmac_md5(c.text.data(), static_cast<int>(c.text.size()), c.key.data(),
                 static_cast<int>(c.key.size()), code);
        EXPECT_EQ(ToHex(code, 16), c.code);
    }
    // A key of exactly one block is not hashed.
    Bytes key(64, 0x01), longer(65, 0x01);
    unsigned char a[16], b[16], digest[16];
    hmac_md5(nullptr, 0, key.data(), 64, a);
    MD5Void(longer.data(), 65, digest);
    hmac_md5(nullptr, 0, longer.data(), 65, b);
    EXPECT_NE(ToHex(a, 16), ToHex(b, 16));
    hmac_md5(nullptr, 0, digest, 16, a);
    EXPECT_EQ(ToHex(a, 16), ToHex(b, 16));
}

TEST(CipherContainer, RoundTripAndSize)
{
    std::mt19937 random(3);
    for (int length = 1; length <= 50; ++length) {
        const Bytes plain = RandomBytes(random, length);
        CBuffer container, back;
        CString message("untouched");
        EXPECT_EQ(EncodeBlowFish("key", plain.data(), length, container), 1);
        EXPECT_EQ(container.GetLength(), (length + 4 + 7) / 8 * 8);
        EXPECT_EQ(DecodeBlowFish("key", Data(container), container.GetLength(), back, message), 1);
        EXPECT_EQ(Content(back), plain);
        EXPECT_EQ(message, CString("untouched"));
        // What was deciphered beyond the data is not left behind it.
        for (int i = length; i < container.GetLength(); ++i)
            EXPECT_EQ(back.GetBuffer()[i], 0) << i;
    }
}

// The stored format: fails when key, byte order, length or padding change.
TEST(CipherContainer, Format)
{
    CBuffer container;
    EncodeBlowFish("Tolvan", reinterpret_cast<const unsigned char*>("hello"), 5, container);
    unsigned char digest[16];
    char key[] = "Tolvan";
    MD5String(key, digest);
    CBlowFish cipher;
    cipher.Initialize(digest, 16);
    Bytes plain(16);
    cipher.Decode(reinterpret_cast<unsigned char*>(container.GetBuffer()), plain.data(), 16);
    EXPECT_EQ(plain, FromHex("0500000068656c6c6f00000000000000"));
}

TEST(CipherContainer, WhatIsNotEnciphered)
{
    const unsigned char data[] = "data";
    CBuffer out("before");
    EXPECT_EQ(EncodeBlowFish(nullptr, data, 4, out), 0);
    EXPECT_EQ(Content(out), FromText("data"));
    EXPECT_EQ(EncodeBlowFish("", data, 3, out), 0);
    EXPECT_EQ(Content(out), FromText("dat"));
    EXPECT_EQ(EncodeBlowFish("", nullptr, 3, out), 0);
    EXPECT_TRUE(out.IsEmpty());
    for (const int length : {0, -1, INT_MIN}) {
        out = "before";
        EXPECT_EQ(EncodeBlowFish("key", data, length, out), 1);
        EXPECT_TRUE(out.IsEmpty());
    }
    EXPECT_EQ(EncodeBlowFish("key", nullptr, 4, out), 1);
    EXPECT_TRUE(out.IsEmpty());
}

TEST(CipherContainer, Failures)
{
    CBuffer container;
    EncodeBlowFish("key", reinterpret_cast<const unsigned char*>("twelve bytes"), 12, container);
    const unsigned char* const data = Data(container);
    CString badFile, badKey;
    badFile.LoadString(3133);
    badKey.LoadString(3134);
    const struct {
        const char* key;
        const unsigned char* data;
        int length;
        int result;
        const CString& message;
    } cases[] = {
        {nullptr, data, 16, 0, badKey}, {"", data, 16, 0, badKey},
        {"", data, 12, 0, badKey}, // the key comes first
        {"key", data, 12, 0, badFile},  {"key", nullptr, 12, 0, badFile},
        {"key", data, -3, 0, badFile},  {"key", data, 8, 0, badKey}, // cut
        {"Key", data, 16, 0, badKey},   {"key", nullptr, 16, 1, CString()},
        {"key", data, 0, 1, CString()}, {"key", data, -8, 1, CString()},
    };
    for (const auto& c : cases) {
        CBuffer out("before");
        CString message;
        EXPECT_EQ(DecodeBlowFish(c.key, c.data, c.length, out, message), c.result) << c.length;
        EXPECT_EQ(message, c.message) << c.length;
        EXPECT_TRUE(out.IsEmpty());
    }
}

// Lengths that lie: each fits no container of this size, and none may be believed.
TEST(CipherContainer, LyingLengths)
{
    unsigned char digest[16];
    char key[] = "key";
    MD5String(key, digest);
    CBlowFish cipher;
    cipher.Initialize(digest, 16);
    for (const DWORD length : {5u, 13u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        Bytes block(16, 0);
        for (std::size_t i = 0; i < 4; ++i)
            block[i] = static_cast<unsigned char>(length >> 8 * i);
        cipher.Encode(block.data(), block.data(), 16);
        CBuffer out;
        CString message;
        const bool fits = length >= 5 && length <= 12;
        EXPECT_EQ(DecodeBlowFish("key", block.data(), 16, out, message), fits ? 1 : 0) << length;
        EXPECT_EQ(out.GetLength(), fits ? static_cast<int>(length) : 0);
    }
}

// Stored texts must stay readable: fails when the key text or the format change.
TEST(CipherText, Format)
{
    const struct {
        const char* plain;
        const char* cipher;
    } cases[] = {
        {"", "1ZLAt3vxIX8="},
        {"password", "i0jPK1pKwHViRyV8OzdJVQ=="},
        {"\x83\x70\x83\x58=\x83\x8F\x81\x5B\x83\x68", "QrqZUKNeILrT8ukqgIJ2O6zEt/l+bzpi"},
    };
    for (const auto& c : cases) {
        CBuffer out;
        CString message;
        EXPECT_EQ(EncryptText(c.plain, out, message), 1);
        EXPECT_STREQ(out, c.cipher);
        CBuffer back("before");
        EXPECT_EQ(DecryptText(c.cipher, back, message), 1);
        EXPECT_STREQ(back, c.plain);
        EXPECT_TRUE(message.IsEmpty());
    }
    CBuffer out;
    CString message;
    EncryptText(nullptr, out, message);
    EXPECT_STREQ(out, cases[0].cipher);
    EXPECT_EQ(out.GetLength(), 12);
}

TEST(CipherText, LongTextHasNoLineBreaks)
{
    const std::string text(10000, 'x');
    CBuffer out, back;
    CString message;
    EncryptText(text.c_str(), out, message);
    EXPECT_EQ(out.FindOneOfChar("\r\n", 0), -1);
    EXPECT_EQ(DecryptText(out, back, message), 1);
    EXPECT_STREQ(back, text.c_str());
}

TEST(CipherText, WhatIsNoCipherText)
{
    CBuffer cipher;
    CString message, expected;
    expected.LoadString(3118);
    EncryptText("password", cipher, message);
    std::string damaged = cipher.GetBuffer();
    damaged[3] = damaged[3] == 'A' ? 'B' : 'A';
    const std::string cases[] = {
        "x",        "not base64 !", "AAAAAAAAAAA=",
        "AAAAAAAA", damaged,        std::string(cipher.GetBuffer()).substr(0, 12)};
    for (const std::string& text : cases) {
        CBuffer out("before");
        message.Empty();
        EXPECT_EQ(DecryptText(text.c_str(), out, message), 0) << text;
        EXPECT_EQ(message, expected);
        EXPECT_TRUE(out.IsEmpty());
    }
    for (const char* nothing : {static_cast<const char*>(nullptr), ""}) {
        CBuffer out("before");
        EXPECT_EQ(DecryptText(nothing, out, message), 1);
        EXPECT_TRUE(out.IsEmpty());
    }
}
