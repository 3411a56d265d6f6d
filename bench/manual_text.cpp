#include "bench/manual_text.h"

#include "charcode/convert.h"

#include <iconv.h>
#include <zlib.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>

namespace {

constexpr char kPages[] = "/usr/share/man/ja";

std::string Unpacked(const std::filesystem::path& path)
{
    std::string text;
    char piece[1 << 14];
    const gzFile file = gzopen(path.c_str(), "rb");
    int size = 0;
    while (file != nullptr && (size = gzread(file, piece, sizeof piece)) > 0)
        text.append(piece, static_cast<std::size_t>(size));
    if (file != nullptr)
        gzclose(file);
    return text;
}

std::string WithoutRequests(const std::string& page)
{
    std::string text;
    for (std::size_t start = 0; start < page.size();) {
        const std::size_t end = std::min(page.find('\n', start), page.size() - 1) + 1;
        if (page[start] != '.' && page[start] != '\'')
            text.append(page, start, end - start);
        start = end;
    }
    return text;
}

bool IconvHas(const char* code, std::string character)
{
    static std::map<std::string, iconv_t> converters;
    const auto [found, added] = converters.try_emplace(code);
    if (added)
        found->second = iconv_open(code, "CP932");
    char out[32];
    char* in = character.data();
    char* next = out;
    std::size_t inLeft = character.size();
    std::size_t outLeft = sizeof out;
    iconv(found->second, nullptr, nullptr, nullptr, nullptr);
    return iconv(found->second, &in, &inLeft, &next, &outLeft) == 0;
}

bool IsShared(const std::string& character)
{
    static std::map<std::string, bool> known;
    const auto [found, added] = known.try_emplace(character);
    if (added)
        found->second = IconvHas("ISO-2022-JP", character) && IconvHas("EUC-JP", character);
    return found->second;
}

} // namespace

std::vector<std::string> ManualText()
{
    std::vector<std::filesystem::path> paths;
    std::error_code error;
    std::copy_if(std::filesystem::recursive_directory_iterator(kPages, error), {},
                 std::back_inserter(paths),
                 [](const std::filesystem::path& path) { return path.extension() == ".gz"; });
    std::sort(paths.begin(), paths.end());

    std::vector<std::string> pages;
    CBuffer sjis;
    for (const auto& path : paths) {
        const std::string page = WithoutRequests(Unpacked(path));
        ConvertToOtherCodeType2(CT_UTF8, page.data(), static_cast<int>(page.size()), CT_SJIS, sjis,
                                1);
        std::string text;
        for (int i = 0; i < sjis.GetLength(); ++i) {
            std::string character(1, sjis[i]);
            const auto lead = static_cast<unsigned char>(sjis[i]);
            if (lead >= 0x80 && i + 1 < sjis.GetLength())
                character += sjis[++i];
            if (lead < 0x80 || IsShared(character))
                text += character;
        }
        pages.push_back(text);
    }
    return pages;
}
