#include "persist/setting_text.h"
#include "platform/ascii_run.h"

#include <bit>
#include <cstring>
#include <string>
#include <vector>

namespace tlvn {

namespace {

constexpr UINT kBadFormat = 3100;
constexpr UINT kNoKey = 3101;
constexpr UINT kNoStart = 3163;
constexpr UINT kNoEnd = 3164;

constexpr WCHAR kByteOrderMark = 0xFEFF;
constexpr WCHAR kEscape = '\\';

bool IsLineEnd(WCHAR c)
{
    return c == '\r' || c == '\n';
}

// The end of the line that p stands in.
const WCHAR* FindLineEnd(const WCHAR* p, const WCHAR* end)
{
#ifdef TLVN_HAS_SSE2
    const __m128i cr = _mm_set1_epi16('\r');
    const __m128i lf = _mm_set1_epi16('\n');
    const auto isLineEnd = [&](const WCHAR* units) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
        return _mm_or_si128(_mm_cmpeq_epi16(eight, cr), _mm_cmpeq_epi16(eight, lf));
    };
    for (; end - p >= 16; p += 16) {
        const auto ends = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_packs_epi16(isLineEnd(p), isLineEnd(p + 8))));
        if (ends != 0)
            return p + std::countr_zero(ends);
    }
#endif
    while (p < end && !IsLineEnd(*p))
        ++p;
    return p;
}

// Calls `take` with each line that is not empty, for as long as it returns true.
template <class Take>
void ForEachLine(WStringView text, const Take& take)
{
    const WCHAR* p = text.data();
    const WCHAR* const end = p + text.size();
    while (p < end) {
        const WCHAR* const lineEnd = FindLineEnd(p, end);
        if (lineEnd > p && !take(WStringView(p, static_cast<std::size_t>(lineEnd - p))))
            return;
        p = lineEnd < end ? lineEnd + 1 : end;
    }
}

// The length of the name before "=", or npos when there is no "=".
std::size_t NameLength(WStringView line)
{
    std::size_t i = 0;
    while (i < line.size() && line[i] != '=')
        i += line[i] == kEscape ? 2 : 1;
    return i < line.size() ? i : WStringView::npos;
}

// A hash of a name as it stands in the file, the same for names that differ only in case; 0 for
// one with other characters than ASCII, or with escapes.
std::uint64_t HashPlainName(WStringView name)
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    constexpr std::uint64_t kCaseBits = 0x0020002000200020;
    constexpr std::uint64_t kOtherBits = 0xFF80FF80FF80FF80;
    std::uint64_t hash = name.size();
    std::uint64_t all = 0;
    std::size_t i = 0;
    for (; i + 4 <= name.size(); i += 4) {
        std::uint64_t units;
        std::memcpy(&units, &name[i], sizeof units);
        all |= units;
        hash = (hash ^ (units | kCaseBits)) * kFactor;
        hash ^= hash >> 32;
    }
    std::uint64_t units = 0;
    for (; i < name.size(); ++i)
        units = units << 16 | name[i];
    all |= units;
    hash = (hash ^ (units | kCaseBits)) * kFactor;
    const bool plain = (all & kOtherBits) == 0 && name.find(kEscape) == WStringView::npos;
    return plain ? hash | 1 : 0;
}

// The text of names and values.
class Decoder {
public:
    // Undoes the escapes, those of the characters in `more` too. Any other backslash stands for
    // itself. The result holds until the next call.
    WStringView Unescape(WStringView text, WStringView more)
    {
        std::size_t i = text.find(kEscape);
        if (i == WStringView::npos)
            return text;
        m_unescaped.assign(text.substr(0, i));
        for (; i < text.size(); ++i) {
            WCHAR c = text[i];
            if (c == kEscape && i + 1 < text.size()) {
                const WCHAR next = text[i + 1];
                const bool letter = next == 'r' || next == 'n';
                if (letter || next == kEscape || more.find(next) != WStringView::npos) {
                    c = next == 'r' ? '\r' : next == 'n' ? '\n' : next;
                    ++i;
                }
            }
            m_unescaped += c;
        }
        return m_unescaped;
    }

    // The text in the multibyte code page, until the next call.
    std::string_view Narrow(WStringView text)
    {
        m_narrow.resize(text.size());
        unsigned bits = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            bits |= text[i];
            m_narrow[i] = static_cast<char>(text[i]);
        }
        if (bits >= 0x80)
            m_narrow = NarrowText(text);
        return m_narrow;
    }

private:
    WString m_unescaped;
    std::string m_narrow;
};

// Reads the keys and sees that the lines of their pairs are well formed. A key gets those lines
// as they are, unless a name may come twice in them.
class Reader {
public:
    explicit Reader(SettingKeyList& keys) : m_keys(keys) {}

    SettingTextResult Read(WStringView text)
    {
        bool first = true;
        ForEachLine(text, [&](WStringView line) {
            if (first && line[0] == kByteOrderMark)
                line.remove_prefix(1);
            first = false;
            if (!line.empty())
                ReadLine(line);
            return m_result.message == 0;
        });
        FinishKey();
        if (m_result.message == 0 && m_startSeen != m_endSeen)
            m_result.message = m_startSeen ? kNoEnd : kNoStart;
        return std::move(m_result);
    }

private:
    void ReadLine(WStringView line)
    {
        if (line[0] == '[')
            ReadKeyLine(line);
        else
            ReadPairLine(line);
    }

    void ReadKeyLine(WStringView line)
    {
        FinishKey();
        if (line.back() != ']') {
            Fail(kBadFormat, m_decoder.Narrow(line));
            return;
        }
        const WStringView text = line.substr(1, line.size() - 2);
        if (text == kStartMark) {
            m_startSeen = true;
        } else if (text == kEndMark) {
            m_endSeen = true;
        } else {
            const std::string_view name = m_decoder.Narrow(m_decoder.Unescape(text, WStringView()));
            const unsigned hash = HashName(name);
            m_key = m_keys.Find(name, hash);
            m_newKey = m_key == nullptr;
            if (m_newKey)
                m_key = m_keys.Append(
                    GuardMemory([&] { return std::make_unique<CSettingDataKey>(name); }), hash);
            else
                m_result.duplicates = true;
        }
    }

    void ReadPairLine(WStringView line)
    {
        if (m_key == nullptr) {
            Fail(kNoKey, m_decoder.Narrow(line));
            return;
        }
        const std::size_t length = NameLength(line);
        if (length == 0 || length == WStringView::npos) {
            std::string data = '[' + std::string(ViewOf(m_key->GetName())) + "]\n        ";
            data += m_decoder.Narrow(line);
            Fail(kBadFormat, data);
            return;
        }
        m_names.push_back(HashPlainName(line.substr(0, length)));
        if (m_lines.empty())
            m_lines = line;
        const WCHAR* const end = line.data() + line.size();
        m_lines = WStringView(m_lines.data(), static_cast<std::size_t>(end - m_lines.data()));
    }

    // Hands the lines of its pairs to the key. None is current then.
    void FinishKey()
    {
        if (!m_lines.empty() && m_newKey && AreNamesDifferent())
            m_key->SetLinesLater(m_lines);
        else if (!m_lines.empty() && m_key->SetLines(m_lines) != 0)
            m_result.duplicates = true;
        m_key = nullptr;
        m_lines = {};
        m_names.clear();
    }

    // True when all names are plain and no two can be the same.
    bool AreNamesDifferent()
    {
        m_table.assign(std::bit_ceil(m_names.size() * 2), 0);
        const std::size_t mask = m_table.size() - 1;
        for (const std::uint64_t name : m_names) {
            std::size_t i = static_cast<std::size_t>(name >> 32) & mask;
            while (m_table[i] != 0 && m_table[i] != name)
                i = (i + 1) & mask;
            if (m_table[i] == name)
                return false; // seen before, or not plain
            m_table[i] = name;
        }
        return true;
    }

    void Fail(UINT message, std::string_view data)
    {
        m_result.message = message;
        m_result.data = ToString(data);
    }

    SettingKeyList& m_keys;
    Decoder m_decoder;
    CSettingDataKey* m_key = nullptr;   // that of the lines being read
    bool m_newKey = false;              // its first place in the text
    WStringView m_lines;                // of its pairs
    std::vector<std::uint64_t> m_names; // their hashes
    std::vector<std::uint64_t> m_table; // the same, where their bits say
    bool m_startSeen = false;
    bool m_endSeen = false;
    SettingTextResult m_result;
};

} // namespace

SettingTextResult ReadSettingText(WStringView text, SettingKeyList& keys)
{
    return GuardMemory([&] { return Reader(keys).Read(text); });
}

int ReadPairLines(WStringView lines, SettingPairList& pairs)
{
    return GuardMemory([&] {
        Decoder decoder;
        int replaced = 0;
        ForEachLine(lines, [&](WStringView line) {
            const std::size_t length = NameLength(line);
            const std::string_view name =
                decoder.Narrow(decoder.Unescape(line.substr(0, length), TW("=[")));
            const WStringView written = line.substr(length + 1);
            const WStringView value = decoder.Unescape(written, WStringView());
            replaced |= SetPair(pairs, name, value, value.data() == written.data());
            return true;
        });
        return replaced;
    });
}

} // namespace tlvn
