#include "editor/columns.h"
#include "editor/line_prefix.h"
#include "editor/metrics.h"
#include "persist/setting_data.h"
#include "platform/nls.h"
#include "tests/support/test.h"

namespace {

CBuffer InCode(CodeType type, const WCHAR* text)
{
    const tlvn::WStringView units(text);
    CBuffer buffer;
    std::string bytes(reinterpret_cast<const char*>(units.data()), units.size() * 2);
    if (type != CT_UNICODE)
        tlvn::ConvertFromUtf16(932, units, bytes);
    buffer.Set(bytes.data(), static_cast<int>(bytes.size()));
    return buffer;
}

CBuffer ShiftJis(const WCHAR* text)
{
    return InCode(CT_SJIS, text);
}

CEditorMetrics Read(const CSettingData& settings, int viewer = 0)
{
    CEditorMetrics metrics;
    metrics.GetEditorMetrics(&settings, "Editor", viewer);
    return metrics;
}

const WCHAR* const kDefaultHeads = TW("、。，．？！゛゜ヽヾゝゞ々）〕］｝〉》」』】､｡,.?!ﾞﾟ)]}｣ ");

} // namespace

TEST(EditorMetrics, HasTheDefaultsOfEachRole)
{
    const CEditorMetrics made;
    CSettingData nothing;
    const CEditorMetrics composer = Read(nothing);
    const CEditorMetrics viewer = Read(nothing, 1);
    EXPECT_TRUE(made == composer);
    made.SetEditorMetrics(nullptr, "Editor");
    EXPECT_TRUE(made != viewer);
    const struct {
        int (CEditorMetrics::*get)() const;
        int composer, viewer;
    } cases[] = {
        {&CEditorMetrics::GetShowCaret, 1, 0},  {&CEditorMetrics::GetAutoIndent, 1, 1},
        {&CEditorMetrics::GetQuoteLen, 8, 8},   {&CEditorMetrics::GetSingleClickURL, 1, 1},
        {&CEditorMetrics::GetNoTurnURL, 1, 0},  {&CEditorMetrics::GetNoTurnQuoted, 1, 0},
        {&CEditorMetrics::GetLineSpace, 2, 2},  {&CEditorMetrics::GetPhisicalLineNo, 1, 1},
        {&CEditorMetrics::GetAutoTurn, 1, 2},   {&CEditorMetrics::GetTurnCols, 72, 72},
        {&CEditorMetrics::GetWordWrap, 1, 1},   {&CEditorMetrics::GetTabColumn, 4, 4},
        {&CEditorMetrics::GetFreeCursor, 0, 0}, {&CEditorMetrics::GetShowCR, 0, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ((composer.*c.get)(), c.composer) << &c - cases;
        EXPECT_EQ((viewer.*c.get)(), c.viewer) << &c - cases;
    }
    EXPECT_TRUE(made.GetHead2Prev() == ShiftJis(kDefaultHeads));
    EXPECT_TRUE(made.GetTail2Next() == ShiftJis(TW("（〔［｛〈《「『【([{｢")));
    EXPECT_TRUE(made.GetFont() == CFontInfo(ShiftJis(TW("ＭＳ ゴシック")), 9, 128));
}

// Stored value -> value read, by the composer and by the viewer.
TEST(EditorMetrics, BringsStoredNumbersIntoTheirRange)
{
    const struct {
        const char* key;
        int stored;
        int (CEditorMetrics::*get)() const;
        int composer, viewer;
    } cases[] = {
        {"TurnCols", 5, &CEditorMetrics::GetTurnCols, 10, 10},
        {"TurnCols", 1000, &CEditorMetrics::GetTurnCols, 400, 400},
        {"AutoTurn", 3, &CEditorMetrics::GetAutoTurn, 1, 2},
        {"LineSpace", -4, &CEditorMetrics::GetLineSpace, 0, 0},
        {"TabColumn", -8, &CEditorMetrics::GetTabColumn, 4, 4},
        {"ShowCaret", 0, &CEditorMetrics::GetShowCaret, 1, 0}, // not read by a composer
        {"ShowCaret", 1, &CEditorMetrics::GetShowCaret, 1, 1},
        {"ShowTab", 2, &CEditorMetrics::GetShowTab, 1, 1},
    };
    for (const auto& c : cases) {
        CSettingData settings;
        settings.SetValue("Editor", c.key, c.stored);
        EXPECT_EQ((Read(settings, 0).*c.get)(), c.composer) << c.key << c.stored;
        EXPECT_EQ((Read(settings, 1).*c.get)(), c.viewer) << c.key << c.stored;
    }
}

// Reading appends a blank to Head2Prev, writing takes it away.
// Every field differs from its default, so that one which is not written or not compared shows;
// a process in another code page than the lists' reads them all the same.
TEST(EditorMetrics, ReadsWhatItWrote)
{
    CSettingData settings;
    CEditorMetrics().SetEditorMetrics(&settings, "Editor");
    const CSettingData::PairArray& pairs = *settings.GetPairList("Editor");
    EXPECT_EQ(pairs.GetSize(), 29);
    for (int i = 0; i < pairs.GetSize(); ++i) {
        const CString key = pairs[i]->GetName();
        CSettingData changed;
        changed.CopySD(settings);
        CString value;
        changed.GetValue("Editor", key, value);
        if (value == "0" || value == "1")
            changed.SetValue("Editor", key, value == "0" ? 1 : 0);
        else if (std::isdigit(static_cast<unsigned char>(value[0])))
            changed.SetValue("Editor", key, "11");
        else
            changed.SetValue("Editor", key, TW("│>\t"));
        const CApplyLocale locale(i % 2 == 0 ? CT_SJIS : CT_GB2312);
        const CEditorMetrics read = Read(changed, 1);
        EXPECT_TRUE(read != Read(settings, 1)) << key.GetString();
        CSettingData again;
        read.SetEditorMetrics(&again, "Editor");
        EXPECT_TRUE(Read(again, 1) == read) << key.GetString();
    }
}

TEST(EditorMetrics, KeepsItsListsInTheCodeOfTheText)
{
    CEditorMetrics metrics;
    const CEditorMetrics before = metrics;
    metrics.ChangeCodePage(CT_UNICODE);
    EXPECT_TRUE(metrics == before);
    EXPECT_TRUE(metrics.GetHead2PrevEdit() == InCode(CT_UNICODE, kDefaultHeads));
    EXPECT_TRUE(metrics.GetHead2Prev() == ShiftJis(kDefaultHeads));

    metrics.SetQuoteMark(ShiftJis(TW("＞ ")));
    metrics.ChangeCodePage(CT_GB2312);
    EXPECT_TRUE(metrics.GetQuoteMarkEdit() == CBuffer("\xA3\xBE "));
    metrics.ChangeCodePage(CT_KOI8R); // which has no such character
    EXPECT_TRUE(metrics.GetQuoteMarkEdit() == CBuffer(" "));
    metrics.SetQuoteMark("|");
    EXPECT_TRUE(metrics.GetQuoteMarkEdit() == CBuffer("|"));
    metrics.ChangeCodePage(CT_UNKNOWN);
    EXPECT_TRUE(metrics.GetHead2PrevEdit() == metrics.GetHead2Prev());
}

TEST(FontInfo, ReadsAndWritesItsTwoKeys)
{
    CSettingData settings;
    settings.SetValue("S", "FontFaceName_134", "SimSun");
    settings.SetValue("S", "FontPoint_134", 0);
    settings.SetValue("S", "FontPoint_129", 12);
    CFontInfo font;
    EXPECT_EQ(font.GetFontInfo(&settings, "S", 134), 1);
    EXPECT_TRUE(font == CFontInfo("SimSun", 9, 134));
    EXPECT_EQ(font.GetFontInfo(&settings, "S", 129), 0);
    EXPECT_TRUE(font == CFontInfo("", 12, 129));
    EXPECT_EQ(CFontInfo("x", 9).MakeLogFont(96, 128).lfHeight, -12);
    EXPECT_LT(CFontInfo("x", INT_MAX).MakeLogFont(INT_MAX, 128).lfHeight, 0);
}

TEST(MultiFont, ChoosesByCharacterSetAndForgetsWhatWasRemoved)
{
    CMultiFont fonts;
    const CFontInfo chinese("SimSun", 10, 134);
    fonts.SetFont(CFontInfo("Arial", 10, 134));
    fonts.SetFont(chinese);
    EXPECT_EQ(fonts.GetCount(), 2);
    EXPECT_TRUE(fonts.GetFont(CT_GB2312) == chinese);
    EXPECT_TRUE(fonts.GetFont(CT_SJIS) == CFontInfo());
    EXPECT_TRUE(fonts.GetFont(CT_KOI8R) == CFontInfo()); // the first

    fonts.SetFont(CFontInfo("Arial", 8, 0));
    EXPECT_EQ(fonts.GetFont(CT_KOI8R).GetPoints(), 8); // is the first now, and stays it

    CSettingData settings;
    fonts.SetMultiFont(&settings, "S");
    CMultiFont read;
    read.GetMultiFont(&settings, "S");
    EXPECT_TRUE(read == fonts);
    read.RemoveFont(0);
    read.RemoveFont(128);
    read.SetMultiFont(&settings, "S");
    fonts.GetMultiFont(&settings, "S");
    EXPECT_EQ(fonts.GetCount(), 1);
    EXPECT_TRUE(fonts.GetFont(CT_SJIS) == chinese);
    fonts.RemoveFont(134); // the last one stays
    EXPECT_EQ(fonts.GetCount(), 1);
}

TEST(LinePrefix, TellsIndentationAndQuotes)
{
    const struct {
        const WCHAR* text;
        int indent, all, prefix, quote; // characters
        const WCHAR* marks;
    } cases[] = {
        {TW(""), 0, 0, 0, 0, TW("")},
        {TW(" \t　"), 3, 1, 0, 0, TW("")},
        {TW(">＞|｜│　 x"), 0, 0, 5, 7, TW(">＞|｜│")},
        {TW("> >>　| x"), 0, 0, 6, 7, TW(">>>|")},
        {TW(">  > x"), 0, 0, 1, 3, TW(">")}, // the gap is too wide
        {TW(" > x"), 1, 0, 0, 0, TW("")},
        {TW("> > > > > > > > > x"), 0, 0, 15, 16, TW(">>>>>>>>")}, // no more than QuoteLen
    };
    for (const CodeType type : {CT_SJIS, CT_UNICODE}) {
        CEditorMetrics metrics;
        metrics.ChangeCodePage(type);
        const tlvn::QuoteRules rules(metrics);
        for (const auto& c : cases) {
            const auto bytes = [&](int characters) {
                const tlvn::WStringView start(c.text, static_cast<std::size_t>(characters));
                return InCode(type, tlvn::WString(start).c_str()).GetLength();
            };
            const CBuffer text = InCode(type, c.text);
            const int length = text.GetLength();
            EXPECT_EQ(tlvn::GetIndentLength(metrics, text, length), bytes(c.indent));
            EXPECT_EQ(tlvn::IsIndentTextAll(metrics, text, length), c.all);
            std::string marks;
            EXPECT_EQ(rules.GetPrefixLength(text, length, &marks), bytes(c.prefix));
            CBuffer found;
            found.Set(marks.data(), static_cast<int>(marks.size()));
            EXPECT_TRUE(found == InCode(type, c.marks)) << marks;
            EXPECT_EQ(tlvn::GetQuoteLength(metrics, text, length), bytes(c.quote));
        }
    }
    // A trail byte of 932 (7C, "|") is no quote character.
    CEditorMetrics metrics;
    EXPECT_EQ(tlvn::GetQuoteLength(metrics, ">\x83\x7C", 3), 1);
    EXPECT_EQ(tlvn::GetQuoteLength(metrics, ">\x81", 2), 1);
    metrics.SetQuoteLen(-1);
    EXPECT_EQ(tlvn::GetQuoteLength(metrics, ">", 1), 0);
}

TEST(Columns, CountTabsToTheirStops)
{
    const struct {
        const WCHAR* text;
        int columns;
    } cases[] = {
        {TW(""), 0},
        {TW("abc\td"), 5},
        {TW("あ\tｱ漢\t"), 8},
        {TW("〉"), 2}, // U+3009, whose low byte is that of the tab
    };
    for (const CodeType type : {CT_SJIS, CT_UNICODE}) {
        const tlvn::TextCode code(type);
        for (const auto& c : cases) {
            const CBuffer text = InCode(type, c.text);
            EXPECT_EQ(tlvn::CountColumns(code, text, text.GetLength(), 4), c.columns);
        }
    }
    const tlvn::TextCode narrow(CT_SJIS);
    EXPECT_EQ(tlvn::CountColumns(narrow, "\t", 1, 8, 9), 16);
    EXPECT_EQ(tlvn::CountColumns(narrow, "\t", 1, 0), 1);
    EXPECT_EQ(tlvn::CountColumns(narrow, "\t\t", 2, INT_MAX), INT_MAX);
}
