#include "ui/key_name.h"

#include "framework/winapi.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <cstring>
#include <iterator>

namespace tlvn {
namespace {

constexpr int kFirstPunctuation = 36;
constexpr int kPunctuationCount = 11;
constexpr std::size_t kNameBytes = 4;

char g_punctuation[kPunctuationCount][kNameBytes + 1] = {
    "    ", "    ", "    ", "    ", "    ", "    ", "    ", "    ", "    ", "    ", "    "};

struct Row {
    int code;
    const char* name;
};

const Row kRows[] = {
    {'A', "A"},
    {'B', "B"},
    {'C', "C"},
    {'D', "D"},
    {'E', "E"},
    {'F', "F"},
    {'G', "G"},
    {'H', "H"},
    {'I', "I"},
    {'J', "J"},
    {'K', "K"},
    {'L', "L"},
    {'M', "M"},
    {'N', "N"},
    {'O', "O"},
    {'P', "P"},
    {'Q', "Q"},
    {'R', "R"},
    {'S', "S"},
    {'T', "T"},
    {'U', "U"},
    {'V', "V"},
    {'W', "W"},
    {'X', "X"},
    {'Y', "Y"},
    {'Z', "Z"},
    {'0', "0"},
    {'1', "1"},
    {'2', "2"},
    {'3', "3"},
    {'4', "4"},
    {'5', "5"},
    {'6', "6"},
    {'7', "7"},
    {'8', "8"},
    {'9', "9"},
    // On the Japanese layout: ; , - . : / @ [ \ ] ^
    {187, g_punctuation[0]},
    {188, g_punctuation[1]},
    {189, g_punctuation[2]},
    {190, g_punctuation[3]},
    {186, g_punctuation[4]},
    {191, g_punctuation[5]},
    {192, g_punctuation[6]},
    {219, g_punctuation[7]},
    {220, g_punctuation[8]},
    {221, g_punctuation[9]},
    {222, g_punctuation[10]},
    // The number pad; its separator (108), which few keyboards have, has no row.
    {96, "0(Tenkey)"},
    {97, "1(Tenkey)"},
    {98, "2(Tenkey)"},
    {99, "3(Tenkey)"},
    {100, "4(Tenkey)"},
    {101, "5(Tenkey)"},
    {102, "6(Tenkey)"},
    {103, "7(Tenkey)"},
    {104, "8(Tenkey)"},
    {105, "9(Tenkey)"},
    {106, "*(Tenkey)"},
    {107, "+(Tenkey)"},
    {109, "-(Tenkey)"},
    {110, ".(Tenkey)"},
    {111, "/(Tenkey)"},
    {112, "F1"},
    {113, "F2"},
    {114, "F3"},
    {115, "F4"},
    {116, "F5"},
    {117, "F6"},
    {118, "F7"},
    {119, "F8"},
    {120, "F9"},
    {121, "F10"},
    {122, "F11"},
    {123, "F12"},
    {32, "Space"},
    {33, "PageUp"},
    {34, "PageDown"},
    {35, "End"},
    {36, "Home"},
    {38, "Up"},
    {40, "Down"},
    {37, "Left"},
    {39, "Right"},
    {45, "Insert"},
    {46, "Delete"},
    {8, "Back"},
    {19, "Pause"},
};

// The layout's name of a key, cut to whole characters; empty when it has none.
std::string LayoutName(int code)
{
    const UINT scanCode = ::MapVirtualKeyW(static_cast<UINT>(code), MAPVK_VK_TO_VSC);
    WCHAR wide[64] = {};
    const int length = ::GetKeyNameTextW(static_cast<LONG>(scanCode << 16), wide,
                                         static_cast<int>(std::size(wide)));
    if (scanCode == 0 || length <= 0)
        return {};
    const std::string name = NarrowText(WStringView(wide, static_cast<std::size_t>(length)));
    const char* const begin = name.c_str();
    const char* p = begin;
    while (*p != '\0' && p + CharLength(p, begin + name.size()) <= begin + kNameBytes)
        p += CharLength(p, begin + name.size());
    return std::string(begin, p);
}

} // namespace

int GetKeyNameCount()
{
    return static_cast<int>(std::size(kRows));
}

int GetKeyCode(int row)
{
    return kRows[row].code;
}

const char* GetKeyName(int row)
{
    return kRows[row].name;
}

const char* FindKeyName(int code)
{
    for (const Row& row : kRows) {
        if (row.code == code)
            return row.name;
    }
    return "";
}

int FindKeyCode(const char* name)
{
    for (const Row& row : kRows) {
        if (std::strcmp(row.name, name) == 0)
            return row.code;
    }
    return 0;
}

void NamePunctuationKeys()
{
    for (int i = 0; i < kPunctuationCount; ++i) {
        const std::string name = LayoutName(kRows[kFirstPunctuation + i].code);
        if (!name.empty())
            std::memcpy(g_punctuation[i], name.c_str(), name.size() + 1);
    }
}

} // namespace tlvn
