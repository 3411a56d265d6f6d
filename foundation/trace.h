// A log of function calls, indented by depth, for finding out what a client does on a user's
// machine. It is off until SetTraceOutput(1); it then goes to "TolvanTraceOutput.txt" in the
// folder for temporary files, line by line as it is produced.
//
//   void CFolder::Open(const char* name)
//   {
//       CTraceFunction trace("CFolder::Open");
//       trace("name=%s", name);             // +++ CFolder::Open +++  name=Inbox
//       ...
//   }                                       // --- CFolder::Open ---
//
// The state and the depth are one per process and not guarded: tracing belongs to the
// user-interface thread. Nothing here throws for want of a file or of memory.

#pragma once

#include "framework/framework.h"

// Switches tracing on (the file is made anew) or off. Returns 1, or 0 when the file cannot be
// made; tracing is then off.
TLVN_API int SetTraceOutput(int on);

// 1 while tracing is on.
TLVN_API int IsTraceOutput();

// Takes any data and ignores it.
TLVN_API void debug_out(const void* data, int len);

// One activation of a traced function; lives on its stack.
class TLVN_API CTraceFunction {
public:
    // The name is copied; a null one is empty.
    explicit CTraceFunction(const char* name);
    ~CTraceFunction();
    CTraceFunction(const CTraceFunction&) = delete;
    CTraceFunction& operator=(const CTraceFunction&) = delete;

    // The first call writes the entry line with the message (printf style). What later calls
    // do is the mode's choice.
    void operator()(const char* format, ...);

    // 0: later messages are dropped. 1: they are written under the function's name. 2: they are
    // written on lines of their own with the name. 3: they are kept for the exit line.
    void SetMode(int mode);

protected:
    // Four blanks for each level of depth.
    CStringA GetIndentText() const;
    // As many blanks as the name is long, and ten more.
    CStringA GetFuncSpace() const;

private:
    void WriteMessage(bool first, const CStringA& message);
    void WriteNamed(const char* mark, const CStringA& message) const;
    void WriteExit() const;

    CStringA m_name; // empty when tracing was off at the start
    int m_entryWritten;
    int m_depth;
    int m_mode;
    CStringArray m_messages; // of mode 3
};
