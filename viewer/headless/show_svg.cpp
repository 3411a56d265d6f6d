#include "viewer/show_svg.h"

#include "framework/headless/headless.h"
#include "platform/file.h"
#include "viewer/mail_in_editor.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr int kWidth = 720;
constexpr int kMinHeight = 240;
constexpr int kMaxHeight = 4000;

} // namespace

int WriteMailSvg(const Mail& mail, const std::string& path, std::string& error)
{
    CEditorWnd editor;
    if (editor.CreateEditorWnd(0, WS_POPUP | WS_VISIBLE, CRect(0, 0, kWidth, kMinHeight), nullptr,
                               0, CEditorMetrics(), CEditorColor()) == 0) {
        error = "the window for the picture cannot be made";
        return 0;
    }
    ShowMailInEditor(mail, editor);

    // As high as the mail is long, within reason.
    const INT64 lineHeight = editor.GetCharHeight() + editor.GetEditorMetrics().GetLineSpace();
    const INT64 wanted = lineHeight * (editor.GetPhisicalLineCt(1) + 2);
    const int height = static_cast<int>(std::clamp<INT64>(wanted, kMinHeight, kMaxHeight));
    editor.MoveWindow(0, 0, kWidth, height, TRUE);
    editor.UpdateWindow();

    std::string svg;
    WriteWindowSvg(editor.m_hWnd, svg);
    FileHandle file = kNoFile;
    FileResult result =
        OpenFile(path.c_str(), kFileWrite, kFileWrite, FileCreation::CreateAlways, file);
    if (result) {
        result = WriteToFile(file, svg.data(), svg.size());
        const FileResult closed = CloseFile(file);
        if (result)
            result = closed;
    }
    if (!result)
        error = "the picture cannot be written";
    return result ? 1 : 0;
}

} // namespace tlvn
