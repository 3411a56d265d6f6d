#include "tests/support/temp_folder.h"
#include "viewer/marker_file.h"
#include "viewer/view_settings.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

using State = SettingsFile::State;

// The temporary folder's path is ASCII.
std::string SaveOne(const TempFolder& folder, const std::string& password, const char* value)
{
    SettingsFile file;
    file.Load(folder.Path("s"), password);
    file.Data().SetValue("K", "n", value);
    return file.Save() ? "saved" : file.GetMessage();
}

std::string LoadOne(const TempFolder& folder, const std::string& password, State expected)
{
    SettingsFile file;
    EXPECT_EQ(file.Load(folder.Path("s"), password), expected);
    EXPECT_EQ(file.GetMessage().empty(), expected == State::Loaded || expected == State::Fresh);
    CString value;
    file.Data().GetValue("K", "n", value);
    return value.GetString();
}

TEST(SettingsFile, GoesOnWhateverTheFileIsLike)
{
    const TempFolder folder;
    EXPECT_EQ(LoadOne(folder, "", State::Fresh), "");
    EXPECT_EQ(SaveOne(folder, "", "plain"), "saved");
    EXPECT_EQ(LoadOne(folder, "", State::Loaded), "plain");
    EXPECT_EQ(LoadOne(folder, "secret", State::Loaded), "plain"); // enciphered from now on
    EXPECT_EQ(SaveOne(folder, "secret", "hidden"), "saved");
    EXPECT_NE(folder.Read("s").substr(0, 2), "\xFF\xFE");
    EXPECT_EQ(LoadOne(folder, "secret", State::Loaded), "hidden");

    // A wrong password and a damaged file: what was there is kept under another name.
    const std::string hidden = folder.Read("s");
    EXPECT_EQ(LoadOne(folder, "wrong", State::Locked), "");
    EXPECT_EQ(LoadOne(folder, "", State::Locked), "");
    EXPECT_EQ(SaveOne(folder, "wrong", "new"), "saved");
    EXPECT_EQ(folder.Read("s.kept"), hidden);
    const std::string damaged =
        std::string("\xFF\xFE[\0D\0A\0T\0A\0-\0S\0T\0A\0R\0T\0]\0\r\0\n\0", 30);
    folder.Write("s", damaged);
    EXPECT_EQ(LoadOne(folder, "", State::Damaged), "");
    EXPECT_EQ(SaveOne(folder, "", "newer"), "saved");
    EXPECT_EQ(folder.Read("s.kept2"), damaged);
    EXPECT_EQ(folder.Read("s.kept"), hidden);
    EXPECT_EQ(LoadOne(folder, "", State::Loaded), "newer");
}

TEST(SettingsFile, LeavesAReadOnlyFileAlone)
{
    const TempFolder folder;
    SaveOne(folder, "", "first");
    ASSERT_TRUE(SetFileReadOnly(folder.Path("s").c_str(), true));
    EXPECT_NE(SaveOne(folder, "", "second").find("read-only"), std::string::npos);
    EXPECT_EQ(LoadOne(folder, "", State::Loaded), "first");
    SetFileReadOnly(folder.Path("s").c_str(), false);
    EXPECT_EQ(SaveOne(folder, "", "second"), "saved");

    SettingsFile file; // in a folder that is not there
    file.Load(folder.Path("no/s"), "");
    EXPECT_TRUE(file.Save()); // nothing to save
    file.Data().SetValue("K", "n", "x");
    EXPECT_FALSE(file.Save());
    EXPECT_FALSE(file.GetMessage().empty());
}

TEST(ViewSettings, BringsTheWindowIntoTheScreen)
{
    const struct {
        CRect stored, shown;
    } cases[] = {
        {{100, 50, 900, 650}, {100, 50, 900, 650}},
        {{-500, -500, 0, 0}, {0, 0, 500, 500}},
        {{1900, 1000, 2900, 1600}, {920, 480, 1920, 1080}},
        {{10, 10, 20, 20}, {10, 10, 330, 250}},
        {{0, 0, 5000, 5000}, {0, 0, 1920, 1080}},
        {{300, 300, 100, 100}, {240, 135, 1680, 945}}, // no rectangle
        {{-2147483647, 0, 2147483647, 600}, {0, 0, 1920, 600}},
    };
    for (const auto& c : cases) {
        ViewSettings settings;
        settings.SetWindowPlace({c.stored, true});
        const WindowPlace place = settings.GetWindowPlace(CRect(0, 0, 1920, 1080));
        EXPECT_EQ(place.rect, c.shown) << c.stored.left;
        EXPECT_TRUE(place.maximized);
    }
    // A screen smaller than the window's least size, and none.
    EXPECT_EQ(ViewSettings().GetWindowPlace(CRect(0, 0, 200, 100)).rect, CRect(0, 0, 200, 100));
    EXPECT_EQ(ViewSettings().GetWindowPlace(CRect()).rect, CRect());
}

TEST(ViewSettings, ComeBack)
{
    const TempFolder folder;
    {
        ViewSettings settings;
        settings.File().Load(folder.Path("s"), "");
        settings.SetListOrder({MailColumn::Sender, true});
        settings.SetColumnWidths({1, 100, 200, 99'999});
        settings.SetOwnAddress("𠮟 <a@b>");
        settings.SetLastFolder("C:\\メール\\한");
        EXPECT_TRUE(settings.File().Save());
    }
    ViewSettings settings;
    settings.File().Load(folder.Path("s"), "");
    EXPECT_EQ(settings.GetListOrder().column, MailColumn::Sender);
    EXPECT_TRUE(settings.GetListOrder().ascending);
    int widths[ViewSettings::kColumns] = {};
    settings.GetColumnWidths(widths);
    EXPECT_EQ(std::vector<int>(widths, widths + 4), (std::vector<int>{20, 100, 200, 4000}));
    EXPECT_EQ(settings.GetOwnAddress(), "𠮟 <a@b>");
    EXPECT_EQ(settings.GetLastFolder(), "C:\\メール\\한");
}

TEST(MarkerFile, KeepsMarkersByIdentifierOrPath)
{
    const struct {
        std::string mail;
        const char* path;
        const char* key; // null: a digest
    } cases[] = {
        {"Message-ID: <a=b[1@x>\n\n", "p", "<a=b[1@x>"},
        {"Message-ID:\r\n <1@x> (comment)\n\n", "p", "<1@x>"},
        {"Message-ID: <a b>\n\n", "p", nullptr},
        {"Message-ID: <" + std::string(300, 'x') + ">\n\n", "p", nullptr},
        {"Subject: none\n\n", "メール/1.eml", nullptr},
        {"Subject: other\n\n", "メール/1.eml", nullptr}, // in the same mbox file
        {"Message-ID: <open\n\n", "p", nullptr},
        {"Message-ID: <open\n\n", "q", nullptr},
    };
    const TempFolder folder;
    std::vector<std::string> keys;
    MarkerFile markers;
    EXPECT_EQ(markers.Load(folder.Path("m")), State::Fresh);
    for (const auto& c : cases) {
        keys.push_back(MarkerFile::MakeKey(Mail(c.mail), c.path));
        EXPECT_TRUE(c.key != nullptr ? keys.back() == c.key : keys.back().size() == 36) << c.mail;
        markers.Set(keys.back(), "[0,0,0,5," + std::to_string(keys.size()) + "]");
    }
    markers.Set(keys[0], "");
    ASSERT_TRUE(markers.Save());
    MarkerFile loaded;
    EXPECT_EQ(loaded.Load(folder.Path("m")), State::Loaded);
    EXPECT_EQ(loaded.Get(keys[0]), "");
    for (std::size_t i = 1; i < keys.size(); ++i)
        EXPECT_EQ(loaded.Get(keys[i]), "[0,0,0,5," + std::to_string(i + 1) + "]");

    // Two windows have the file; none loses what the other one saves.
    loaded.Set(keys[1], "[1]");
    markers.Set(keys[2], "[2]");
    EXPECT_TRUE(loaded.Save());
    EXPECT_TRUE(markers.Save());
    EXPECT_EQ(markers.Get(keys[1]), "[1]");
    loaded.Load(folder.Path("m"));
    EXPECT_EQ(loaded.Get(keys[2]), "[2]");
    // What cannot be saved is not forgotten while its folder is open.
    ASSERT_TRUE(SetFileReadOnly(folder.Path("m").c_str(), true));
    loaded.Set(keys[1], "[3]");
    EXPECT_FALSE(loaded.Save());
    loaded.Load(folder.Path("m"));
    EXPECT_EQ(loaded.Get(keys[1]), "[3]");
    loaded.Load(folder.Path("n"));
    EXPECT_EQ(loaded.Get(keys[1]), "");
    SetFileReadOnly(folder.Path("m").c_str(), false);
}

} // namespace
} // namespace tlvn
