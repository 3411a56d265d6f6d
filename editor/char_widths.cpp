#include "editor/char_widths.h"

#include "charcode/charset.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <limits>

namespace tlvn {

namespace {

struct UnitRange {
    unsigned first;
    unsigned last;
};

// Units that systems draw the same alone and beside one another: no marks that combine, no
// scripts whose letters join, no format or control characters.
constexpr UnitRange kIndependent[] = {
    {0x0020, 0x007E}, {0x00A1, 0x00AC}, {0x00AE, 0x02AF}, {0x0370, 0x0482},
    {0x048A, 0x052F}, {0x2010, 0x2027}, {0x2030, 0x205E}, {0x20A0, 0x20BF},
    {0x2100, 0x2BFF}, {0x2E80, 0x3029}, {0x3030, 0x3098}, {0x309B, 0xA48F},
    {0xAC00, 0xD7A3}, {0xE000, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF01, 0xFFEE},
};

// Units measured in one call.
constexpr unsigned kBlock = 64;

constexpr unsigned kReplacement = 0xFFFD;

bool IsSameFont(const LOGFONTW& a, const LOGFONTW& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::array<int, 4> DescribeDevice(HDC dc)
{
    return {::GetDeviceCaps(dc, LOGPIXELSX), ::GetDeviceCaps(dc, LOGPIXELSY),
            ::GetDeviceCaps(dc, TECHNOLOGY), ::GetDeviceCaps(dc, BITSPIXEL)};
}

} // namespace

CharWidths::CharWidths() : m_code(CT_SJIS), m_units(MakeTable()), m_current(m_units.get()) {}

CharWidths::~CharWidths()
{
    ReleaseDevice();
}

void CharWidths::ReleaseDevice()
{
    if (m_dc != nullptr)
        ::DeleteDC(m_dc);
    if (m_font != nullptr)
        ::DeleteObject(m_font);
    m_dc = nullptr;
    m_font = nullptr;
}

CharWidths::Table CharWidths::MakeTable()
{
    Table table = GuardMemory([] { return std::make_unique<Width[]>(kCodes); });
    std::fill_n(table.get(), kCodes, kUnknown);
    return table;
}

int CharWidths::Select(HDC device, HFONT font, CodeType codeType)
{
    const bool newFont = SelectFont(device, font);
    const bool newCode = SelectCode(codeType, newFont);
    return newFont || newCode ? 1 : 0;
}

bool CharWidths::SelectFont(HDC device, HFONT font)
{
    LOGFONTW description{};
    ::GetObjectW(font, sizeof description, &description);
    // The memory context is only for measuring, unless there is no other to ask.
    HDC dc = device == nullptr ? ::CreateCompatibleDC(nullptr) : nullptr;
    const std::array<int, 4> capabilities = DescribeDevice(device != nullptr ? device : dc);
    if (m_dc != nullptr && capabilities == m_device && IsSameFont(description, m_description)) {
        if (dc != nullptr)
            ::DeleteDC(dc);
        return false;
    }
    if (dc == nullptr)
        dc = ::CreateCompatibleDC(device);
    ReleaseDevice();
    m_dc = dc;
    m_device = capabilities;
    m_description = description;
    m_font = ::CreateFontIndirectW(&description);
    ::SelectObject(m_dc, m_font);

    std::fill_n(m_units.get(), kCodes, kUnknown);
    for (Table& plane : m_planes)
        plane.reset();
    m_narrowest = kWidest;
    MeasureFont();
    return true;
}

bool CharWidths::SelectCode(CodeType codeType, bool newFont)
{
    const bool newCode = codeType != m_code.GetCodeType();
    m_code = TextCode(codeType);
    if (m_code.IsWide()) {
        if (newFont)
            m_narrow.reset();
        m_current = m_units.get();
        return newCode;
    }
    UINT page = CharSetCode2CodePage(CodeTypeSave2Edit(codeType));
    if (page == 0)
        page = GetMultibyteCodePage();
    if (m_narrow == nullptr) {
        m_narrow = MakeTable();
        m_decoded = GuardMemory([] { return std::make_unique<WCHAR[]>(kCodes); });
    } else if (newFont || page != m_page) {
        std::fill_n(m_narrow.get(), kCodes, kUnknown);
    }
    m_page = page;
    m_current = m_narrow.get();
    return newCode;
}

// Fonts whose half-width and full-width cells differ do not agree on what tmAveCharWidth is.
void CharWidths::MeasureFont()
{
    TEXTMETRICW metric{};
    ::GetTextMetricsW(m_dc, &metric);
    m_height = std::max<int>(metric.tmHeight, 1);

    static const WCHAR letters[] = TW("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    constexpr int count = 52;
    SIZE extent{};
    ::GetTextExtentPoint32W(m_dc, letters, count, &extent);
    m_columnWidth = std::max<int>((extent.cx + count / 2) / count, 1);
}

int CharWidths::Measure(const char* text, int length)
{
    const char* const end = text + length;
    const INT64 width = m_code.Visit([&](auto reader) {
        INT64 sum = 0;
        for (const char* p = text; p < end;)
            sum += GetWidth(reader.Next(p, end));
        return sum;
    });
    return static_cast<int>(std::min<INT64>(width, std::numeric_limits<int>::max()));
}

unsigned CharWidths::GetUnit(unsigned code)
{
    if (m_code.IsWide())
        return code;
    if (code == '\t')
        return code;
    GetWidth(code);
    return m_dc != nullptr ? m_decoded[code] : DecodeNarrow(code);
}

void CharWidths::Decode(const char* text, int length, WString& units, std::vector<int>& advances)
{
    const char* const end = text + length;
    const auto add = [&](unsigned unit, int advance) {
        units.push_back(static_cast<WCHAR>(unit));
        advances.push_back(advance);
    };
    m_code.Visit([&](auto reader) {
        for (const char* p = text; p < end;) {
            const unsigned code = reader.Next(p, end);
            const int width = GetWidth(code);
            const unsigned unit = GetUnit(code);
            if (unit < kCodes) {
                add(unit, width);
            } else {
                add(0xD800 + ((unit - kCodes) >> 10), width);
                add(0xDC00 + (unit & 0x3FF), 0);
            }
        }
    });
}

int CharWidths::MeasureMissing(unsigned code)
{
    if (m_dc == nullptr || code == '\t')
        return 0;
    if (code >= kCodes)
        return MeasurePair(code);
    if (m_current == m_units.get())
        return MeasureUnit(code);
    const unsigned unit = DecodeNarrow(code);
    m_decoded[code] = static_cast<WCHAR>(unit);
    m_narrow[code] = MeasureUnit(unit);
    return m_narrow[code];
}

unsigned CharWidths::DecodeNarrow(unsigned code) const
{
    const char bytes[2] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    const std::size_t length = code < 0x100 ? 1 : 2;
    WString units;
    const ConversionResult result =
        ConvertToUtf16(m_page, std::string_view(bytes + 2 - length, length), units);
    return result >= 0 && units.size() == 1 ? units[0] : kReplacement;
}

CharWidths::Width CharWidths::MeasureUnit(unsigned unit)
{
    if (m_units[unit] == kUnknown)
        MeasureBlock(unit);
    return m_units[unit];
}

void CharWidths::MeasureBlock(unsigned unit)
{
    const auto* const range =
        std::find_if(std::begin(kIndependent), std::end(kIndependent),
                     [unit](const UnitRange& r) { return unit >= r.first && unit <= r.last; });
    if (range != std::end(kIndependent)) {
        const unsigned blockStart = unit / kBlock * kBlock;
        const unsigned first = std::max(blockStart, range->first);
        const unsigned last = std::min(blockStart + kBlock - 1, range->last);
        const int count = static_cast<int>(last - first + 1);
        std::array<WCHAR, kBlock> units{};
        std::array<int, kBlock> advances{};
        for (unsigned u = first; u <= last; ++u)
            units[u - first] = static_cast<WCHAR>(u);
        SIZE size{};
        if (::GetTextExtentExPointW(m_dc, units.data(), count, 0, nullptr, advances.data(),
                                    &size)) {
            int x = 0;
            for (unsigned u = first; u <= last; ++u) {
                m_units[u] = Keep(advances[u - first] - x);
                x = advances[u - first];
            }
            return;
        }
    }
    const auto alone = static_cast<WCHAR>(unit);
    m_units[unit] = MeasureAlone(&alone, 1);
}

CharWidths::Width CharWidths::MeasurePair(unsigned code)
{
    const unsigned offset = code - kCodes;
    Table& plane = m_planes[offset / kCodes];
    if (plane == nullptr)
        plane = MakeTable();
    Width& width = plane[offset % kCodes];
    if (width == kUnknown) {
        const WCHAR pair[] = {static_cast<WCHAR>(0xD800 + (offset >> 10)),
                              static_cast<WCHAR>(0xDC00 + (offset & 0x3FF))};
        width = MeasureAlone(pair, 2);
    }
    return width;
}

CharWidths::Width CharWidths::MeasureAlone(const WCHAR* units, int count)
{
    SIZE size{};
    ::GetTextExtentPoint32W(m_dc, units, count, &size);
    return Keep(size.cx);
}

CharWidths::Width CharWidths::Keep(int width)
{
    const int kept = std::clamp<int>(width, 0, kWidest);
    m_narrowest = std::min(m_narrowest, kept);
    return static_cast<Width>(kept);
}

} // namespace tlvn
