#include "editor/text_model.h"
#include "tests/support/edit_model.h"
#include "tests/support/test.h"

using edit_model::LinesOf;
using Texts = std::vector<std::string>;

namespace {

void Set(tlvn::TextModel& model, const std::string& text)
{
    model.SetDocument(CT_SJIS, text.data(), static_cast<int>(text.size()));
}

std::string Markers(const tlvn::TextModel& model)
{
    CString text;
    SerializeLineMarkerArray(model.GetMarkers(), 0, text);
    return text.GetString();
}

} // namespace

TEST(TextPos, ComparesTheDisplayFormOnly)
{
    CTextPos a(3, 1, 2), b(3, 1, 2);
    b.logicalByte = 9;
    EXPECT_TRUE(a == b && a <= b && !(a < b) && a.IsEmpty(b) == 1);
    EXPECT_EQ(a.IsInRange(a, CTextPos(3, 1, 3)), 1);
    EXPECT_EQ(a.IsInRange(CTextPos(), a), 0); // the end is not in the range
}

// Inside the limits the other fields stay, outside they go.
TEST(TextPos, MovesUpAndDownWithinLimits)
{
    const std::pair<int, CTextPos> cases[] = {
        {2, {5, 1, 2}}, {3, {5, 0, 0}}, {-4, {0, 0, 0}}, {INT_MAX, {5, 0, 0}}};
    for (const auto& [delta, expected] : cases) {
        CTextPos pos(3, 1, 2);
        pos.UpLineL(delta, 0, 5);
        EXPECT_EQ(pos, expected);
    }
}

// Text -> result, and what is written back: relative lines, a piece without "[", missing and
// overlong numbers; records before a fault stay.
TEST(LineMarkers, AreKeptAsText)
{
    const struct {
        const char* text;
        int result;
        const char* written;
    } cases[] = {
        {"[0,0,0,5,2], [3,1,4,0,0]", 1, "[0,0,0,5,2], [3,1,4,0,0]"},
        {"", 1, ""},
        {"[1,2,3,4,5] x", 0, "[1,2,3,4,5]"},
        {"[-3, 2,3,4,5][1,2,3,4,5", 1, "[-3,2,3,4,5], [1,2,3,4,5]"},
        {"[99999999999,0,0,5,2]", 0, ""},
        {"[2147483647,0,0,5,2]", 0, ""}, // beyond all lines when the base is added
    };
    for (const auto& c : cases) {
        CEditorLineMarkerArray markers;
        EXPECT_EQ(SerializeLineMarkerArray(c.text, 10, markers), c.result);
        CString text;
        SerializeLineMarkerArray(markers, 10, text);
        EXPECT_STREQ(text.GetString(), c.written);
        ClearLineMarkerArray(markers);
    }
}

// Marks from outside, with numbers that must not overflow.
TEST(TextModel, TakesWildMarkers)
{
    tlvn::TextModel model;
    Set(model, "0123456789\nabc");
    CEditorLineMarkerArray wild;
    SerializeLineMarkerArray("[-5,-5,2147483647,2147483647,9], [1,0,1,2147483647,2]", 0, wild);
    model.InitMarkers(wild);
    ClearLineMarkerArray(wild);
    model.InsertText(CTextPos(1, 0), "\n12", 3);
    model.DeleteText(CTextPos(0, 4), CTextPos(2, 1));
    model.InsertHeader("", 0);
    model.TextInserted(INT_MIN, 0, INT_MAX, 0);
    model.TextDeleted(INT_MIN, 0, INT_MAX - 1, 0);
    EXPECT_EQ(Markers(model).back(), ']');
    model.EraseAllMarkers();
    EXPECT_EQ(Markers(model), "");
}

// Erasing all marks is a step that leaves the caret where it is.
TEST(TextModel, BringsBackErasedMarkers)
{
    tlvn::TextModel model;
    Set(model, "0123456789");
    model.DrawMarker(1, CTextPos(0, 8), CTextPos(0, 0));
    model.EraseAllMarkers();
    EXPECT_TRUE(model.IsMarkerModified());
    CTextPos caret(0, 5);
    model.Undo(caret);
    EXPECT_EQ(Markers(model), "[0,0,0,8,1]");
    EXPECT_EQ(caret.logicalByte, 5);
}

// Marks and steps stay with their text when a header comes and goes.
TEST(TextModel, HeaderShiftsMarkersAndHistory)
{
    tlvn::TextModel model;
    Set(model, "body");
    model.DrawMarker(0, CTextPos(0, 0), CTextPos(0, 2));
    model.InsertText(CTextPos(0, 4), "!", 1);
    model.InsertHeader("A: b\nC: d", 9);
    EXPECT_EQ(Markers(model), "[2,0,2,2,0]");
    CTextPos caret;
    model.Undo(caret);
    EXPECT_EQ(caret.line, 2);
    model.RemoveHeader();
    model.Redo(caret);
    EXPECT_EQ(LinesOf(model.GetDocument()), Texts{"body!"});
    EXPECT_EQ(Markers(model), "[0,0,0,2,0]");
    model.SetHeaderLineCount(1);
    model.Undo(caret); // a change of the text, not of what the header is
    EXPECT_EQ(model.GetDocument().GetHeaderLineCount(), 1);
}

// Shapes that break what is quadratic or counts in characters.
TEST(TextModel, TakesHostileShapes)
{
    std::string text(1 << 20, '\n');
    tlvn::TextModel model;
    Set(model, text);
    EXPECT_EQ(model.GetDocument().GetLineCount(), (1 << 20) + 1);
    CTextPos caret = model.InsertText(CTextPos(1 << 19, 0), "\x82", 1); // half a character
    EXPECT_EQ(caret, CTextPos(1 << 19, 0, 1));
    caret = model.InsertText(caret, "\xA0", 1); // the other half makes a pair
    EXPECT_EQ(caret.logicalByte, 2);
    model.DeleteText(CTextPos(0, 0), CTextPos(INT_MAX, INT_MAX));
    EXPECT_EQ(model.GetDocument().GetLineCount(), 1);
    while (model.CanUndo())
        model.Undo(caret);
    EXPECT_EQ(model.GetDocument().GetLineCount(), (1 << 20) + 1);
    text.clear();
    for (int i = 0; i < 1 << 18; ++i)
        text += "\x81\x5B"; // the kind of each is that of the one before it
    Set(model, text);
    CTextPos word(0, 1 << 18);
    model.GetDocument().ToWordTop(word);
    EXPECT_EQ(word.logicalByte, 0);
    model.GetDocument().ToWordEnd(word);
    EXPECT_EQ(word.logicalByte, 1 << 19);
    text.assign(1 << 22, '\x88'); // every byte leads and trails
    Set(model, text);
    caret = model.InsertText(CTextPos(0, (1 << 21) + 1), "a", 1);
    EXPECT_EQ(caret.logicalByte, (1 << 21) + 1);
}
