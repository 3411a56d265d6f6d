// Our editor as the benchmarks create it: what it is asked to do on loading is the most it can be,
// lines wrapped at the window with links, words, and the rules of line heads and tails.

#pragma once

#include "bench/editor_peers.h"
#include "editor/editor_wnd.h"

#include <string>

inline void CreateBenchWindow(CEditorWnd& editor)
{
    CEditorMetrics metrics;
    metrics.SetAutoTurn(CEditorMetrics::kTurnAtWindow);
    metrics.SetNoTurnQuoted(0);
    editor.CreateEditorWnd(0, WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL,
                           CRect(0, 0, kBenchWidth, kBenchHeight), nullptr, 0, metrics,
                           CEditorColor());
    editor.SetFocus();
    editor.UpdateWindow();
}

// Loads the text, goes to its end and paints that.
inline void LoadToEnd(CEditorWnd& editor, const std::string& text)
{
    editor.SetDocument(CT_SJIS, text.data(), static_cast<int>(text.size()));
    editor.CaretDocEnd();
    editor.UpdateWindow();
}
