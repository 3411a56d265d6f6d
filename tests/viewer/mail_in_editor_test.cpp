#include "viewer/mail_in_editor.h"

#include "TlvnMisc.h"
#include "tests/viewer/viewer_support.h"

#include <gtest/gtest.h>

namespace {

bool Create(CEditorWnd& editor)
{
    return editor.CreateEditorWnd(0, WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL,
                                  CRect(0, 0, 500, 400), nullptr, 0, CEditorMetrics(),
                                  CEditorColor()) != 0;
}

} // namespace

// Broken and huge mails are shown as far as they go, one after the other in one editor, which is
// resized to nothing and back each time.
TEST(MailInEditor, ShowsWhateverItIsGiven)
{
    const struct {
        std::string mail;
        int leastLines;
    } mails[] = {
        {"", 1},
        {"Subject: \x1b$B$\"", 2},
        {Repeated(" folded\n", 800'000), 1},
        {"Subject: a\n\n" + std::string(20'000'000, '\0'), 2},
        {"Content-Type: text/plain; charset=Shift_JIS\n\n" + Repeated("\x82\xA0", 10'000'000), 1},
        {"Subject: x\n\n" + std::string(1'000'000, '\n'), 1'000'000},
        {NestedParts(10000), 1},
    };
    CEditorWnd editor;
    ASSERT_TRUE(Create(editor));
    for (const auto& c : mails) {
        tlvn::ShowMailInEditor(tlvn::Mail(c.mail), editor);
        EXPECT_GE(editor.GetLogicalLineCt(1), c.leastLines);
        editor.MoveWindow(0, 0, 0, 0);
        editor.UpdateWindow();
        editor.MoveWindow(0, 0, 500, 400);
        editor.UpdateWindow();
        editor.ScrollToVertPos(c.leastLines);
        editor.UpdateWindow();
    }
    editor.DestroyWindow();
}

// A character that the text's own code lacks, in the headers, brings the whole to UTF-16.
TEST(MailInEditor, LosesNoCharacterOfTheHeaders)
{
    const struct {
        const char* subject;
        CodeType codeType;
    } cases[] = {
        {"=?UTF-8?B?5pel5pys?=", CT_SJIS},    // 日本
        {"=?UTF-8?B?8J+MuA==?=", CT_UNICODE}, // a cherry blossom
    };
    CEditorWnd editor;
    ASSERT_TRUE(Create(editor));
    for (const auto& c : cases) {
        const tlvn::Mail mail(std::string("Subject: ") + c.subject +
                              "\nContent-Type: text/plain; charset=Shift_JIS\n\n\x82\xA0\n");
        tlvn::ShowMailInEditor(mail, editor);
        EXPECT_EQ(editor.GetCodeType(), c.codeType);
    }
    editor.DestroyWindow();
}
