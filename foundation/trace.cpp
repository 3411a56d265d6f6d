#include "foundation/trace.h"

#include "platform/clock.h"
#include "platform/file.h"

#include <cstdarg>
#include <memory>

namespace {

// Null while tracing is off.
std::unique_ptr<CFile> g_traceFile;
int g_depth = 0;

// Does `work` and tells whether it went well: a log that cannot be written, for want of a file or
// of memory, must not disturb what it watches.
template <class Work>
bool Quietly(Work work)
{
    try {
        tlvn::GuardMemory(work);
        return true;
    } catch (CException* e) {
        e->Delete();
        return false;
    }
}

void WriteTrace(const CStringA& text)
{
    if (g_traceFile != nullptr)
        g_traceFile->Write(text.GetString(), static_cast<UINT>(text.GetLength()));
}

void WriteTimeStamp()
{
    std::tm local{};
    tlvn::ToLocalTime(tlvn::GetSystemTime(), local);
    CStringA line;
    line.Format("%d-%02d-%02d %02d:%02d:%02d\r\n", local.tm_year + 1900, local.tm_mon + 1,
                local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    WriteTrace(line);
}

} // namespace

int SetTraceOutput(int on)
{
    if ((on != 0) == (g_traceFile != nullptr))
        return 1;

    if (on == 0) {
        Quietly(WriteTimeStamp);
        Quietly([] {
            g_traceFile->Flush();
            g_traceFile->Close();
        });
        g_traceFile.reset();
        return 1;
    }

    const bool opened = Quietly([] {
        const std::string path = tlvn::GetTempFolder() + "TolvanTraceOutput.txt";
        g_traceFile = std::make_unique<CFile>(path.c_str(), CFile::modeCreate | CFile::modeWrite |
                                                                CFile::shareDenyWrite);
    });
    if (!opened)
        return 0;
    Quietly(WriteTimeStamp);
    return 1;
}

int IsTraceOutput()
{
    return g_traceFile != nullptr ? 1 : 0;
}

void debug_out(const void*, int) {}

CTraceFunction::CTraceFunction(const char* name) : m_entryWritten(0), m_depth(g_depth++), m_mode(0)
{
    if (IsTraceOutput())
        Quietly([&] { m_name = name; });
}

CTraceFunction::~CTraceFunction()
{
    --g_depth;
    if (IsTraceOutput())
        Quietly([this] { WriteExit(); });
}

void CTraceFunction::operator()(const char* format, ...)
{
    const bool first = m_entryWritten == 0;
    m_entryWritten = 1;
    if (!IsTraceOutput())
        return;

    va_list arguments;
    va_start(arguments, format);
    Quietly([&] {
        CStringA message;
        message.FormatV(format, arguments);
        WriteMessage(first, message);
    });
    va_end(arguments);
}

void CTraceFunction::WriteMessage(bool first, const CStringA& message)
{
    if (first)
        WriteNamed("+++", message);
    else if (m_mode == 2)
        WriteNamed("...", message);
    else if (message.IsEmpty())
        return;
    else if (m_mode == 1)
        WriteTrace(GetIndentText() + GetFuncSpace() + message + "\r\n");
    else if (m_mode == 3)
        m_messages.Add(message);
}

void CTraceFunction::SetMode(int mode)
{
    m_mode = mode;
}

CStringA CTraceFunction::GetIndentText() const
{
    return CStringA(' ', 4 * m_depth);
}

CStringA CTraceFunction::GetFuncSpace() const
{
    return CStringA(' ', m_name.GetLength() + 10);
}

// One line of the form "+++ name +++  message", the message left out when it is empty.
void CTraceFunction::WriteNamed(const char* mark, const CStringA& message) const
{
    CStringA line;
    line.Format("%s%s %s %s", GetIndentText().GetString(), mark, m_name.GetString(), mark);
    if (!message.IsEmpty())
        line += "  " + message;
    WriteTrace(line + "\r\n");
}

void CTraceFunction::WriteExit() const
{
    if (m_messages.IsEmpty()) {
        WriteNamed("---", CStringA());
        return;
    }
    CStringA text;
    text.Format("%s--- %s ---  %s\r\n", GetIndentText().GetString(), m_name.GetString(),
                m_messages[0].GetString());
    for (int i = 1; i < m_messages.GetSize(); ++i)
        text += GetIndentText() + GetFuncSpace() + m_messages[i] + "\r\n";
    WriteTrace(text);
}
