// TolvanView: shows one mail in a window.
//
//   TolvanView FILE.eml
//
// What is wrong with the file is one line on standard error, and exit status 1; without a file
// the status is 2.

#include "platform/program.h"
#include "viewer/mail_file.h"
#include "viewer/view_window.h"

#include <cstdio>
#include <exception>

namespace {

int Fail(const std::string& path, const std::string& error)
{
    std::fprintf(stderr, "TolvanView: %s: %s\n", path.c_str(), error.c_str());
    return 1;
}

int ShowMail(const std::string& path)
{
    std::string bytes;
    std::string error;
    if (!tlvn::LoadMailFile(path, bytes, error))
        return Fail(path, error);

    const tlvn::Mail mail(std::move(bytes));
    tlvn::ViewWindow window;
    if (window.CreateViewWindow() == 0)
        return Fail(path, "there is no screen to show it on");
    window.ShowMail(mail);
    return tlvn::RunMessageLoop();
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments = tlvn::GetProgramArguments(argc, argv);
    if (arguments.size() != 2) {
        std::fputs("usage: TolvanView FILE.eml\n", stderr);
        return 2;
    }
    try {
        return ShowMail(arguments[1]);
    } catch (const std::exception&) {
        return Fail(arguments[1], "there is not enough memory to show it");
    } catch (CException* e) {
        e->Delete();
        return Fail(arguments[1], "there is not enough memory to show it");
    }
}
