#include "foundation/text_buffer.h"

CTextBuffer::CTextBuffer() : m_codeType(CT_ASCII) {}
CTextBuffer::CTextBuffer(const CTextBuffer& other) = default;
CTextBuffer& CTextBuffer::operator=(const CTextBuffer& other) = default;
CTextBuffer::~CTextBuffer() = default;

void CTextBuffer::Empty()
{
    CBuffer::Empty();
    m_codeType = CT_ASCII;
}

CTextFixBuffer::CTextFixBuffer() : m_codeType(CT_ASCII) {}
CTextFixBuffer::CTextFixBuffer(const CTextFixBuffer& other) = default;
CTextFixBuffer& CTextFixBuffer::operator=(const CTextFixBuffer& other) = default;
CTextFixBuffer::~CTextFixBuffer() = default;

void CTextFixBuffer::AllocFree()
{
    CFixBuffer::AllocFree();
    m_codeType = CT_ASCII;
}

CtStringW::CtStringW() : m_codeType(CT_ASCII) {}
CtStringW::CtStringW(const CtStringW& other) = default;
CtStringW& CtStringW::operator=(const CtStringW& other) = default;
CtStringW::~CtStringW() = default;

void CtStringW::Empty()
{
    CStringW::Empty();
    m_codeType = CT_ASCII;
}
