// Containers and enciphered texts: what goes in comes out, anything else is refused without
// touching memory outside; a digest does not depend on the pieces it is made from.

#include "fuzz/fuzz.h"

#include "persist/cipher_container.h"
#include "persist/cipher_text.h"
#include "persist/md5.h"

#include <algorithm>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const int length = static_cast<int>(size);
    const char* const key = size > 0 && data[0] % 2 != 0 ? "key" : "another key";
    CBuffer container, back;
    CString message;
    EncodeBlowFish(key, data, length, container);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(container.GetBuffer());
    FUZZ_CHECK(DecodeBlowFish(key, bytes, container.GetLength(), back, message) == 1);
    FUZZ_CHECK(back.GetLength() == length &&
               (size == 0 || std::memcmp(back.GetBuffer(), data, size) == 0));

    // The input as a container, and as the plain content of one, lying length and all.
    if (DecodeBlowFish(key, data, length, back, message) == 1)
        FUZZ_CHECK(length % 8 == 0 && (length == 0 || (back.GetLength() + 11) / 8 * 8 == length));
    else
        FUZZ_CHECK(back.IsEmpty() && !message.IsEmpty());

    const std::string text(reinterpret_cast<const char*>(data), size);
    CBuffer cipher;
    EncryptText(text.c_str(), cipher, message);
    FUZZ_CHECK(DecryptText(cipher, back, message) == 1);
    FUZZ_CHECK(std::strcmp(back, text.c_str()) == 0);
    if (DecryptText(text.c_str(), back, message) == 0)
        FUZZ_CHECK(back.IsEmpty());

    unsigned char whole[16], pieces[16];
    MD5Void(const_cast<std::uint8_t*>(data), static_cast<unsigned>(size), whole);
    tlvn::Md5 md5;
    for (std::size_t pos = 0; pos < size;) {
        const std::size_t piece = std::min<std::size_t>(1 + data[pos], size - pos);
        md5.Add(data + pos, piece);
        pos += piece;
    }
    md5.Finish(pieces);
    FUZZ_CHECK(std::memcmp(whole, pieces, sizeof whole) == 0);
    return 0;
}
