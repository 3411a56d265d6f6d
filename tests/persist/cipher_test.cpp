// Blowfish, MD5, HMAC-MD5 against published vectors; the container and the enciphered texts.

#include "setting_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <new>
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

Bytes FromText(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

Bytes Md5Of(Bytes data)
{
    Bytes digest(16);
    MD5Void(data.data(), static_cast<unsigned>(data.size()), digest.data());
    return digest;
}

// The published vectors have big-endian words, our blocks little-endian ones.
Bytes SwapWords(Bytes block)
{
    std::reverse(block.begin(), block.begin() + 4);
    std::reverse(block.begin() + 4, block.begin() + 8);
    return block;
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

// One object for all: fails, too, when anything of an earlier key is left.
TEST(BlowFish, PublishedVectors)
{
    const struct {
        const char *key, *plain, *cipher;
    } cases[] = {
        {"0000000000000000", "0000000000000000", "4ef997456198dd78"},
        {"ffffffffffffffff", "ffffffffffffffff", "51866fd5b85ecb8a"},
        {"7ca110454a1a6e57", "01a1d6d039776742", "59c68245eb05282b"},
        // Keys that are shorter, longer and no multiple of a word.
        {"f0", "fedcba9876543210", "f9ad597c49db005e"},
        {"f0e1d2c3b4a596", "fedcba9876543210", "8bb77032f960629d"},
        {"f0e1d2c3b4a5968778695a4b3c2d1e0f0011223344556677", "fedcba9876543210",
         "05044b62fa52d080"},
    };
    CBlowFish cipher;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        Bytes key = FromHex(c.key);
        const Bytes plain = SwapWords(FromHex(c.plain));
        cipher.Initialize(key.data(), static_cast<int>(key.size()));
        Bytes block = plain;
        EXPECT_EQ(cipher.Encode(block.data(), block.data(), 8), 8u);
        EXPECT_EQ(SwapWords(block), FromHex(c.cipher));
        cipher.Decode(block.data(), block.data(), 8);
        EXPECT_EQ(block, plain);
    }
}

// Several blocks are worked on at once: each must come out as if it were alone, in place or not,
// and the last one filled up with zeros. Bytes behind the output stay.
TEST(BlowFish, BlocksAreIndependent)
{
    unsigned char key[] = "key";
    CBlowFish cipher;
    cipher.Initialize(key, 3);
    for (DWORD length = 0; length <= 100; ++length) {
        const DWORD size = CBlowFish::GetOutputLength(length);
        EXPECT_EQ(size, (length + 7) / 8 * 8);
        Bytes plain(size + 8, 0);
        for (DWORD i = 0; i < length; ++i)
            plain[i] = static_cast<BYTE>(i * i + 1);
        Bytes expected = plain;
        for (DWORD i = 0; i < size; i += 8)
            cipher.Encode(&expected[i], &expected[i], 8);

        Bytes input(plain.begin(), plain.begin() + length + 1); // no room for the last block
        Bytes apart(size + 8, 0), same = plain;
        EXPECT_EQ(cipher.Encode(input.data(), apart.data(), length), size);
        EXPECT_EQ(apart, expected) << length;
        std::fill(same.begin() + length, same.begin() + size, BYTE{0xAA});
        EXPECT_EQ(cipher.Encode(same.data(), same.data(), length), size);
        EXPECT_EQ(same, expected) << length;
    }
    EXPECT_EQ(CBlowFish::GetOutputLength(0xFFFFFFF8), 0xFFFFFFF8);
    EXPECT_EQ(CBlowFish::GetOutputLength(0xFFFFFFF9), 0u); // not a small number
}

// Fails when the compiler leaves out the wiping of an object that ends.
TEST(BlowFish, WipesItsKey)
{
    alignas(CBlowFish) static unsigned char place[sizeof(CBlowFish)];
    CBlowFish* const cipher = new (place) CBlowFish;
    const auto zeros = [&] { return std::count(std::begin(place), std::end(place), 0); };
    EXPECT_NE(zeros(), static_cast<std::ptrdiff_t>(sizeof place));
    cipher->~CBlowFish();
    EXPECT_EQ(zeros(), static_cast<std::ptrdiff_t>(sizeof place));
}

// Published vectors; then lengths on both sides of each place where the padding changes: the sum
// over all of them is fixed by another implementation.
TEST(Md5, VectorsAndPadding)
{
    const struct {
        const char *text, *digest;
    } cases[] = {
        {nullptr, "d41d8cd98f00b204e9800998ecf8427e"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& c : cases) {
        Bytes digest(16);
        MD5String(const_cast<char*>(c.text), digest.data());
        EXPECT_EQ(digest, FromHex(c.digest)) << c.digest;
    }
    Bytes digests;
    for (std::size_t length = 0; length < 200; ++length) {
        Bytes message(length);
        for (std::size_t i = 0; i < length; ++i)
            message[i] = static_cast<unsigned char>(i * 7 + length);
        const Bytes digest = Md5Of(message);
        digests.insert(digests.end(), digest.begin(), digest.end());
    }
    EXPECT_EQ(Md5Of(digests), FromHex("0e31983fb09e7f80b96e5ec823d6bb1a"));
}

TEST(HmacMd5, PublishedVectors)
{
    const struct {
        Bytes key, text;
        const char* code;
    } cases[] = {
        {FromText("Jefe"), FromText("what do ya want for nothing?"),
         "750c783e6ab0b503eaa86e310a5db738"},
        {Bytes(80, 0xAA),
         FromText("Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data"),
         "6f630fad67cda0ee1fb1f562db3aa53e"},
        // A key of one block is not hashed, one byte more is.
        {Bytes(64, 0x01), FromText("x"), "c369649e011082c4613135685adc915c"},
        {Bytes(65, 0x01), FromText("x"), "4a095017fedda5e8f618dd5c55abf7db"},
        {{}, {}, "74e6f7298a9c2d168935f58c001bad88"},
    };
    for (auto c : cases) {
        Bytes code(16);
        hmac_md5(c.text.data(), static_cast<int>(c.text.size()), c.key.data(),
                 static_cast<int>(c.key.size()), code.data());
        EXPECT_EQ(code, FromHex(c.code)) << c.code;
    }
}

// The stored format: fails when key, byte order, length, size or padding change. What was
// deciphered beyond the data is not left behind it.
TEST(CipherContainer, Format)
{
    for (const int length : {1, 4, 5, 12, 13}) {
        const auto size = static_cast<std::size_t>(length);
        Bytes expected((size + 4 + 7) / 8 * 8);
        expected[0] = static_cast<BYTE>(length);
        std::fill_n(&expected[4], size, BYTE{'x'});

        CBuffer container, back;
        CString message;
        EXPECT_EQ(EncodeBlowFish("Tolvan", &expected[4], length, container), 1);
        CBlowFish cipher;
        cipher.Initialize(Md5Of(FromText("Tolvan")).data(), 16);
        Bytes content = Content(container);
        cipher.Decode(content.data(), content.data(), static_cast<DWORD>(content.size()));
        EXPECT_EQ(content, expected);
        DecodeBlowFish("Tolvan", Data(container), container.GetLength(), back, message);
        for (int i = length; i < container.GetLength(); ++i)
            EXPECT_EQ(back.GetBuffer()[i], 0) << i;
    }
}

TEST(CipherContainer, WhatIsNotEnciphered)
{
    const unsigned char data[] = "data";
    const struct {
        const char* key;
        const unsigned char* data;
        int length, result;
        const char* expected;
    } cases[] = {{nullptr, data, 4, 0, "data"}, {"", data, 3, 0, "dat"},   {"", nullptr, 3, 0, ""},
                 {"key", data, 0, 1, ""},       {"key", data, -1, 1, ""},  {"", data, -1, 0, ""},
                 {"key", data, INT_MIN, 1, ""}, {"key", nullptr, 4, 1, ""}};
    for (const auto& c : cases) {
        CBuffer out("before");
        EXPECT_EQ(EncodeBlowFish(c.key, c.data, c.length, out), c.result) << c.length;
        EXPECT_EQ(Content(out), FromText(c.expected)) << c.length;
    }
}

TEST(CipherContainer, Failures)
{
    CBuffer container;
    EncodeBlowFish("key", reinterpret_cast<const unsigned char*>("twelve bytes"), 12, container);
    const unsigned char* const data = Data(container);
    const struct {
        const char* key;
        const unsigned char* data;
        int length;
        UINT message; // 0: succeeds, with nothing
    } cases[] = {
        {nullptr, data, 16, 3134}, {"", data, 16, 3134},
        {"", data, 12, 3134}, // the key comes first
        {"key", data, 12, 3133},   {"key", nullptr, 12, 3133},
        {"key", data, -3, 3133},   {"key", data, 8, 3134}, // cut
        {"Key", data, 16, 3134},   {"key", nullptr, 16, 0},
        {"key", data, -8, 0},
    };
    for (const auto& c : cases) {
        CBuffer out("before");
        CString message;
        EXPECT_EQ(DecodeBlowFish(c.key, c.data, c.length, out, message), c.message == 0 ? 1 : 0);
        EXPECT_EQ(message, c.message == 0 ? CString() : Message(c.message)) << c.length;
        EXPECT_TRUE(out.IsEmpty());
    }
}

// Lengths that lie: of these only the fourth fits a container of this size.
TEST(CipherContainer, LyingLengths)
{
    CBlowFish cipher;
    cipher.Initialize(Md5Of(FromText("key")).data(), 16);
    for (const DWORD length : {4u, 13u, 0x7FFFFFFFu, 5u, 0x80000000u, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        Bytes block(16, 0);
        for (std::size_t i = 0; i < 4; ++i)
            block[i] = static_cast<unsigned char>(length >> 8 * i);
        cipher.Encode(block.data(), block.data(), 16);
        CBuffer out;
        CString message;
        EXPECT_EQ(DecodeBlowFish("key", block.data(), 16, out, message), length == 5) << length;
        EXPECT_EQ(out.GetLength(), length == 5 ? 5 : 0);
    }
}

// Stored texts must stay readable: fails when the key text or the format change. What is no such
// text is refused.
TEST(CipherText, Format)
{
    const char* const refused = "(refused)";
    const struct {
        const char *cipher, *plain;
    } cases[] = {
        {"1ZLAt3vxIX8=", ""},
        {"i0jPK1pKwHViRyV8OzdJVQ==", "password"},
        {"QrqZUKNeILrT8ukqgIJ2O6zEt/l+bzpi", "\x83\x70\x83\x58=\x83\x8F\x81\x5B\x83\x68"},
        // Nothing stands for nothing.
        {"", ""},
        {nullptr, ""},
        {"x", refused},
        {"not base64 !", refused},
        {"AAAAAAAAAAA=", refused},
        {"AAAAAAAA", refused},
        {"i0jQK1pKwHViRyV8OzdJVQ==", refused}, // damaged
        {"i0jPK1pKwHU=", refused},             // cut
    };
    CBuffer out;
    CString message;
    for (const auto& c : cases) {
        const bool good = c.plain != refused;
        CBuffer back("before");
        EXPECT_EQ(DecryptText(c.cipher, back, message), good ? 1 : 0);
        EXPECT_EQ(message, good ? CString() : Message(3118));
        EXPECT_STREQ(back, good ? c.plain : "");
        if (good && c.cipher != nullptr && *c.cipher != '\0') {
            EXPECT_EQ(EncryptText(*c.plain != '\0' ? c.plain : nullptr, out, message), 1);
            EXPECT_STREQ(out, c.cipher);
        }
    }
    EncryptText(std::string(10000, 'x').c_str(), out, message);
    EXPECT_EQ(out.FindOneOfChar("\r\n", 0), -1); // however long
}
