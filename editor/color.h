// The colours of the editor: a value of 27 slots.
//
//   CEditorColor colors;                       // the defaults
//   colors.GetEditorColor(&settings, "Editor");
//   colors.SetUrlColor(0x00FF0000);            // blue
//   colors.SetEditorColor(&settings, "Editor");
//
// Colours are Windows colour references, 0x00BBGGRR. -1 (0xFFFFFFFF) in one of the first four
// slots stands for a colour of the system, which the getter then returns; the getter ending in
// Org returns what the slot holds. No other slot has a colour of the system behind it: an
// indexed one turns -1 into its default, any other keeps it.
//
//   slot                  key in the settings            default
//   text                  Text                           the system's window text
//   background            Back                           the system's window
//   selected text         SelText                        the system's highlighted text
//   selected background   SelBack                        the system's highlight
//   quoted text, 0-3      QuotedText0 ...                008000 004080 804000 800080
//   symbols               Symbol                         808000
//   links                 URL                            FF0000
//   half-width katakana   Katakana                       0000FF
//   machine-dependent     MachineDepend                  0000FF
//   header background     HeaderBack                     D0FFD0
//   found text            FindedText                     FFFFFF
//   found background      FindedBack                     FF00FF
//   marker text, 0-5      LineMarkerText0 ...            000000
//   marker background     LineMarkerBack0 ...            00FFFF FF00FF FFFF00 4040FF 40FF40 FF4040
//
// The spellings are those of settings files in use.

#pragma once

#include "framework/framework.h"

class CSettingData;

class TLVN_API CEditorColor {
public:
    // The defaults.
    CEditorColor();

    // The colours of plain text and of the selection; the getters ending in Org do not ask the
    // system.
    COLORREF GetTextColor() const;
    COLORREF GetTextColorOrg() const { return m_slots[kText]; }
    void SetTextColor(COLORREF color) { m_slots[kText] = color; }

    // Behind plain text.
    COLORREF GetBackColor() const;
    COLORREF GetBackColorOrg() const { return m_slots[kBack]; }
    void SetBackColor(COLORREF color) { m_slots[kBack] = color; }

    // Selected text.
    COLORREF GetSelTextColor() const;
    COLORREF GetSelTextColorOrg() const { return m_slots[kSelText]; }
    void SetSelTextColor(COLORREF color) { m_slots[kSelText] = color; }

    // Behind selected text.
    COLORREF GetSelBackColor() const;
    COLORREF GetSelBackColorOrg() const { return m_slots[kSelBack]; }
    void SetSelBackColor(COLORREF color) { m_slots[kSelBack] = color; }

    // Text of a quoted line by its colour level, 0 to 3 (quote_table.h): any other is grey.
    // Setting does nothing for other levels; -1 sets the level's default.
    COLORREF GetQuotedTextColor(int level) const;
    void SetQuotedTextColor(int level, COLORREF color);

    // The marks for tabs, blanks, full-width blanks, line ends and the end of the text.
    COLORREF GetSymbolColor() const { return m_slots[kSymbol]; }
    void SetSymbolColor(COLORREF color) { m_slots[kSymbol] = color; }

    // Links, mail addresses among them.
    COLORREF GetUrlColor() const { return m_slots[kUrl]; }
    void SetUrlColor(COLORREF color) { m_slots[kUrl] = color; }

    // Half-width katakana.
    COLORREF GetKatakanaColor() const { return m_slots[kKatakana]; }
    void SetKatakanaColor(COLORREF color) { m_slots[kKatakana] = color; }

    // Machine-dependent characters.
    COLORREF GetMacnDependColor() const { return m_slots[kMachineDepend]; }
    void SetMacnDependColor(COLORREF color) { m_slots[kMachineDepend] = color; }

    // Behind the header block.
    COLORREF GetHeaderBackColor() const { return m_slots[kHeaderBack]; }
    void SetHeaderBackColor(COLORREF color) { m_slots[kHeaderBack] = color; }

    // What a search found.
    COLORREF GetFindedTextColor() const { return m_slots[kFindedText]; }
    void SetFindedTextColor(COLORREF color) { m_slots[kFindedText] = color; }
    COLORREF GetFindedBackColor() const { return m_slots[kFindedBack]; }
    void SetFindedBackColor(COLORREF color) { m_slots[kFindedBack] = color; }

    // Line markers by their kind, 0 to GetLineMarkerKindCt() - 1: any other has black text on
    // grey. Setting does nothing for other kinds; -1 sets black text or the kind's default
    // background.
    static int GetLineMarkerKindCt() { return kMarkerKinds; }
    COLORREF GetLineMarkerTextColor(int kind) const;
    void SetLineMarkerTextColor(int kind, COLORREF color);
    COLORREF GetLineMarkerBackColor(int kind) const;
    void SetLineMarkerBackColor(int kind, COLORREF color);

    // Every slot to its default.
    void ResetColor();
    // Black on white, and white on black for what is highlighted: for printing.
    void SetMonochromeColor();

    // Reads every slot from the key `section`; what is missing there, or everything when
    // `settings` is null, gets its default. The first quote colour is also looked for under its
    // old name, "QuoteText".
    void GetEditorColor(const CSettingData* settings, const char* section);
    // Writes every slot as it is held. Does nothing when `settings` is null.
    void SetEditorColor(CSettingData* settings, const char* section) const;

    // Slot by slot, as they are held.
    bool operator==(const CEditorColor& other) const;
    bool operator!=(const CEditorColor& other) const { return !(*this == other); }

private:
    static constexpr int kQuoteLevels = 4;
    static constexpr int kMarkerKinds = 6;

    // In the order of the table above.
    enum Slot : int {
        kText,
        kBack,
        kSelText,
        kSelBack,
        kQuotedText,
        kSymbol = kQuotedText + kQuoteLevels,
        kUrl,
        kKatakana,
        kMachineDepend,
        kHeaderBack,
        kFindedText,
        kFindedBack,
        kMarkerText,
        kMarkerBack = kMarkerText + kMarkerKinds,
        kSlotCount = kMarkerBack + kMarkerKinds,
    };

    // The slots under one key, which has the index appended when there are several.
    struct SlotGroup {
        const char* key;
        Slot first;
        int count;
    };
    static const SlotGroup kGroups[];

    COLORREF GetOrSystem(Slot slot, int systemColor) const;
    void SetIndexed(Slot first, int index, int count, COLORREF color);

    COLORREF m_slots[kSlotCount];
};
