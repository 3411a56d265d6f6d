// How the scripts of editor_script.cpp reach an editor: by the keyboard, the mouse and the screen
// of the window system, or by those of the windows in memory.

#pragma once

#include "TlvnMisc.h"
#include "platform/nls.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tlvn {

// The client area. A pixel is its colour; the windows in memory do not draw texts: a pixel of one
// stands for a character and the place in it.
struct Picture {
    Picture(int width_, int height_)
        : width(width_), height(height_),
          pixels(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_))
    {}

    std::uint64_t& At(int x, int y) { return pixels[static_cast<std::size_t>(y * width + x)]; }
    std::uint64_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }

    int width, height;
    std::vector<std::uint64_t> pixels;
};

class EditorHands {
public:
    virtual ~EditorHands() = default;

    virtual void Key(int virtualKey, bool down) = 0;
    virtual void MoveMouse(CPoint screenPoint) = 0;
    virtual void Button(bool down) = 0; // the left one
    virtual void Wheel(int delta) = 0;
    // Takes messages, and lets time pass, until the condition holds. False when it never does.
    virtual bool Wait(const std::function<bool()>& condition, int milliseconds = 10000) = 0;
    // Paints what waits to be painted before.
    virtual Picture Look(CEditorWnd& editor) = 0;
    // The input method composes a text of two units; false when there is none. Then it ends.
    virtual bool Compose(CEditorWnd& editor, const WCHAR* text) = 0;
    virtual void EndComposing(CEditorWnd& editor, const WCHAR* text) = 0;
    // Has AnswerOnClipboard run, in a program of its own where there can be one.
    virtual bool AskOtherProgram() = 0;
};

std::unique_ptr<EditorHands> MakeEditorHands();

// Takes the text of the clipboard and puts it there again with "!" behind it.
bool AnswerOnClipboard();

} // namespace tlvn
