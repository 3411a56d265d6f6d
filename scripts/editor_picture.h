// A mail in an editor window, with everything that the editor shows: three depths of quotes,
// links, marks, a selection, search hits, line markers, flagged characters, rulers.

#pragma once

#include "TlvnMisc.h"
#include "platform/nls.h"

#include <string>

inline std::string ToShiftJis(const char* utf8)
{
    std::string text;
    tlvn::ConvertFromUtf16(932, tlvn::Utf8ToUtf16(utf8), text);
    return text;
}

// Calls visit(start, end) for each occurrence in the body.
template <class Visit>
void ForEachOccurrence(const CEditorWnd& editor, const char* utf8, Visit visit)
{
    const std::string find = ToShiftJis(utf8);
    for (int i = editor.GetHeaderLineL(); i < editor.GetLogicalLineCt(1); ++i) {
        const CLLineData& line = editor.GetDoc().GetLine(i);
        const std::string text(line.GetText(), static_cast<std::size_t>(line.GetLength()));
        for (std::size_t at = text.find(find); at != std::string::npos;
             at = text.find(find, at + find.size())) {
            visit(CTextPos(i, static_cast<int>(at)),
                  CTextPos(i, static_cast<int>(at + find.size())));
        }
    }
}

inline void CreateEditorPicture(CEditorWnd& editor)
{
    CEditorMetrics metrics;
    metrics.SetShowCR(1);
    metrics.SetShowEOF(1);
    metrics.SetShowTab(1);
    metrics.SetShowSpace(1);
    metrics.SetShowZenSpace(1);
    metrics.SetShowColRuler(1);
    metrics.SetShowLineRuler(1);
    editor.CreateEditorWnd(0, WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL,
                           CRect(0, 0, 640, 420), nullptr, 0, metrics, CEditorColor());
    const std::string header =
        ToShiftJis("件名: Re: 来週の会議について\r\n差出人: 佐藤 花子 <hanako@example.jp>\r\n"
                   "宛先: 山田 太郎 <taro@example.com>\r\n日付: 2024年5月13日(月) 10:24");
    const std::string body = ToShiftJis(
        "山田様\r\n\r\n"
        ">>> 会議室は 302 でよろしいでしょうか。\r\n"
        ">> はい、302 号室で結構です。\r\n"
        "> では、10 時から始めましょう。\r\n"
        "承知しました。資料は http://www.example.jp/files/?id=20240513 に置きました。\r\n"
        "ご質問は hanako@example.jp までお願いします。\r\n\r\n"
        "\t項目\t数量\t単価\r\n\tﾉｰﾄﾊﾟｿｺﾝ\t3\t①㈱\r\n\r\n"
        "全角　空白と half-width の blank が混ざった行です。長い行は七十二桁で折り返され"
        "るので、句読点が行頭に来ることはありません、というのが禁則処理です。\r\n\r\n"
        "検索で見つかった会議、会議、会議。\r\n"
        "ここは黄色、ここは桃色、ここは水色の目印です。\r\n"
        "この行の一部を選択しています。\r\n\r\n佐藤");
    editor.SetDocument(CT_SJIS, body.data(), static_cast<int>(body.size()));
    editor.InsertHeaderText(header.data(), static_cast<int>(header.size()));
    ForEachOccurrence(editor, "会議", [&](const CTextPos& start, const CTextPos& end) {
        editor.AddFoundArray(start, end);
    });
    int kind = 0;
    for (const char* const marked : {"黄色", "桃色", "水色"}) {
        ForEachOccurrence(editor, marked, [&](const CTextPos& start, const CTextPos& end) {
            editor.DrawLineMarker(kind, start, end);
        });
        ++kind;
    }
    ForEachOccurrence(editor, "一部を選択", [&](const CTextPos& start, const CTextPos& end) {
        editor.SelectText(start, end, 1, 0);
    });
    editor.SetFocus();
    editor.UpdateWindow();
}
