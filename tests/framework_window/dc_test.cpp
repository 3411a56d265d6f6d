#include "tests/framework_window/sample_window.h"

#include <gtest/gtest.h>

namespace {

constexpr WCHAR kMixed[] = TW("A\u3042\uFF71"); // half, full, half width

TEST(Dc, PrefixMeasuringAgreesWithTheWhole)
{
    CClientDC dc(nullptr);
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(90, "IPAGothic"));
    CFont* const old = dc.SelectObject(&font);
    ASSERT_NE(old, nullptr);
    EXPECT_EQ(dc.SelectObject(&font), &font) << "the object itself, not a stand-in";

    int advances[3] = {};
    int fit = 0;
    SIZE whole = {};
    ASSERT_TRUE(dc.GetTextExtentExPoint(kMixed, 3, 10000, &fit, advances, &whole));
    EXPECT_EQ(fit, 3);
    EXPECT_EQ(advances[2], whole.cx);
    EXPECT_LT(advances[0], advances[1]);
    for (int n = 0; n <= 3; ++n)
        EXPECT_EQ(dc.GetTextExtent(kMixed, n).cx, n == 0 ? 0 : advances[n - 1]) << n;
    // One pixel less than two characters need: one fits.
    ASSERT_TRUE(dc.GetTextExtentExPoint(kMixed, 3, advances[1] - 1, &fit, nullptr, &whole));
    EXPECT_EQ(fit, 1);
    ASSERT_TRUE(dc.GetTextExtentExPoint(kMixed, 3, 0, &fit, nullptr, &whole));
    EXPECT_EQ(fit, 0);

    // The same in the code page: 1 + 2 + 1 bytes.
    int byteAdvances[4] = {};
    ASSERT_TRUE(dc.GetTextExtentExPoint("A\x82\xA0\xB1", 4, 10000, &fit, byteAdvances, &whole));
    EXPECT_EQ(fit, 4);
    EXPECT_EQ(byteAdvances[1], advances[1]);
    EXPECT_EQ(byteAdvances[2], advances[1]);
    EXPECT_EQ(byteAdvances[3], advances[2]);
    ASSERT_TRUE(
        dc.GetTextExtentExPoint("A\x82\xA0\xB1", 4, advances[1] - 1, &fit, nullptr, &whole));
    EXPECT_EQ(fit, 1) << "no half of a double-byte character";
    EXPECT_EQ(dc.GetTextExtent("A\x82\xA0\xB1", 4), dc.GetTextExtent(kMixed, 3));

    TEXTMETRICW wide;
    TEXTMETRICA narrow;
    ASSERT_TRUE(dc.GetTextMetrics(&wide));
    ASSERT_TRUE(dc.GetTextMetrics(&narrow));
    EXPECT_EQ(wide.tmHeight, dc.GetTextExtent(kMixed, 3).cy);
    EXPECT_EQ(wide.tmHeight, narrow.tmHeight);
    EXPECT_EQ(wide.tmHeight, wide.tmAscent + wide.tmDescent);
    dc.SelectObject(old);
}

TEST(Dc, PointSizesBecomePixels)
{
    const struct {
        int tenths;
        LONG height;
    } cases[] = {{90, -12}, {70, -9}, {100, -13}, {105, -14}, {120, -16}};
    for (const auto& c : cases) {
        CFont font;
        ASSERT_TRUE(font.CreatePointFont(c.tenths, "\x82\x6C\x82\x72 \x83\x53"));
        LOGFONTW wide = {};
        EXPECT_NE(font.GetLogFont(&wide), 0);
        EXPECT_EQ(wide.lfHeight, c.height) << c.tenths;
        LOGFONTA narrow = {};
        font.GetLogFont(&narrow);
        EXPECT_STREQ(narrow.lfFaceName, "\x82\x6C\x82\x72 \x83\x53");
    }
}

// What is drawn in memory reaches the window only by BitBlt, and colours are exact.
TEST(Dc, DoubleBuffering)
{
    SampleWindows windows;
    CClientDC screen(&windows.note);
    screen.FillSolidRect(0, 0, 100, 100, RGB(255, 0, 0));
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 50, 40));
    CBitmap* const oldBitmap = memory.SelectObject(&bitmap);
    ASSERT_NE(oldBitmap, nullptr);
    EXPECT_EQ(memory.GetPixel(5, 5), RGB(0, 0, 0)) << "a new bitmap is black";
    memory.FillSolidRect(0, 0, 50, 40, RGB(0, 128, 0));
    memory.FillSolidRect(10, 10, 5, 5, RGB(0, 0, 255));
    EXPECT_EQ(screen.GetPixel(10, 10), RGB(255, 0, 0));
    ASSERT_TRUE(screen.BitBlt(20, 30, 30, 20, &memory, 5, 5, SRCCOPY));
    EXPECT_EQ(screen.GetPixel(19, 30), RGB(255, 0, 0));
    EXPECT_EQ(screen.GetPixel(20, 30), RGB(0, 128, 0));
    EXPECT_EQ(screen.GetPixel(25, 35), RGB(0, 0, 255));
    EXPECT_EQ(screen.GetPixel(30, 40), RGB(0, 128, 0));
    EXPECT_EQ(screen.GetPixel(50, 30), RGB(255, 0, 0)) << "past the copied part";
    memory.SelectObject(oldBitmap);
}

TEST(Dc, ClippingNestsAndIsRestored)
{
    SampleWindows windows;
    CClientDC dc(&windows.note);
    const COLORREF white = RGB(255, 255, 255);
    const COLORREF ink = RGB(10, 20, 30);
    dc.FillSolidRect(0, 0, 100, 100, white);
    const int level = dc.SaveDC();
    dc.IntersectClipRect(10, 10, 50, 50);
    dc.IntersectClipRect(CRect(30, 0, 90, 90));
    CRect box;
    dc.GetClipBox(&box);
    EXPECT_EQ(box, CRect(30, 10, 50, 50));
    dc.ExcludeClipRect(CRect(40, 20, 45, 25));
    dc.FillSolidRect(0, 0, 100, 100, ink);
    dc.RestoreDC(level);
    EXPECT_EQ(dc.GetPixel(29, 20), white);
    EXPECT_EQ(dc.GetPixel(30, 20), ink);
    EXPECT_EQ(dc.GetPixel(42, 22), white) << "the excluded part";
    EXPECT_EQ(dc.GetPixel(49, 49), ink);
    EXPECT_EQ(dc.GetPixel(50, 20), white);
    dc.SetPixel(70, 70, ink);
    EXPECT_EQ(dc.GetPixel(70, 70), ink) << "the clip is gone";
}

// The ends of lines and rectangles, where one pixel decides.
TEST(Dc, LinesAndShapesStopWhereTheyShould)
{
    SampleWindows windows;
    CClientDC dc(&windows.note);
    const COLORREF white = RGB(255, 255, 255);
    const COLORREF ink = RGB(200, 0, 0);
    dc.FillSolidRect(0, 0, 100, 100, white);
    CPen pen(PS_SOLID, 1, ink);
    CBrush brush(RGB(0, 0, 100));
    CPen* const oldPen = dc.SelectObject(&pen);
    CBrush* const oldBrush = dc.SelectObject(&brush);
    dc.MoveTo(10, 10);
    dc.LineTo(20, 10);
    EXPECT_EQ(dc.GetPixel(10, 10), ink);
    EXPECT_EQ(dc.GetPixel(19, 10), ink);
    EXPECT_EQ(dc.GetPixel(20, 10), white) << "the last point is not drawn";
    EXPECT_EQ(dc.MoveTo(0, 0), CPoint(20, 10));
    dc.Rectangle(30, 30, 40, 36);
    EXPECT_EQ(dc.GetPixel(30, 30), ink);
    EXPECT_EQ(dc.GetPixel(39, 35), ink);
    EXPECT_EQ(dc.GetPixel(40, 35), white);
    EXPECT_EQ(dc.GetPixel(31, 31), RGB(0, 0, 100));
    const CRect frame(50, 50, 60, 60);
    dc.Draw3dRect(&frame, RGB(1, 1, 1), RGB(2, 2, 2));
    EXPECT_EQ(dc.GetPixel(50, 50), RGB(1, 1, 1));
    EXPECT_EQ(dc.GetPixel(59, 50), RGB(2, 2, 2));
    EXPECT_EQ(dc.GetPixel(50, 59), RGB(2, 2, 2));
    const CRect inverted(70, 70, 80, 80);
    dc.InvertRect(&inverted);
    EXPECT_EQ(dc.GetPixel(75, 75), RGB(0, 0, 0));
    dc.InvertRect(&inverted);
    EXPECT_EQ(dc.GetPixel(75, 75), white);
    dc.SelectObject(oldPen);
    dc.SelectObject(oldBrush);
}

TEST(Paint, OnlyTheInvalidPartIsPainted)
{
    SampleWindows windows;
    tlvn::PumpPendingMessages();
    CRect update;
    EXPECT_FALSE(windows.note.GetUpdateRect(&update));
    const CRect part(10, 16, 60, 32);
    windows.note.InvalidateRect(&part, FALSE);
    EXPECT_TRUE(windows.note.GetUpdateRect(&update));
    EXPECT_EQ(update, part);
    const CRect validated(10, 16, 60, 24);
    windows.note.ValidateRect(&validated);
    windows.note.GetUpdateRect(&update);
    EXPECT_EQ(update, CRect(10, 24, 60, 32));
    PAINTSTRUCT paint;
    CDC* const dc = windows.note.BeginPaint(&paint);
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(CRect(paint.rcPaint), CRect(10, 24, 60, 32));
    dc->FillSolidRect(0, 0, 400, 300, RGB(9, 9, 9));
    windows.note.EndPaint(&paint);
    CClientDC after(&windows.note);
    EXPECT_EQ(after.GetPixel(10, 24), RGB(9, 9, 9));
    EXPECT_NE(after.GetPixel(10, 23), RGB(9, 9, 9));
    EXPECT_NE(after.GetPixel(60, 24), RGB(9, 9, 9));
    EXPECT_FALSE(windows.note.GetUpdateRect(&update));
}

TEST(Paint, ScrollingMovesTheDrawingAndInvalidatesTheRest)
{
    SampleWindows windows;
    tlvn::PumpPendingMessages();
    {
        CClientDC dc(&windows.note);
        dc.FillSolidRect(0, 0, 400, 300, RGB(255, 255, 255));
        dc.FillSolidRect(50, 50, 10, 10, RGB(0, 0, 255));
    }
    CRect exposed;
    const CRect area(0, 20, 400, 300);
    windows.note.ScrollWindowEx(0, -20, &area, &area, nullptr, &exposed, SW_INVALIDATE);
    EXPECT_EQ(exposed, CRect(0, 280, 400, 300));
    CRect update;
    EXPECT_TRUE(windows.note.GetUpdateRect(&update));
    EXPECT_EQ(update, exposed);
    CClientDC dc(&windows.note);
    EXPECT_EQ(dc.GetPixel(55, 35), RGB(0, 0, 255));
    EXPECT_EQ(dc.GetPixel(55, 55), RGB(255, 255, 255));
    // Up against the edge of the area: what would leave it is cut off.
    windows.note.ScrollWindowEx(0, -12, &area, &area, nullptr, nullptr, 0);
    EXPECT_EQ(dc.GetPixel(55, 23), RGB(0, 0, 255));
    windows.note.ScrollWindowEx(0, -4, &area, &area, nullptr, nullptr, 0);
    EXPECT_EQ(dc.GetPixel(55, 19), RGB(255, 255, 255)) << "outside the area";
    EXPECT_EQ(dc.GetPixel(55, 21), RGB(0, 0, 255));
    windows.note.ValidateRect(nullptr);
}

} // namespace
