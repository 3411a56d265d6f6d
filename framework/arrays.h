// Arrays: CArray<TYPE, ARG_TYPE>, its usual instances, and CTypedPtrArray.
//
// Names and results are those of the MFC; sizes and indices are ints. The elements are held by
// a std::vector: they are copied and destroyed like any C++ object, new ones are
// value-initialised (numbers and pointers are zero), and adding one at a time takes amortised
// constant time whatever growth step is asked for. An index is not checked unless said.
//
//   CStringArray names;
//   names.Add("Inbox");
//   for (int i = 0; i < names.GetSize(); i++) ...
//
// Lack of memory throws the memory exception; a negative size or position, and a range to
// remove that is not inside, the invalid-argument exception.

#pragma once

#include "framework/string.h"

#include <climits>
#include <type_traits>
#include <vector>

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
    static_assert(!std::is_same_v<TYPE, bool>, "an array of bool has no elements to point to");

public:
    CArray() = default;

    // Elements in the array.
    int GetSize() const { return static_cast<int>(m_items.size()); }
    int GetCount() const { return GetSize(); }
    BOOL IsEmpty() const { return m_items.empty(); }
    // GetSize() - 1.
    int GetUpperBound() const { return GetSize() - 1; }

    // Cuts the array or appends new elements. `growBy` is accepted for compatibility.
    void SetSize(int size, int growBy = -1)
    {
        static_cast<void>(growBy);
        CheckIndex(size);
        if (size == 0)
            Storage().swap(m_items);
        else
            tlvn::GuardMemory([&] { m_items.resize(static_cast<std::size_t>(size)); });
    }
    // Gives the storage back, too.
    void RemoveAll() { SetSize(0); }
    void FreeExtra()
    {
        tlvn::GuardMemory([&] { m_items.shrink_to_fit(); });
    }

    // The index is not checked.
    const TYPE& GetAt(int index) const { return m_items[static_cast<std::size_t>(index)]; }
    TYPE& GetAt(int index) { return m_items[static_cast<std::size_t>(index)]; }
    TYPE& ElementAt(int index) { return m_items[static_cast<std::size_t>(index)]; }
    const TYPE& ElementAt(int index) const { return m_items[static_cast<std::size_t>(index)]; }
    const TYPE& operator[](int index) const { return m_items[static_cast<std::size_t>(index)]; }
    TYPE& operator[](int index) { return m_items[static_cast<std::size_t>(index)]; }
    void SetAt(int index, ARG_TYPE element)
    {
        tlvn::GuardMemory([&] { m_items[static_cast<std::size_t>(index)] = element; });
    }
    // The elements in a row; null for an empty array.
    const TYPE* GetData() const { return m_items.empty() ? nullptr : m_items.data(); }
    TYPE* GetData() { return m_items.empty() ? nullptr : m_items.data(); }

    // As SetAt, growing the array when `index` is behind its end.
    void SetAtGrow(int index, ARG_TYPE element)
    {
        CheckIndex(index);
        if (index < GetSize()) {
            SetAt(index, element);
            return;
        }
        CheckRoom(index - GetSize(), 1);
        tlvn::GuardMemory([&] {
            TYPE copy(element);
            m_items.resize(static_cast<std::size_t>(index));
            m_items.push_back(std::move(copy));
        });
    }
    // Returns the index of the new element.
    int Add(ARG_TYPE element)
    {
        CheckRoom(0, 1);
        tlvn::GuardMemory([&] { m_items.push_back(element); });
        return GetSize() - 1;
    }
    // Adds all elements of another array (not this one); returns the index of the first.
    int Append(const CArray& source)
    {
        const int first = GetSize();
        if (this == &source)
            AfxThrowInvalidArgException();
        CheckRoom(0, source.GetSize());
        tlvn::GuardMemory(
            [&] { m_items.insert(m_items.end(), source.m_items.begin(), source.m_items.end()); });
        return first;
    }
    // Becomes equal to `source`.
    void Copy(const CArray& source)
    {
        if (this != &source)
            tlvn::GuardMemory([&] { m_items = source.m_items; });
    }

    // Inserts `count` copies before `index`; behind the end the gap is filled.
    void InsertAt(int index, ARG_TYPE element, int count = 1)
    {
        CheckIndex(index);
        CheckIndex(count);
        CheckRoom(index > GetSize() ? index - GetSize() : 0, count);
        tlvn::GuardMemory([&] {
            TYPE copy(element);
            FillUpTo(index);
            m_items.insert(m_items.begin() + index, static_cast<std::size_t>(count), copy);
        });
    }
    // Inserts all elements of another array (not this one).
    void InsertAt(int index, const CArray* source)
    {
        CheckIndex(index);
        if (source == nullptr || source == this)
            AfxThrowInvalidArgException();
        if (source->IsEmpty())
            return;
        CheckRoom(index > GetSize() ? index - GetSize() : 0, source->GetSize());
        tlvn::GuardMemory([&] {
            FillUpTo(index);
            m_items.insert(m_items.begin() + index, source->m_items.begin(), source->m_items.end());
        });
    }
    void RemoveAt(int index, int count = 1)
    {
        if (index < 0 || count < 0 || index > GetSize() || count > GetSize() - index)
            AfxThrowInvalidArgException();
        m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
    }

private:
    using Storage = std::vector<TYPE>;

    static void CheckIndex(int index)
    {
        if (index < 0)
            AfxThrowInvalidArgException();
    }
    void CheckRoom(int gap, int more) const
    {
        if (more > INT_MAX - GetSize() || gap > INT_MAX - GetSize() - more)
            AfxThrowMemoryException();
    }
    void FillUpTo(int index)
    {
        if (index > GetSize())
            m_items.resize(static_cast<std::size_t>(index));
    }

    Storage m_items;
};

class CStringArray : public CArray<CString, const CString&> {};
class CPtrArray : public CArray<void*, void*> {};
class CUIntArray : public CArray<UINT, UINT> {};
class CDWordArray : public CArray<DWORD, DWORD> {};
class CByteArray : public CArray<BYTE, BYTE> {};

// An array of pointers of one type. It does not own what they point to. The elements are held
// as TYPE; BASE_CLASS (CPtrArray with the MFC) only keeps the MFC's way of writing it.
template <class BASE_CLASS, class TYPE>
class CTypedPtrArray : public CArray<TYPE, TYPE> {
    static_assert(std::is_base_of_v<CObject, BASE_CLASS> && std::is_pointer_v<TYPE>);
};
