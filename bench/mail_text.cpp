#include "bench/mail_text.h"

#include "platform/nls.h"

#include <random>
#include <vector>

namespace {

class MailWriter {
public:
    MailWriter()
    {
        m_stops = {Encode("、"), Encode("。"), Encode("です。"), Encode("ました。"), Encode("・")};
        m_intro = Encode("詳しくは ");
        m_outro = Encode(" をご覧ください。");
        for (int i = 0; i < 4096; ++i)
            m_words.push_back(MakeWord());
    }

    void WriteLine(std::string& out)
    {
        const unsigned kind = Below(1000);
        if (kind < 120)
            return;
        if (kind < 300) {
            out.append(1 + Below(3), '>');
            out += ' ';
            return WriteWords(16 + Below(48), out);
        }
        if (kind < 330)
            return WriteLink("http://www.example.jp/archive/" + std::to_string(Below(1000000)) +
                                 "/index.html?view=all",
                             out);
        if (kind < 360)
            return WriteLink("user" + std::to_string(Below(10000)) + "@mail.example.jp", out);
        WriteWords(kind < 370 ? 500 + Below(1000) : 16 + Below(60), out);
    }

private:
    static std::string Encode(const char* utf8)
    {
        std::string text;
        tlvn::ConvertFromUtf16(932, tlvn::Utf8ToUtf16(utf8), text);
        return text;
    }

    unsigned Below(unsigned count) { return static_cast<unsigned>(m_random() % count); }

    std::string MakeWord()
    {
        std::string word;
        const unsigned kind = Below(10);
        for (unsigned i = 1 + Below(4); i > 0; --i) {
            if (kind < 5) { // hiragana
                word += '\x82';
                word += static_cast<char>(0x9F + Below(83));
            } else if (kind < 8) { // ideographs of the first level
                word += static_cast<char>(0x89 + Below(15));
                word += static_cast<char>(0x80 + Below(0x7D));
            } else if (kind == 8) { // katakana
                word += '\x83';
                word += static_cast<char>(0x40 + Below(63));
            } else {
                word += static_cast<char>('a' + Below(26));
            }
        }
        return kind == 9 ? " " + word + " " : word;
    }

    void WriteWords(unsigned bytes, std::string& out)
    {
        const std::size_t end = out.size() + bytes;
        while (out.size() < end) {
            out += m_words[Below(static_cast<unsigned>(m_words.size()))];
            if (Below(6) == 0)
                out += m_stops[Below(static_cast<unsigned>(m_stops.size()))];
        }
    }

    void WriteLink(const std::string& link, std::string& out) { out += m_intro + link + m_outro; }

    std::mt19937 m_random{1};
    std::vector<std::string> m_words;
    std::vector<std::string> m_stops;
    std::string m_intro;
    std::string m_outro;
};

} // namespace

std::string MakeMailText(std::size_t bytes)
{
    MailWriter writer;
    std::string text;
    text.reserve(bytes + 4096);
    while (text.size() < bytes) {
        writer.WriteLine(text);
        text += "\r\n";
    }
    return text;
}
