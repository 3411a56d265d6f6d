#include "platform/program.h"

namespace tlvn {

std::vector<std::string> GetProgramArguments(int argc, char** argv)
{
    return std::vector<std::string>(argv, argv + argc);
}

void SetBinaryOutput() {}

} // namespace tlvn
