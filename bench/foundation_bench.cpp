// Buffers and phrase search beside the standard library's.

#include "TlvnMisc.h"
#include "bench/bench_table.h"

#include <cstring>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr int kMegabyte = 1 << 20;

// Shift_JIS text of words of hiragana, katakana and frequent kanji, in lines of some 70 bytes.
std::string JapaneseText(int size)
{
    std::mt19937 engine(1);
    const auto random = [&] { return static_cast<unsigned>(engine()); };
    std::string text;
    text.reserve(static_cast<std::size_t>(size));
    while (text.size() < static_cast<std::size_t>(size)) {
        const unsigned kind = random() % 10;
        for (unsigned i = 1 + random() % 6; i > 0; --i) {
            unsigned c = 0x829F + random() % 83; // hiragana
            if (kind >= 9)
                c = 0x8340 + random() % 63; // katakana
            else if (kind >= 5)
                c = (0x88 + random() % 0x10) << 8 | (0x9F + random() % 0x5E); // kanji
            text += static_cast<char>(c >> 8);
            text += static_cast<char>(c);
        }
        if (random() % 8 == 0)
            text += "\r\n";
    }
    text.resize(static_cast<std::size_t>(size));
    return text;
}

void Append(BenchTable& table)
{
    const std::string piece(4096, 'x');
    const int count = 64 * kMegabyte / 4096;
    table.Compare(
        "append 64 MB in 4 KB pieces", 64.0 * kMegabyte, "std::string",
        [&] {
            CBuffer buffer;
            buffer.SetIncrSize(kMegabyte);
            for (int i = 0; i < count; ++i)
                buffer.Add(piece.data(), 4096);
            Use(buffer.GetBuffer());
        },
        [&] {
            std::string text;
            for (int i = 0; i < count; ++i)
                text.append(piece);
            Use(text.data());
        });
}

void Find(BenchTable& table, const std::string& text)
{
    CBuffer buffer;
    buffer.Set(text.data(), static_cast<int>(text.size()));
    const struct {
        const char* name;
        std::string phrase;
    } cases[] = {
        {"FindPhrase, 4 kanji", "\x96\x7B\x8B\x43\x82\xA9\x82\xC8"},
        {"FindPhrase, 1 katakana word", "\x83\x81\x81\x5B\x83\x8B\x83\x7D\x83\x4B"},
        {"FindPhrase, ASCII", "attachment"},
    };
    for (const auto& c : cases) {
        const void* found = nullptr;
        table.Compare(
            c.name, static_cast<double>(text.size()), "memmem",
            [&] {
                const int pos = buffer.FindPhrase(c.phrase.c_str(), 0, 0);
                found = pos < 0 ? nullptr : buffer.GetBuffer() + pos;
                Use(found);
            },
            [&] { Use(memmem(text.data(), text.size(), c.phrase.data(), c.phrase.size())); });
    }
    table.Compare(
        "FindPhrase, no case", static_cast<double>(text.size()), "memmem",
        [&] { Use(buffer.GetBuffer() + buffer.FindPhrase("ATTACHMENT", 0, 1)); },
        [&] { Use(memmem(text.data(), text.size(), "attachment", 10)); }, 3);
}

// Every 10th word is the one replaced, by one longer and one shorter.
void Replace(BenchTable& table)
{
    const auto words = [](int size) {
        std::string text;
        for (int i = 0; text.size() < static_cast<std::size_t>(size); ++i)
            text += i % 10 == 0 ? "\x8C\xC3\x82\xA2 " : "\x82\xB1\x82\xC6\x82\xCE ";
        return text;
    };
    for (const char* with : {"\x90\x56\x82\xB5\x82\xA2", "X"}) {
        table.Growth(with[1] != '\0' ? "replace every 10th word by a longer" : "by a shorter",
                     {kMegabyte, 2 * kMegabyte, 4 * kMegabyte, 8 * kMegabyte}, [&](int size) {
                         return [with, text = words(size)] {
                             CBuffer buffer;
                             buffer.Set(text.data(), static_cast<int>(text.size()));
                             buffer.ReplacePhraseAll("\x8C\xC3\x82\xA2", with, 0, 0, 0);
                             Use(buffer.GetBuffer());
                         };
                     });
    }
}

// The worst a search can be given: a text and a phrase of one letter and one odd one out.
void Repetitive(BenchTable& table)
{
    table.Growth("find a...ab in a...a", {kMegabyte, 2 * kMegabyte, 4 * kMegabyte, 8 * kMegabyte},
                 [&](int size) {
                     CBuffer buffer;
                     buffer.Set(std::string(static_cast<std::size_t>(size), 'a').data(), size);
                     const std::string half(static_cast<std::size_t>(size / 4), 'a');
                     return [buffer, phrase = half + "b" + half] {
                         Use(buffer.GetBuffer() + buffer.FindPhrase(phrase.c_str(), 0, 0));
                     };
                 });
}

} // namespace

int main()
{
    BenchTable table;
    Append(table);
    Find(table, JapaneseText(8 * kMegabyte));
    Replace(table);
    Repetitive(table);
    table.Print();
    return 0;
}
