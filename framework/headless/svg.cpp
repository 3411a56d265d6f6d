// A window's recorded drawing as SVG.

#include "framework/headless/desktop.h"

#include <cstdio>

namespace tlvn {
namespace headless {
namespace {

void AppendUtf8(std::string& out, char32_t c)
{
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6);
        put(0x80 | (c & 63));
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        put(0x80 | (c >> 6 & 63));
        put(0x80 | (c & 63));
    } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 63));
        put(0x80 | (c >> 6 & 63));
        put(0x80 | (c & 63));
    }
}

bool IsHighSurrogate(WCHAR c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLowSurrogate(WCHAR c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

// Markup characters become entities; what XML cannot hold becomes U+FFFD.
void AppendText(std::string& out, WStringView text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        } else if ((c >= 0xD800 && c <= 0xDFFF) || c == 0xFFFE || c == 0xFFFF ||
                   (c < 0x20 && c != '\t') || c == 0x7F) {
            c = 0xFFFD;
        }
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            AppendUtf8(out, c);
        }
    }
}

std::string Number(LONG value)
{
    return std::to_string(value);
}

std::string Color(COLORREF color)
{
    char text[8];
    std::snprintf(text, sizeof(text), "#%02x%02x%02x", GetRValue(color), GetGValue(color),
                  GetBValue(color));
    return text;
}

class SvgWriter {
public:
    explicit SvgWriter(std::string& out) : m_out(out) {}

    void Rect(const RECT& r, COLORREF color, const char* more = "")
    {
        if (IsEmpty(r))
            return;
        m_out += "<rect x=\"" + Number(r.left) + "\" y=\"" + Number(r.top) + "\" width=\"" +
                 Number(Width(r)) + "\" height=\"" + Number(Height(r)) + "\" fill=\"" +
                 Color(color) + "\"" + more + "/>\n";
    }

    // Runs of one width each, so that cells line up whatever the font makes of them.
    void Text(const DrawOperation& op, WStringView text, const int* advances)
    {
        LONG x = op.bounds.left;
        std::size_t begin = 0;
        while (begin < text.size()) {
            LONG width = 0;
            std::size_t end = begin;
            const int cells = CellsOf(text[begin]);
            while (end < text.size() &&
                   (end == begin || CellsOf(text[end]) == cells || CellsOf(text[end]) == 0)) {
                width += advances != nullptr ? advances[end] : op.font.WidthOf(text[end]);
                ++end;
                if (advances != nullptr && (end == text.size() || !IsLowSurrogate(text[end])))
                    break;
            }
            Run(op, text.substr(begin, end - begin), x, width);
            x += width;
            begin = end;
        }
        if (op.underline) {
            const LONG y = op.bounds.top + std::min(op.font.ascent + 1, op.font.height - 1);
            Rect({op.bounds.left, y, op.bounds.right, y + 1}, op.color);
        }
    }

    void Points(const DrawOperation& op, const POINT* points)
    {
        const bool filled = op.kind == DrawKind::Polygon;
        m_out += filled ? "<polygon points=\"" : "<polyline points=\"";
        for (int i = 0; i < op.count; ++i) {
            // Lines run through the middle of pixels.
            const char* const half = filled ? "" : ".5";
            m_out += Number(points[i].x) + half + "," + Number(points[i].y) + half + " ";
        }
        m_out += filled ? "\" fill=\"" + Color(op.color) + "\"/>\n"
                        : "\" fill=\"none\" stroke=\"" + Color(op.color) + "\" stroke-width=\"" +
                              Number(op.penWidth) + "\"/>\n";
    }

    void Operation(const DisplayList& list, const DrawOperation& op)
    {
        const bool clipped = !Contains(op.clip, op.bounds) && op.kind != DrawKind::Fill;
        if (clipped)
            BeginClip(op.clip);
        switch (op.kind) {
        case DrawKind::Fill:
            Rect(op.Visible(), op.color);
            break;
        case DrawKind::Text:
            Text(op, list.TextOf(op), list.AdvancesOf(op));
            break;
        case DrawKind::Polyline:
        case DrawKind::Polygon:
            Points(op, list.PointsOf(op));
            break;
        case DrawKind::Invert:
            Rect(op.Visible(), 0x000000, " fill-opacity=\".35\"");
            break;
        }
        if (clipped)
            End();
    }

    void BeginClip(const RECT& r)
    {
        const std::string id = "c" + std::to_string(++m_clips);
        m_out += "<clipPath id=\"" + id + "\"><rect x=\"" + Number(r.left) + "\" y=\"" +
                 Number(r.top) + "\" width=\"" + Number(Width(r)) + "\" height=\"" +
                 Number(Height(r)) + "\"/></clipPath><g clip-path=\"url(#" + id + ")\">\n";
    }
    void BeginAt(LONG x, LONG y)
    {
        m_out += "<g transform=\"translate(" + Number(x) + "," + Number(y) + ")\">\n";
    }
    void End() { m_out += "</g>\n"; }

    void Draw(const Window& window)
    {
        m_out += "<!-- ";
        const std::size_t name = m_out.size();
        AppendText(m_out, window.windowClass->name);
        // Two hyphens would end the comment.
        for (std::size_t at = name; (at = m_out.find("--", at)) != std::string::npos;)
            m_out[at] = '_';
        m_out += " -->\n";
        const RECT whole = {0, 0, Width(window.rect), Height(window.rect)};
        BeginClip(whole);
        Frame(window, whole);
        BeginClip(window.client);
        for (const DrawOperation& op : window.drawing.Operations())
            Operation(window.drawing, op);
        BeginAt(window.client.left, window.client.top);
        for (std::size_t i = window.children.size(); i-- > 0;) {
            const Window* const child = FindWindowOf(window.children[i]);
            if ((child->style & WS_VISIBLE) == 0)
                continue;
            BeginAt(child->rect.left, child->rect.top);
            Draw(*child);
            End();
        }
        const CaretState caret = GetCaretState();
        if (caret.visible && caret.window == window.handle)
            Rect(caret.rect, 0x000000);
        End();
        End();
        // What was drawn outside the client area lies over the frame.
        for (const DrawOperation& op : window.drawing.Operations()) {
            if (IsEmpty(Intersect(op.Visible(), window.client)))
                Operation(window.drawing, op);
        }
        End();
    }

private:
    void Run(const DrawOperation& op, WStringView text, LONG x, LONG width)
    {
        // Blanks leave no mark.
        if (text.find_first_not_of(TW(" \u3000")) == WStringView::npos)
            return;
        m_out += "<text x=\"" + Number(x) + "\" y=\"" + Number(op.bounds.top + op.font.ascent) +
                 "\" font-size=\"" + Number(op.font.height) + "\" fill=\"" + Color(op.color) +
                 "\" textLength=\"" + Number(width) + "\" lengthAdjust=\"spacingAndGlyphs\"";
        if (op.bold)
            m_out += " font-weight=\"bold\"";
        if (op.italic)
            m_out += " font-style=\"italic\"";
        m_out += ">";
        AppendText(m_out, text);
        m_out += "</text>\n";
    }

    void Label(LONG x, LONG y, WStringView text, COLORREF color)
    {
        DrawOperation op;
        op.kind = DrawKind::Text;
        op.font = MakeCellFont(12, 0);
        op.color = color;
        op.bounds = {x, y, x, y + op.font.height};
        Text(op, text, nullptr);
    }

    void Frame(const Window& window, const RECT& whole)
    {
        const RECT client = window.client;
        if (!Equal(client, whole)) {
            Rect(whole, GetSysColor(COLOR_3DSHADOW));
            Rect({1, 1, whole.right - 1, whole.bottom - 1}, GetSysColor(COLOR_3DFACE));
        }
        Rect(client, GetSysColor(COLOR_WINDOW));
        LONG top = client.top;
        if (!window.IsChildWindow() && window.menu != nullptr) {
            top -= GetSystemMetrics(SM_CYMENU);
            MenuBar(window.menu, client.left, top);
        }
        if ((window.style & WS_CAPTION) == WS_CAPTION) {
            Rect(
                {client.left, top - GetSystemMetrics(SM_CYCAPTION), whole.right - client.left, top},
                GetSysColor(COLOR_ACTIVECAPTION));
            Label(client.left + 6, top - GetSystemMetrics(SM_CYCAPTION) + 5, window.text,
                  GetSysColor(COLOR_CAPTIONTEXT));
        }
        if (HasVerticalBar(window))
            Bar({client.right, client.top, client.right + GetSystemMetrics(SM_CXVSCROLL),
                 client.bottom},
                window.bars[SB_VERT], true);
        if (HasHorizontalBar(window))
            Bar({client.left, client.bottom, client.right,
                 client.bottom + GetSystemMetrics(SM_CYHSCROLL)},
                window.bars[SB_HORZ], false);
    }

    void MenuBar(HMENU handle, LONG x, LONG y)
    {
        const Menu* const menu = Desk().menus.Find(handle);
        if (menu == nullptr)
            return;
        const CellFont font = MakeCellFont(12, 0);
        for (const MenuItem& item : menu->items) {
            WString text = item.text;
            std::erase(text, u'&');
            Label(x + 8, y + 4, text, GetSysColor(COLOR_MENUTEXT));
            x += font.WidthOf(text.data(), static_cast<int>(text.size())) + 16;
        }
    }

    void Bar(const RECT& r, const ScrollBar& bar, bool vertical)
    {
        Rect(r, GetSysColor(COLOR_SCROLLBAR));
        const LONG thickness = vertical ? Width(r) : Height(r);
        const LONG length = vertical ? Height(r) : Width(r);
        const LONG track = length - 2 * thickness;
        for (const LONG at : {LONG{0}, length - thickness}) {
            const RECT button = vertical
                                    ? RECT{r.left, r.top + at, r.right, r.top + at + thickness}
                                    : RECT{r.left + at, r.top, r.left + at + thickness, r.bottom};
            Rect({button.left + 1, button.top + 1, button.right - 1, button.bottom - 1},
                 GetSysColor(COLOR_3DFACE));
        }
        const INT64 span = static_cast<INT64>(bar.most) - bar.least + 1;
        if (bar.disabled || track <= 0 || span <= 0 || bar.HighestPosition() <= bar.least)
            return;
        const LONG thumb =
            std::clamp(static_cast<LONG>(bar.page > 0 ? track * static_cast<INT64>(bar.page) / span
                                                      : thickness),
                       std::min<LONG>(8, track), track);
        const LONG start =
            thickness +
            static_cast<LONG>((track - thumb) * (static_cast<INT64>(bar.position) - bar.least) /
                              (static_cast<INT64>(bar.HighestPosition()) - bar.least));
        const RECT knob =
            vertical ? RECT{r.left + 2, r.top + start, r.right - 2, r.top + start + thumb}
                     : RECT{r.left + start, r.top + 2, r.left + start + thumb, r.bottom - 2};
        Rect(knob, GetSysColor(COLOR_3DSHADOW));
    }

    std::string& m_out;
    int m_clips = 0;
};

} // namespace
} // namespace headless

bool WriteWindowSvg(HWND handle, std::string& svg)
{
    using namespace headless;
    svg.clear();
    if (!IsWindow(handle))
        return false;
    RedrawWindow(handle, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return false;
    const std::string width = std::to_string(Width(window->rect));
    const std::string height = std::to_string(Height(window->rect));
    svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"" +
          width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height +
          "\" xml:space=\"preserve\" shape-rendering=\"crispEdges\" font-family=\"'IPAGothic', "
          "'MS Gothic', 'Noto Sans Mono CJK JP', 'Osaka-Mono', monospace\">\n";
    SvgWriter(svg).Draw(*window);
    svg += "</svg>\n";
    return true;
}

} // namespace tlvn
