#include "framework/gdi_object.h"

#include "framework/dc.h"
#include "framework/handle_map.h"
#include "framework/temporary_objects.h"
#include "platform/nls.h"

#include <algorithm>
#include <cstdlib>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace {

using ObjectMap = tlvn::HandleMap<CGdiObject, HGDIOBJ>;

// Lives as long as the process: static objects of a program may be destroyed after ours.
ObjectMap& Objects()
{
    static ObjectMap* const map = new ObjectMap;
    return *map;
}

// A temporary object only refers to its handle.
template <class T>
class Reference : public T {
public:
    explicit Reference(HGDIOBJ object) { this->m_hObject = object; }
    ~Reference() override { this->m_hObject = nullptr; }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
};

// The fields that both forms of LOGFONT share.
template <class To, class From>
void CopyFields(To& to, const From& from)
{
    to.lfHeight = from.lfHeight;
    to.lfWidth = from.lfWidth;
    to.lfEscapement = from.lfEscapement;
    to.lfOrientation = from.lfOrientation;
    to.lfWeight = from.lfWeight;
    to.lfItalic = from.lfItalic;
    to.lfUnderline = from.lfUnderline;
    to.lfStrikeOut = from.lfStrikeOut;
    to.lfCharSet = from.lfCharSet;
    to.lfOutPrecision = from.lfOutPrecision;
    to.lfClipPrecision = from.lfClipPrecision;
    to.lfQuality = from.lfQuality;
    to.lfPitchAndFamily = from.lfPitchAndFamily;
}

template <class Char, class Text>
void CopyFace(Char (&face)[LF_FACESIZE], const Text& name)
{
    const std::size_t length = std::min<std::size_t>(name.size(), LF_FACESIZE - 1);
    std::fill(std::begin(face), std::end(face), Char{0});
    std::copy_n(name.data(), length, face);
}

} // namespace

namespace tlvn {

void ForgetTemporaryGdiObjects()
{
    Objects().ForgetAll();
}

} // namespace tlvn

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

BOOL CGdiObject::Attach(HGDIOBJ object)
{
    if (m_hObject != nullptr || object == nullptr)
        return FALSE;
    m_hObject = object;
    Objects().Add(object, this);
    return TRUE;
}

BOOL CGdiObject::AttachCreated(HGDIOBJ object)
{
    if (Attach(object))
        return TRUE;
    if (object != nullptr)
        ::DeleteObject(object);
    return FALSE;
}

HGDIOBJ CGdiObject::Detach()
{
    const HGDIOBJ object = m_hObject;
    if (object != nullptr)
        Objects().Remove(object, this);
    m_hObject = nullptr;
    return object;
}

BOOL CGdiObject::DeleteObject()
{
    const HGDIOBJ object = Detach();
    return object != nullptr && ::DeleteObject(object);
}

BOOL CGdiObject::CreateStockObject(int index)
{
    return Attach(::GetStockObject(index));
}

int CGdiObject::GetObject(int size, void* data) const
{
    return ::GetObjectW(m_hObject, size, data);
}

CGdiObject* CGdiObject::FromHandlePermanent(HGDIOBJ object)
{
    return Objects().FindPermanent(object);
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ object)
{
    if (object == nullptr)
        return nullptr;
    return Objects().FindOrMake(object, [&] { return new Reference<CGdiObject>(object); });
}

CFont* CFont::FromHandle(HFONT font)
{
    if (font == nullptr)
        return nullptr;
    return static_cast<CFont*>(
        Objects().FindOrMake(font, [&] { return new Reference<CFont>(font); }));
}

BOOL CFont::CreateFontIndirect(const LOGFONTW* font)
{
    return AttachCreated(::CreateFontIndirectW(font));
}

BOOL CFont::CreateFontIndirect(const LOGFONTA* font)
{
    LOGFONTW wide = {};
    CopyFields(wide, *font);
    const char* const end = std::find(font->lfFaceName, font->lfFaceName + LF_FACESIZE, '\0');
    CopyFace(wide.lfFaceName,
             tlvn::WidenText({font->lfFaceName, static_cast<std::size_t>(end - font->lfFaceName)}));
    return CreateFontIndirect(&wide);
}

BOOL CFont::CreatePointFont(int tenthPoints, LPCSTR face, CDC* dc)
{
    const HDC screen = dc == nullptr ? ::GetDC(nullptr) : nullptr;
    const int perInch = ::GetDeviceCaps(dc != nullptr ? dc->m_hDC : screen, LOGPIXELSY);
    if (screen != nullptr)
        ::ReleaseDC(nullptr, screen);
    LOGFONTW font = {};
    const INT64 points = std::abs(static_cast<INT64>(tenthPoints));
    font.lfHeight = -static_cast<LONG>((points * perInch + 360) / 720);
    font.lfCharSet = DEFAULT_CHARSET;
    if (face != nullptr)
        CopyFace(font.lfFaceName, tlvn::WidenText(face));
    return CreateFontIndirect(&font);
}

int CFont::GetLogFont(LOGFONTW* font) const
{
    return GetObject(static_cast<int>(sizeof(*font)), font);
}

int CFont::GetLogFont(LOGFONTA* font) const
{
    LOGFONTW wide = {};
    if (GetLogFont(&wide) == 0)
        return 0;
    CopyFields(*font, wide);
    const WCHAR* const end = std::find(wide.lfFaceName, wide.lfFaceName + LF_FACESIZE, WCHAR{0});
    CopyFace(font->lfFaceName,
             tlvn::NarrowText({wide.lfFaceName, static_cast<std::size_t>(end - wide.lfFaceName)}));
    return static_cast<int>(sizeof(*font));
}

BOOL CBrush::CreateSolidBrush(COLORREF color)
{
    return AttachCreated(::CreateSolidBrush(color));
}

BOOL CPen::CreatePen(int style, int width, COLORREF color)
{
    return AttachCreated(::CreatePen(style, width, color));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height)
{
    return AttachCreated(::CreateCompatibleBitmap(dc->m_hDC, width, height));
}

BOOL CRgn::CreateRectRgn(int left, int top, int right, int bottom)
{
    return AttachCreated(::CreateRectRgn(left, top, right, bottom));
}

BOOL CRgn::CreateRectRgnIndirect(const RECT* rect)
{
    return AttachCreated(::CreateRectRgnIndirect(rect));
}

int CRgn::CombineRgn(const CRgn* a, const CRgn* b, int mode)
{
    return ::CombineRgn(*this, *a, b != nullptr ? static_cast<HRGN>(*b) : nullptr, mode);
}

int CRgn::GetRgnBox(RECT* rect) const
{
    return ::GetRgnBox(*this, rect);
}

int CRgn::OffsetRgn(int dx, int dy)
{
    return ::OffsetRgn(*this, dx, dy);
}

BOOL CRgn::PtInRegion(int x, int y) const
{
    return ::PtInRegion(*this, x, y);
}
