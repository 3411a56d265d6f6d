// TolvanView: the mails of a folder or an mbox file, or one mail in its folder.
//
//   TolvanView [--settings FILE] [FOLDER|FILE.eml]
//
// Without a folder it opens the one shown last. Settings are kept in the given file, else in
// TolvanView\settings.cfg in the user's folder for the data of programs. What is wrong with the
// argument is one line on standard error, and exit status 1; with too many the status is 2.

#include "platform/folder.h"
#include "platform/nls.h"
#include "platform/program.h"
#include "viewer/mail_file.h"
#include "viewer/reason.h"
#include "viewer/win32/main_frame.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <cstdio>
#include <exception>
#include <shlobj.h>

namespace {

// Empty when there is no such folder; settings are not kept then.
std::string FindSettingsFile()
{
    WCHAR folder[MAX_PATH] = {};
    if (::SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, folder) != S_OK)
        return {};
    const std::string path = tlvn::JoinPath(tlvn::Utf16ToUtf8(folder), "TolvanView");
    ::CreateDirectoryW(tlvn::Utf8ToUtf16(path).c_str(), nullptr);
    std::string narrow;
    tlvn::ToNarrowPath(tlvn::JoinPath(path, "settings.cfg"), narrow);
    return narrow;
}

// Before there is a window, so that a script hears of it.
bool CanOpen(const std::string& path, std::string& error)
{
    std::string bytes;
    return tlvn::FolderTree().Open(path, error) || tlvn::LoadMailAt(path, bytes, error);
}

int ShowWindow(const std::string& settings, const std::string& path)
{
    tlvn::SetReasonsJapanese(true);
    const INITCOMMONCONTROLSEX controls = {sizeof controls,
                                           ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    ::InitCommonControlsEx(&controls);
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    tlvn::MainFrame frame;
    if (frame.CreateFrame(settings.empty() ? FindSettingsFile() : settings) == 0) {
        tlvn::Complain(nullptr, IDS_NO_SCREEN, {});
        return 1;
    }
    frame.Open(path);
    return tlvn::RunMessageLoop();
}

int Run(const std::vector<std::string>& arguments)
{
    std::size_t next = 1;
    std::string settings;
    if (next + 1 < arguments.size() && arguments[next] == "--settings") {
        settings = arguments[next + 1];
        next += 2;
    }
    if (arguments.size() > next + 1) {
        std::fputs("usage: TolvanView [--settings FILE] [FOLDER|FILE.eml]\n", stderr);
        return 2;
    }
    if (next == arguments.size())
        return ShowWindow(settings, {});

    const std::string path = tlvn::FromNarrowPath(arguments[next]);
    std::string error;
    if (!CanOpen(path, error)) {
        std::fprintf(stderr, "TolvanView: %s: %s\n", arguments[next].c_str(), error.c_str());
        return 1;
    }
    return ShowWindow(settings, path);
}

int FailForMemory()
{
    tlvn::Complain(nullptr, IDS_NO_MEMORY, {});
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Run(tlvn::GetProgramArguments(argc, argv));
    } catch (const std::exception&) {
        return FailForMemory();
    } catch (CException* e) {
        e->Delete();
        return FailForMemory();
    }
}
