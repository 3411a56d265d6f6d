#include "persist/regexp/regexp.h"

#include "charcode/convert.h"
#include "foundation/multibyte.h"
#include "persist/regexp/machine.h"

#include <memory>
#include <new>
#include <string_view>

namespace {

constexpr UINT kFirstMessage = 3300;
constexpr UINT kEmptyPattern = 3311;

CStringA MessageOf(REParseError error)
{
    const int code = static_cast<int>(error);
    CStringA message;
    if (code < 0 || code > static_cast<int>(REParseError::InvalidInput))
        message.Format("Invalid REParseError: %d", code);
    else
        message.LoadString(kFirstMessage + static_cast<UINT>(code));
    return message;
}

const WCHAR* AsWide(const char* text)
{
    return reinterpret_cast<const WCHAR*>(text);
}

// Text of every Unicode type is in the one form in which it is edited.
CodeType FormOf(CodeType codeType)
{
    return IsCodeTypeUnicode(codeType) ? CT_UNICODE : codeType;
}

template <typename Char>
REParseError Compile(const Char* pattern, int caseSensitive, CREItem& item)
{
    try {
        auto program = std::make_unique<CREProgram<Char>>();
        const REParseError error = program->Parse(pattern, caseSensitive);
        if (error != REParseError::None)
            return error;
        item.m_context = new CREMatchContext<Char>(*program);
        item.m_program = program.release();
        return REParseError::None;
    } catch (const std::bad_alloc&) {
        return REParseError::OutOfMemory;
    }
}

template <typename Char>
int RunItem(const CREItem& item, const Char* text, const char** matchStart, const char** matchEnd)
{
    auto& context = *static_cast<CREMatchContext<Char>*>(item.m_context);
    if (!RunRegExp(*static_cast<const CREProgram<Char>*>(item.m_program), context, text))
        return 0;
    if (matchStart != nullptr)
        *matchStart = reinterpret_cast<const char*>(context.m_matchStart);
    if (matchEnd != nullptr)
        *matchEnd = reinterpret_cast<const char*>(context.m_matchEnd);
    return 1;
}

template <typename Char>
void CopyItem(const CREItem& from, CREItem& to)
{
    tlvn::GuardMemory([&] {
        auto program =
            std::make_unique<CREProgram<Char>>(*static_cast<CREProgram<Char>*>(from.m_program));
        to.m_context = new CREMatchContext<Char>(*program);
        to.m_program = program.release();
    });
}

template <typename Char>
void DeleteItem(const CREItem& item)
{
    delete static_cast<CREMatchContext<Char>*>(item.m_context);
    delete static_cast<CREProgram<Char>*>(item.m_program);
}

} // namespace

CREItem::CREItem(const CREItem& other) : m_codeType(other.m_codeType)
{
    if (other.m_program == nullptr)
        return;
    const CApplyLocale locale(m_codeType);
    if (IsCodeTypeUnicode(m_codeType))
        CopyItem<WCHAR>(other, *this);
    else
        CopyItem<char>(other, *this);
}

CREItem& CREItem::operator=(const CREItem& other)
{
    CREItem copy(other);
    std::swap(m_program, copy.m_program);
    std::swap(m_context, copy.m_context);
    std::swap(m_codeType, copy.m_codeType);
    return *this;
}

CREItem::~CREItem()
{
    if (IsCodeTypeUnicode(m_codeType))
        DeleteItem<WCHAR>(*this);
    else
        DeleteItem<char>(*this);
}

CRegExp::CRegExp() = default;

CRegExp::~CRegExp()
{
    ClearRegExp();
}

int CRegExp::ParseRegExp(const char* pattern, CodeType codeType, int caseSensitive,
                         CStringA& errorMessage)
{
    errorMessage.Empty();
    // The pattern may be this object's own.
    CBuffer copy;
    if (pattern != nullptr && IsCodeTypeUnicode(codeType))
        copy = AsWide(pattern);
    else if (pattern != nullptr)
        copy = pattern;
    ClearRegExp();
    if (copy.IsEmpty()) {
        errorMessage.LoadString(kEmptyPattern);
        return 0;
    }
    m_pattern.MoveFrom(copy);
    m_codeType = codeType;
    m_caseSensitive = caseSensitive;
    return Parse2(m_pattern, codeType, errorMessage);
}

int CRegExp::IsParsedOK(CodeType codeType, CStringA& errorMessage)
{
    errorMessage.Empty();
    const CREItem* const item = FindItem(codeType);
    if (item != nullptr)
        return item->m_program != nullptr && item->m_context != nullptr ? 1 : 0;
    if (m_pattern.IsEmpty()) {
        errorMessage = MessageOf(REParseError::InvalidInput);
        return 0;
    }

    CBuffer converted;
    const int result = ConvertToOtherCodeType2(FormOf(m_codeType), m_pattern, m_pattern.GetLength(),
                                               FormOf(codeType), converted, 0);
    // What is lost becomes "?", and that would be an operator.
    if (result != 0) {
        auto failed = tlvn::GuardMemory([] { return std::make_unique<CREItem>(); });
        failed->m_codeType = codeType;
        m_items.Add(failed.get());
        failed.release();
        return 0;
    }
    return Parse2(converted, codeType, errorMessage);
}

int CRegExp::Match(const char* text, CodeType codeType, const char** matchStart,
                   const char** matchEnd)
{
    if (text == nullptr)
        return 0;
    const bool wide = IsCodeTypeUnicode(codeType) != 0;
    if (wide ? *AsWide(text) == 0 : *text == '\0')
        return 0;
    const CApplyLocale locale(codeType);
    CStringA ignored;
    if (IsParsedOK(codeType, ignored) == 0)
        return 0;
    const CREItem& item = *FindItem(codeType);
    return wide ? RunItem(item, AsWide(text), matchStart, matchEnd)
                : RunItem(item, text, matchStart, matchEnd);
}

void CRegExp::ClearRegExp()
{
    for (int i = 0; i < m_items.GetSize(); ++i)
        delete m_items[i];
    m_items.RemoveAll();
    m_pattern.Empty();
    m_codeType = CT_UNKNOWN;
    m_caseSensitive = 0;
}

int CRegExp::Parse2(const char* pattern, CodeType codeType, CStringA& errorMessage)
{
    REParseError error = REParseError::None;
    {
        const CApplyLocale locale(codeType);
        auto item = tlvn::GuardMemory([] { return std::make_unique<CREItem>(); });
        item->m_codeType = codeType;
        error = IsCodeTypeUnicode(codeType) ? Compile(AsWide(pattern), m_caseSensitive, *item)
                                            : Compile(pattern, m_caseSensitive, *item);
        m_items.Add(item.get());
        item.release();
    }
    if (error == REParseError::None)
        return 1;
    errorMessage = MessageOf(error); // in the page of the caller
    return 0;
}

CREItem* CRegExp::FindItem(CodeType codeType) const
{
    for (int i = 0; i < m_items.GetSize(); ++i) {
        if (m_items[i]->m_codeType == codeType)
            return m_items[i];
    }
    return nullptr;
}
