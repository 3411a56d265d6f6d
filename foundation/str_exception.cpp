#include "foundation/str_exception.h"

#include <algorithm>
#include <cstring>

IMPLEMENT_DYNCREATE(CStrException, CException)
IMPLEMENT_DYNCREATE(CLeaveOnlyException, CException)

CStrException::CStrException(const char* message) : m_message(message) {}

CStrException::~CStrException() = default;

BOOL CStrException::GetErrorMessage(char* buf, UINT max, UINT*)
{
    if (buf == nullptr || max == 0)
        return 0;
    const std::size_t length =
        std::min(static_cast<std::size_t>(m_message.GetLength()), std::size_t{max} - 1);
    std::memcpy(buf, m_message.GetString(), length);
    buf[length] = '\0';
    return 1;
}

CLeaveOnlyException::CLeaveOnlyException() = default;

CLeaveOnlyException::~CLeaveOnlyException() = default;

BOOL CLeaveOnlyException::GetErrorMessage(char* buf, UINT max, UINT*)
{
    if (buf != nullptr && max != 0)
        *buf = '\0';
    return 0;
}

CStringA GetExceptionMessage(CException* e)
{
    char text[512] = "";
    if (!e->GetErrorMessage(text, sizeof text, nullptr))
        return CStringA(e->GetRuntimeClass()->m_lpszClassName) + " occured.";

    CStringA message(text);
    message.Trim();

    int cause;
    if (const auto* file = DYNAMIC_DOWNCAST(CFileException, e))
        cause = file->m_cause;
    else if (const auto* archive = DYNAMIC_DOWNCAST(CArchiveException, e))
        cause = archive->m_cause;
    else
        return message;

    CStringA withCause;
    withCause.Format("%s(%d)", message.GetString(), cause);
    return withCause;
}
