#include "persist/setting_data_key.h"

CSettingDataPair::CSettingDataPair(std::string_view name, tlvn::WStringView value, bool borrow)
    : m_name(tlvn::ToString(name))
{
    SetValue(value, borrow);
}

void CSettingDataPair::SetValue(tlvn::WStringView value, bool borrow)
{
    if (borrow) {
        m_value.Empty();
        m_borrowed = value;
    } else {
        m_value = tlvn::ToString(value);
        m_borrowed = {};
    }
}

void CSettingDataPair::CopyBorrowed() const
{
    m_value = tlvn::ToString(m_borrowed);
    m_borrowed = {};
}

CSettingDataKey::CSettingDataKey(std::string_view name) : m_name(tlvn::ToString(name)) {}

CSettingDataKey::~CSettingDataKey() = default;

CSettingDataPair* CSettingDataKey::Find(std::string_view name) const
{
    return m_pairs.Find(name);
}

int CSettingDataKey::SetAt(std::string_view name, tlvn::WStringView value, bool borrow)
{
    const unsigned hash = tlvn::HashName(name);
    CSettingDataPair* const pair = m_pairs.Find(name, hash);
    if (pair != nullptr) {
        pair->SetValue(value, borrow);
        return 1;
    }
    m_pairs.Append(
        tlvn::GuardMemory([&] { return std::make_unique<CSettingDataPair>(name, value, borrow); }),
        hash);
    return 0;
}

void CSettingDataKey::RemoveAt(int index)
{
    m_pairs.RemoveAt(index);
}

int CSettingDataKey::Remove(std::string_view name)
{
    const CSettingDataPair* const pair = m_pairs.Find(name);
    if (pair == nullptr)
        return 0;
    m_pairs.RemoveAt(m_pairs.IndexOf(pair));
    return 1;
}

int CSettingDataKey::RemoveBegin(std::string_view prefix)
{
    return m_pairs.RemoveIf([&](const CSettingDataPair& pair) {
        return tlvn::NameBeginsWith(tlvn::ViewOf(pair.GetName()), prefix);
    });
}

void CSettingDataKey::SetName(std::string_view name)
{
    m_name = tlvn::ToString(name);
}
