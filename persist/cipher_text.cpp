#include "persist/cipher_text.h"

#include "mailtext/base64.h"
#include "persist/cipher_container.h"
#include "persist/text_view.h"
#include "persist/wipe.h"
#include "platform/multibyte.h"

#include <climits>
#include <cstring>

namespace {

constexpr UINT kNoCipherTextMessage = 3118;
constexpr int kKeyLength = 16;

// The key text, made one character at a time so that it stands nowhere in the program.
class KeyText {
public:
    KeyText()
    {
        // Multiplying by 39 modulo 94 visits the printable characters in an order of its own.
        volatile unsigned seed = 58;
        for (char& c : m_text) {
            seed = (seed * 39 + 17) % 94;
            c = static_cast<char>('!' + seed);
        }
        m_text[kKeyLength] = '\0';
    }
    ~KeyText() { tlvn::Wipe(m_text, sizeof m_text); }
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;

    const char* Get() const { return m_text; }

private:
    char m_text[kKeyLength + 1];
};

const unsigned char* Bytes(const CBuffer& buffer)
{
    return reinterpret_cast<const unsigned char*>(buffer.GetBuffer());
}

// Where the text begins behind "<its length>=", or 0 when that is not how `content` begins.
int TextStart(const CBuffer& content)
{
    INT64 value = 0;
    int pos = 0;
    for (; pos < content.GetLength() && tlvn::IsDigit(content[pos]); ++pos) {
        value = value * 10 + (content[pos] - '0');
        if (value > INT_MAX)
            return 0;
    }
    const bool found = pos > 0 && pos < content.GetLength() && content[pos] == '=';
    return found && value == content.GetLength() - (pos + 1) ? pos + 1 : 0;
}

} // namespace

int EncryptText(const char* text, CBuffer& out, CString&)
{
    const std::size_t length = text != nullptr ? std::strlen(text) : 0;
    if (length > INT_MAX / 2)
        AfxThrowMemoryException();
    CString prefix;
    prefix.Format("%d=", static_cast<int>(length));

    CBuffer plain;
    // Room for all of it at once, so that no copy of the text is left behind in a smaller block.
    plain.SetAllocSize(prefix.GetLength() + static_cast<int>(length));
    const tlvn::WipeGuard guard(plain.GetBuffer(), static_cast<std::size_t>(plain.GetAllocSize()));
    plain.Add(prefix.GetString(), prefix.GetLength());
    plain.Add(text, static_cast<int>(length));

    CBuffer container;
    EncodeBlowFish(KeyText().Get(), Bytes(plain), plain.GetLength(), container);
    EncodeBase64(Bytes(container), container.GetLength(), 0, out);
    return 1;
}

int DecryptText(const char* text, CBuffer& out, CString& message)
{
    out.Empty();
    if (text == nullptr || *text == '\0')
        return 1;

    CBuffer container;
    DecodeBase64(text, container);
    CString reason;
    int start = 0;
    if (DecodeBlowFish(KeyText().Get(), Bytes(container), container.GetLength(), out, reason) != 0)
        start = TextStart(out);
    if (start == 0) {
        tlvn::Wipe(out.GetBuffer(), static_cast<std::size_t>(out.GetAllocSize()));
        out.Empty();
        message = tlvn::MessageText(kNoCipherTextMessage);
        return 0;
    }
    out.Delete(0, start);
    tlvn::Wipe(out.GetBuffer() + out.GetLength(), static_cast<std::size_t>(start));
    return 1;
}
