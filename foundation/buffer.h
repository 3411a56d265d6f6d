// The library's one carrier of variable-length data.
//
// A CBuffer is a growable block of bytes that also serves as text in two forms: narrow text in
// the multibyte code page, and UTF-16 text, its units stored byte for byte. Behind the content
// stand always two zero bytes, so it can be handed on as a terminated string of either form
// without a copy:
//
//   CBuffer text("abc");
//   text += "def";
//   puts(text);                                   // operator const char*, never null
//   char* p = text.GetBuffer(100);                // write up to 100 bytes ...
//   text.ReleaseBuffer(FillIn(p, 100));           // ... and say how many there are
//
// Lengths and positions are byte counts of type int, for UTF-16 text too (its operations step
// by 2 and expect even positions); -1 means not found. A `wide` argument other than 0 says that
// the content and the argument are UTF-16, `nocase` other than 0 that case does not count
// (A-Z and the full-width letters of the code page; in UTF-16 the simple case mapping of
// Unicode). A position out of range is no error: the operation does nothing, or answers -1 or 0.
//
// The capacity grows in multiples of the increment size (16 unless set) and never by doubling:
// set a large increment, or reserve, before many small additions. A block (capacity + 2 bytes)
// of 1024 bytes or more comes from the page allocator, a smaller one from the heap. When there
// is no memory, CMemoryException* is thrown and the buffer is as it was before the call.
//
// A buffer belongs to one thread at a time.

#pragma once

#include "foundation/phrase_search.h"
#include "framework/framework.h"

class TLVN_API CBuffer {
public:
    CBuffer();
    CBuffer(const CBuffer& other);
    CBuffer(CBuffer&& other) noexcept;
    // Null or empty text gives an empty buffer.
    CBuffer(const char* s);
    // `len` bytes from p; but nothing when p is null or the first byte is zero, whatever len
    // says. For binary data use Set or Add.
    CBuffer(const char* p, int len);
    CBuffer(const CStringA& s);
    CBuffer(const CStringW& s);
    virtual ~CBuffer();

    // Raises the capacity to n, rounded up to a multiple of the increment size; never lowers it.
    void SetAllocSize(int n);
    // Sets the increment size; n < 1 is ignored.
    void SetIncrSize(int n);
    // Sets the length to n when the capacity allows it, else does nothing.
    void SetDataSize(int n);
    int GetLength() const { return m_length; }
    int GetAllocSize() const { return m_allocSize; }
    int IsEmpty() const { return m_length == 0; }

    // The content, or null when there is no storage.
    char* GetBuffer() const { return m_data; }
    // Raises the capacity to n and gives the content for writing into; ReleaseBuffer ends that.
    char* GetBuffer(int n);
    // Sets the length to n, limited to 0 and the capacity (a negative n gives 0).
    void ReleaseBuffer(int n);

    // Empties the buffer; Empty keeps the storage, AllocFree gives it back.
    void Empty();
    void AllocFree();
    // A place to hook consistency checks in; does nothing.
    void Check() const {}

    // Append `len` bytes; nothing when p is null or len < 1. p may point into the buffer.
    void Add(const void* p, int len);
    void Append(const CBuffer& other);
    // Replaces the content.
    void Set(const void* p, int len);

    // Insert at pos, 0 <= pos <= length: bytes, or `count` times a byte or a unit.
    void Insert(const void* p, int len, int pos);
    void Insert(char ch, int count, int pos);
    void Insert(WCHAR ch, int count, int pos);
    // Writes over the content, only when all of it lies inside.
    void Overwrite(const void* p, int len, int pos);
    // Removes up to `count` bytes at pos.
    void Delete(int pos, int count);
    // Cuts the content to n bytes. Returns 1, or 0 when n is not within the length.
    int Truncate(int n);

    // Replaces the content by the other's.
    void CopyFrom(const CBuffer& other);
    // Takes over the other's storage and increment size, leaving it without storage.
    void MoveFrom(CBuffer& src);

    // Copy a part into `out` (emptied first, and returned). Left: the first n bytes. Mid: from
    // `start`, a negative one counting as 0, `count` bytes or all the rest.
    CBuffer& Left(int n, CBuffer& out) const;
    CBuffer& Mid(int start, int count, CBuffer& out) const;
    CBuffer& Mid(int start, CBuffer& out) const;

    // Remove white space at the start or the end. TrimLeft leaves a content of nothing but white
    // space as it is, TrimRight empties it.
    void TrimLeft(int wide);
    void TrimRight(int wide);
    void Trim(int wide);

    // Remove every zero byte; every CR and LF.
    void ExceptNull();
    void ExceptCrlf(int wide);

    // The byte at i, which is not checked.
    char GetAt(int i) const { return m_data[i]; }
    char operator[](int i) const { return m_data[i]; }
    void SetAt(int i, char ch) { m_data[i] = ch; }

    // The content, or an empty text when there is no storage; never null.
    operator const char*() const;

    // Replace the content, or append to it: a buffer, a text up to its terminator (null is none),
    // one character (of UTF-16 two bytes), the content of a string.
    CBuffer& operator=(const CBuffer& other);
    CBuffer& operator=(const char* s);
    CBuffer& operator=(const WCHAR* s);
    CBuffer& operator=(char ch);
    CBuffer& operator=(WCHAR ch);
    CBuffer& operator=(const CStringA& s);
    CBuffer& operator=(const CStringW& s);
    CBuffer& operator+=(const CBuffer& other);
    CBuffer& operator+=(const char* s);
    CBuffer& operator+=(const WCHAR* s);
    CBuffer& operator+=(char ch);
    CBuffer& operator+=(WCHAR ch);
    CBuffer& operator+=(const CStringA& s);
    CBuffer& operator+=(const CStringW& s);

    bool operator==(const CBuffer& other) const;
    bool operator!=(const CBuffer& other) const { return !(*this == other); }

    // 1 when the content from pos to its end equals the text s.
    int Equal(const char* s, int wide, int pos, int nocase) const;
    // 1 when n bytes at pos equal the first n of s (or both texts end there).
    int EqualN(const char* s, int n, int wide, int pos, int nocase) const;
    // 1 when the content ends with the text s.
    int EndWith(const char* s, int wide, int nocase) const;

    // The first occurrence at or after `start`. FindChar and FindPhrase go character by
    // character and never match on a trail byte, the others byte by byte.
    int FindChar(char ch, int start) const;
    int FindAsciiChar(char ch, int start) const;
    int FindOneOfChar(const char* set, int start) const;
    int FindAsciiPhrase(const char* s, int start, int nocase) const;
    int FindPhrase(const char* s, int start, int nocase) const;
    int FindPhrase(const WCHAR* s, int start, int nocase) const;

    // The start of the last occurrence that ends at or before `end`. -1 stands for the length;
    // in the narrow phrase searches so does every other end out of range. ReverseFindChar never
    // gives a trail byte but, unlike FindChar, finds a lead byte.
    int ReverseFindChar(char ch, int end) const;
    int ReverseFindAsciiChar(char ch, int end) const;
    int ReverseFindAsciiPhrase(const char* s, int end, int nocase) const;
    int ReverseFindPhrase(const char* s, int end, int nocase) const;
    int ReverseFindPhrase(const WCHAR* s, int end, int nocase) const;

    // Replace every occurrence of oldText that starts in the `count` bytes from `start` (count
    // < 1: to the end) and return how many there were. Replacements are not searched again. The
    // last position where an occurrence may start is fixed before the first replacement and
    // does not move when the length changes. A null newText removes.
    int ReplaceAsciiPhraseAll(const char* oldText, const char* newText, int start, int count,
                              int nocase);
    int ReplacePhraseAll(const char* oldText, const char* newText, int start, int count,
                         int nocase);
    int ReplacePhraseAll(const WCHAR* oldText, const WCHAR* newText, int start, int count,
                         int nocase);

    // The next token at or after pos, parted by any character of `delims`, into `out` (emptied
    // first, and returned); pos moves just past the delimiter behind the token, or to the
    // length. An empty token ends the text, pos has not moved then.
    CBuffer& Tokenize(const char* delims, int& pos, CBuffer& out) const;

    // Reads the decimal number in the len bytes at pos. The field has to end before the last
    // byte of the content. With `sign` the first byte has to be "+" or "-". Returns 1, or 0 for
    // anything else than digits (value is then what was read so far).
    int GetNumber(int pos, int len, int sign, int& value) const;

    // The scanners of foundation/scanner.h over the content.
    int SkipSpace(int& pos) const;
    int SkipNotSpace(int& pos) const;

    // 1 when the byte at i is the trail byte of a double-byte character.
    int IsMbsTrail(int i) const;

private:
    friend class CFixBuffer;

    static int CheckedLength(INT64 length);
    void SetLength(int length);
    bool Owns(const void* p) const;
    char* MakeRoom(INT64 len, int pos);
    CBuffer& CopyPart(int start, int count, CBuffer& out) const;
    int FindFirst(const tlvn::PhraseSearch& search, int start) const;
    int FindLast(const tlvn::PhraseSearch& search, int from) const;
    int ReplaceAll(tlvn::PhraseSearch::Unit unit, const char* oldText, const char* newText,
                   int start, int count, int nocase);

    char* m_data;    // m_allocSize + 2 bytes, or null
    int m_length;    // m_data[m_length] and [m_length + 1] are zero
    int m_allocSize; // capacity, without the two zero bytes
    int m_incrSize;
};
