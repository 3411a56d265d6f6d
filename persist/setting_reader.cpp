#include "persist/setting_text.h"

#include <string>

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

// The end of the line that starts at p. `escapes` says whether there is a backslash in it.
const WCHAR* FindLineEnd(const WCHAR* p, const WCHAR* end, bool& escapes)
{
    // In blocks, without a branch for each unit.
    constexpr std::ptrdiff_t kBlock = 8;
    escapes = false;
    while (end - p >= kBlock) {
        WCHAR special = 0;
        for (std::ptrdiff_t i = 0; i < kBlock; ++i) {
            const WCHAR line = p[i] == '\r' || p[i] == '\n' ? 1 : 0;
            special = special | line | (p[i] == kEscape ? WCHAR{1} : WCHAR{0});
        }
        if (special == 0) {
            p += kBlock;
            continue;
        }
        for (std::ptrdiff_t i = 0; i < kBlock; ++i, ++p) {
            if (IsLineEnd(*p))
                return p;
            escapes = escapes || *p == kEscape;
        }
    }
    for (; p < end && !IsLineEnd(*p); ++p)
        escapes = escapes || *p == kEscape;
    return p;
}

class Reader {
public:
    explicit Reader(SettingKeyList& keys) : m_keys(keys) {}

    SettingTextResult Read(WStringView text)
    {
        const WCHAR* p = text.data();
        const WCHAR* const end = p + text.size();
        bool first = true;
        while (p < end && m_result.message == 0) {
            const WCHAR* const begin = p;
            p = FindLineEnd(p, end, m_escapes);
            WStringView line(begin, static_cast<std::size_t>(p - begin));
            ++p;
            if (line.empty())
                continue;
            if (first && line[0] == kByteOrderMark)
                line.remove_prefix(1);
            first = false;
            if (!line.empty())
                ReadLine(line);
        }
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
        if (line.back() != ']') {
            Fail(kBadFormat, Narrow(line));
            return;
        }
        m_key = nullptr;
        const WStringView text = line.substr(1, line.size() - 2);
        if (text == kStartMark) {
            m_startSeen = true;
        } else if (text == kEndMark) {
            m_endSeen = true;
        } else {
            const std::string_view name = Narrow(Unescape(text, WStringView()));
            const unsigned hash = HashName(name);
            m_key = m_keys.Find(name, hash);
            if (m_key != nullptr)
                m_result.duplicates = true;
            else
                m_key = m_keys.Append(
                    GuardMemory([&] { return std::make_unique<CSettingDataKey>(name); }), hash);
        }
    }

    void ReadPairLine(WStringView line)
    {
        if (m_key == nullptr) {
            Fail(kNoKey, Narrow(line));
            return;
        }
        std::size_t nameEnd = 0;
        while (nameEnd < line.size() && line[nameEnd] != '=')
            nameEnd += line[nameEnd] == kEscape ? 2 : 1;
        if (nameEnd == 0 || nameEnd >= line.size()) {
            std::string data = '[' + std::string(ViewOf(m_key->GetName())) + "]\n        ";
            data += Narrow(line);
            Fail(kBadFormat, data);
            return;
        }
        const std::string_view name = Narrow(Unescape(line.substr(0, nameEnd), TW("=[")));
        const WStringView written = line.substr(nameEnd + 1);
        const WStringView value = Unescape(written, WStringView());
        if (m_key->SetAt(name, value, value.data() == written.data()) != 0)
            m_result.duplicates = true;
    }

    // Undoes the escapes, those of the characters in `more` too. Any other backslash stands for
    // itself. The result holds until the next call.
    WStringView Unescape(WStringView text, WStringView more)
    {
        std::size_t i = m_escapes ? text.find(kEscape) : WStringView::npos;
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

    void Fail(UINT message, std::string_view data)
    {
        m_result.message = message;
        m_result.data = ToString(data);
    }

    SettingKeyList& m_keys;
    CSettingDataKey* m_key = nullptr; // that of the lines being read
    bool m_escapes = false;           // the line has a backslash
    bool m_startSeen = false;
    bool m_endSeen = false;
    SettingTextResult m_result;
    WString m_unescaped;
    std::string m_narrow;
};

} // namespace

SettingTextResult ReadSettingText(WStringView text, SettingKeyList& keys)
{
    return GuardMemory([&] { return Reader(keys).Read(text); });
}

} // namespace tlvn
