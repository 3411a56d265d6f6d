#include "persist/cipher_container.h"

#include "persist/blowfish.h"
#include "persist/md5.h"
#include "persist/text_view.h"
#include "persist/wipe.h"

#include <climits>
#include <cstring>

namespace {

constexpr UINT kBadFileMessage = 3133;
constexpr UINT kBadKeyMessage = 3134;

constexpr int kBlockSize = 8;
constexpr int kLengthSize = 4;
constexpr int kDigestSize = 16;

INT64 ContainerSize(INT64 length)
{
    return (length + kLengthSize + kBlockSize - 1) / kBlockSize * kBlockSize;
}

void SetKey(CBlowFish& cipher, const char* keyText)
{
    unsigned char digest[kDigestSize];
    const tlvn::WipeGuard guard(digest, sizeof digest);
    tlvn::Md5 md5;
    md5.Add(keyText, std::strlen(keyText));
    md5.Finish(digest);
    cipher.Initialize(digest, kDigestSize);
}

unsigned char* Bytes(CBuffer& buffer)
{
    return reinterpret_cast<unsigned char*>(buffer.GetBuffer());
}

bool IsEmptyText(const char* text)
{
    return text == nullptr || *text == '\0';
}

// Empties a buffer that held something nobody is to see.
void WipeContent(CBuffer& buffer)
{
    tlvn::Wipe(buffer.GetBuffer(), static_cast<std::size_t>(buffer.GetAllocSize()));
    buffer.Empty();
}

} // namespace

int EncodeBlowFish(const char* keyText, const unsigned char* data, int length, CBuffer& out)
{
    out.Empty();
    if (IsEmptyText(keyText)) {
        out.Set(data, length);
        return 0;
    }
    if (data == nullptr || length < 1)
        return 1;

    const INT64 size = ContainerSize(length);
    if (size > INT_MAX)
        AfxThrowMemoryException();
    out.SetAllocSize(static_cast<int>(size));
    unsigned char* const content = Bytes(out);
    for (int i = 0; i < kLengthSize; ++i)
        content[i] = static_cast<unsigned char>(static_cast<unsigned>(length) >> 8 * i);
    std::memcpy(content + kLengthSize, data, static_cast<std::size_t>(length));

    CBlowFish cipher;
    SetKey(cipher, keyText);
    cipher.Encode(content, content, static_cast<DWORD>(length + kLengthSize));
    out.SetDataSize(static_cast<int>(size));
    return 1;
}

int DecodeBlowFish(const char* keyText, const unsigned char* data, int length, CBuffer& out,
                   CString& message)
{
    out.Empty();
    if (IsEmptyText(keyText)) {
        message = tlvn::MessageText(kBadKeyMessage);
        return 0;
    }
    if (length % kBlockSize != 0) {
        message = tlvn::MessageText(kBadFileMessage);
        return 0;
    }
    if (data == nullptr || length < 1)
        return 1;

    out.Set(data, length);
    unsigned char* const content = Bytes(out);
    CBlowFish cipher;
    SetKey(cipher, keyText);
    cipher.Decode(content, content, static_cast<DWORD>(length));

    std::uint32_t plainLength = 0;
    const tlvn::WipeGuard guard(&plainLength, sizeof plainLength);
    for (int i = 0; i < kLengthSize; ++i)
        plainLength |= static_cast<std::uint32_t>(content[i]) << 8 * i;
    if (ContainerSize(plainLength) != length) {
        WipeContent(out);
        message = tlvn::MessageText(kBadKeyMessage);
        return 0;
    }
    const int count = static_cast<int>(plainLength);
    std::memmove(content, content + kLengthSize, plainLength);
    tlvn::Wipe(content + count, static_cast<std::size_t>(length - count));
    out.SetDataSize(count);
    return 1;
}
