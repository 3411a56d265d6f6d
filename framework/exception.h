// Exceptions of the framework.
//
// They are thrown by pointer, caught as CException* (or a derived class) and released by the
// catcher with Delete(). The message is a Japanese sentence in the multibyte code page.
//
//   try {
//       buffer.Add(data, length);
//   } catch (CException* e) {
//       char text[512];
//       e->GetErrorMessage(text, sizeof(text));
//       e->Delete();
//   }

#pragma once

#include "framework/object.h"

class TLVN_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    CException() = default;
    // FALSE for an object that Delete() must leave alone, such as a static one.
    explicit CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}

    // Puts the message into `buffer`, of `max` bytes with the terminator, cutting between
    // characters. Returns TRUE, or FALSE when there is no message (an empty text is then
    // written). `helpId`, when not null, receives 0.
    virtual BOOL GetErrorMessage(char* buffer, UINT max, UINT* helpId = nullptr);

    // Releases the object, unless it is one to be left alone.
    void Delete();

protected:
    // Whether Delete does anything.
    BOOL m_bAutoDelete = TRUE;
};

// An exception whose message is fixed by its class.
class TLVN_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)
public:
    BOOL GetErrorMessage(char* buffer, UINT max, UINT* helpId = nullptr) override;

protected:
    // The number of the message is that of the string table.
    CSimpleException(BOOL autoDelete, UINT messageId)
        : CException(autoDelete), m_messageId(messageId)
    {}

private:
    UINT m_messageId;
};

// Out of memory. The thrown object is static, so that throwing it needs no memory.
class TLVN_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)
public:
    // For Delete, see CException.
    explicit CMemoryException(BOOL autoDelete = TRUE);
};

// A request the object does not support.
class TLVN_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    // For Delete, see CException.
    explicit CNotSupportedException(BOOL autoDelete = TRUE);
};

// An argument out of range.
class TLVN_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)
public:
    // For Delete, see CException.
    explicit CInvalidArgException(BOOL autoDelete = TRUE);
};

// Throw an exception of the class.
[[noreturn]] TLVN_API void AfxThrowMemoryException();
[[noreturn]] TLVN_API void AfxThrowNotSupportedException();
[[noreturn]] TLVN_API void AfxThrowInvalidArgException();

namespace tlvn {

// Copies `text` into `buffer`, of `max` bytes with the terminator, cutting between characters.
TLVN_API void CopyMessage(const char* text, char* buffer, UINT max);

} // namespace tlvn
