// Device contexts: CDC, and CPaintDC, CClientDC and CWindowDC for windows.
//
//   void CView::OnPaint()
//   {
//       CPaintDC dc(this);
//       CFont* old = dc.SelectObject(&m_font);
//       dc.SetBkColor(RGB(255, 255, 255));
//       dc.ExtTextOut(8, 8, ETO_OPAQUE, &line, text, length, nullptr);   // narrow or UTF-16
//       dc.SelectObject(old);
//   }
//
// Narrow text is in the multibyte code page, with lengths in bytes; UTF-16 lengths are in units.
// Coordinates and sizes are pixels. The functions are those of the Windows API of the same name.

#pragma once

#include "framework/gdi_object.h"
#include "framework/geometry.h"
#include "framework/object.h"
#include "framework/string.h"
#include "framework/winapi.h"

class CWnd;

class TLVN_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC();
    // Deletes a context that it made or that was attached to it.
    ~CDC() override;

    // The system's context; null for none.
    HDC m_hDC = nullptr;

    // The handle; taking one over, and giving it back to the caller's care.
    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }
    BOOL Attach(HDC dc);
    HDC Detach();
    // The object attached to the context, or a temporary one (see handle_map.h).
    static CDC* FromHandle(HDC dc);

    // A context in memory; it draws once a bitmap is selected.
    BOOL CreateCompatibleDC(CDC* dc);
    BOOL DeleteDC();
    int SaveDC() { return ::SaveDC(m_hDC); }
    BOOL RestoreDC(int level) { return ::RestoreDC(m_hDC, level); }
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }

    // Selecting gives the object selected before, good as long as this context and that object
    // live; null when the system refuses.
    CFont* SelectObject(CFont* font);
    CBrush* SelectObject(CBrush* brush);
    CPen* SelectObject(CPen* pen);
    CBitmap* SelectObject(CBitmap* bitmap);
    HGDIOBJ SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }
    CGdiObject* SelectStockObject(int index);

    // What the system keeps for drawing. Setting gives what was before.
    COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
    COLORREF GetTextColor() const { return ::GetTextColor(m_hDC); }
    COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
    COLORREF GetBkColor() const { return ::GetBkColor(m_hDC); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    int GetBkMode() const { return ::GetBkMode(m_hDC); }
    UINT SetTextAlign(UINT align) { return ::SetTextAlign(m_hDC, align); }
    UINT GetTextAlign() const { return ::GetTextAlign(m_hDC); }
    int SetROP2(int mode) { return ::SetROP2(m_hDC, mode); }
    CPoint SetViewportOrg(int x, int y);
    CPoint GetViewportOrg() const;

    // The part that can be drawn on, in logical units. The results are those of the system:
    // NULLREGION, SIMPLEREGION, COMPLEXREGION or ERROR.
    int SelectClipRgn(CRgn* region);
    int IntersectClipRect(const RECT* rect);
    int IntersectClipRect(int left, int top, int right, int bottom)
    {
        return ::IntersectClipRect(m_hDC, left, top, right, bottom);
    }
    int ExcludeClipRect(const RECT* rect);
    int GetClipBox(RECT* rect) const { return ::GetClipBox(m_hDC, rect); }
    BOOL RectVisible(const RECT* rect) const { return ::RectVisible(m_hDC, rect); }

    // Of the selected font, in pixels.
    BOOL GetTextMetrics(TEXTMETRICW* metrics) const { return ::GetTextMetricsW(m_hDC, metrics); }
    BOOL GetTextMetrics(TEXTMETRICA* metrics) const;
    // Width and height of a text. Zero for a negative length.
    CSize GetTextExtent(LPCSTR text, int length) const;
    CSize GetTextExtent(const CStringA& text) const;
    CSize GetTextExtent(LPCWSTR text, int length) const;
    CSize GetTextExtent(const CStringW& text) const;
    // How much of the text fits in `limit` pixels: `fit` receives bytes or units, `advances`
    // (when not null) the width up to and with each of them that fits, `size` that of the whole.
    // Both bytes of a double-byte character have its width; it fits wholly or not at all.
    BOOL GetTextExtentExPoint(LPCSTR text, int length, int limit, int* fit, int* advances,
                              SIZE* size) const;
    BOOL GetTextExtentExPoint(LPCWSTR text, int length, int limit, int* fit, int* advances,
                              SIZE* size) const;
    // Widths of the UTF-16 units from `first` to `last`.
    BOOL GetCharWidth(UINT first, UINT last, int* widths) const
    {
        return ::GetCharWidth32W(m_hDC, first, last, widths);
    }

    // Draw a text, its length in bytes or units, at the position that the alignment says.
    BOOL TextOut(int x, int y, LPCSTR text, int length);
    BOOL TextOut(int x, int y, const CStringA& text);
    BOOL TextOut(int x, int y, LPCWSTR text, int length);
    BOOL TextOut(int x, int y, const CStringW& text);
    // `advances` are per byte or unit; of a double-byte character both count.
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, LPCSTR text, UINT length,
                    const int* advances);
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT length,
                    const int* advances)
    {
        return ::ExtTextOutW(m_hDC, x, y, options, rect, text, length, advances);
    }

    // Rectangles without their right and bottom edges.
    void FillRect(const RECT* rect, CBrush* brush);
    void FrameRect(const RECT* rect, CBrush* brush);
    void InvertRect(const RECT* rect) { ::InvertRect(m_hDC, rect); }
    void DrawFocusRect(const RECT* rect) { ::DrawFocusRect(m_hDC, rect); }
    // Leaves the background colour at `color`.
    void FillSolidRect(const RECT* rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);
    void Draw3dRect(const RECT* rect, COLORREF topLeft, COLORREF bottomRight);
    BOOL PatBlt(int x, int y, int width, int height, DWORD operation)
    {
        return ::PatBlt(m_hDC, x, y, width, height, operation);
    }
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                DWORD operation);
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Polyline(const POINT* points, int count) { return ::Polyline(m_hDC, points, count); }
    BOOL Polygon(const POINT* points, int count) { return ::Polygon(m_hDC, points, count); }
    BOOL Rectangle(int left, int top, int right, int bottom)
    {
        return ::Rectangle(m_hDC, left, top, right, bottom);
    }
    BOOL Rectangle(const RECT* rect);
    COLORREF SetPixel(int x, int y, COLORREF color) { return ::SetPixel(m_hDC, x, y, color); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }

protected:
    // For contexts that the window takes back: they are not deleted.
    void SetBorrowed(HDC dc) { m_hDC = dc; }

private:
    template <class T>
    T* Select(T* object, T& replaced);

    // Stand for the objects that the context came with.
    CFont m_replacedFont;
    CBrush m_replacedBrush;
    CPen m_replacedPen;
    CBitmap m_replacedBitmap;
};

// The context of WM_PAINT: clipped to what is to be painted, which is valid afterwards.
class TLVN_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    // Begins to paint; the end of the object ends it.
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

    // What is to be painted.
    PAINTSTRUCT m_ps;

protected:
    // The window.
    HWND m_hWnd;
};

// The client area of a window; of the screen when it is null.
class TLVN_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    // Released at the end of the object.
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

protected:
    // The window; null for the screen.
    HWND m_hWnd;
};

// The whole window with its frame.
class TLVN_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)
public:
    // Released at the end of the object.
    explicit CWindowDC(CWnd* window);
    ~CWindowDC() override;

protected:
    // The window; null for the screen.
    HWND m_hWnd;
};
