// What TolvanView remembers from one run to the next, in one settings file.
//
//   ViewSettings settings;
//   settings.File().Load(path, password);
//   const WindowPlace place = settings.GetWindowPlace(screen);
//   ...
//   settings.SetWindowPlace(place);
//   settings.File().Save();
//
// The file's section "Window" has the window, "List" the message list, "Mail" the user's own
// address and the folder shown last. The pieces of the library that keep settings of their own
// get sections of their own: the names are below. Values that make no sense count as missing.

#pragma once

#include "viewer/mail_list.h"
#include "viewer/settings_file.h"

namespace tlvn {

struct WindowPlace {
    CRect rect; // when not maximised
    bool maximized = false;
};

struct ListOrder {
    MailColumn column = MailColumn::Date;
    bool ascending = false;
};

class ViewSettings {
public:
    // Sections for the three-pane frame, the metrics and colours of the two editors, and the keys.
    static constexpr char kFrameSection[] = "Frame";
    static constexpr char kViewerSection[] = "Viewer";
    static constexpr char kComposerSection[] = "Composer";
    static constexpr char kColorSection[] = "Colors";
    static constexpr char kKeySection[] = "Keys";

    static constexpr int kColumns = 4; // of the list, in the order of MailColumn
    static constexpr int kMinWidth = 320;
    static constexpr int kMinHeight = 240;

    SettingsFile& File() { return m_file; }

    // The place stored, brought into the screen's work area and not smaller than the least size
    // (or the screen); without one, three quarters of the screen in its middle.
    WindowPlace GetWindowPlace(const CRect& screen) const;
    void SetWindowPlace(const WindowPlace& place);

    // By date, the newest first, when nothing is stored.
    ListOrder GetListOrder() const;
    void SetListOrder(const ListOrder& order);

    // Pixels of each column: what is stored, brought into 20 to 4000, else the given ones.
    void GetColumnWidths(int (&widths)[kColumns]) const;
    void SetColumnWidths(const int (&widths)[kColumns]);

    // UTF-8; empty when nothing is stored.
    std::string GetOwnAddress() const { return GetText("From"); }
    void SetOwnAddress(const std::string& from) { SetText("From", from); }
    std::string GetLastFolder() const { return GetText("Folder"); }
    void SetLastFolder(const std::string& path) { SetText("Folder", path); }

private:
    std::string GetText(const char* name) const;
    void SetText(const char* name, const std::string& utf8);

    SettingsFile m_file;
};

} // namespace tlvn
