// One key of a settings file and its name/value pairs, in the order of the file.
//
// Names are compared without regard to case, in the multibyte code page; no two pairs of a key
// have the same name. A name is found by hashing, however many there are.

#pragma once

#include "persist/named_list.h"

// A value that comes from a file stays in the file's image, which outlives the pair, until
// somebody asks for it as a string.
class TLVN_API CSettingDataPair {
public:
    // With `borrow`, the characters of the value live longer than the pair and are not copied.
    CSettingDataPair(std::string_view name, tlvn::WStringView value, bool borrow);

    const CString& GetName() const { return m_name; }
    const CStringW& GetValue() const
    {
        if (m_borrowed.data() != nullptr)
            CopyBorrowed();
        return m_value;
    }
    tlvn::WStringView GetValueView() const
    {
        return m_borrowed.data() != nullptr ? m_borrowed : tlvn::ViewOf(m_value);
    }
    void SetValue(tlvn::WStringView value, bool borrow);

private:
    void CopyBorrowed() const;

    CString m_name; // fixed: the key's table depends on it
    mutable CStringW m_value;
    mutable tlvn::WStringView m_borrowed; // the value while it is not null
};

class TLVN_API CSettingDataKey {
public:
    using PairArray = CTypedPtrArray<CPtrArray, CSettingDataPair*>;

    explicit CSettingDataKey(std::string_view name);
    ~CSettingDataKey();
    CSettingDataKey(const CSettingDataKey&) = delete;
    CSettingDataKey& operator=(const CSettingDataKey&) = delete;

    const CString& GetName() const { return m_name; }
    const PairArray& GetPairs() const { return m_pairs.GetItems(); }

    // The pair of that name, or null.
    CSettingDataPair* Find(std::string_view name) const;
    // Replaces the value of a pair and returns 1, or appends a new pair and returns 0. With
    // `borrow`, the characters of the value live longer than the key and are not copied.
    int SetAt(std::string_view name, tlvn::WStringView value, bool borrow = false);
    void RemoveAt(int index);
    // 1 when there was such a pair.
    int Remove(std::string_view name);
    // The number of pairs removed.
    int RemoveBegin(std::string_view prefix);

private:
    friend class CSettingData;
    // Only for a key that stands in no list.
    void SetName(std::string_view name);

    CString m_name;
    tlvn::NamedList<CSettingDataPair> m_pairs;
};
