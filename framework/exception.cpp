#include "framework/exception.h"

#include "framework/messages.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "platform/string_table.h"

#include <algorithm>
#include <cstring>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)

BOOL CException::GetErrorMessage(char* buffer, UINT max, UINT* helpId)
{
    if (helpId != nullptr)
        *helpId = 0;
    tlvn::CopyMessage("", buffer, max);
    return FALSE;
}

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CSimpleException::GetErrorMessage(char* buffer, UINT max, UINT* helpId)
{
    if (helpId != nullptr)
        *helpId = 0;
    if (buffer == nullptr || max == 0)
        return FALSE;
    std::string message;
    try {
        message = tlvn::NarrowText(tlvn::FindMessage(m_messageId));
    } catch (const std::bad_alloc&) {
        message.clear(); // no memory to tell of the lack of memory
    }
    tlvn::CopyMessage(message.c_str(), buffer, max);
    return !message.empty();
}

CMemoryException::CMemoryException(BOOL autoDelete)
    : CSimpleException(autoDelete, tlvn::kMessageOutOfMemory)
{}

CNotSupportedException::CNotSupportedException(BOOL autoDelete)
    : CSimpleException(autoDelete, tlvn::kMessageNotSupported)
{}

CInvalidArgException::CInvalidArgException(BOOL autoDelete)
    : CSimpleException(autoDelete, tlvn::kMessageInvalidArgument)
{}

void AfxThrowMemoryException()
{
    static CMemoryException exception(FALSE);
    throw &exception;
}

void AfxThrowNotSupportedException()
{
    static CNotSupportedException exception(FALSE);
    throw &exception;
}

void AfxThrowInvalidArgException()
{
    static CInvalidArgException exception(FALSE);
    throw &exception;
}

namespace tlvn {

void CopyMessage(const char* text, char* buffer, UINT max)
{
    if (buffer == nullptr || max == 0)
        return;
    const char* const end = text + std::strlen(text);
    const char* cut = text;
    while (cut != end && cut + CharLength(cut, end) - text < static_cast<std::ptrdiff_t>(max))
        cut += CharLength(cut, end);
    *std::copy(text, cut, buffer) = '\0';
}

} // namespace tlvn
