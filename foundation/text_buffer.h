// Buffers and strings that know the character code of their text.
//
// Each is its base class followed by a CodeType, CT_ASCII at the start and after it has been
// emptied; copies carry it along.

#pragma once

#include "foundation/code_type.h"
#include "foundation/fix_buffer.h"

class TLVN_API CTextBuffer : public CBuffer {
public:
    CTextBuffer();
    CTextBuffer(const CTextBuffer& other);
    CTextBuffer& operator=(const CTextBuffer& other);
    ~CTextBuffer() override;
    using CBuffer::operator=;

    // The code type is CT_ASCII then.
    void Empty();
    int IsEmpty() const { return CBuffer::IsEmpty(); }

    // Of the text; setting it converts nothing.
    CodeType GetCodeType() const { return m_codeType; }
    void SetCodeType(CodeType codeType) { m_codeType = codeType; }

private:
    CodeType m_codeType;
};

class TLVN_API CTextFixBuffer : public CFixBuffer {
public:
    CTextFixBuffer();
    CTextFixBuffer(const CTextFixBuffer& other);
    CTextFixBuffer& operator=(const CTextFixBuffer& other);
    ~CTextFixBuffer();

    // The code type is CT_ASCII then.
    void AllocFree();

    // Of the text; setting it converts nothing.
    CodeType GetCodeType() const { return m_codeType; }
    void SetCodeType(CodeType codeType) { m_codeType = codeType; }

private:
    CodeType m_codeType;
};

class TLVN_API CtStringW : public CStringW {
public:
    CtStringW();
    CtStringW(const CtStringW& other);
    CtStringW& operator=(const CtStringW& other);
    ~CtStringW();
    using CStringW::operator=;

    // The code type is CT_ASCII then.
    void Empty();
    // Asks for characters only; the tag plays no part.
    int IsEmpty() const { return CStringW::IsEmpty() ? 1 : 0; }

    // Of the text; setting it converts nothing.
    CodeType GetCodeType() const { return m_codeType; }
    void SetCodeType(CodeType codeType) { m_codeType = codeType; }

private:
    CodeType m_codeType;
};
