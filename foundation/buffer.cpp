#include "foundation/buffer.h"

#include "foundation/allocation.h"
#include "foundation/multibyte.h"
#include "foundation/scanner.h"
#include "platform/nls.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

namespace {

// The two zero bytes behind every content.
constexpr int kTerminator = 2;
constexpr int kMaxAllocSize = INT_MAX - kTerminator;

std::size_t BlockSize(int allocSize)
{
    return static_cast<std::size_t>(allocSize) + kTerminator;
}

int NarrowLength(const char* s)
{
    return s != nullptr ? tlvn::MbsLength(s) : 0;
}

INT64 WideLength(const WCHAR* s)
{
    return s != nullptr ? static_cast<INT64>(std::char_traits<WCHAR>::length(s)) * 2 : 0;
}

WCHAR LoadUnit(const char* p)
{
    WCHAR unit;
    std::memcpy(&unit, p, sizeof unit);
    return unit;
}

// The single character of `delims` that stands at p < end, by its length: 0, 1 or 2.
int DelimiterLength(const char* p, const char* end, const char* delims)
{
    const int length = tlvn::CharLength(p, end);
    while (*delims != '\0') {
        const int delimLength = tlvn::IsDoubleByte(delims) ? 2 : 1;
        if (delimLength == length && std::memcmp(p, delims, static_cast<std::size_t>(length)) == 0)
            return length;
        delims += delimLength;
    }
    return 0;
}

} // namespace

CBuffer::CBuffer() : m_data(nullptr), m_length(0), m_allocSize(0), m_incrSize(16) {}

CBuffer::CBuffer(const CBuffer& other) : CBuffer()
{
    CopyFrom(other);
}

CBuffer::CBuffer(CBuffer&& other) noexcept : CBuffer()
{
    MoveFrom(other);
}

CBuffer::CBuffer(const char* s) : CBuffer()
{
    Add(s, NarrowLength(s));
}

CBuffer::CBuffer(const char* p, int len) : CBuffer()
{
    if (p != nullptr && len > 0 && *p != '\0')
        Add(p, len);
}

CBuffer::CBuffer(const CStringA& s) : CBuffer()
{
    *this += s;
}

CBuffer::CBuffer(const CStringW& s) : CBuffer()
{
    *this += s;
}

CBuffer::~CBuffer()
{
    AllocFree();
}

void CBuffer::SetAllocSize(int n)
{
    if (n <= m_allocSize)
        return;
    const INT64 rounded = (INT64{n} + m_incrSize - 1) / m_incrSize * m_incrSize;
    if (rounded > kMaxAllocSize)
        AfxThrowMemoryException();
    const int allocSize = static_cast<int>(rounded);

    const bool fresh = m_data == nullptr;
    m_data = static_cast<char*>(
        tlvn::ReallocBlock(m_data, fresh ? 0 : BlockSize(m_allocSize), BlockSize(allocSize)));
    m_allocSize = allocSize;
    if (fresh)
        SetLength(0);
}

void CBuffer::SetIncrSize(int n)
{
    if (n > 0)
        m_incrSize = n;
}

void CBuffer::SetDataSize(int n)
{
    if (n >= 0 && n <= m_allocSize)
        SetLength(n);
}

char* CBuffer::GetBuffer(int n)
{
    SetAllocSize(n);
    return m_data;
}

void CBuffer::ReleaseBuffer(int n)
{
    SetLength(std::clamp(n, 0, m_allocSize));
}

void CBuffer::Empty()
{
    SetLength(0);
}

void CBuffer::AllocFree()
{
    if (m_data != nullptr)
        tlvn::FreeBlock(m_data, BlockSize(m_allocSize));
    m_data = nullptr;
    m_length = 0;
    m_allocSize = 0;
}

void CBuffer::Add(const void* p, int len)
{
    if (p == nullptr || len <= 0)
        return;
    const bool own = Owns(p);
    const std::ptrdiff_t offset = own ? static_cast<const char*>(p) - m_data : 0;
    SetAllocSize(CheckedLength(INT64{m_length} + len));
    std::memmove(m_data + m_length, own ? m_data + offset : p, static_cast<std::size_t>(len));
    SetLength(m_length + len);
}

void CBuffer::Append(const CBuffer& other)
{
    Add(other.m_data, other.m_length);
}

void CBuffer::Set(const void* p, int len)
{
    if (p == nullptr || len <= 0) {
        Empty();
        return;
    }
    const bool own = Owns(p);
    const std::ptrdiff_t offset = own ? static_cast<const char*>(p) - m_data : 0;
    SetAllocSize(len);
    std::memmove(m_data, own ? m_data + offset : p, static_cast<std::size_t>(len));
    SetLength(len);
}

void CBuffer::Insert(const void* p, int len, int pos)
{
    if (p == nullptr || len <= 0 || pos < 0 || pos > m_length)
        return;
    if (Owns(p)) {
        // The bytes are about to move.
        CBuffer copy;
        copy.Set(p, len);
        std::memcpy(MakeRoom(len, pos), copy.m_data, static_cast<std::size_t>(len));
        return;
    }
    std::memcpy(MakeRoom(len, pos), p, static_cast<std::size_t>(len));
}

void CBuffer::Insert(char ch, int count, int pos)
{
    if (count <= 0 || pos < 0 || pos > m_length)
        return;
    std::memset(MakeRoom(count, pos), ch, static_cast<std::size_t>(count));
}

void CBuffer::Insert(WCHAR ch, int count, int pos)
{
    if (count <= 0 || pos < 0 || pos > m_length)
        return;
    char* p = MakeRoom(INT64{count} * 2, pos);
    for (int i = 0; i < count; ++i, p += sizeof ch)
        std::memcpy(p, &ch, sizeof ch);
}

void CBuffer::Overwrite(const void* p, int len, int pos)
{
    if (p == nullptr || len <= 0 || pos < 0 || len > m_length - pos)
        return;
    std::memmove(m_data + pos, p, static_cast<std::size_t>(len));
}

void CBuffer::Delete(int pos, int count)
{
    if (pos < 0 || pos > m_length)
        return;
    count = std::min(count, m_length - pos);
    if (count <= 0)
        return;
    std::memmove(m_data + pos, m_data + pos + count,
                 static_cast<std::size_t>(m_length - pos - count));
    SetLength(m_length - count);
}

int CBuffer::Truncate(int n)
{
    if (n < 0 || n > m_length)
        return 0;
    SetLength(n);
    return 1;
}

void CBuffer::CopyFrom(const CBuffer& other)
{
    if (this != &other)
        Set(other.m_data, other.m_length);
}

void CBuffer::MoveFrom(CBuffer& src)
{
    if (this == &src)
        return;
    AllocFree();
    m_data = std::exchange(src.m_data, nullptr);
    m_length = std::exchange(src.m_length, 0);
    m_allocSize = std::exchange(src.m_allocSize, 0);
    m_incrSize = src.m_incrSize;
}

CBuffer& CBuffer::Left(int n, CBuffer& out) const
{
    return CopyPart(0, std::min(n, m_length), out);
}

CBuffer& CBuffer::Mid(int start, int count, CBuffer& out) const
{
    start = std::max(start, 0);
    if (INT64{start} + count > m_length)
        count = m_length - start;
    return CopyPart(start, count, out);
}

CBuffer& CBuffer::Mid(int start, CBuffer& out) const
{
    return Mid(start, INT_MAX, out);
}

void CBuffer::TrimLeft(int wide)
{
    int start = 0;
    if (wide != 0) {
        while (start + 2 <= m_length && tlvn::IsSpaceW(LoadUnit(m_data + start)))
            start += 2;
    } else {
        while (start < m_length && tlvn::IsSpace(m_data[start]))
            ++start;
    }
    const int last = wide != 0 ? m_length & ~1 : m_length;
    if (start < last)
        Delete(0, start);
}

void CBuffer::TrimRight(int wide)
{
    // No code page has white space among its trail bytes, so this needs no scan from the start.
    int end = m_length;
    if (wide != 0) {
        end &= ~1;
        while (end >= 2 && tlvn::IsSpaceW(LoadUnit(m_data + end - 2)))
            end -= 2;
        if (end == (m_length & ~1))
            return;
    } else {
        while (end > 0 && tlvn::IsSpace(m_data[end - 1]))
            --end;
    }
    SetLength(end);
}

void CBuffer::Trim(int wide)
{
    TrimLeft(wide);
    TrimRight(wide);
}

void CBuffer::ExceptNull()
{
    if (m_data != nullptr)
        SetLength(static_cast<int>(std::remove(m_data, m_data + m_length, '\0') - m_data));
}

void CBuffer::ExceptCrlf(int wide)
{
    if (m_data == nullptr)
        return;
    if (wide == 0) {
        char* end = std::remove_if(m_data, m_data + m_length,
                                   [](char c) { return c == '\r' || c == '\n'; });
        SetLength(static_cast<int>(end - m_data));
        return;
    }
    char* to = m_data;
    const char* from = m_data;
    const char* const end = m_data + m_length;
    for (; end - from >= 2; from += 2) {
        const WCHAR unit = LoadUnit(from);
        if (unit == '\r' || unit == '\n')
            continue;
        std::memcpy(to, &unit, sizeof unit);
        to += 2;
    }
    if (from < end)
        *to++ = *from;
    SetLength(static_cast<int>(to - m_data));
}

CBuffer::operator const char*() const
{
    // Two zero bytes, aligned: an empty text of both forms.
    static const WCHAR empty[1] = {0};
    return m_data != nullptr ? m_data : reinterpret_cast<const char*>(empty);
}

CBuffer& CBuffer::operator=(const CBuffer& other)
{
    CopyFrom(other);
    return *this;
}

CBuffer& CBuffer::operator=(const char* s)
{
    Set(s, NarrowLength(s));
    return *this;
}

CBuffer& CBuffer::operator=(const WCHAR* s)
{
    Set(s, CheckedLength(WideLength(s)));
    return *this;
}

CBuffer& CBuffer::operator=(char ch)
{
    Set(&ch, sizeof ch);
    return *this;
}

CBuffer& CBuffer::operator=(WCHAR ch)
{
    Set(&ch, sizeof ch);
    return *this;
}

CBuffer& CBuffer::operator=(const CStringA& s)
{
    Set(s.GetString(), s.GetLength());
    return *this;
}

CBuffer& CBuffer::operator=(const CStringW& s)
{
    Set(s.GetString(), CheckedLength(INT64{s.GetLength()} * 2));
    return *this;
}

CBuffer& CBuffer::operator+=(const CBuffer& other)
{
    Append(other);
    return *this;
}

CBuffer& CBuffer::operator+=(const char* s)
{
    Add(s, NarrowLength(s));
    return *this;
}

CBuffer& CBuffer::operator+=(const WCHAR* s)
{
    Add(s, CheckedLength(WideLength(s)));
    return *this;
}

CBuffer& CBuffer::operator+=(char ch)
{
    Add(&ch, sizeof ch);
    return *this;
}

CBuffer& CBuffer::operator+=(WCHAR ch)
{
    Add(&ch, sizeof ch);
    return *this;
}

CBuffer& CBuffer::operator+=(const CStringA& s)
{
    Add(s.GetString(), s.GetLength());
    return *this;
}

CBuffer& CBuffer::operator+=(const CStringW& s)
{
    Add(s.GetString(), CheckedLength(INT64{s.GetLength()} * 2));
    return *this;
}

bool CBuffer::operator==(const CBuffer& other) const
{
    return m_length == other.m_length &&
           (m_length == 0 ||
            std::memcmp(m_data, other.m_data, static_cast<std::size_t>(m_length)) == 0);
}

CBuffer& CBuffer::Tokenize(const char* delims, int& pos, CBuffer& out) const
{
    if (delims == nullptr || *delims == '\0' || pos < 0 || pos >= m_length) {
        out.Empty();
        return out;
    }

    const char* const end = m_data + m_length;
    const char* begin = m_data + pos;
    while (begin < end) {
        const int length = DelimiterLength(begin, end, delims);
        if (length == 0)
            break;
        begin += length;
    }
    if (begin == end) {
        out.Empty();
        return out;
    }

    const char* p = begin;
    int delimiter = 0;
    while (p < end) {
        delimiter = DelimiterLength(p, end, delims);
        if (delimiter != 0)
            break;
        p += tlvn::CharLength(p, end);
    }
    // Last, as `out` may be this buffer, or hold the delimiters.
    const int next = static_cast<int>(p - m_data) + delimiter;
    out.Set(begin, static_cast<int>(p - begin));
    pos = next;
    return out;
}

int CBuffer::GetNumber(int pos, int len, int sign, int& value) const
{
    if (pos < 0 || len < 0 || INT64{pos} + len >= m_length)
        return 0;
    bool negative = false;
    if (sign != 0) {
        if (len < 1 || (m_data[pos] != '-' && m_data[pos] != '+'))
            return 0;
        negative = m_data[pos] == '-';
        ++pos;
        --len;
    }
    value = 0;
    // Digits beyond the range of an int wrap around.
    unsigned number = 0;
    for (int i = 0; i < len; ++i) {
        const char c = m_data[pos + i];
        if (!tlvn::IsDigit(c))
            return 0;
        number = number * 10 + static_cast<unsigned>(c - '0');
        value = static_cast<int>(number);
    }
    if (negative)
        value = static_cast<int>(0 - number);
    return 1;
}

int CBuffer::SkipSpace(int& pos) const
{
    return ::SkipSpace(m_data, m_length, pos);
}

int CBuffer::SkipNotSpace(int& pos) const
{
    return ::SkipNotSpace(m_data, m_length, pos);
}

int CBuffer::CheckedLength(INT64 length)
{
    if (length > kMaxAllocSize)
        AfxThrowMemoryException();
    return static_cast<int>(length);
}

void CBuffer::SetLength(int length)
{
    m_length = length;
    if (m_data != nullptr)
        std::memset(m_data + length, 0, kTerminator);
}

bool CBuffer::Owns(const void* p) const
{
    const auto* byte = static_cast<const char*>(p);
    return m_data != nullptr && std::greater_equal<>()(byte, m_data) &&
           std::less<>()(byte, m_data + m_allocSize + kTerminator);
}

// Opens a gap of len bytes at pos and returns it.
char* CBuffer::MakeRoom(INT64 len, int pos)
{
    const int length = CheckedLength(m_length + len);
    SetAllocSize(length);
    std::memmove(m_data + pos + len, m_data + pos, static_cast<std::size_t>(m_length - pos));
    SetLength(length);
    return m_data + pos;
}

CBuffer& CBuffer::CopyPart(int start, int count, CBuffer& out) const
{
    // Set copes with a part of itself.
    out.Set(count > 0 ? m_data + start : nullptr, count);
    return out;
}
