// The editors that ours is measured beside, in the form in which the benchmark handles all.

#pragma once

#include "platform/nls.h"

#include <memory>
#include <string>

// An editor in a window that wraps lines at its width. What an operation changes on screen is
// painted when it returns.
class BenchEditor {
public:
    virtual ~BenchEditor() = default;

    // The text that the editor was made with.
    virtual void Load() = 0;
    virtual void GoToEnd() = 0;
    // To the end of the line in the middle.
    virtual void GoToMiddle() = 0;
    // At the caret; Insert into the text, Press through the queue of events.
    virtual void Insert(const char* ascii) = 0;
    virtual void Press(char key) = 0;
    virtual void AppendLine() = 0; // behind the text; painted later
    virtual void GoPageDown() = 0;
    virtual void PaintAll() = 0;
};

// The window of all of them, in pixels, and their font.
constexpr int kBenchWidth = 640;
constexpr int kBenchHeight = 480;
constexpr char kBenchFont[] = "IPAGothic";
constexpr int kBenchFontPoints = 9;

// Null when the peer is not installed. The text is converted to the peer's own form here.
std::unique_ptr<BenchEditor> MakeScintilla(const tlvn::WString& text);
std::unique_ptr<BenchEditor> MakePlainTextEdit(const tlvn::WString& text);
