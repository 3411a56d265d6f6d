// Graphics objects: CFont, CBrush, CPen, CBitmap and CRgn own a handle and delete it.
//
//   CFont font;
//   font.CreatePointFont(90, "IPAGothic");          // tenths of a point
//   CFont* old = dc.SelectObject(&font);
//   dc.TextOut(0, 0, text, length);
//   dc.SelectObject(old);
//
// A Create function gives FALSE (and leaves the object empty) when the system refuses; the
// object must be empty before. Narrow names are in the multibyte code page.

#pragma once

#include "framework/object.h"
#include "framework/winapi.h"

class CDC;

class TLVN_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    // The system's object; null for none.
    HGDIOBJ m_hObject = nullptr;

    // The handle, also of no object.
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    // Takes over a handle; Detach gives it back to the caller's care.
    BOOL Attach(HGDIOBJ object);
    HGDIOBJ Detach();
    // Deletes the system's object, which must not be selected anywhere.
    BOOL DeleteObject();
    BOOL CreateStockObject(int index);
    // Fills the object's description (LOGFONTW, LOGBRUSH, LOGPEN, BITMAP); bytes written.
    int GetObject(int size, void* data) const;

    // The object attached to the handle, or a temporary one (see handle_map.h).
    static CGdiObject* FromHandle(HGDIOBJ object);

protected:
    // Attaches what the system made; FALSE for null.
    BOOL AttachCreated(HGDIOBJ object);

private:
    friend class CDC;
    static CGdiObject* FromHandlePermanent(HGDIOBJ object);
};

class TLVN_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    // The handle.
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }

    // A font of that description.
    BOOL CreateFontIndirect(const LOGFONTW* font);
    BOOL CreateFontIndirect(const LOGFONTA* font);
    // A font of `tenthPoints` tenths of a point on the device, or on the screen when it is null.
    BOOL CreatePointFont(int tenthPoints, LPCSTR face, CDC* dc = nullptr);
    int GetLogFont(LOGFONTW* font) const;
    int GetLogFont(LOGFONTA* font) const;

    // The object attached to the handle, or a temporary one.
    static CFont* FromHandle(HFONT font);
};

class TLVN_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    // A brush of one colour.
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    BOOL CreateSolidBrush(COLORREF color);
};

class TLVN_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    // A pen of a style of the system (PS_SOLID, ...), so many pixels wide.
    CPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    BOOL CreatePen(int style, int width, COLORREF color);
};

class TLVN_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    // The handle.
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height); // pixels
};

class TLVN_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    // The handle, and making regions of rectangles.
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    BOOL CreateRectRgn(int left, int top, int right, int bottom);
    BOOL CreateRectRgnIndirect(const RECT* rect);
    // The result is NULLREGION, SIMPLEREGION, COMPLEXREGION or ERROR.
    int CombineRgn(const CRgn* a, const CRgn* b, int mode);
    int GetRgnBox(RECT* rect) const;
    int OffsetRgn(int dx, int dy);
    BOOL PtInRegion(int x, int y) const;
};
