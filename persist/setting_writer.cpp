#include "persist/setting_text.h"

#include <algorithm>
#include <climits>
#include <string>

namespace tlvn {

namespace {

constexpr int kGrowthStep = 4000; // bytes
constexpr WStringView kLineEnd = TW("\r\n");

class Writer {
public:
    explicit Writer(CBuffer& out) : m_out(out) {}

    void Add(WStringView text)
    {
        if (text.size() > INT_MAX / sizeof(WCHAR))
            AfxThrowMemoryException();
        m_out.Add(text.data(), static_cast<int>(text.size() * sizeof(WCHAR)));
    }

    void AddKeyLine(WStringView name)
    {
        Add(TW("["));
        Add(name);
        Add(TW("]"));
        Add(kLineEnd);
    }

    // The text with a backslash before each character of `special`; CR and LF as letters.
    void AddEscaped(WStringView text, WStringView special)
    {
        std::size_t pos;
        while ((pos = FindSpecial(text, special)) < text.size()) {
            Add(text.substr(0, pos));
            const WCHAR c = text[pos];
            const WCHAR escaped[] = {'\\', c == '\r' ? WCHAR('r') : c == '\n' ? WCHAR('n') : c};
            Add(WStringView(escaped, 2));
            text.remove_prefix(pos + 1);
        }
        Add(text);
    }

    // The text in UTF-16, until the next call.
    WStringView Widen(const CString& text)
    {
        const std::string_view narrow = ViewOf(text);
        m_wide.resize(narrow.size());
        unsigned bits = 0;
        for (std::size_t i = 0; i < narrow.size(); ++i) {
            bits |= static_cast<BYTE>(narrow[i]);
            m_wide[i] = static_cast<BYTE>(narrow[i]);
        }
        if (bits >= 0x80)
            m_wide = WidenText(narrow);
        return m_wide;
    }

private:
    static std::size_t FindSpecial(WStringView text, WStringView special)
    {
        std::size_t pos = 0;
        while (pos < text.size() && special.find(text[pos]) == WStringView::npos)
            ++pos;
        return pos;
    }

    CBuffer& m_out;
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
    constexpr WStringView kSpecial = TW("\\\r\n");
    constexpr WStringView kSpecialInName = TW("\\\r\n=[");

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
            writer.AddEscaped(writer.Widen(key.GetName()), kSpecial);
            writer.Add(TW("]"));
            writer.Add(kLineEnd);
            for (int k = 0; k < key.GetPairs().GetSize(); ++k) {
                const CSettingDataPair& pair = *key.GetPairs()[k];
                writer.AddEscaped(writer.Widen(pair.GetName()), kSpecialInName);
                writer.Add(TW("="));
                writer.AddEscaped(pair.GetValueView(), kSpecial);
                writer.Add(kLineEnd);
            }
        }
        writer.AddKeyLine(kEndMark);
    });
}

} // namespace tlvn
