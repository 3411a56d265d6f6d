#include "framework/format.h"

#include "platform/multibyte.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace tlvn {

namespace {

enum class Size { Default, Char, Short, Long, LongLong, Pointer, LongDouble };

// One directive, taken apart.
struct Directive {
    bool left = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1; // -1 when there is none
    Size size = Size::Default;
    char type = '\0';
};

// Digits of a double that are not zero end before this many decimals.
constexpr int kMostDecimals = 1100;
// Room for the digits before the decimal point, sign and exponent.
constexpr std::size_t kRoomForDouble = 400;

std::string ToChars(double value, std::chars_format format, int precision)
{
    const int decimals = std::min(precision, kMostDecimals);
    std::string text(kRoomForDouble + static_cast<std::size_t>(decimals), '\0');
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, format, decimals);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    if (precision > decimals && format != std::chars_format::general) {
        const std::size_t exponent = std::min(text.find('e'), text.size());
        text.insert(exponent, static_cast<std::size_t>(precision - decimals), '0');
    }
    return text;
}

// %#g: the digits of %e or %f with all zeros kept, chosen by the exponent as C does.
std::string ToCharsKeepingZeros(double value, int precision)
{
    std::string scientific = ToChars(value, std::chars_format::scientific, precision - 1);
    int exponent = 0;
    const std::size_t mark = scientific.find('e');
    const char* digits = scientific.data() + mark + 1;
    std::from_chars(digits + (*digits == '+' ? 1 : 0), scientific.data() + scientific.size(),
                    exponent);
    if (exponent < -4 || exponent >= precision)
        return scientific;
    return ToChars(value, std::chars_format::fixed, precision - 1 - exponent);
}

// The digits of a floating-point number that is neither negative nor special, in lower case.
std::string FloatDigits(const Directive& directive, char type, double value)
{
    std::string text;
    if (type == 'a') {
        if (directive.precision < 0) {
            text.resize(kRoomForDouble);
            const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                              std::chars_format::hex);
            text.resize(static_cast<std::size_t>(result.ptr - text.data()));
        } else {
            text = ToChars(value, std::chars_format::hex, directive.precision);
        }
        return text;
    }

    const int precision = directive.precision < 0 ? 6 : directive.precision;
    if (type == 'g') {
        const int significant = std::max(precision, 1);
        text = directive.alternate ? ToCharsKeepingZeros(value, significant)
                                   : ToChars(value, std::chars_format::general, significant);
    } else {
        text =
            ToChars(value, type == 'f' ? std::chars_format::fixed : std::chars_format::scientific,
                    precision);
    }
    if (directive.alternate && text.find('.') == std::string::npos)
        text.insert(std::min(text.find('e'), text.size()), ".");
    return text;
}

void MakeUpperAscii(std::string& text)
{
    std::transform(text.begin(), text.end(), text.begin(), ToUpperAscii);
}

WString ToWidth(std::string_view text, const WCHAR*)
{
    return WidenText(text);
}
std::string ToWidth(WStringView text, const char*)
{
    return NarrowText(text);
}

// Length of a text that ends at a zero or after `most` characters, if that is not negative.
template <typename Char>
std::size_t BoundedLength(const Char* text, int most)
{
    if (most < 0)
        return std::char_traits<Char>::length(text);
    const Char* const zero = std::char_traits<Char>::find(text, static_cast<std::size_t>(most), 0);
    return zero != nullptr ? static_cast<std::size_t>(zero - text) : static_cast<std::size_t>(most);
}

// The first `length` bytes without half a character at the end.
std::string_view WholeCharacters(const char* text, std::size_t length, bool cut)
{
    const char* const end = text + length;
    if (!cut || length == 0 || !IsLeadByte(end[-1]))
        return {text, length};
    const char* p = text;
    while (end - p >= 2)
        p += CharLength(p, end);
    return {text, p == end ? length : length - 1};
}
WStringView WholeCharacters(const WCHAR* text, std::size_t length, bool)
{
    return {text, length};
}

template <typename Char>
class Formatter {
public:
    using String = std::basic_string<Char>;
    using View = std::basic_string_view<Char>;
    using Other = std::conditional_t<std::is_same_v<Char, char>, WCHAR, char>;

    explicit Formatter(std::va_list args) { va_copy(m_args, args); }
    ~Formatter() { va_end(m_args); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    String Run(const Char* format)
    {
        while (*format != 0) {
            const Char* const literal = format;
            while (*format != 0 && *format != '%')
                format++;
            Append(View(literal, static_cast<std::size_t>(format - literal)));
            if (*format == 0)
                break;
            const Char* const directive = format;
            format++;
            if (!RunDirective(format))
                Append(View(directive, static_cast<std::size_t>(format - directive)));
        }
        return std::move(m_out);
    }

private:
    // Stops behind the directive. False when its type is not known.
    bool RunDirective(const Char*& p)
    {
        Directive directive;
        ReadFlags(p, directive);
        ReadWidth(p, directive);
        ReadPrecision(p, directive);
        ReadSize(p, directive);
        if (*p == 0 || static_cast<unsigned>(*p) >= 0x80)
            return false;
        directive.type = static_cast<char>(*p++);
        return Write(directive);
    }

    static void ReadFlags(const Char*& p, Directive& directive)
    {
        for (;; p++) {
            switch (*p) {
            case '-':
                directive.left = true;
                break;
            case '+':
                directive.plus = true;
                break;
            case ' ':
                directive.space = true;
                break;
            case '#':
                directive.alternate = true;
                break;
            case '0':
                directive.zero = true;
                break;
            default:
                return;
            }
        }
    }

    static int ReadNumber(const Char*& p)
    {
        int number = 0;
        for (; *p >= '0' && *p <= '9'; p++) {
            const int digit = static_cast<int>(*p - '0');
            number = number > (INT_MAX - digit) / 10 ? INT_MAX : number * 10 + digit;
        }
        return number;
    }

    void ReadWidth(const Char*& p, Directive& directive)
    {
        if (*p != '*') {
            directive.width = ReadNumber(p);
            return;
        }
        p++;
        const int width = va_arg(m_args, int);
        directive.left = directive.left || width < 0;
        directive.width = width == INT_MIN ? INT_MAX : std::abs(width);
    }

    void ReadPrecision(const Char*& p, Directive& directive)
    {
        if (*p != '.')
            return;
        p++;
        if (*p != '*') {
            directive.precision = ReadNumber(p);
            return;
        }
        p++;
        directive.precision = std::max(va_arg(m_args, int), -1);
    }

    static void ReadSize(const Char*& p, Directive& directive)
    {
        switch (*p) {
        case 'h':
            p++;
            directive.size = *p == 'h' ? Size::Char : Size::Short;
            p += *p == 'h';
            break;
        case 'l':
            p++;
            directive.size = *p == 'l' ? Size::LongLong : Size::Long;
            p += *p == 'l';
            break;
        case 'w':
            p++;
            directive.size = Size::Long;
            break;
        case 'I':
            p++;
            directive.size = Size::Pointer;
            if ((p[0] == '3' && p[1] == '2') || (p[0] == '6' && p[1] == '4')) {
                directive.size = p[0] == '3' ? Size::Long : Size::LongLong;
                p += 2;
            }
            break;
        case 'z':
        case 't':
            p++;
            directive.size = Size::Pointer;
            break;
        case 'j':
            p++;
            directive.size = Size::LongLong;
            break;
        case 'L':
            p++;
            directive.size = Size::LongDouble;
            break;
        default:
            break;
        }
    }

    bool Write(const Directive& directive)
    {
        switch (directive.type) {
        case '%':
            Append(View(&kPercent, 1));
            return true;
        case 'd':
        case 'i':
            WriteSigned(directive);
            return true;
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            WriteUnsigned(directive, UnsignedArgument(directive.size));
            return true;
        case 'p':
            WritePointer(directive);
            return true;
        case 'c':
        case 'C':
            if (IsOwnWidth(directive))
                WriteOwnChar(directive);
            else
                WriteOtherChar(directive);
            return true;
        case 's':
        case 'S':
            if (IsOwnWidth(directive))
                WriteText(directive, va_arg(m_args, const Char*));
            else
                WriteText(directive, va_arg(m_args, const Other*));
            return true;
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            WriteFloat(directive);
            return true;
        case 'n':
            static_cast<void>(va_arg(m_args, void*));
            return true;
        default:
            return false;
        }
    }

    UINT64 UnsignedArgument(Size size)
    {
        switch (size) {
        case Size::LongLong:
            return va_arg(m_args, UINT64);
        case Size::Pointer:
            return va_arg(m_args, std::size_t);
        case Size::Short:
            return static_cast<unsigned short>(va_arg(m_args, int));
        case Size::Char:
            return static_cast<unsigned char>(va_arg(m_args, int));
        default:
            return va_arg(m_args, unsigned);
        }
    }

    INT64 SignedArgument(Size size)
    {
        switch (size) {
        case Size::LongLong:
            return va_arg(m_args, INT64);
        case Size::Pointer:
            return va_arg(m_args, std::ptrdiff_t);
        case Size::Short:
            return static_cast<short>(va_arg(m_args, int));
        case Size::Char:
            return static_cast<signed char>(va_arg(m_args, int));
        default:
            return va_arg(m_args, int);
        }
    }

    static std::string_view SignOf(const Directive& directive, bool negative)
    {
        if (negative)
            return "-";
        return directive.plus ? "+" : directive.space ? " " : "";
    }

    void WriteSigned(const Directive& directive)
    {
        const INT64 value = SignedArgument(directive.size);
        const UINT64 magnitude =
            value < 0 ? UINT64{0} - static_cast<UINT64>(value) : static_cast<UINT64>(value);
        WriteInteger(directive, SignOf(directive, value < 0), Digits(magnitude, 10));
    }

    void WriteUnsigned(const Directive& directive, UINT64 value)
    {
        if (directive.type == 'u') {
            WriteInteger(directive, "", Digits(value, 10));
            return;
        }
        if (directive.type == 'o') {
            std::string digits = Digits(value, 8);
            const bool hasZero = value == 0 && directive.precision != 0;
            if (directive.alternate && !hasZero &&
                directive.precision <= static_cast<int>(digits.size()))
                digits.insert(0, 1, '0');
            if (directive.alternate && value == 0)
                digits = "0";
            WriteInteger(directive, "", digits);
            return;
        }
        std::string digits = Digits(value, 16);
        if (directive.type == 'X')
            MakeUpperAscii(digits);
        const bool marked = directive.alternate && value != 0;
        WriteInteger(directive, !marked ? "" : directive.type == 'X' ? "0X" : "0x", digits);
    }

    void WritePointer(Directive directive)
    {
        directive.type = 'X';
        directive.precision = static_cast<int>(sizeof(void*) * 2);
        WriteUnsigned(directive, reinterpret_cast<std::uintptr_t>(va_arg(m_args, void*)));
    }

    static std::string Digits(UINT64 value, int base)
    {
        char digits[32];
        const auto result = std::to_chars(digits, digits + sizeof(digits), value, base);
        return std::string(digits, result.ptr);
    }

    void WriteInteger(const Directive& directive, std::string_view prefix, std::string_view digits)
    {
        if (directive.precision == 0 && digits == "0" &&
            !(directive.alternate && directive.type == 'o'))
            digits = {};
        std::size_t zeros = 0;
        if (directive.precision > static_cast<int>(digits.size()))
            zeros = static_cast<std::size_t>(directive.precision) - digits.size();
        else if (directive.precision < 0)
            zeros = ZerosForWidth(directive, prefix.size() + digits.size());
        WriteNumber(directive, prefix, zeros, digits);
    }

    static std::size_t ZerosForWidth(const Directive& directive, std::size_t length)
    {
        const auto width = static_cast<std::size_t>(directive.width);
        return directive.zero && !directive.left && width > length ? width - length : 0;
    }

    void WriteNumber(const Directive& directive, std::string_view prefix, std::size_t zeros,
                     std::string_view digits)
    {
        const std::size_t length = prefix.size() + zeros + digits.size();
        if (!directive.left)
            Pad(directive, length);
        AppendAscii(prefix);
        Fill('0', zeros);
        AppendAscii(digits);
        if (directive.left)
            Pad(directive, length);
    }

    void WriteFloat(const Directive& directive)
    {
        const double value = directive.size == Size::LongDouble
                                 ? static_cast<double>(va_arg(m_args, long double))
                                 : va_arg(m_args, double);
        const char type = ToLowerAscii(directive.type);
        std::string prefix(SignOf(directive, std::signbit(value)));
        std::string text;
        std::size_t zeros = 0;
        if (std::isnan(value)) {
            text = "nan";
        } else if (std::isinf(value)) {
            text = "inf";
        } else {
            text = FloatDigits(directive, type, std::fabs(value));
            if (type == 'a')
                prefix += "0x";
            zeros = ZerosForWidth(directive, prefix.size() + text.size());
        }
        if (directive.type != type) {
            MakeUpperAscii(prefix);
            MakeUpperAscii(text);
        }
        WriteNumber(directive, prefix, zeros, text);
    }

    // Whether a text or character has the width of the format.
    static bool IsOwnWidth(const Directive& directive)
    {
        constexpr bool kNarrow = std::is_same_v<Char, char>;
        if (directive.size == Size::Short)
            return kNarrow;
        if (directive.size == Size::Long)
            return !kNarrow;
        return directive.type == 'c' || directive.type == 's';
    }

    void WriteOwnChar(const Directive& directive)
    {
        const Char c = static_cast<Char>(va_arg(m_args, int));
        WriteView(directive, View(&c, 1));
    }

    void WriteOtherChar(const Directive& directive)
    {
        const Other c = static_cast<Other>(va_arg(m_args, int));
        const String text =
            ToWidth(std::basic_string_view<Other>(&c, 1), static_cast<Char*>(nullptr));
        WriteView(directive, text);
    }

    void WriteText(const Directive& directive, const Char* text)
    {
        if (text == nullptr) {
            WriteNullText(directive);
            return;
        }
        const std::size_t length = BoundedLength(text, directive.precision);
        WriteView(directive, WholeCharacters(text, length, directive.precision >= 0));
    }

    void WriteText(const Directive& directive, const Other* text)
    {
        if (text == nullptr) {
            WriteNullText(directive);
            return;
        }
        const std::size_t length = BoundedLength(text, directive.precision);
        const String converted = ToWidth(WholeCharacters(text, length, directive.precision >= 0),
                                         static_cast<Char*>(nullptr));
        WriteView(directive, converted);
    }

    void WriteNullText(const Directive& directive)
    {
        constexpr std::string_view kNull = "(null)";
        const String text(kNull.begin(), kNull.end());
        WriteView(directive,
                  View(text).substr(0, directive.precision < 0
                                           ? View::npos
                                           : static_cast<std::size_t>(directive.precision)));
    }

    void WriteView(const Directive& directive, View text)
    {
        if (!directive.left)
            Pad(directive, text.size());
        Append(text);
        if (directive.left)
            Pad(directive, text.size());
    }

    void Pad(const Directive& directive, std::size_t length)
    {
        const auto width = static_cast<std::size_t>(directive.width);
        if (width > length)
            Fill(' ', width - length);
    }

    void Fill(char c, std::size_t count)
    {
        CheckRoom(count);
        m_out.append(count, static_cast<Char>(c));
    }

    void Append(View text)
    {
        CheckRoom(text.size());
        m_out.append(text);
    }

    void AppendAscii(std::string_view text)
    {
        CheckRoom(text.size());
        m_out.append(text.begin(), text.end());
    }

    void CheckRoom(std::size_t more) const
    {
        if (more > static_cast<std::size_t>(INT_MAX) - m_out.size())
            throw std::length_error("formatted text too long");
    }

    static constexpr Char kPercent = '%';

    std::va_list m_args;
    String m_out;
};

} // namespace

void FormatV(std::string& out, const char* format, std::va_list args)
{
    out = Formatter<char>(args).Run(format);
}

void FormatV(WString& out, const WCHAR* format, std::va_list args)
{
    out = Formatter<WCHAR>(args).Run(format);
}

} // namespace tlvn
