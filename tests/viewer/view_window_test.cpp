#include "viewer/view_window.h"

#include "TlvnMisc.h"

#include <gtest/gtest.h>

namespace {

std::string Repeat(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string NestedParts(int depth)
{
    std::string mail;
    for (int i = 0; i < depth; ++i) {
        const std::string boundary = "b" + std::to_string(i);
        mail += "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + "\n";
    }
    return mail + "\ninnermost\n";
}

} // namespace

// Broken and huge mails are shown as far as they go, one after the other in one window, which is
// resized to nothing and back each time.
TEST(ViewWindow, ShowsWhateverItIsGiven)
{
    const struct {
        std::string mail;
        int leastLines;
    } mails[] = {
        {"", 1},
        {"Subject: \x1b$B$\"", 2},
        {Repeat(" folded\n", 100000), 1},
        {"Subject: a\n\n" + std::string(20'000'000, '\0'), 2},
        {"Content-Type: text/plain; charset=Shift_JIS\n\n" + Repeat("\x82\xA0", 5'000'000), 1},
        {"Subject: x\n\n" + Repeat("\n", 1'000'000), 1'000'000},
        {NestedParts(10000), 1},
    };
    tlvn::ViewWindow window;
    ASSERT_EQ(window.CreateViewWindow(), 1);
    auto* editor =
        static_cast<CEditorWnd*>(CWnd::FromHandlePermanent(::GetDlgItem(window.m_hWnd, 1)));
    for (const auto& c : mails) {
        window.ShowMail(tlvn::Mail(c.mail));
        EXPECT_GE(editor->GetLogicalLineCt(1), c.leastLines);
        window.MoveWindow(0, 0, 0, 0);
        window.UpdateWindow();
        window.MoveWindow(0, 0, 500, 400);
        window.UpdateWindow();
        editor->ScrollToVertPos(c.leastLines);
        editor->UpdateWindow();
    }
    CStringW title;
    window.GetWindowText(title);
    EXPECT_EQ(title, TW("TolvanView"));
    window.DestroyWindow();
}

// A character that the text's own code lacks, in the headers, brings the whole to UTF-16.
TEST(ViewWindow, LosesNoCharacterOfTheHeaders)
{
    const struct {
        const char* subject;
        CodeType codeType;
    } cases[] = {
        {"=?UTF-8?B?5pel5pys?=", CT_SJIS},    // 日本
        {"=?UTF-8?B?8J+MuA==?=", CT_UNICODE}, // a cherry blossom
    };
    tlvn::ViewWindow window;
    ASSERT_EQ(window.CreateViewWindow(), 1);
    auto* editor =
        static_cast<CEditorWnd*>(CWnd::FromHandlePermanent(::GetDlgItem(window.m_hWnd, 1)));
    for (const auto& c : cases) {
        window.ShowMail(tlvn::Mail(std::string("Subject: ") + c.subject +
                                   "\nContent-Type: text/plain; charset=Shift_JIS\n\n\x82\xA0\n"));
        EXPECT_EQ(editor->GetCodeType(), c.codeType);
    }
    window.DestroyWindow();
}
