#include "persist/zip/zip_name.h"

#include "foundation/scanner.h"
#include "persist/zip/file_name.h"
#include "platform/multibyte.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tlvn {

namespace {

constexpr int kMaxStoredName = 259;

constexpr bool IsSeparator(WCHAR c)
{
    return c == '\\' || c == '/';
}

// Where a text next occurs in another, asked for ever later positions: searches no part twice.
class Occurrence {
public:
    explicit Occurrence(WStringView what) : m_what(what) {}

    std::size_t From(WStringView text, std::size_t position)
    {
        if (!m_known || m_found < position)
            m_found = text.find(m_what, position);
        m_known = true;
        return m_found;
    }

private:
    WStringView m_what;
    std::size_t m_found = 0;
    bool m_known = false;
};

} // namespace

WStringView CleanZipName(WStringView name)
{
    std::array<Occurrence, 4> parents = {Occurrence(TW("\\..\\")), Occurrence(TW("\\../")),
                                         Occurrence(TW("/../")), Occurrence(TW("/..\\"))};
    std::size_t begin = 0;
    for (;;) {
        if (name.size() - begin >= 2 && name[begin + 1] == ':') {
            begin += 2;
            continue;
        }
        if (begin < name.size() && IsSeparator(name[begin])) {
            ++begin;
            continue;
        }
        std::size_t parent = WStringView::npos;
        for (Occurrence& pattern : parents) {
            parent = pattern.From(name, begin);
            if (parent != WStringView::npos)
                break;
        }
        if (parent == WStringView::npos)
            return name.substr(begin);
        begin = parent + 4;
    }
}

void ReadZipName(std::string_view stored, bool utf8, WCHAR* name, int capacity)
{
    stored = stored.substr(0, stored.find('\0'));
    // Ordinary names need no memory of their own.
    const UINT page = utf8 ? 65001 : GetMultibytePage();
    const int length = static_cast<int>(stored.size());
    const int most = MaxUtf16Length(page, length);
    WCHAR local[512];
    WString longer;
    WCHAR* wide = local;
    if (most > static_cast<int>(std::size(local))) {
        longer.resize(static_cast<std::size_t>(most));
        wide = longer.data();
    }
    int written = 0;
    ConvertToUtf16(page, stored.data(), length, wide, most, written);

    WStringView clean = CleanZipName({wide, static_cast<std::size_t>(written)});
    const auto room = static_cast<std::size_t>(capacity - 1);
    if (clean.size() > room) {
        const bool splitsPair = (clean[room - 1] & 0xFC00) == 0xD800;
        clean = clean.substr(0, splitsPair ? room - 1 : room);
    }
    std::copy(clean.begin(), clean.end(), name);
    name[clean.size()] = 0;
}

CStringA StoredZipName(WStringView name)
{
    WString wide(name);
    // Before narrowing: afterwards the same byte may be half a character.
    std::replace(wide.begin(), wide.end(), WCHAR{'\\'}, WCHAR{'/'});
    CStringA stored(NarrowText(wide).c_str());
    SuitToFileName(stored, 0, 1);
    TruncateEx(stored, kMaxStoredName);
    return stored;
}

bool IsPackedFileName(const CStringA& name)
{
    static constexpr const char* kPacked[] = {".Z",   ".zip", ".zoo", ".arc",
                                              ".lzh", ".arj", ".gz",  ".tgz"};
    const int dot = name.ReverseFind('.');
    if (dot < 0)
        return false;
    const char* const extension = name.GetString() + dot;
    return std::any_of(std::begin(kPacked), std::end(kPacked), [extension](const char* packed) {
        return CompareMbsNoCase(extension, packed) == 0;
    });
}

} // namespace tlvn
