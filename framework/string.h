// CStringA, CStringW and CString (= CStringA): texts with value semantics.
//
// The names, signatures and results are those of the MFC's CString. A narrow text is in the
// multibyte code page (platform/multibyte.h): no search finds a trail byte, no operation parts
// a double-byte character unless it is told to by position. Positions and lengths are ints, in
// bytes or UTF-16 units; positions out of range are clipped and null pointers are empty texts.
// A text may hold zero characters.
//
//   CString name("Inbox");
//   name.AppendFormat(" (%d)", count);
//   CStringW wide(name);                    // converted by the multibyte code page
//   log.Format("%s", name);                 // or (const char*)name
//
// The content is held by a std::basic_string, and unlike with the MFC copies are not shared.
// Lack of memory, and a length above INT_MAX, throw the memory exception.

#pragma once

#include "framework/guard_memory.h"
#include "framework/text_ops.h"

#include <climits>
#include <cstdarg>
#include <string>
#include <string_view>
#include <type_traits>

template <typename Char>
class CStringT {
public:
    // The text's characters, and those of the other width.
    using XCHAR = Char;
    using YCHAR = std::conditional_t<std::is_same_v<Char, char>, WCHAR, char>;
    using PXSTR = XCHAR*;
    using PCXSTR = const XCHAR*;
    using PCYSTR = const YCHAR*;
    using View = std::basic_string_view<Char>;

    CStringT() = default;
    CStringT(const CStringT& other) : m_text(Copied(other.View_())) {}
    CStringT(CStringT&& other) noexcept : m_text(std::move(other.m_text)) { other.m_text.clear(); }
    // A text up to its terminator; null is the empty one.
    CStringT(PCXSTR text) : m_text(Copied(ViewOf(text))) {}
    // Converted by the multibyte code page.
    CStringT(PCYSTR text) : m_text(Converted(text)) {}
    CStringT(const unsigned char* text) requires(std::is_same_v<Char, char>)
        : CStringT(reinterpret_cast<PCXSTR>(text))
    {}
    CStringT(const CStringT<YCHAR>& text) : m_text(Converted(text.GetView())) {}
    // `length` characters of `text`, zeros included.
    CStringT(PCXSTR text, int length) : m_text(Copied(ViewOf(text, length))) {}
    CStringT(PCYSTR text, int length)
        : m_text(Converted(std::basic_string_view<YCHAR>(
              text, text == nullptr || length < 0 ? 0 : static_cast<std::size_t>(length))))
    {}
    explicit CStringT(XCHAR c, int repeat = 1)
        : m_text(tlvn::GuardMemory([&] {
              return std::basic_string<Char>(repeat < 0 ? 0 : static_cast<std::size_t>(repeat), c);
          }))
    {}
    ~CStringT() = default;

    CStringT& operator=(const CStringT& other)
    {
        if (this != &other)
            Assign(other.View_());
        return *this;
    }
    CStringT& operator=(CStringT&& other) noexcept
    {
        if (this != &other) {
            m_text = std::move(other.m_text);
            other.m_text.clear();
        }
        return *this;
    }
    // A text up to its terminator (null is the empty one), a text of the other width, which is
    // converted, or one character.
    CStringT& operator=(PCXSTR text)
    {
        Assign(ViewOf(text));
        return *this;
    }
    CStringT& operator=(PCYSTR text)
    {
        m_text = Converted(text);
        return *this;
    }
    CStringT& operator=(const unsigned char* text) requires(std::is_same_v<Char, char>)
    {
        return *this = reinterpret_cast<PCXSTR>(text);
    }
    CStringT& operator=(const CStringT<YCHAR>& text)
    {
        m_text = Converted(text.GetView());
        return *this;
    }
    CStringT& operator=(XCHAR c)
    {
        Assign(View(&c, 1));
        return *this;
    }

    // In bytes or UTF-16 units.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    BOOL IsEmpty() const { return m_text.empty(); }
    // Gives the storage back, too.
    void Empty() { std::basic_string<Char>().swap(m_text); }
    int GetAllocLength() const { return static_cast<int>(m_text.capacity()); }
    void Preallocate(int length)
    {
        if (length > 0)
            tlvn::GuardMemory([&] { m_text.reserve(static_cast<std::size_t>(length)); });
    }
    void FreeExtra()
    {
        tlvn::GuardMemory([&] { m_text.shrink_to_fit(); });
    }
    // Cuts the text to `length`, which is at most GetLength().
    void Truncate(int length)
    {
        if (length < GetLength())
            m_text.resize(Clipped(length));
    }

    // The index is not checked; that of the terminator may be read.
    XCHAR GetAt(int index) const { return m_text.c_str()[index]; }
    XCHAR operator[](int index) const { return m_text.c_str()[index]; }
    void SetAt(int index, XCHAR c) { m_text[static_cast<std::size_t>(index)] = c; }

    // The text, terminated, good until the next operation.
    operator PCXSTR() const { return m_text.c_str(); }
    PCXSTR GetString() const { return m_text.c_str(); }
    View GetView() const { return m_text; }

    // The storage for writing, valid until the next operation. With a length, room for that
    // many characters and the terminator is made; from then until ReleaseBuffer only the buffer
    // may be used. ReleaseBuffer takes the text up to its terminator, or `length` characters.
    PXSTR GetBuffer() { return m_text.data(); }
    PXSTR GetBuffer(int minLength)
    {
        if (minLength > GetLength())
            tlvn::GuardMemory([&] { m_text.resize(static_cast<std::size_t>(minLength)); });
        return m_text.data();
    }
    // Room for exactly `length` characters; the text has that length at once.
    PXSTR GetBufferSetLength(int length)
    {
        tlvn::GuardMemory(
            [&] { m_text.resize(length < 0 ? 0 : static_cast<std::size_t>(length)); });
        return m_text.data();
    }
    void ReleaseBuffer(int length = -1)
    {
        const std::size_t text =
            length < 0 ? std::char_traits<Char>::length(m_text.c_str()) : Clipped(length);
        m_text.resize(text);
    }
    void ReleaseBufferSetLength(int length) { ReleaseBuffer(length < 0 ? 0 : length); }

    // --- replacing and appending; the arguments may be parts of the text itself ---
    void SetString(PCXSTR text) { Assign(ViewOf(text)); }
    void SetString(PCXSTR text, int length) { Assign(ViewOf(text, length)); }
    void Append(PCXSTR text) { AppendView(ViewOf(text)); }
    void Append(PCXSTR text, int length) { AppendView(ViewOf(text, length)); }
    void Append(const CStringT& text) { AppendView(text.View_()); }
    void AppendChar(XCHAR c) { AppendView(View(&c, 1)); }

    CStringT& operator+=(const CStringT& text)
    {
        AppendView(text.View_());
        return *this;
    }
    CStringT& operator+=(PCXSTR text)
    {
        AppendView(ViewOf(text));
        return *this;
    }
    CStringT& operator+=(PCYSTR text)
    {
        AppendView(Converted(text));
        return *this;
    }
    CStringT& operator+=(const CStringT<YCHAR>& text)
    {
        AppendView(Converted(text.GetView()));
        return *this;
    }
    CStringT& operator+=(XCHAR c)
    {
        AppendView(View(&c, 1));
        return *this;
    }

    friend CStringT operator+(const CStringT& a, const CStringT& b)
    {
        return Joined(a.View_(), b.View_());
    }
    friend CStringT operator+(const CStringT& a, PCXSTR b) { return Joined(a.View_(), ViewOf(b)); }
    friend CStringT operator+(PCXSTR a, const CStringT& b) { return Joined(ViewOf(a), b.View_()); }
    friend CStringT operator+(const CStringT& a, XCHAR b) { return Joined(a.View_(), View(&b, 1)); }
    friend CStringT operator+(XCHAR a, const CStringT& b) { return Joined(View(&a, 1), b.View_()); }

    // Below, equal to or above 0; by character value, without regard to case, or in the order
    // of the user's locale.
    int Compare(PCXSTR other) const { return tlvn::CompareViews(View_(), ViewOf(other)); }
    int CompareNoCase(PCXSTR other) const
    {
        return tlvn::CompareViewsNoCase(View_(), ViewOf(other));
    }
    int Collate(PCXSTR other) const { return tlvn::CollateViews(View_(), ViewOf(other)); }

    friend bool operator==(const CStringT& a, const CStringT& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CStringT& a, PCXSTR b) { return a.View_() == ViewOf(b); }
    friend bool operator==(PCXSTR a, const CStringT& b) { return ViewOf(a) == b.View_(); }
    friend bool operator!=(const CStringT& a, const CStringT& b) { return !(a == b); }
    friend bool operator!=(const CStringT& a, PCXSTR b) { return !(a == b); }
    friend bool operator!=(PCXSTR a, const CStringT& b) { return !(a == b); }
    friend bool operator<(const CStringT& a, const CStringT& b) { return Order(a, b) < 0; }
    friend bool operator<(const CStringT& a, PCXSTR b) { return a.Compare(b) < 0; }
    friend bool operator<(PCXSTR a, const CStringT& b) { return b.Compare(a) > 0; }
    friend bool operator>(const CStringT& a, const CStringT& b) { return Order(a, b) > 0; }
    friend bool operator>(const CStringT& a, PCXSTR b) { return a.Compare(b) > 0; }
    friend bool operator>(PCXSTR a, const CStringT& b) { return b.Compare(a) < 0; }
    friend bool operator<=(const CStringT& a, const CStringT& b) { return Order(a, b) <= 0; }
    friend bool operator<=(const CStringT& a, PCXSTR b) { return a.Compare(b) <= 0; }
    friend bool operator<=(PCXSTR a, const CStringT& b) { return b.Compare(a) >= 0; }
    friend bool operator>=(const CStringT& a, const CStringT& b) { return Order(a, b) >= 0; }
    friend bool operator>=(const CStringT& a, PCXSTR b) { return a.Compare(b) >= 0; }
    friend bool operator>=(PCXSTR a, const CStringT& b) { return b.Compare(a) <= 0; }

    // Parts of the text; first < 0 counts as 0, and what lies outside is left out.
    CStringT Mid(int first) const { return Mid(first, GetLength()); }
    CStringT Mid(int first, int count) const
    {
        if (first < 0)
            first = 0;
        if (first >= GetLength() || count <= 0)
            return CStringT();
        return CStringT(
            View_().substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count)));
    }
    CStringT Left(int count) const { return Mid(0, count); }
    CStringT Right(int count) const
    {
        return count <= 0 ? CStringT()
                          : Mid(GetLength() - (count < GetLength() ? count : GetLength()));
    }
    // The longest beginning whose characters are all in `set`, or all not in it.
    CStringT SpanIncluding(PCXSTR set) const
    {
        return Left(tlvn::SpanOf(View_(), ViewOf(set), true));
    }
    CStringT SpanExcluding(PCXSTR set) const
    {
        return Left(tlvn::SpanOf(View_(), ViewOf(set), false));
    }

    // Index of the first occurrence at or behind `start`, or -1. An empty text is found at
    // `start`, a null one nowhere.
    int Find(XCHAR c, int start = 0) const { return tlvn::FindInText(View_(), c, start); }
    int Find(PCXSTR text, int start = 0) const
    {
        return text == nullptr ? -1 : tlvn::FindInText(View_(), ViewOf(text), start);
    }
    int ReverseFind(XCHAR c) const { return tlvn::FindLastInText(View_(), c); }
    // Index of the first character that is in `set`, or -1.
    int FindOneOf(PCXSTR set) const
    {
        const int length = tlvn::SpanOf(View_(), ViewOf(set), false);
        return length < GetLength() ? length : -1;
    }

    // The changing operations below that return an int give the new length, Remove and Replace
    // the number of occurrences.
    int Insert(int index, XCHAR c) { return InsertView(index, View(&c, 1)); }
    int Insert(int index, PCXSTR text) { return InsertView(index, ViewOf(text)); }
    int Delete(int index, int count = 1)
    {
        if (index < 0)
            index = 0;
        if (index < GetLength() && count > 0)
            m_text.erase(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
        return GetLength();
    }
    int Remove(XCHAR c) { return tlvn::ReplaceInText(m_text, View(&c, 1), View()); }
    int Replace(XCHAR oldChar, XCHAR newChar)
    {
        return oldChar == newChar
                   ? 0
                   : tlvn::ReplaceInText(m_text, View(&oldChar, 1), View(&newChar, 1));
    }
    int Replace(PCXSTR oldText, PCXSTR newText)
    {
        return tlvn::ReplaceInText(m_text, ViewOf(oldText), ViewOf(newText));
    }

    // --- changing all characters; case folds by the code page ---
    CStringT& MakeUpper()
    {
        tlvn::UpperText(m_text.data(), GetLength());
        return *this;
    }
    CStringT& MakeLower()
    {
        tlvn::LowerText(m_text.data(), GetLength());
        return *this;
    }
    CStringT& MakeReverse()
    {
        tlvn::ReverseText(m_text.data(), GetLength());
        return *this;
    }

    // Without an argument white space is taken off (of narrow texts: that of one byte), else
    // the character, or the characters of the set.
    CStringT& TrimLeft() { return TrimSetLeft(tlvn::kWhiteSpace<Char>); }
    CStringT& TrimLeft(XCHAR c) { return TrimSetLeft(View(&c, 1)); }
    CStringT& TrimLeft(PCXSTR set) { return TrimSetLeft(ViewOf(set)); }
    CStringT& TrimRight() { return TrimSetRight(tlvn::kWhiteSpace<Char>); }
    CStringT& TrimRight(XCHAR c) { return TrimSetRight(View(&c, 1)); }
    CStringT& TrimRight(PCXSTR set) { return TrimSetRight(ViewOf(set)); }
    CStringT& Trim() { return TrimRight().TrimLeft(); }
    CStringT& Trim(XCHAR c) { return TrimRight(c).TrimLeft(c); }
    CStringT& Trim(PCXSTR set) { return TrimRight(set).TrimLeft(set); }

    // The next run of characters that are not in `tokens`, from `start` on; `start` is set
    // behind it and its delimiter. At the end the result is empty and `start` becomes -1. An
    // empty `tokens` gives the whole rest.
    CStringT Tokenize(PCXSTR tokens, int& start) const
    {
        if (start < 0 || start > GetLength()) {
            start = -1;
            return CStringT();
        }
        const View delimiters = ViewOf(tokens);
        const int first =
            start + tlvn::SpanOf(View_().substr(static_cast<std::size_t>(start)), delimiters, true);
        if (first >= GetLength()) {
            start = -1;
            return CStringT();
        }
        const View rest = View_().substr(static_cast<std::size_t>(first));
        const int count = tlvn::SpanOf(rest, delimiters, false);
        start = first + count;
        if (start < GetLength())
            start += tlvn::CharLengthAt(View_(), start);
        return CStringT(rest.substr(0, static_cast<std::size_t>(count)));
    }

    // printf-like formatting, described in framework/format.h. The second form takes the format
    // from the string table.
    template <class... Args>
    void Format(PCXSTR format, Args... args)
    {
        FormatArguments(format, Passed(args)...);
    }
    template <class... Args>
    void Format(UINT formatId, Args... args)
    {
        Format(static_cast<PCXSTR>(Message(formatId)), args...);
    }
    template <class... Args>
    void AppendFormat(PCXSTR format, Args... args)
    {
        CStringT text;
        text.Format(format, args...);
        *this += text;
    }
    template <class... Args>
    void AppendFormat(UINT formatId, Args... args)
    {
        AppendFormat(static_cast<PCXSTR>(Message(formatId)), args...);
    }
    // The arguments may point into the text itself.
    void FormatV(PCXSTR format, std::va_list args) { m_text = tlvn::FormatText(format, args); }
    void AppendFormatV(PCXSTR format, std::va_list args)
    {
        AppendView(tlvn::FormatText(format, args));
    }

    // Takes the text from the string table. FALSE, and the text as it was, when there is none
    // with that number.
    BOOL LoadString(UINT id) { return tlvn::LoadMessage(id, m_text); }

    // Of a text up to its terminator; 0 for null.
    static int StringLength(PCXSTR text) { return static_cast<int>(ViewOf(text).size()); }

private:
    explicit CStringT(View text) : m_text(Copied(text)) {}

    View View_() const { return m_text; }
    std::size_t Clipped(int length) const
    {
        if (length < 0)
            return 0;
        return static_cast<std::size_t>(length < GetLength() ? length : GetLength());
    }

    static void CheckLength(std::size_t length)
    {
        if (length > static_cast<std::size_t>(INT_MAX))
            AfxThrowMemoryException();
    }
    static View ViewOf(PCXSTR text) { return text == nullptr ? View() : View(text); }
    static View ViewOf(PCXSTR text, int length)
    {
        return text == nullptr || length <= 0 ? View()
                                              : View(text, static_cast<std::size_t>(length));
    }
    static std::basic_string<Char> Copied(View text)
    {
        CheckLength(text.size());
        return tlvn::GuardMemory([&] { return std::basic_string<Char>(text); });
    }
    static std::basic_string<Char> Converted(std::basic_string_view<YCHAR> text)
    {
        CheckLength(text.size());
        std::basic_string<Char> result = tlvn::ConvertText(text);
        CheckLength(result.size());
        return result;
    }
    static std::basic_string<Char> Converted(PCYSTR text)
    {
        return Converted(text == nullptr ? std::basic_string_view<YCHAR>()
                                         : std::basic_string_view<YCHAR>(text));
    }
    // What goes through the ellipsis for an argument of Format: of a CStringT its text.
    template <class Arg>
    static auto Passed(const Arg& argument)
    {
        constexpr bool isString =
            std::is_same_v<Arg, CStringT> || std::is_same_v<Arg, CStringT<YCHAR>>;
        static_assert(isString || std::is_scalar_v<Arg>, "cast the argument for %s to a pointer");
        if constexpr (isString)
            return argument.GetString();
        else
            return argument;
    }
    void FormatArguments(PCXSTR format, ...)
    {
        std::va_list args;
        va_start(args, format);
        FormatV(format, args);
        va_end(args);
    }
    static CStringT Message(UINT id)
    {
        CStringT text;
        text.LoadString(id);
        return text;
    }
    static CStringT Joined(View a, View b)
    {
        CheckLength(a.size() + b.size());
        CStringT result;
        tlvn::GuardMemory([&] {
            result.m_text.reserve(a.size() + b.size());
            result.m_text.append(a).append(b);
        });
        return result;
    }
    static int Order(const CStringT& a, const CStringT& b)
    {
        return tlvn::CompareViews(a.View_(), b.View_());
    }

    // std::basic_string allows arguments that lie in the text itself.
    void Assign(View text)
    {
        CheckLength(text.size());
        tlvn::GuardMemory([&] { m_text.assign(text.data(), text.size()); });
    }
    void AppendView(View text)
    {
        CheckLength(m_text.size() + text.size());
        tlvn::GuardMemory([&] { m_text.append(text.data(), text.size()); });
    }
    int InsertView(int index, View text)
    {
        CheckLength(m_text.size() + text.size());
        tlvn::GuardMemory([&] { m_text.insert(Clipped(index), text.data(), text.size()); });
        return GetLength();
    }
    CStringT& TrimSetLeft(View set)
    {
        m_text.erase(0, static_cast<std::size_t>(tlvn::SpanOf(View_(), set, true)));
        return *this;
    }
    CStringT& TrimSetRight(View set)
    {
        m_text.resize(static_cast<std::size_t>(tlvn::LengthWithoutTrailing(View_(), set)));
        return *this;
    }

    std::basic_string<Char> m_text;
};

// The narrow string, the wide one, and the one that is meant by default.
using CStringA = CStringT<char>;
using CStringW = CStringT<WCHAR>;
using CString = CStringA;
