#include "charcode/kana.h"
#include "persist/regexp/characters.h"
#include "platform/nls.h"

#include <map>
#include <memory>
#include <mutex>
#include <numeric>

namespace tlvn::regexp {

namespace {

constexpr unsigned kFirstFullWidth = 0xFF21; // full-width A
constexpr unsigned kFullWidthStep = 0x20;    // from there to full-width a

void Set(FoldTable& table, unsigned value, unsigned form)
{
    table.forms[value] = static_cast<std::uint16_t>(form);
    if (form != value)
        table.changed.push_back(static_cast<std::uint16_t>(value));
}

void FoldNarrow(FoldTable& table, UINT page)
{
    for (unsigned value = 1; value < table.forms.size(); ++value) {
        if (!IsCharacter(value, char()))
            continue;
        const int length = value < 0x100 ? 1 : 2;
        char bytes[2] = {static_cast<char>(length == 1 ? value : value >> 8),
                         static_cast<char>(value)};
        ToLowerMbs(bytes, length);
        TextToUpper(static_cast<int>(page), bytes, length, 0, 1);
        const unsigned first = static_cast<BYTE>(bytes[0]);
        const unsigned folded = length == 1 ? first : first << 8 | static_cast<BYTE>(bytes[1]);
        Set(table, value, folded);
    }
}

void FoldWide(FoldTable& table)
{
    for (unsigned value = 0; value < table.forms.size(); ++value) {
        const unsigned lower = ToLowerW(static_cast<WCHAR>(value));
        const bool fullWidth = lower >= kFirstFullWidth && lower < kFirstFullWidth + 26;
        Set(table, value, fullWidth ? lower + kFullWidthStep : lower);
    }
}

} // namespace

template <>
const FoldTable& GetFoldTable<char>()
{
    static std::mutex mutex;
    static std::map<UINT, std::unique_ptr<FoldTable>> tables;
    const std::lock_guard lock(mutex);
    const UINT page = GetMultibytePage();
    const auto found = tables.find(page);
    if (found != tables.end())
        return *found->second;
    auto table = std::make_unique<FoldTable>();
    std::iota(table->forms.begin(), table->forms.end(), std::uint16_t{0});
    FoldNarrow(*table, page);
    return *tables.emplace(page, std::move(table)).first->second;
}

template <>
const FoldTable& GetFoldTable<WCHAR>()
{
    static const auto table = [] {
        auto made = std::make_unique<FoldTable>();
        FoldWide(*made);
        return made;
    }();
    return *table;
}

} // namespace tlvn::regexp
