#include "persist/regexp/listing.h"

#include "platform/multibyte.h"
#include "platform/nls.h"
#include "platform/string_table.h"

#include <cstdio>

namespace tlvn {

namespace {

constexpr UINT kFirstMessage = 3300;
constexpr UINT kUtf8 = 65001;

const char* NameOf(REKind kind)
{
    switch (kind) {
    case REKind::Nop:
        return "Nop";
    case REKind::GroupStart:
        return "GroupStart";
    case REKind::GroupEnd:
        return "GroupEnd";
    case REKind::Symbol:
        return "Symbol";
    case REKind::Any:
        return "Any";
    case REKind::RangeBitmap:
        return "RangeBitmap";
    case REKind::NotRangeBitmap:
        return "NotRangeBitmap";
    case REKind::RangeList:
        return "RangeList";
    case REKind::NotRangeList:
        return "NotRangeList";
    case REKind::Jump:
        return "Jump";
    case REKind::PushPosition:
        return "PushPosition";
    case REKind::PopPosition:
        return "PopPosition";
    case REKind::Call:
        return "Call";
    case REKind::Return:
        return "Return";
    case REKind::PushMemory:
        return "PushMemory";
    case REKind::PopMemory:
        return "PopMemory";
    case REKind::StorePosition:
        return "StorePosition";
    case REKind::StoreStackDepth:
        return "StoreStackDepth";
    case REKind::LoadPosition:
        return "LoadPosition";
    case REKind::LoadStackDepth:
        return "LoadStackDepth";
    case REKind::FailIfNoProgress:
        return "FailIfNoProgress";
    case REKind::BackReference:
        return "BackReference";
    case REKind::Fail:
        return "Fail";
    case REKind::AdvanceStart:
        return "AdvanceStart";
    case REKind::MatchFound:
        return "MatchFound";
    case REKind::PushGroup:
        return "PushGroup";
    case REKind::PopGroup:
        return "PopGroup";
    }
    return "?";
}

bool HasArgument(REKind kind)
{
    switch (kind) {
    case REKind::Nop:
    case REKind::Any:
    case REKind::RangeBitmap:
    case REKind::NotRangeBitmap:
    case REKind::PushPosition:
    case REKind::PopPosition:
    case REKind::Return:
    case REKind::Fail:
    case REKind::AdvanceStart:
    case REKind::MatchFound:
        return false;
    default:
        return true;
    }
}

template <typename... Args>
std::string Formatted(const char* format, Args... args)
{
    char text[64];
    std::snprintf(text, sizeof text, format, args...);
    return text;
}

// The character itself when it can be seen, else its number.
std::string Shown(WCHAR unit, unsigned value)
{
    std::string utf8;
    if (unit > ' ' && unit != 0x7F && IsDefinedCharacter(unit) && !IsSpaceW(unit) &&
        ConvertFromUtf16(kUtf8, WStringView(&unit, 1), utf8) == kConverted)
        return utf8;
    return Formatted("0x%02X", value);
}

std::string ShownIn(const CREProgram<WCHAR>&, unsigned value)
{
    return Shown(static_cast<WCHAR>(value), value);
}

std::string ShownIn(const CREProgram<char>&, unsigned value)
{
    std::string bytes(1, static_cast<char>(value));
    if (value > 0xFF)
        bytes.insert(bytes.begin(), static_cast<char>(value >> 8));
    WString units;
    const bool known = ConvertToUtf16(GetMultibytePage(), bytes, units) == kConverted;
    return Shown(known && units.size() == 1 ? units[0] : WCHAR{0}, value);
}

template <typename Char>
std::string List(const CREProgram<Char>& program)
{
    std::string list;
    const auto size = static_cast<std::uint32_t>(program.m_code.size());
    for (std::uint32_t i = 0; i < size; ++i) {
        const auto [kind, argument] = program.m_code[i];
        list += Formatted("%6u  %s", static_cast<unsigned>(i), NameOf(kind));
        if (kind == REKind::Symbol)
            list += argument == 0 ? " end of text" : " " + ShownIn(program, argument);
        else if (HasArgument(kind))
            list += Formatted(" %u", static_cast<unsigned>(argument));
        if (kind == REKind::RangeList || kind == REKind::NotRangeList) {
            list += ' ';
            for (; i + 1 < argument; i += 2) {
                const std::uint32_t low = program.m_code[i + 1].argument;
                const std::uint32_t high = program.m_code[i + 2].argument;
                list += ' ' + ShownIn(program, low);
                if (high != low)
                    list += '-' + ShownIn(program, high);
            }
        }
        list += '\n';
    }
    list += Formatted("%d groups, %d memory slots\n", program.m_groupCount, program.m_slotCount);
    return list;
}

template <typename Char>
std::string CompileAndList(const Char* pattern, int caseSensitive, std::string& error)
{
    error.clear();
    CREProgram<Char> program;
    const REParseError code = program.Parse(pattern, caseSensitive);
    if (code == REParseError::None)
        return List(program);
    ConvertFromUtf16(kUtf8, FindMessage(kFirstMessage + static_cast<UINT>(code)), error);
    return {};
}

} // namespace

std::string ListRegExp(const char* pattern, int caseSensitive, std::string& error)
{
    return CompileAndList(pattern, caseSensitive, error);
}

std::string ListRegExp(const WCHAR* pattern, int caseSensitive, std::string& error)
{
    return CompileAndList(pattern, caseSensitive, error);
}

} // namespace tlvn
