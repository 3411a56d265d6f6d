// Drives a CBuffer and a std::string side by side through operations read from arbitrary bytes.
// Every operation of the string is the plain reading of its rule, one byte or character after
// the other. Used by the random test and by the fuzz target.

#pragma once

#include "TlvnMisc.h"
#include "tests/support/byte_source.h"

#include <cstring>
#include <string>

// The rules, on a std::string.
namespace buffer_model {

inline bool IsPair(const std::string& s, int i)
{
    return i + 1 < static_cast<int>(s.size()) && tlvn::IsDoubleByte(s.data() + i);
}

inline bool IsInside(const std::string& s, int from, int pos)
{
    int i = from;
    while (i < pos)
        i += IsPair(s, i) ? 2 : 1;
    return i != pos;
}

// The occurrence at a position, by the comparisons of the three kinds of search.
enum Kind { Ascii, Character, Wide };

inline int StepAt(const std::string& s, int pos, Kind kind)
{
    return kind == Wide ? 2 : kind == Character && IsPair(s, pos) ? 2 : 1;
}

inline bool MatchesAt(const std::string& s, int pos, const std::string& phrase, Kind kind,
                      bool noCase)
{
    const int length = static_cast<int>(phrase.size());
    if (pos < 0 || pos + length > static_cast<int>(s.size()))
        return false;
    for (int i = 0; i < length;) {
        if (kind == Wide) {
            WCHAR a, b;
            std::memcpy(&a, s.data() + pos + i, 2);
            std::memcpy(&b, phrase.data() + i, 2);
            if (noCase ? tlvn::ToLowerW(a) != tlvn::ToLowerW(b) : a != b)
                return false;
            i += 2;
            continue;
        }
        const int step = kind == Character && IsPair(phrase, i) ? 2 : 1;
        const auto value = [&](const std::string& t, int at) {
            unsigned c = static_cast<BYTE>(t[static_cast<std::size_t>(at)]);
            if (step == 2)
                c = c << 8 | static_cast<BYTE>(t[static_cast<std::size_t>(at) + 1]);
            if (!noCase)
                return c;
            return step == 1 ? static_cast<BYTE>(tlvn::ToLowerAscii(static_cast<char>(c)))
                             : tlvn::ToLowerMbc(c);
        };
        if (value(s, pos + i) != value(phrase, i))
            return false;
        i += step;
    }
    // A phrase that ends in half a character does not match half a character.
    return kind != Character || !IsInside(s, pos, pos + length);
}

inline int Find(const std::string& s, const std::string& phrase, int start, Kind kind, bool noCase)
{
    if (phrase.empty() || start < 0)
        return -1;
    for (int i = start; i < static_cast<int>(s.size()); i += StepAt(s, i, kind))
        if (MatchesAt(s, i, phrase, kind, noCase))
            return i;
    return -1;
}

inline int ReverseFind(const std::string& s, const std::string& phrase, int end, Kind kind,
                       bool noCase)
{
    const int length = static_cast<int>(s.size());
    if (phrase.empty() || (kind == Wide && end < -1))
        return -1;
    if (end == -1 || (kind != Wide && (end < 0 || end > length)))
        end = length;
    for (int i = end - static_cast<int>(phrase.size()); i >= 0; i -= kind == Wide ? 2 : 1)
        if ((kind != Character || !IsInside(s, 0, i)) && MatchesAt(s, i, phrase, kind, noCase))
            return i;
    return -1;
}

inline int ReplaceAll(std::string& s, const std::string& oldText, const std::string& newText,
                      int start, int count, Kind kind, bool noCase)
{
    const int length = static_cast<int>(s.size());
    const int end = count > 0 && start + count < length ? start + count : length;
    const int limit = end - static_cast<int>(oldText.size());
    if (oldText.empty() || start < 0)
        return 0;
    int found = 0;
    for (int pos = start; pos <= limit && pos < static_cast<int>(s.size());) {
        if (MatchesAt(s, pos, oldText, kind, noCase)) {
            s.replace(static_cast<std::size_t>(pos), oldText.size(), newText);
            pos += static_cast<int>(newText.size());
            ++found;
        } else {
            pos += StepAt(s, pos, kind);
        }
    }
    return found;
}

inline std::string Narrow(ByteSource& in, int maxLength)
{
    // Few letters, so that phrases occur; lead and trail bytes, blanks, zeros and line ends.
    static const char letters[] = "aAbB1 ,\t\r\n\x81\x82\x60\x81\xA0\xB1\x40\x5C\x82\x81\x00\xFC";
    std::string text;
    for (int i = in.Number(0, maxLength); i > 0; --i)
        text += letters[in.Byte() % (sizeof letters - 1)];
    return text;
}

inline std::string WithoutZeros(std::string text, Kind kind)
{
    if (kind == Wide) {
        std::string units;
        for (std::size_t i = 0; i + 2 <= text.size(); i += 2)
            units += text[i] != 0 || text[i + 1] != 0 ? text.substr(i, 2) : std::string("a\0", 2);
        return units;
    }
    std::erase(text, '\0');
    return text;
}

} // namespace buffer_model

// Returns an empty text when buffer and model agreed all along, else what went wrong.
inline std::string DriveBuffer(const std::uint8_t* data, std::size_t size)
{
    using namespace buffer_model;
    ByteSource in(data, size);
    CBuffer buffer;
    std::string model;
    int capacity = 0;
    std::string log;

    while (!in.IsEmpty()) {
        const int length = static_cast<int>(model.size());
        const int operation = in.Number(0, 26);
        const int pos = in.Number(-2, length + 2);
        const int count = in.Number(-2, length + 4);
        const std::string text = Narrow(in, operation == 0 ? 600 : 40);
        const int textLength = static_cast<int>(text.size());
        const bool inside = pos >= 0 && pos <= length;
        const auto at = static_cast<std::size_t>(inside ? pos : 0);
        int expected = 0;
        int actual = 0;
        log += " " + std::to_string(operation);

        switch (operation) {
        case 0:
            buffer.Add(text.data(), textLength);
            model += text;
            break;
        case 1:
            buffer.Insert(text.data(), textLength, pos);
            if (inside)
                model.insert(at, text);
            break;
        case 2:
            buffer.Insert('x', count, pos);
            if (inside && count > 0)
                model.insert(at, static_cast<std::size_t>(count), 'x');
            break;
        case 3:
            buffer.Overwrite(text.data(), textLength, pos);
            if (inside && pos + textLength <= length)
                model.replace(at, text.size(), text);
            break;
        case 4:
            buffer.Delete(pos, count);
            if (inside && count > 0)
                model.erase(at, static_cast<std::size_t>(count));
            break;
        case 5:
            actual = buffer.Truncate(pos);
            expected = inside;
            if (inside)
                model.resize(at);
            break;
        case 6:
            buffer.Set(text.data(), textLength);
            model = text;
            break;
        case 7: {
            CBuffer part;
            buffer.Mid(pos, count, part);
            const int start = pos < 0 ? 0 : pos;
            std::string mid;
            if (count > 0 && start < length)
                mid =
                    model.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
            if (part != CBuffer()
                    ? std::string(part, static_cast<std::size_t>(part.GetLength())) != mid
                    : !mid.empty())
                return "Mid differs after" + log;
            break;
        }
        case 8: {
            std::size_t start = 0;
            while (start < model.size() && tlvn::IsSpace(model[start]))
                ++start;
            buffer.TrimLeft(0);
            if (start < model.size())
                model.erase(0, start);
            break;
        }
        case 9:
            buffer.TrimRight(0);
            while (!model.empty() && tlvn::IsSpace(model.back()))
                model.pop_back();
            break;
        case 10:
            buffer.ExceptNull();
            std::erase(model, '\0');
            break;
        case 11:
            buffer.ExceptCrlf(0);
            std::erase_if(model, [](char c) { return c == '\r' || c == '\n'; });
            break;
        case 12: {
            CBuffer other;
            other.MoveFrom(buffer);
            buffer.CopyFrom(other);
            capacity = 0;
            break;
        }
        case 13: {
            CFixBuffer fixed;
            fixed.MoveFrom(buffer);
            if (fixed.GetLength() != length || buffer.GetLength() != 0 ||
                std::memcmp(fixed, model.data(), model.size()) != 0)
                return "CFixBuffer differs after" + log;
            buffer.Set(fixed, fixed.GetLength());
            capacity = 0;
            break;
        }
        case 14:
            buffer.SetIncrSize(count);
            break;
        case 15:
            buffer.SetAllocSize(count);
            break;
        case 16: {
            const char ch = textLength > 0 ? text[0] : 'a';
            actual = buffer.FindChar(ch, pos);
            expected = -1;
            for (int i = pos; pos >= 0 && i < length; i += IsPair(model, i) ? 2 : 1) {
                if (!IsPair(model, i) && model[static_cast<std::size_t>(i)] == ch) {
                    expected = i;
                    break;
                }
            }
            break;
        }
        case 17: {
            const char ch = textLength > 0 ? text[0] : 'a';
            actual = buffer.ReverseFindChar(ch, pos);
            expected = -1;
            if (pos < -1)
                break;
            for (int i = (pos == -1 || pos > length ? length : pos) - 1; i >= 0; --i) {
                if (!IsInside(model, 0, i) && model[static_cast<std::size_t>(i)] == ch) {
                    expected = i;
                    break;
                }
            }
            break;
        }
        case 18:
            actual = buffer.IsMbsTrail(pos);
            expected = pos >= 1 && pos < length && IsInside(model, 0, pos);
            break;
        case 19: {
            // The tokens and delimiters taken off the front make up the text.
            CBuffer token;
            int next = pos;
            buffer.Tokenize(",\x82\x60 ", next, token);
            if (pos >= 0 && pos < length && (next < pos || next > length))
                return "Tokenize went outside after" + log;
            if (token.IsEmpty() && next != pos)
                return "Tokenize moved without a token after" + log;
            break;
        }
        default: {
            const Kind kind = static_cast<Kind>(operation % 3);
            const bool noCase = in.Byte() % 2 != 0;
            const std::string phrase =
                WithoutZeros(text.substr(0, static_cast<std::size_t>(in.Number(0, 6))), kind);
            const std::string with = WithoutZeros(Narrow(in, 8), kind);
            const std::u16string phraseW(reinterpret_cast<const char16_t*>(phrase.data()),
                                         phrase.size() / 2);
            const std::u16string withW(reinterpret_cast<const char16_t*>(with.data()),
                                       with.size() / 2);
            const auto* wide = reinterpret_cast<const WCHAR*>(phraseW.c_str());
            const auto* wideWith = reinterpret_cast<const WCHAR*>(withW.c_str());
            if (operation < 23) {
                // The Ascii and Character forms answer -1 for a start from which the phrase does
                // not fit; so does the model, which finds nothing there.
                expected = pos > length ? -1 : Find(model, phrase, pos, kind, noCase);
                actual = kind == Wide    ? buffer.FindPhrase(wide, pos, noCase)
                         : kind == Ascii ? buffer.FindAsciiPhrase(phrase.c_str(), pos, noCase)
                                         : buffer.FindPhrase(phrase.c_str(), pos, noCase);
            } else if (operation < 25) {
                expected = ReverseFind(model, phrase, pos, kind, noCase);
                actual = kind == Wide ? buffer.ReverseFindPhrase(wide, pos, noCase)
                         : kind == Ascii
                             ? buffer.ReverseFindAsciiPhrase(phrase.c_str(), pos, noCase)
                             : buffer.ReverseFindPhrase(phrase.c_str(), pos, noCase);
            } else {
                expected = ReplaceAll(model, phrase, with, pos, count, kind, noCase);
                actual =
                    kind == Wide ? buffer.ReplacePhraseAll(wide, wideWith, pos, count, noCase)
                    : kind == Ascii
                        ? buffer.ReplaceAsciiPhraseAll(phrase.c_str(), with.c_str(), pos, count,
                                                       noCase)
                        : buffer.ReplacePhraseAll(phrase.c_str(), with.c_str(), pos, count, noCase);
            }
        }
        }

        if (actual != expected)
            return "result " + std::to_string(actual) + ", not " + std::to_string(expected) +
                   ", after" + log;
        const int now = buffer.GetLength();
        if (now != static_cast<int>(model.size()) ||
            std::memcmp(buffer, model.data(), model.size()) != 0)
            return "content differs after" + log;
        if (buffer.GetBuffer() != nullptr && (buffer[now] != 0 || buffer[now + 1] != 0))
            return "no two zero bytes after" + log;
        if (buffer.GetAllocSize() < now || buffer.GetAllocSize() < capacity)
            return "capacity shrank after" + log;
        capacity = buffer.GetAllocSize();
        if (model.size() > 4000) {
            buffer.Empty();
            model.clear();
        }
    }
    return {};
}
