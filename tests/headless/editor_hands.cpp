// The hands of editor_script.cpp for the windows in memory: input is synthesised, pictures are
// made of the display list, time is that of the test clock.

#include "tests/support/editor_hands.h"

#include "framework/headless/headless.h"

namespace {

using namespace tlvn;

constexpr DWORD kTick = 10; // milliseconds

class MemoryHands : public EditorHands {
public:
    MemoryHands()
    {
        headless::Reset();
        headless::UseTestClock();
    }

    void Key(int key, bool down) override { headless::SendKey(key, down); }
    void MoveMouse(CPoint point) override { headless::SendMouseMove(point); }
    void Button(bool down) override { headless::SendMouseButton(VK_LBUTTON, down); }
    void Wheel(int delta) override { headless::SendMouseWheel(delta); }
    bool Wait(const std::function<bool()>& condition, int milliseconds) override
    {
        for (; milliseconds > 0; milliseconds -= static_cast<int>(kTick)) {
            PumpPendingMessages();
            if (condition())
                return true;
            headless::AdvanceClock(kTick);
        }
        return false;
    }

    Picture Look(CEditorWnd& editor) override
    {
        editor.UpdateWindow();
        CRect client;
        editor.GetClientRect(&client);
        Picture picture(client.right, client.bottom);
        const headless::DisplayList& list = *headless::GetDrawing(editor.m_hWnd);
        for (const headless::DrawOperation& op : list.Operations())
            Draw(list, op, picture);
        const headless::CaretState caret = headless::GetCaretState();
        if (caret.window == editor.m_hWnd && caret.visible)
            ForEach(picture, caret.rect, [](CPoint, std::uint64_t& pixel) { pixel ^= 0xFFFFFF; });
        return picture;
    }

    bool Compose(CEditorWnd& editor, const WCHAR* text) override
    {
        headless::SetCompositionText(editor.m_hWnd, text);
        return true;
    }
    void EndComposing(CEditorWnd& editor, const WCHAR* text) override
    {
        headless::CommitCompositionText(editor.m_hWnd, text);
    }
    bool AskOtherProgram() override { return AnswerOnClipboard(); }

private:
    template <class Visit>
    static void ForEach(Picture& picture, const CRect& rect, Visit visit)
    {
        CRect visible;
        visible.IntersectRect(rect, CRect(0, 0, picture.width, picture.height));
        for (int y = visible.top; y < visible.bottom; ++y) {
            for (int x = visible.left; x < visible.right; ++x)
                visit(CPoint(x, y), picture.At(x, y));
        }
    }
    // A pixel holds a character, its colour and the place in it.
    static void DrawText(const headless::DisplayList& list, const headless::DrawOperation& op,
                         Picture& picture)
    {
        const int* advance = list.AdvancesOf(op);
        CRect cell(op.bounds);
        for (const WCHAR c : list.TextOf(op)) {
            cell.right = cell.left + (advance != nullptr ? *advance++ : op.font.WidthOf(c));
            CRect visible;
            visible.IntersectRect(&cell, &op.clip);
            ForEach(picture, visible, [&](CPoint at, std::uint64_t& pixel) {
                const auto place = (at.y - cell.top) << 6 | (at.x - cell.left);
                pixel = std::uint64_t{1} << 63 | std::uint64_t{c} << 44 |
                        static_cast<std::uint64_t>(place & 0xFFF) << 32 |
                        (op.underline ? 1u << 24 : 0) | op.color;
            });
            cell.left = cell.right;
        }
    }
    // Of lines the level and the upright ones, which leave out their last point.
    static void Draw(const headless::DisplayList& list, const headless::DrawOperation& op,
                     Picture& picture)
    {
        const auto fill = [&](const RECT& rect) {
            CRect visible;
            visible.IntersectRect(&rect, &op.clip);
            ForEach(picture, visible, [&](CPoint, std::uint64_t& pixel) { pixel = op.color; });
        };
        if (op.kind == headless::DrawKind::Fill) {
            fill(op.bounds);
        } else if (op.kind == headless::DrawKind::Text) {
            DrawText(list, op, picture);
        } else if (op.kind == headless::DrawKind::Polyline) {
            const POINT* const points = list.PointsOf(op);
            for (int i = 1; i < op.count; ++i) {
                const POINT a = points[i - 1], b = points[i];
                if (a.x == b.x)
                    fill({a.x, std::min(a.y, b.y), a.x + 1, std::max(a.y, b.y)});
                else if (a.y == b.y)
                    fill({std::min(a.x, b.x), a.y, std::max(a.x, b.x), a.y + 1});
            }
        }
    }
};

} // namespace

std::unique_ptr<tlvn::EditorHands> tlvn::MakeEditorHands()
{
    return std::make_unique<MemoryHands>();
}
