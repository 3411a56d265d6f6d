#include "persist/setting_text.h"

#include <algorithm>
#include <climits>
#include <string>

namespace tlvn {

namespace {

constexpr int kGrowthStep = 4000; // bytes
constexpr WStringView kLineEnd = TW("\r\n");

// Not 0 for what has a backslash before it; CR and LF are letters then.
constexpr auto kIsEscaped = [](WCHAR c) -> WCHAR {
    return (c == '\\' ? 1 : 0) | (c == '\r' ? 1 : 0) | (c == '\n' ? 1 : 0);
};
constexpr auto kIsEscapedInName = [](WCHAR c) -> WCHAR {
    return kIsEscaped(c) | (c == '=' ? 1 : 0) | (c == '[' ? 1 : 0);
};

class Writer {
public:
    // Replaces what `out` holds, whose room is used.
    explicit Writer(CBuffer& out)
        : m_out(out), m_room(static_cast<std::size_t>(out.GetAllocSize()) / sizeof(WCHAR))
    {}

    void Add(WStringView text)
    {
        std::copy(text.begin(), text.end(), Room(text.size()));
        m_used += text.size();
    }

    void AddKeyLine(WStringView name)
    {
        Add(TW("["));
        Add(name);
        Add(TW("]"));
        Add(kLineEnd);
    }

    // The text with a backslash before each character for which `isEscaped` is not 0.
    template <class Predicate>
    void AddEscaped(WStringView text, const Predicate& isEscaped)
    {
        // Every unit is looked at, which goes many at a time: few texts have any to escape.
        WCHAR any = 0;
        for (const WCHAR c : text)
            any = any | isEscaped(c);
        if (any == 0) {
            Add(text);
            return;
        }
        for (const WCHAR c : text) {
            const WCHAR escaped[] = {'\\', c == '\r' ? WCHAR('r') : c == '\n' ? WCHAR('n') : c};
            Add(isEscaped(c) != 0 ? WStringView(escaped, 2) : WStringView(&c, 1));
        }
    }

    // The text in UTF-16, until the next call.
    WStringView Widen(const CString& text)
    {
        const std::string_view narrow = ViewOf(text);
        if (m_wide.size() < narrow.size())
            m_wide.resize(narrow.size());
        unsigned bits = 0;
        for (std::size_t i = 0; i < narrow.size(); ++i) {
            bits |= static_cast<BYTE>(narrow[i]);
            m_wide[i] = static_cast<BYTE>(narrow[i]);
        }
        if (bits < 0x80)
            return WStringView(m_wide).substr(0, narrow.size());
        return m_wide = WidenText(narrow);
    }

    // Gives the buffer its length.
    void Finish() { m_out.ReleaseBuffer(static_cast<int>(m_used * sizeof(WCHAR))); }

private:
    // Room for `count` units more, behind those that are used.
    WCHAR* Room(std::size_t count)
    {
        constexpr std::size_t kMost = (INT_MAX - kGrowthStep) / sizeof(WCHAR);
        if (m_room - m_used < count) {
            if (count > kMost - m_used)
                AfxThrowMemoryException();
            // By half, so that many pieces are not moved as many times.
            m_room = std::min(m_used + m_used / 2 + count, kMost);
            m_out.SetAllocSize(static_cast<int>(m_room * sizeof(WCHAR)));
        }
        return reinterpret_cast<WCHAR*>(m_out.GetBuffer()) + m_used;
    }

    CBuffer& m_out;
    std::size_t m_used = 0; // units
    std::size_t m_room;
    WString m_wide;
};

// What the text takes up in bytes when nothing has to be escaped and all names are ASCII.
INT64 UsualSize(const SettingKeyList& keys)
{
    constexpr INT64 kFrame = 32; // the mark, "[DATA-START]", "[DATA-END]", two line ends: 29 units
    INT64 units = kFrame;
    for (int i = 0; i < keys.GetSize(); ++i) {
        const CSettingDataKey& key = *keys.GetAt(i);
        units += key.GetName().GetLength() + 4;
        for (int k = 0; k < key.GetPairs().GetSize(); ++k) {
            const CSettingDataPair& pair = *key.GetPairs()[k];
            units += INT64{pair.GetName().GetLength()} +
                     static_cast<INT64>(pair.GetValueView().size()) + 3;
        }
    }
    return units * static_cast<INT64>(sizeof(WCHAR));
}

} // namespace

void WriteSettingText(const SettingKeyList& keys, CBuffer& out)
{
    out.Empty();
    out.SetIncrSize(kGrowthStep);
    out.SetAllocSize(static_cast<int>(std::min<INT64>(UsualSize(keys), INT_MAX / 2)));
    GuardMemory([&] {
        Writer writer(out);
        writer.Add(TW("\uFEFF"));
        writer.AddKeyLine(kStartMark);
        for (int i = 0; i < keys.GetSize(); ++i) {
            const CSettingDataKey& key = *keys.GetAt(i);
            writer.Add(TW("["));
            writer.AddEscaped(writer.Widen(key.GetName()), kIsEscaped);
            writer.Add(TW("]"));
            writer.Add(kLineEnd);
            for (int k = 0; k < key.GetPairs().GetSize(); ++k) {
                const CSettingDataPair& pair = *key.GetPairs()[k];
                writer.AddEscaped(writer.Widen(pair.GetName()), kIsEscapedInName);
                writer.Add(TW("="));
                writer.AddEscaped(pair.GetValueView(), kIsEscaped);
                writer.Add(kLineEnd);
            }
        }
        writer.AddKeyLine(kEndMark);
        writer.Finish();
    });
}

} // namespace tlvn
