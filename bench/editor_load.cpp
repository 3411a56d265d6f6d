// Loads 50 MB into an editor in a window of the system, measuring with the real font, and tells
// how long it took.

#include "bench/editor_window.h"
#include "bench/mail_text.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

int main()
{
    const std::string text = MakeMailText(50'000'000);
    std::vector<double> seconds;
    for (int round = 0; round < 3; ++round) {
        CEditorWnd editor;
        CreateBenchWindow(editor);
        const auto start = std::chrono::steady_clock::now();
        LoadToEnd(editor, text);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        seconds.push_back(taken.count());
        std::printf("loading %.1f MB, %d lines in %d rows, into a window: %.2f s\n",
                    static_cast<double>(text.size()) / 1e6, editor.GetLogicalLineCt(1),
                    editor.GetDocSize(), taken.count());
        std::fflush(stdout);
    }
    std::printf("best: %.2f s\n", *std::min_element(seconds.begin(), seconds.end()));
}
