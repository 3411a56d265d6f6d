// tolvan-show: prints one mail.
//
//   tolvan-show [--json | --source] [--svg OUT] FILE.eml
//   tolvan-show --regexp PATTERN
//
// --source prints the mail's text as a mail of its own, encoded anew. --regexp prints the
// program that a regular expression compiles to for UTF-16 text.
// Output is UTF-8 on every system. The exit status is 0, also for a mail that breaks the
// rules; 1 when a file cannot be read or written or a pattern does not compile; 2 when the
// arguments are wrong. Each failure is one line on standard error.

#include "charcode/detect.h"
#include "framework/framework.h"
#include "persist/regexp/listing.h"
#include "platform/nls.h"
#include "platform/program.h"
#include "viewer/mail_file.h"
#include "viewer/show_json.h"
#include "viewer/show_source.h"
#include "viewer/show_svg.h"
#include "viewer/show_text.h"

#include <cstdio>
#include <exception>
#include <optional>

namespace {

constexpr int kFileError = 1;
constexpr int kUsageError = 2;
constexpr char kUsage[] =
    "usage: tolvan-show [--json | --source] [--svg OUT] FILE.eml | --regexp PATTERN\n";

struct Options {
    std::string file;
    std::string svg; // empty for none
    std::optional<std::string> regexp;
    bool json = false;
    bool source = false;
    bool help = false;
};

// False when the arguments make no sense.
bool ReadOptions(const std::vector<std::string>& arguments, Options& options)
{
    bool optionsEnded = false;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool option = !optionsEnded && argument.size() > 1 && argument[0] == '-';
        if (!option) {
            if (argument.empty() || !options.file.empty())
                return false;
            options.file = argument;
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "--json") {
            options.json = true;
        } else if (argument == "--source") {
            options.source = true;
        } else if (argument == "--regexp" && i + 1 < arguments.size() && !options.regexp) {
            options.regexp = arguments[++i];
        } else if (argument == "--help") {
            options.help = true;
        } else if (argument == "--svg" && i + 1 < arguments.size() && !arguments[i + 1].empty()) {
            options.svg = arguments[++i];
        } else {
            return false;
        }
    }
    if (options.regexp)
        return options.file.empty() && options.svg.empty() && !options.json && !options.source;
    return options.help || (!options.file.empty() && !(options.json && options.source));
}

// Arguments are UTF-8 on some systems and in the multibyte code page on others.
tlvn::WString WideArgument(const std::string& argument)
{
    if (IsUTF8(argument.c_str(), static_cast<int>(argument.size())) == 0)
        return tlvn::WidenText(argument);
    return tlvn::Utf8ToUtf16(argument);
}

// A path as it can be printed.
std::string PrintablePath(const std::string& path)
{
    return tlvn::MakeHarmless(tlvn::Utf16ToUtf8(WideArgument(path)), false);
}

int Fail(const std::string& path, const std::string& error)
{
    std::fprintf(stderr, "tolvan-show: %s: %s\n", PrintablePath(path).c_str(), error.c_str());
    return kFileError;
}

int WriteOut(const std::string& shown)
{
    const bool written = std::fwrite(shown.data(), 1, shown.size(), stdout) == shown.size();
    if (std::fflush(stdout) != 0 || !written)
        return Fail("standard output", "it cannot be written");
    return 0;
}

int ShowRegExp(const std::string& pattern)
{
    std::string error;
    const std::string program = tlvn::ListRegExp(WideArgument(pattern).c_str(), 1, error);
    if (!error.empty())
        return Fail(pattern, error);
    return WriteOut(tlvn::MakeHarmless(program, true));
}

int ShowMail(const Options& options)
{
    std::string bytes;
    std::string error;
    if (!tlvn::LoadMailFile(options.file, bytes, error))
        return Fail(options.file, error);

    const tlvn::Mail mail(std::move(bytes));
    std::string shown;
    if (options.source) {
        if (tlvn::FormatMailSource(mail, shown, error) == 0)
            return Fail(options.file, error);
    } else {
        shown = options.json ? tlvn::FormatMailJson(mail) : tlvn::FormatMailText(mail);
    }
    if (WriteOut(shown) != 0)
        return kFileError;
    if (!options.svg.empty() && tlvn::WriteMailSvg(mail, options.svg, error) == 0)
        return Fail(options.svg, error);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    tlvn::SetBinaryOutput();
    Options options;
    if (!ReadOptions(tlvn::GetProgramArguments(argc, argv), options)) {
        std::fputs(kUsage, stderr);
        return kUsageError;
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    try {
        return options.regexp ? ShowRegExp(*options.regexp) : ShowMail(options);
    } catch (const std::exception&) {
        return Fail(options.file, "there is not enough memory to show it");
    } catch (CException* exception) {
        exception->Delete();
        return Fail(options.file, "there is not enough memory to show it");
    }
}
