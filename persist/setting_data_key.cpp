#include "persist/setting_text.h"

#include <algorithm>

CSettingDataPair::CSettingDataPair(std::string_view name, tlvn::WStringView value, bool borrow)
    : m_name(tlvn::ToString(name))
{
    SetValue(value, borrow);
}

void CSettingDataPair::SetValue(tlvn::WStringView value, bool borrow)
{
    std::unique_ptr<WCHAR[]> own;
    if (!borrow) {
        own = tlvn::GuardMemory([&] { return std::make_unique<WCHAR[]>(value.size()); });
        std::copy(value.begin(), value.end(), own.get());
        value = tlvn::WStringView(own.get(), value.size());
    }
    m_own = std::move(own);
    m_value = value;
}

CSettingDataKey::CSettingDataKey(std::string_view name) : m_name(tlvn::ToString(name)) {}

CSettingDataKey::~CSettingDataKey() = default;

CSettingDataPair* CSettingDataKey::Find(std::string_view name) const
{
    return Pairs().Find(name);
}

int CSettingDataKey::SetAt(std::string_view name, tlvn::WStringView value)
{
    return tlvn::SetPair(Pairs(), name, value, false);
}

int CSettingDataKey::SetLines(tlvn::WStringView lines)
{
    return tlvn::ReadPairLines(lines, Pairs());
}

void CSettingDataKey::ReadLines() const
{
    tlvn::ReadPairLines(m_unread, m_pairs);
    m_unread = {};
}

void CSettingDataKey::RemoveAt(int index)
{
    Pairs().RemoveAt(index);
}

int CSettingDataKey::Remove(std::string_view name)
{
    PairList& pairs = Pairs();
    const CSettingDataPair* const pair = pairs.Find(name);
    if (pair == nullptr)
        return 0;
    pairs.RemoveAt(pairs.IndexOf(pair));
    return 1;
}

int CSettingDataKey::RemoveBegin(std::string_view prefix)
{
    return Pairs().RemoveIf([&](const CSettingDataPair& pair) {
        return tlvn::NameBeginsWith(tlvn::ViewOf(pair.GetName()), prefix);
    });
}

void CSettingDataKey::SetName(std::string_view name)
{
    m_name = tlvn::ToString(name);
}

int tlvn::SetPair(NamedList<CSettingDataPair>& pairs, std::string_view name, WStringView value,
                  bool borrow)
{
    const unsigned hash = HashName(name);
    CSettingDataPair* const pair = pairs.Find(name, hash);
    if (pair != nullptr) {
        pair->SetValue(value, borrow);
        return 1;
    }
    pairs.Append(
        GuardMemory([&] { return std::make_unique<CSettingDataPair>(name, value, borrow); }), hash);
    return 0;
}
