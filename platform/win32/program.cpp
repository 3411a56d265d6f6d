#include "platform/program.h"

#include "platform/nls.h"

#include <shellapi.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace tlvn {

std::vector<std::string> GetProgramArguments(int /*argc*/, char** /*argv*/)
{
    std::vector<std::string> arguments;
    int count = 0;
    WCHAR** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (wide == nullptr)
        return arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(NarrowText(wide[i]));
    LocalFree(wide);
    return arguments;
}

void SetBinaryOutput()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

} // namespace tlvn
