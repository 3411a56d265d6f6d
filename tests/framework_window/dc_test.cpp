#include "tests/framework_window/sample_window.h"

namespace {

using Dc = SampleWindows;

constexpr COLORREF kWhite = RGB(255, 255, 255), kInk = RGB(10, 20, 30), kBlue = RGB(0, 0, 255);

void ExpectPixels(const CDC& dc, std::initializer_list<std::tuple<int, int, COLORREF>> pixels)
{
    for (const auto& [x, y, color] : pixels)
        EXPECT_EQ(dc.GetPixel(x, y), color) << x << ", " << y;
}

TEST_F(Dc, PrefixMeasuringAgreesWithTheWhole)
{
    CClientDC dc(nullptr);
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(90, "IPAGothic"));
    CFont* const old = dc.SelectObject(&font);
    ASSERT_NE(old, nullptr);
    EXPECT_EQ(dc.SelectObject(&font), &font) << "the object itself, not a stand-in";

    constexpr WCHAR kMixed[] = TW("A\u3042\uFF71"); // half, full, half width
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

    // The same in the code page: 1 + 2 + 1 bytes.
    constexpr char kNarrow[] = "A\x82\xA0\xB1";
    int bytes[4] = {};
    ASSERT_TRUE(dc.GetTextExtentExPoint(kNarrow, 4, 10000, &fit, bytes, &whole));
    EXPECT_EQ(fit, 4);
    EXPECT_EQ(std::vector<int>(bytes + 1, bytes + 4),
              (std::vector<int>{advances[1], advances[1], advances[2]}));
    ASSERT_TRUE(dc.GetTextExtentExPoint(kNarrow, 4, advances[1] - 1, &fit, nullptr, &whole));
    EXPECT_EQ(fit, 1) << "no half of a double-byte character";
    EXPECT_EQ(dc.GetTextExtent(kNarrow, 4), dc.GetTextExtent(kMixed, 3));

    TEXTMETRICW wide;
    TEXTMETRICA narrow;
    ASSERT_TRUE(dc.GetTextMetrics(&wide));
    ASSERT_TRUE(dc.GetTextMetrics(&narrow));
    EXPECT_EQ(wide.tmHeight, dc.GetTextExtent(kMixed, 3).cy);
    EXPECT_EQ(wide.tmHeight, narrow.tmHeight);
    EXPECT_EQ(wide.tmHeight, wide.tmAscent + wide.tmDescent);
    dc.SelectObject(old);
}

TEST_F(Dc, PointSizesBecomePixels)
{
    const std::pair<int, LONG> cases[] = {{90, -12}, {70, -9}, {100, -13}, {105, -14}, {120, -16}};
    for (const auto& [tenths, height] : cases) {
        CFont font;
        ASSERT_TRUE(font.CreatePointFont(tenths, "\x82\x6C\x82\x72 \x83\x53"));
        LOGFONTW wide = {};
        EXPECT_NE(font.GetLogFont(&wide), 0);
        EXPECT_EQ(wide.lfHeight, height) << tenths;
        LOGFONTA narrow = {};
        font.GetLogFont(&narrow);
        EXPECT_STREQ(narrow.lfFaceName, "\x82\x6C\x82\x72 \x83\x53");
    }
}

// What is drawn in memory reaches the window only by BitBlt, and colours are exact.
TEST_F(Dc, DoubleBuffering)
{
    CClientDC screen(&note);
    screen.FillSolidRect(0, 0, 100, 100, kWhite);
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 50, 40));
    CBitmap* const oldBitmap = memory.SelectObject(&bitmap);
    ASSERT_NE(oldBitmap, nullptr);
    EXPECT_EQ(memory.GetPixel(5, 5), RGB(0, 0, 0)) << "a new bitmap is black";
    memory.FillSolidRect(0, 0, 50, 40, kInk);
    memory.FillSolidRect(10, 10, 5, 5, kBlue);
    EXPECT_EQ(screen.GetPixel(10, 10), kWhite);
    ASSERT_TRUE(screen.BitBlt(20, 30, 30, 20, &memory, 5, 5, SRCCOPY));
    ExpectPixels(screen, {{19, 30, kWhite},
                          {20, 30, kInk},
                          {25, 35, kBlue},
                          {30, 40, kInk},
                          {50, 30, kWhite}}); // the last past the copied part
    memory.SelectObject(oldBitmap);
}

TEST_F(Dc, ClippingNestsAndIsRestored)
{
    CClientDC dc(&note);
    dc.FillSolidRect(0, 0, 100, 100, kWhite);
    const int level = dc.SaveDC();
    dc.IntersectClipRect(10, 10, 50, 50);
    dc.IntersectClipRect(CRect(30, 0, 90, 90));
    CRect box;
    dc.GetClipBox(&box);
    EXPECT_EQ(box, CRect(30, 10, 50, 50));
    dc.ExcludeClipRect(CRect(40, 20, 45, 25));
    dc.FillSolidRect(0, 0, 100, 100, kInk);
    dc.RestoreDC(level);
    dc.SetPixel(70, 70, kInk); // the clip is gone
    ExpectPixels(dc, {{29, 20, kWhite},
                      {30, 20, kInk},
                      {42, 22, kWhite},
                      {49, 49, kInk},
                      {50, 20, kWhite},
                      {70, 70, kInk}});
}

// The ends of lines and rectangles, where one pixel decides.
TEST_F(Dc, LinesAndShapesStopWhereTheyShould)
{
    CClientDC dc(&note);
    dc.FillSolidRect(0, 0, 100, 100, kWhite);
    CPen pen(PS_SOLID, 1, kInk);
    CBrush brush(kBlue);
    CPen* const oldPen = dc.SelectObject(&pen);
    CBrush* const oldBrush = dc.SelectObject(&brush);
    dc.MoveTo(10, 10);
    dc.LineTo(20, 10); // the last point is not drawn
    EXPECT_EQ(dc.MoveTo(0, 0), CPoint(20, 10));
    dc.Rectangle(30, 30, 40, 36);
    dc.Draw3dRect(CRect(50, 50, 60, 60), RGB(1, 1, 1), RGB(2, 2, 2));
    const CRect inverted(70, 70, 80, 80);
    dc.InvertRect(&inverted);
    ExpectPixels(dc, {{10, 10, kInk},
                      {19, 10, kInk},
                      {20, 10, kWhite},
                      {30, 30, kInk},
                      {39, 35, kInk},
                      {40, 35, kWhite},
                      {31, 31, kBlue},
                      {50, 50, RGB(1, 1, 1)},
                      {59, 50, RGB(2, 2, 2)},
                      {50, 59, RGB(2, 2, 2)},
                      {75, 75, RGB(0, 0, 0)}});
    dc.InvertRect(&inverted);
    EXPECT_EQ(dc.GetPixel(75, 75), kWhite);
    dc.SelectObject(oldPen);
    dc.SelectObject(oldBrush);
}

TEST_F(Dc, OnlyTheInvalidPartIsPainted)
{
    CRect update;
    EXPECT_FALSE(note.GetUpdateRect(&update));
    const CRect part(10, 16, 60, 32), validated(10, 16, 60, 24), left(10, 24, 60, 32);
    note.InvalidateRect(&part, FALSE);
    EXPECT_TRUE(note.GetUpdateRect(&update));
    EXPECT_EQ(update, part);
    note.ValidateRect(&validated);
    PAINTSTRUCT paint;
    CDC* const dc = note.BeginPaint(&paint);
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(CRect(paint.rcPaint), left);
    dc->FillSolidRect(0, 0, 400, 300, kInk);
    note.EndPaint(&paint);
    CClientDC after(&note);
    EXPECT_EQ(after.GetPixel(10, 24), kInk);
    EXPECT_NE(after.GetPixel(10, 23), kInk);
    EXPECT_NE(after.GetPixel(60, 24), kInk);
    EXPECT_FALSE(note.GetUpdateRect(&update));
}

TEST_F(Dc, ScrollingMovesTheDrawingAndInvalidatesTheRest)
{
    CClientDC dc(&note);
    dc.FillSolidRect(0, 0, 400, 300, kWhite);
    dc.FillSolidRect(50, 50, 10, 10, kBlue);
    CRect exposed, update;
    const CRect area(0, 20, 400, 300);
    note.ScrollWindowEx(0, -20, &area, &area, nullptr, &exposed, SW_INVALIDATE);
    EXPECT_EQ(exposed, CRect(0, 280, 400, 300));
    EXPECT_TRUE(note.GetUpdateRect(&update));
    EXPECT_EQ(update, exposed);
    ExpectPixels(dc, {{55, 35, kBlue}, {55, 55, kWhite}});
    // Up against the edge of the area: what would leave it is cut off.
    note.ScrollWindowEx(0, -12, &area, &area, nullptr, nullptr, 0);
    EXPECT_EQ(dc.GetPixel(55, 23), kBlue);
    note.ScrollWindowEx(0, -4, &area, &area, nullptr, nullptr, 0);
    ExpectPixels(dc, {{55, 19, kWhite}, {55, 21, kBlue}});
    note.ValidateRect(nullptr);
}

} // namespace
