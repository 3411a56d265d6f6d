// One key of a settings file and its name/value pairs, in the order of the file.
//
// Names are compared without regard to case, in the multibyte code page; no two pairs of a key
// have the same name. A name is found by hashing, however many there are.
//
// A client asks for few of the keys of a file. So a key may come with the lines of the file that
// hold its pairs, and makes pairs of them when somebody first asks for one.

#pragma once

#include "persist/named_list.h"

class TLVN_API CSettingDataPair {
public:
    // With `borrow`, the characters of the value live longer than the pair and are not copied:
    // those of a file stay in its image.
    CSettingDataPair(std::string_view name, tlvn::WStringView value, bool borrow);

    const CString& GetName() const { return m_name; }
    CStringW GetValue() const { return tlvn::ToString(m_value); }
    tlvn::WStringView GetValueView() const { return m_value; }
    void SetValue(tlvn::WStringView value, bool borrow);

private:
    CString m_name; // fixed: the key's table depends on it
    tlvn::WStringView m_value;
    std::unique_ptr<WCHAR[]> m_own; // the characters of m_value that are not borrowed
};

class TLVN_API CSettingDataKey {
public:
    using PairArray = CTypedPtrArray<CPtrArray, CSettingDataPair*>;

    explicit CSettingDataKey(std::string_view name);
    ~CSettingDataKey();
    CSettingDataKey(const CSettingDataKey&) = delete;
    CSettingDataKey& operator=(const CSettingDataKey&) = delete;

    const CString& GetName() const { return m_name; }
    const PairArray& GetPairs() const { return Pairs().GetItems(); }
    PairArray& GetPairs() { return Pairs().GetItems(); } // to be looked at only

    // The pair of that name, or null.
    CSettingDataPair* Find(std::string_view name) const;
    // Replaces the value of a pair and returns 1, or appends a new pair and returns 0.
    int SetAt(std::string_view name, tlvn::WStringView value);
    void RemoveAt(int index);
    // 1 when there was such a pair.
    int Remove(std::string_view name);
    // The number of pairs removed.
    int RemoveBegin(std::string_view prefix);

    // Sets the pairs of well-formed lines "name=value" (setting_text.h), which have to outlive
    // the key. Returns 1 when a pair was replaced.
    int SetLines(tlvn::WStringView lines);
    // Does so when somebody asks for a pair. Only for a key without pairs, and lines in which no
    // name comes twice and each is ASCII, so that it is the same in any code page.
    void SetLinesLater(tlvn::WStringView lines) { m_unread = lines; }

private:
    using PairList = tlvn::NamedList<CSettingDataPair>;

    friend class CSettingData;
    // Only for a key that stands in no list.
    void SetName(std::string_view name);

    PairList& Pairs() const
    {
        if (!m_unread.empty())
            ReadLines();
        return m_pairs;
    }
    void ReadLines() const;

    CString m_name;
    mutable PairList m_pairs;
    mutable tlvn::WStringView m_unread; // lines that m_pairs lacks
};
