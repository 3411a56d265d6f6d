#include "framework/dc.h"

#include "framework/handle_map.h"
#include "framework/temporary_objects.h"
#include "framework/wnd.h"
#include "platform/multibyte.h"
#include "platform/nls.h"

#include <vector>

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)

namespace {

using DcMap = tlvn::HandleMap<CDC, HDC>;

DcMap& Contexts()
{
    static DcMap* const map = new DcMap;
    return *map;
}

class ReferenceDc : public CDC {
public:
    explicit ReferenceDc(HDC dc) { SetBorrowed(dc); }
    ~ReferenceDc() override { SetBorrowed(nullptr); }
    ReferenceDc(const ReferenceDc&) = delete;
    ReferenceDc& operator=(const ReferenceDc&) = delete;
};

tlvn::WString Widen(LPCSTR text, int length)
{
    if (text == nullptr || length <= 0)
        return {};
    return tlvn::WidenText({text, static_cast<std::size_t>(length)});
}

// The UTF-16 units of one narrow character. Characters are converted one at a time where bytes
// and units have to be told apart.
template <class Visit>
void ForEachCharacter(LPCSTR text, int length, Visit visit)
{
    for (const char *s = text, *end = text + length; s < end;) {
        const int bytes = tlvn::CharLength(s, end);
        if (!visit(static_cast<int>(s - text), bytes, Widen(s, bytes)))
            return;
        s += bytes;
    }
}

} // namespace

namespace tlvn {

void ForgetTemporaryDcs()
{
    Contexts().ForgetAll();
}

void ForgetTemporaryDc(HDC dc)
{
    Contexts().Forget(dc);
}

} // namespace tlvn

CDC::CDC() = default;

CDC::~CDC()
{
    m_replacedFont.m_hObject = nullptr;
    m_replacedBrush.m_hObject = nullptr;
    m_replacedPen.m_hObject = nullptr;
    m_replacedBitmap.m_hObject = nullptr;
    DeleteDC();
}

BOOL CDC::Attach(HDC dc)
{
    if (m_hDC != nullptr || dc == nullptr)
        return FALSE;
    m_hDC = dc;
    Contexts().Add(dc, this);
    return TRUE;
}

HDC CDC::Detach()
{
    const HDC dc = m_hDC;
    if (dc != nullptr)
        Contexts().Remove(dc, this);
    m_hDC = nullptr;
    return dc;
}

CDC* CDC::FromHandle(HDC dc)
{
    if (dc == nullptr)
        return nullptr;
    return Contexts().FindOrMake(dc, [&] { return new ReferenceDc(dc); });
}

BOOL CDC::CreateCompatibleDC(CDC* dc)
{
    return Attach(::CreateCompatibleDC(dc != nullptr ? dc->m_hDC : nullptr));
}

BOOL CDC::DeleteDC()
{
    const HDC dc = Detach();
    return dc != nullptr && ::DeleteDC(dc);
}

template <class T>
T* CDC::Select(T* object, T& replaced)
{
    if (object == nullptr)
        return nullptr;
    const HGDIOBJ previous = ::SelectObject(m_hDC, object->m_hObject);
    if (previous == nullptr)
        return nullptr;
    if (CGdiObject* const known = CGdiObject::FromHandlePermanent(previous); known != nullptr)
        return static_cast<T*>(known);
    replaced.m_hObject = previous;
    return &replaced;
}

CFont* CDC::SelectObject(CFont* font)
{
    return Select(font, m_replacedFont);
}

CBrush* CDC::SelectObject(CBrush* brush)
{
    return Select(brush, m_replacedBrush);
}

CPen* CDC::SelectObject(CPen* pen)
{
    return Select(pen, m_replacedPen);
}

CBitmap* CDC::SelectObject(CBitmap* bitmap)
{
    return Select(bitmap, m_replacedBitmap);
}

CGdiObject* CDC::SelectStockObject(int index)
{
    return CGdiObject::FromHandle(::SelectObject(m_hDC, ::GetStockObject(index)));
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    CPoint previous;
    ::SetViewportOrgEx(m_hDC, x, y, &previous);
    return previous;
}

CPoint CDC::GetViewportOrg() const
{
    CPoint origin;
    ::GetViewportOrgEx(m_hDC, &origin);
    return origin;
}

int CDC::SelectClipRgn(CRgn* region)
{
    return ::SelectClipRgn(m_hDC, region != nullptr ? static_cast<HRGN>(*region) : nullptr);
}

int CDC::IntersectClipRect(const RECT* rect)
{
    return ::IntersectClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
}

int CDC::ExcludeClipRect(const RECT* rect)
{
    return ::ExcludeClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
}

BOOL CDC::GetTextMetrics(TEXTMETRICA* metrics) const
{
    TEXTMETRICW wide;
    if (!::GetTextMetricsW(m_hDC, &wide))
        return FALSE;
    *metrics = {};
    metrics->tmHeight = wide.tmHeight;
    metrics->tmAscent = wide.tmAscent;
    metrics->tmDescent = wide.tmDescent;
    metrics->tmInternalLeading = wide.tmInternalLeading;
    metrics->tmExternalLeading = wide.tmExternalLeading;
    metrics->tmAveCharWidth = wide.tmAveCharWidth;
    metrics->tmMaxCharWidth = wide.tmMaxCharWidth;
    metrics->tmWeight = wide.tmWeight;
    metrics->tmOverhang = wide.tmOverhang;
    metrics->tmDigitizedAspectX = wide.tmDigitizedAspectX;
    metrics->tmDigitizedAspectY = wide.tmDigitizedAspectY;
    const auto narrow = [](WCHAR c) { return static_cast<BYTE>(c < 0x100 ? c : 0xFF); };
    metrics->tmFirstChar = narrow(wide.tmFirstChar);
    metrics->tmLastChar = narrow(wide.tmLastChar);
    metrics->tmDefaultChar = narrow(wide.tmDefaultChar);
    metrics->tmBreakChar = narrow(wide.tmBreakChar);
    metrics->tmItalic = wide.tmItalic;
    metrics->tmUnderlined = wide.tmUnderlined;
    metrics->tmStruckOut = wide.tmStruckOut;
    metrics->tmPitchAndFamily = wide.tmPitchAndFamily;
    metrics->tmCharSet = wide.tmCharSet;
    return TRUE;
}

CSize CDC::GetTextExtent(LPCWSTR text, int length) const
{
    CSize size;
    if (length >= 0)
        ::GetTextExtentPoint32W(m_hDC, text, length, &size);
    return size;
}

CSize CDC::GetTextExtent(LPCSTR text, int length) const
{
    if (length < 0)
        return {};
    const tlvn::WString wide = Widen(text, length);
    return GetTextExtent(wide.c_str(), static_cast<int>(wide.size()));
}

CSize CDC::GetTextExtent(const CStringA& text) const
{
    return GetTextExtent(text.GetString(), text.GetLength());
}

CSize CDC::GetTextExtent(const CStringW& text) const
{
    return GetTextExtent(text.GetString(), text.GetLength());
}

BOOL CDC::GetTextExtentExPoint(LPCWSTR text, int length, int limit, int* fit, int* advances,
                               SIZE* size) const
{
    return ::GetTextExtentExPointW(m_hDC, text, length, limit, fit, advances, size);
}

BOOL CDC::GetTextExtentExPoint(LPCSTR text, int length, int limit, int* fit, int* advances,
                               SIZE* size) const
{
    if (length < 0)
        return FALSE;
    const tlvn::WString wide = Widen(text, length);
    const int units = static_cast<int>(wide.size());
    int fittingUnits = units;
    std::vector<int> widths(static_cast<std::size_t>(units) + 1);
    SIZE whole = {};
    if (!::GetTextExtentExPointW(m_hDC, wide.c_str(), units, limit,
                                 fit != nullptr ? &fittingUnits : nullptr, widths.data(), &whole))
        return FALSE;
    int unit = 0;
    int fitting = 0;
    ForEachCharacter(text, length, [&](int start, int bytes, const tlvn::WString& character) {
        unit += static_cast<int>(character.size());
        if (unit > fittingUnits)
            return false;
        const int width = unit > 0 ? widths[static_cast<std::size_t>(unit) - 1] : 0;
        for (int i = 0; advances != nullptr && i < bytes; ++i)
            advances[start + i] = width;
        fitting = start + bytes;
        return true;
    });
    if (fit != nullptr)
        *fit = fitting;
    if (size != nullptr)
        *size = whole;
    return TRUE;
}

BOOL CDC::TextOut(int x, int y, LPCSTR text, int length)
{
    const tlvn::WString wide = Widen(text, length);
    return ::TextOutW(m_hDC, x, y, wide.c_str(), static_cast<int>(wide.size()));
}

BOOL CDC::TextOut(int x, int y, const CStringA& text)
{
    return TextOut(x, y, text.GetString(), text.GetLength());
}

BOOL CDC::TextOut(int x, int y, LPCWSTR text, int length)
{
    return ::TextOutW(m_hDC, x, y, text, length);
}

BOOL CDC::TextOut(int x, int y, const CStringW& text)
{
    return TextOut(x, y, text.GetString(), text.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, const RECT* rect, LPCSTR text, UINT length,
                     const int* advances)
{
    if (length > INT_MAX)
        return FALSE;
    const int bytes = static_cast<int>(length);
    tlvn::WString wide;
    std::vector<int> widths;
    if (advances == nullptr) {
        wide = Widen(text, bytes);
    } else {
        ForEachCharacter(text, bytes, [&](int start, int count, const tlvn::WString& character) {
            wide += character;
            int width = 0;
            for (int i = 0; i < count; ++i)
                width += advances[start + i];
            // A character of two units has its width at the first.
            for (std::size_t i = 0; i < character.size(); ++i)
                widths.push_back(i == 0 ? width : 0);
            return true;
        });
    }
    return ::ExtTextOutW(m_hDC, x, y, options, rect, wide.c_str(), static_cast<UINT>(wide.size()),
                         widths.empty() ? nullptr : widths.data());
}

void CDC::FillRect(const RECT* rect, CBrush* brush)
{
    ::FillRect(m_hDC, rect, *brush);
}

void CDC::FrameRect(const RECT* rect, CBrush* brush)
{
    ::FrameRect(m_hDC, rect, *brush);
}

void CDC::FillSolidRect(const RECT* rect, COLORREF color)
{
    ::SetBkColor(m_hDC, color);
    // The one way to fill with a colour that needs no brush.
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color)
{
    const RECT rect = {x, y, x + width, y + height};
    FillSolidRect(&rect, color);
}

void CDC::Draw3dRect(const RECT* rect, COLORREF topLeft, COLORREF bottomRight)
{
    const int width = rect->right - rect->left;
    const int height = rect->bottom - rect->top;
    FillSolidRect(rect->left, rect->top, width - 1, 1, topLeft);
    FillSolidRect(rect->left, rect->top, 1, height - 1, topLeft);
    FillSolidRect(rect->right - 1, rect->top, 1, height, bottomRight);
    FillSolidRect(rect->left, rect->bottom - 1, width, 1, bottomRight);
}

BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                 DWORD operation)
{
    return ::BitBlt(m_hDC, x, y, width, height, source != nullptr ? source->m_hDC : nullptr,
                    sourceX, sourceY, operation);
}

CPoint CDC::MoveTo(int x, int y)
{
    CPoint previous;
    ::MoveToEx(m_hDC, x, y, &previous);
    return previous;
}

BOOL CDC::Rectangle(const RECT* rect)
{
    return Rectangle(rect->left, rect->top, rect->right, rect->bottom);
}

CPaintDC::CPaintDC(CWnd* window) : m_hWnd(window->m_hWnd)
{
    SetBorrowed(::BeginPaint(m_hWnd, &m_ps));
}

CPaintDC::~CPaintDC()
{
    ::EndPaint(m_hWnd, &m_ps);
    SetBorrowed(nullptr);
}

CClientDC::CClientDC(CWnd* window) : m_hWnd(window != nullptr ? window->m_hWnd : nullptr)
{
    SetBorrowed(::GetDC(m_hWnd));
}

CClientDC::~CClientDC()
{
    ::ReleaseDC(m_hWnd, m_hDC);
    SetBorrowed(nullptr);
}

CWindowDC::CWindowDC(CWnd* window) : m_hWnd(window != nullptr ? window->m_hWnd : nullptr)
{
    SetBorrowed(::GetWindowDC(m_hWnd));
}

CWindowDC::~CWindowDC()
{
    ::ReleaseDC(m_hWnd, m_hDC);
    SetBorrowed(nullptr);
}
