#include "persist/setting_data.h"

#include "persist/wipe.h"

#include <algorithm>

namespace {

bool HasNoName(const char* name)
{
    return name == nullptr || *name == '\0';
}

bool CanBeKeyName(std::string_view name)
{
    return name != "DATA-START" && name != "DATA-END";
}

bool EqualPairs(const CSettingDataPair& a, const CSettingDataPair& b)
{
    return a.GetValueView() == b.GetValueView() &&
           tlvn::IsSameName(tlvn::ViewOf(a.GetName()), tlvn::ViewOf(b.GetName()));
}

bool EqualKeys(const CSettingDataKey& a, const CSettingDataKey& b)
{
    const int size = static_cast<int>(a.GetPairs().GetSize());
    if (size != b.GetPairs().GetSize() ||
        !tlvn::IsSameName(tlvn::ViewOf(a.GetName()), tlvn::ViewOf(b.GetName())))
        return false;
    for (int i = 0; i < size; ++i)
        if (!EqualPairs(*a.GetPairs()[i], *b.GetPairs()[i]))
            return false;
    return true;
}

// Sets every pair of `from` in `to`.
void MergePairs(const CSettingDataKey& from, CSettingDataKey& to)
{
    for (int i = 0; i < from.GetPairs().GetSize(); ++i) {
        const CSettingDataPair& pair = *from.GetPairs()[i];
        to.SetAt(tlvn::ViewOf(pair.GetName()), pair.GetValueView());
    }
}

std::vector<const CSettingDataPair*> PairsBegin(const CSettingDataKey* key, std::string_view prefix)
{
    std::vector<const CSettingDataPair*> pairs;
    for (int i = 0; key != nullptr && i < key->GetPairs().GetSize(); ++i) {
        const CSettingDataPair* const pair = key->GetPairs()[i];
        if (tlvn::NameBeginsWith(tlvn::ViewOf(pair->GetName()), prefix))
            tlvn::GuardMemory([&] { pairs.push_back(pair); });
    }
    return pairs;
}

std::unique_ptr<CSettingDataKey> NewKey(std::string_view name)
{
    return tlvn::GuardMemory([&] { return std::make_unique<CSettingDataKey>(name); });
}

void WipeText(CString& text)
{
    const int length = text.GetLength();
    tlvn::Wipe(text.GetBuffer(length), static_cast<std::size_t>(length));
    text.ReleaseBuffer(0);
}

} // namespace

CSettingData::CSettingData() : m_loaded(0), m_updated(0), m_encipher(0) {}

CSettingData::~CSettingData()
{
    WipeText(m_cryptKey);
}

void CSettingData::InitSD()
{
    m_keys.RemoveAll();
    m_image.reset();
    m_loaded = 0;
    m_updated = 0;
    m_encipher = 0;
    m_errorMessage.Empty();
    m_path.Empty();
    WipeText(m_cryptKey);
}

void CSettingData::LoadNone()
{
    m_keys.RemoveAll();
    m_image.reset();
    m_loaded = 1;
    m_updated = 0;
}

void CSettingData::SetCryptKey(int on, const char* key)
{
    const CString text(key);
    WipeText(m_cryptKey);
    m_cryptKey = text;
    m_encipher = on != 0;
}

void CSettingData::SetCryptKey(const CString& key)
{
    SetCryptKey(key.IsEmpty() ? 0 : 1, key);
}

bool CSettingData::IsEnciphered() const
{
    return m_encipher != 0 && !m_cryptKey.IsEmpty();
}

void CSettingData::Changed(int setUpdated)
{
    if (setUpdated != 0)
        m_updated = 1;
}

CSettingDataKey* CSettingData::FindKey(const char* key) const
{
    return m_keys.Find(tlvn::ViewOf(key));
}

const CSettingDataPair* CSettingData::FindPair(const char* key, const char* name) const
{
    const CSettingDataKey* const found = FindKey(key);
    return found != nullptr ? found->Find(tlvn::ViewOf(name)) : nullptr;
}

CSettingDataKey* CSettingData::MakeKey(std::string_view key, int setUpdated)
{
    if (!CanBeKeyName(key))
        return nullptr;
    const unsigned hash = tlvn::HashName(key);
    CSettingDataKey* const found = m_keys.Find(key, hash);
    if (found != nullptr)
        return found;
    CSettingDataKey* const made = m_keys.Append(NewKey(key), hash);
    Changed(setUpdated);
    return made;
}

void CSettingData::SetKey(const char* key)
{
    MakeKey(tlvn::ViewOf(key), 1);
}

void CSettingData::Store(const char* key, const char* name, tlvn::WStringView value, int setUpdated)
{
    if (HasNoName(name))
        return;
    CSettingDataKey* const target = MakeKey(tlvn::ViewOf(key), setUpdated);
    if (target == nullptr)
        return;
    const CSettingDataPair* const pair = target->Find(name);
    if (pair != nullptr && pair->GetValueView() == value)
        return;
    target->SetAt(name, value);
    Changed(setUpdated);
}

int CSettingData::GetValueBegin(const char* key, const char* prefix, CStringArray& out) const
{
    const auto pairs = PairsBegin(FindKey(key), tlvn::ViewOf(prefix));
    if (pairs.empty())
        return 0;
    out.RemoveAll();
    for (const CSettingDataPair* pair : pairs)
        out.Add(CString(pair->GetValue()));
    return 1;
}

void CSettingData::SetValueBegin(const char* key, const char* prefix, const CStringArray& values)
{
    CStringArray present;
    GetValueBegin(key, prefix, present);
    const int count = static_cast<int>(values.GetSize());
    bool equal = present.GetSize() == count;
    for (int i = 0; equal && i < count; ++i)
        equal = present[i] == values[i];
    if (equal)
        return;

    CSettingDataKey* const target = MakeKey(tlvn::ViewOf(key), 1);
    if (target == nullptr)
        return;
    target->RemoveBegin(tlvn::ViewOf(prefix));
    CString name;
    for (int i = 0; i < count; ++i) {
        name.Format("%s%d", prefix != nullptr ? prefix : "", i);
        target->SetAt(tlvn::ViewOf(name), tlvn::ViewOf(CStringW(values[i])));
    }
    m_updated = 1;
}

CSettingData::PairArray* CSettingData::GetPairList(const char* key) const
{
    CSettingDataKey* const found = FindKey(key);
    return found != nullptr ? &found->GetPairs() : nullptr;
}

int CSettingData::RemoveKey(const char* key, int setUpdated)
{
    const CSettingDataKey* const found = FindKey(key);
    if (found == nullptr)
        return 0;
    m_keys.RemoveAt(m_keys.IndexOf(found));
    Changed(setUpdated);
    return 1;
}

void CSettingData::RemoveKeyAll()
{
    if (m_keys.GetSize() == 0)
        return;
    m_keys.RemoveAll();
    m_updated = 1;
}

int CSettingData::RemoveKeyBegin(const char* prefix, int setUpdated)
{
    const std::string_view begin = tlvn::ViewOf(prefix);
    const int removed = m_keys.RemoveIf([&](const CSettingDataKey& key) {
        return tlvn::NameBeginsWith(tlvn::ViewOf(key.GetName()), begin);
    });
    if (removed > 0)
        Changed(setUpdated);
    return removed;
}

int CSettingData::RenameKeyBegin(const char* oldPrefix, const char* newPrefix)
{
    const CString before(oldPrefix);
    const CString after(newPrefix);
    int renamed = 0;
    // All names change at once, so that one key cannot be taken for another on the way.
    for (std::unique_ptr<CSettingDataKey>& key : m_keys.TakeAll()) {
        if (tlvn::NameBeginsWith(tlvn::ViewOf(key->GetName()), tlvn::ViewOf(before))) {
            const CString name = after + key->GetName().Mid(before.GetLength());
            if (CanBeKeyName(tlvn::ViewOf(name))) {
                if (name != key->GetName())
                    m_updated = 1;
                key->SetName(tlvn::ViewOf(name));
                ++renamed;
            }
        }
        const unsigned hash = tlvn::HashName(tlvn::ViewOf(key->GetName()));
        CSettingDataKey* const first = m_keys.Find(tlvn::ViewOf(key->GetName()), hash);
        if (first != nullptr)
            MergePairs(*key, *first);
        else
            m_keys.Append(std::move(key), hash);
    }
    return renamed;
}

int CSettingData::MoveKeyPosition(const char* key, int position)
{
    const CSettingDataKey* const found = FindKey(key);
    if (found == nullptr)
        return 0;
    const int from = m_keys.IndexOf(found);
    const int to = std::clamp(position, 0, m_keys.GetSize() - 1);
    if (from != to) {
        m_keys.Move(from, to);
        m_updated = 1;
    }
    return 1;
}

int CSettingData::RemoveName(const char* key, const char* name)
{
    CSettingDataKey* const found = FindKey(key);
    if (found == nullptr || found->Remove(tlvn::ViewOf(name)) == 0)
        return 0;
    m_updated = 1;
    return 1;
}

int CSettingData::RemoveNameAt(const char* key, int index)
{
    CSettingDataKey* const found = FindKey(key);
    if (found == nullptr || index < 0 || index >= found->GetPairs().GetSize())
        return 0;
    found->RemoveAt(index);
    m_updated = 1;
    return 1;
}

int CSettingData::RemoveNameBegin(const char* key, const char* prefix)
{
    CSettingDataKey* const found = FindKey(key);
    const int removed = found != nullptr ? found->RemoveBegin(tlvn::ViewOf(prefix)) : 0;
    if (removed > 0)
        m_updated = 1;
    return removed;
}

void CSettingData::CopySD(const CSettingData& other, int setUpdated)
{
    if (this == &other || EqualSD(other))
        return;
    m_keys.RemoveAll();
    for (int i = 0; i < other.m_keys.GetSize(); ++i)
        MergePairs(*other.m_keys.GetAt(i),
                   *MakeKey(tlvn::ViewOf(other.m_keys.GetAt(i)->GetName()), 0));
    Changed(setUpdated);
}

int CSettingData::CopySdKey(const CSettingData& other, const char* key, int setUpdated)
{
    const CSettingDataKey* const source = other.FindKey(key);
    if (source == nullptr)
        return 0;
    const CSettingDataKey* const own = FindKey(key);
    if (own != nullptr && EqualKeys(*own, *source))
        return 1;
    CSettingDataKey* const target = MakeKey(tlvn::ViewOf(source->GetName()), 0);
    target->RemoveBegin(std::string_view());
    MergePairs(*source, *target);
    Changed(setUpdated);
    return 1;
}

int CSettingData::CopySdName(const CSettingData& other, const char* key, const char* name,
                             int setUpdated)
{
    const CSettingDataPair* const source = other.FindPair(key, name);
    if (source == nullptr)
        return 0;
    if (this != &other)
        Store(key, name, source->GetValueView(), setUpdated);
    return 1;
}

int CSettingData::CopySdNameBegin(const CSettingData& other, const char* key, const char* prefix,
                                  int setUpdated)
{
    const auto source = PairsBegin(other.FindKey(key), tlvn::ViewOf(prefix));
    if (source.empty())
        return 0;
    const auto own = PairsBegin(FindKey(key), tlvn::ViewOf(prefix));
    if (std::equal(source.begin(), source.end(), own.begin(), own.end(),
                   [](const auto* a, const auto* b) { return EqualPairs(*a, *b); }))
        return 1;
    CSettingDataKey* const target = MakeKey(tlvn::ViewOf(key), 0);
    target->RemoveBegin(tlvn::ViewOf(prefix));
    for (const CSettingDataPair* pair : source)
        target->SetAt(tlvn::ViewOf(pair->GetName()), pair->GetValueView());
    Changed(setUpdated);
    return 1;
}

int CSettingData::EqualSD(const CSettingData& other) const
{
    if (m_keys.GetSize() != other.m_keys.GetSize())
        return 0;
    for (int i = 0; i < m_keys.GetSize(); ++i)
        if (!EqualKeys(*m_keys.GetAt(i), *other.m_keys.GetAt(i)))
            return 0;
    return 1;
}

int CSettingData::LookupSettingData(CSettingDataKey* key, const char* name, CStringW& value)
{
    const CSettingDataPair* const pair = key != nullptr ? key->Find(tlvn::ViewOf(name)) : nullptr;
    if (pair == nullptr)
        return 0;
    value = pair->GetValue();
    return 1;
}

int CSettingData::SetAtSettingData(CSettingDataKey* key, const char* name, const CStringW& value)
{
    if (key == nullptr || HasNoName(name))
        return 0;
    return key->SetAt(name, tlvn::ViewOf(value));
}
