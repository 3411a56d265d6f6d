// Draws the picture of editor_picture.h as SVG, from the windows in memory.
//   draw-editor OUT.svg

#include "framework/headless/headless.h"
#include "scripts/editor_picture.h"

#include <fstream>

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    CEditorWnd editor;
    CreateEditorPicture(editor);
    std::string svg;
    tlvn::WriteWindowSvg(editor.m_hWnd, svg);
    std::ofstream out(argv[1], std::ios::binary);
    out << svg;
    return out.flush() ? 0 : 1;
}
