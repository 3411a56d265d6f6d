// Drives a CBuffer and a std::string side by side through operations read from arbitrary bytes.
// Every operation of the string is the plain reading of its rule, one byte or character after
// the other.

#pragma once

#include "TlvnMisc.h"
#include "framework/text_ops.h"
#include "tests/support/byte_source.h"
#include "tests/support/text.h"

#include <algorithm>
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

inline tlvn::WString Units(const std::string& bytes)
{
    tlvn::WString units(bytes.size() / 2, 0);
    std::memcpy(units.data(), bytes.data(), 2 * units.size());
    return units;
}

inline bool MatchesAt(const std::string& s, int pos, const std::string& phrase, Kind kind,
                      bool noCase)
{
    const int length = static_cast<int>(phrase.size());
    if (pos < 0 || pos + length > static_cast<int>(s.size()))
        return false;
    const std::string part = s.substr(static_cast<std::size_t>(pos), phrase.size());
    // A phrase that ends in half a character does not match half a character.
    if (kind == Character && IsInside(s, pos, pos + length))
        return false;
    if (!noCase)
        return part == phrase;
    return (kind == Wide    ? tlvn::CompareViewsNoCase(Units(part), Units(phrase))
            : kind == Ascii ? tlvn::CompareAsciiNNoCase(part.c_str(), phrase.c_str(), length)
                            : tlvn::CompareMbsNNoCase(part.c_str(), phrase.c_str(), length)) == 0;
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

inline std::string Narrow(ByteSource& in, int maxLength)
{
    // Few letters, so that phrases occur; lead and trail bytes, blanks, zeros and line ends.
    static const char letters[] = "aAbB1 ,\t\r\n\x81\x82\x60\x81\xA0\xB1\x40\x5C\x82\x81\x00\xFC";
    std::string text;
    for (int i = in.Number(0, maxLength); i > 0; --i)
        text += letters[in.Byte() % (sizeof letters - 1)];
    return text;
}

// The searches of a CBuffer by their kind.
inline int FindIn(const CBuffer& buffer, const std::string& phrase, int pos, Kind kind, bool noCase)
{
    return kind == Wide    ? buffer.FindPhrase(Units(phrase).c_str(), pos, noCase)
           : kind == Ascii ? buffer.FindAsciiPhrase(phrase.c_str(), pos, noCase)
                           : buffer.FindPhrase(phrase.c_str(), pos, noCase);
}

inline int ReverseFindIn(const CBuffer& buffer, const std::string& phrase, int pos, Kind kind,
                         bool noCase)
{
    return kind == Wide    ? buffer.ReverseFindPhrase(Units(phrase).c_str(), pos, noCase)
           : kind == Ascii ? buffer.ReverseFindAsciiPhrase(phrase.c_str(), pos, noCase)
                           : buffer.ReverseFindPhrase(phrase.c_str(), pos, noCase);
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
        const int operation = in.Number(0, 15);
        const int pos = in.Number(-2, length + 2);
        const int count = in.Number(-2, length + 4);
        const std::string text = Narrow(in, operation == 0 ? 600 : 40);
        const int textLength = static_cast<int>(text.size());
        const char ch = textLength > 0 ? text[0] : 'a';
        const bool inside = pos >= 0 && pos <= length;
        const auto at = static_cast<std::size_t>(inside ? pos : 0);
        const auto amount = static_cast<std::size_t>(count > 0 ? count : 0);
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
            if (inside)
                model.insert(at, amount, 'x');
            break;
        case 3:
            buffer.Overwrite(text.data(), textLength, pos);
            if (inside && pos + textLength <= length)
                model.replace(at, text.size(), text);
            break;
        case 4:
            buffer.Delete(pos, count);
            if (inside)
                model.erase(at, amount);
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
            const auto start = static_cast<std::size_t>(std::clamp(pos, 0, length));
            if (Text(part) != model.substr(start, amount))
                return "Mid differs after" + log;
            break;
        }
        case 8: { // from the left, unless there is nothing else
            buffer.TrimLeft(0);
            buffer.TrimRight(0);
            const auto start = std::find_if_not(model.begin(), model.end(), tlvn::IsSpace);
            if (start != model.end())
                model.erase(model.begin(), start);
            while (!model.empty() && tlvn::IsSpace(model.back()))
                model.pop_back();
            break;
        }
        case 9:
            buffer.ExceptNull();
            buffer.ExceptCrlf(0);
            std::erase_if(model, [](char c) { return c == '\0' || c == '\r' || c == '\n'; });
            break;
        case 10: {
            CBuffer other;
            CFixBuffer fixed;
            other.MoveFrom(buffer);
            fixed.MoveFrom(other);
            buffer.Set(fixed, fixed.GetLength());
            capacity = 0;
            break;
        }
        case 11:
            buffer.SetIncrSize(pos);
            buffer.SetAllocSize(count);
            break;
        case 12:
            actual = buffer.FindChar(ch, pos);
            expected = Find(model, std::string(1, ch), pos, Character, false);
            break;
        case 13: // from there backwards, also for a lead byte
            actual = buffer.ReverseFindChar(ch, pos);
            expected = pos < -1 ? 0 : pos == -1 || pos > length ? length : pos;
            while (--expected >= 0 && (IsInside(model, 0, expected) ||
                                       model[static_cast<std::size_t>(expected)] != ch)) {
            }
            break;
        case 14:
            actual = buffer.IsMbsTrail(pos);
            expected = pos >= 1 && pos < length && IsInside(model, 0, pos);
            break;
        default: { // a phrase by itself
            std::string phrase = text.substr(0, text.size() / 8);
            std::erase(phrase, '\0');
            actual = buffer.ReplacePhraseAll(phrase.c_str(), phrase.c_str(), pos, 0, 0);
            for (int i = pos; (i = Find(model, phrase, i, Character, false)) >= 0;
                 i += static_cast<int>(phrase.size()))
                ++expected;
        }
        }

        if (actual != expected)
            return "result " + std::to_string(actual) + ", not " + std::to_string(expected) +
                   ", after" + log;
        const int now = buffer.GetLength();
        if (Text(buffer) != model)
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
