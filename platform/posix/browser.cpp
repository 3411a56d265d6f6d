#include "platform/browser.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace tlvn {

namespace {

// Starts a program with the address as its argument and leaves it running by itself: a shell
// does, because what it starts in the background is not our child.
bool Start(const char* program, WStringView address)
{
    std::string argument = Utf16ToUtf8(address);
    std::string script = "program=";
    script += program;
    script += "; command -v \"$program\" >/dev/null || exit 1; "
              "\"$program\" \"$1\" </dev/null >/dev/null 2>&1 &";
    char shell[] = "/bin/sh";
    char option[] = "-c";
    char* const arguments[] = {shell, option, script.data(), shell, argument.data(), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, shell, nullptr, nullptr, arguments, environ) != 0)
        return false;
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return false;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

bool OpenByScheme(WStringView address)
{
    return Start("xdg-open", address);
}

bool OpenInWebBrowser(WStringView address)
{
    return Start("${BROWSER:-x-www-browser}", address);
}

} // namespace tlvn
