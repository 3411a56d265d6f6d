// The library's own exceptions, and the text that a user sees of any exception.
//
// Like all exceptions of the framework they are thrown by pointer and released by Delete():
//
//   try {
//       throw new CStrException("...");
//   } catch (CException* e) {
//       const CStringA message = GetExceptionMessage(e);
//       e->Delete();
//   }

#pragma once

#include "framework/framework.h"

// An exception that carries its message, narrow text of the multibyte code page.
class TLVN_API CStrException : public CException {
    DECLARE_DYNCREATE(CStrException)
public:
    // A null message gives an empty text.
    explicit CStrException(const char* message = nullptr);
    ~CStrException() override;

    // Copies the message, cut to max - 1 bytes, and its terminator; helpId is not touched.
    // Returns 1, or 0 when buf is null or max is 0.
    BOOL GetErrorMessage(char* buf, UINT max, UINT* helpId = nullptr) override;

private:
    CStringA m_message;
};

// Thrown to leave a deep chain of calls without a word to the user.
class TLVN_API CLeaveOnlyException : public CException {
    DECLARE_DYNCREATE(CLeaveOnlyException)
public:
    CLeaveOnlyException();
    ~CLeaveOnlyException() override;

    // Writes an empty text where there is room; always returns 0.
    BOOL GetErrorMessage(char* buf, UINT max, UINT* helpId = nullptr) override;
};

// The message of e without white space at its ends, followed by the cause in parentheses for a
// file or archive exception; for an exception without a message its class name and " occured.".
// e stays the caller's.
TLVN_API CStringA GetExceptionMessage(CException* e);
