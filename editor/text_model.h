// The text of an editor with its history and its line markers: what an editor is without its
// window.
//
//   tlvn::TextModel model;
//   model.SetDocument(CT_SJIS, text, length);
//   CTextPos caret = model.InsertText(CTextPos(0, 0), "abc", 3);
//   model.Undo(caret);                                   // caret: where it belongs now
//
// Changes of the text are recorded and move the markers. The owner keeps positions of its own
// (caret, selection, search hits) in place by tlvn::MovePosition in a change listener, and
// recomputes their display forms (Document::L2PByteIndex) afterwards or after wrapping anew.
//
// Undone is in one step: what one call changed, and all between BeginGroup and EndGroup.
// Undoing a deletion brings back the text, not the extent of markers that it took away: those
// collapsed, by the rules of MovePosition.

#pragma once

#include "editor/change_history.h"
#include "editor/document.h"
#include "editor/line_marker.h"

#include <functional>

namespace tlvn {

class TLVN_API TextModel {
public:
    // No lines.
    TextModel();
    ~TextModel();
    TextModel(const TextModel&) = delete;
    TextModel& operator=(const TextModel&) = delete;

    const Document& GetDocument() const { return m_document; }

    // Replaces the text; forgets markers and history, clears the modified flags and the header
    // block.
    void SetDocument(CodeType codeType, const char* text, int length);
    // Removes all lines, the rest likewise.
    void Clear();
    // As Document::SetCodeType. When the text is converted, history and markers are forgotten.
    void SetCodeType(CodeType codeType);
    // As those of the document; markers and history stay with their text. No change to undo.
    void Append(const char* text, int length, std::string_view quoteMark = {});
    void Append(const Document& other);
    void InsertHeader(const char* text, int length);
    void RemoveHeader();
    void SetHeaderLineCount(int count) { m_document.SetHeaderLineCount(count); }

    // As those of the document, and markers get their new display forms.
    void SetLayout(const LineLayout* layout);
    void RewrapAll();
    void SetFreeCursor(bool on) { m_document.SetFreeCursor(on); }

    // --- Editing ---

    // Inserts at the logical form of `at` and returns where the caret belongs: behind the text.
    // A position inside a character counts as its start. With the free cursor a position behind
    // the text is filled up to with empty lines and blanks, as part of the insertion; otherwise
    // the end of the line or of the document stands for it.
    CTextPos InsertText(const CTextPos& at, const char* text, int length);
    // Deletes the text between two positions in either order; those inside a character count as
    // its start, those behind the text as its end. Returns the smaller one.
    CTextPos DeleteText(const CTextPos& a, const CTextPos& b);

    void BeginGroup() { m_history.BeginGroup(); }
    void EndGroup() { m_history.EndGroup(); }
    bool CanUndo() const { return m_history.CanUndo(); }
    bool CanRedo() const { return m_history.CanRedo(); }
    // Return 1, or 0 when there is nothing to undo or redo. `caret`: behind what was inserted
    // last, or where text was deleted; it stays when only markers changed.
    int Undo(CTextPos& caret);
    int Redo(CTextPos& caret);

    // Called after each insertion and deletion of text, those of Undo and Redo included.
    using ChangeListener = std::function<void(const TextChange&)>;
    void SetChangeListener(ChangeListener listener) { m_listener = std::move(listener); }

    bool IsModified() const { return m_modified; }
    void SetModified(bool on) { m_modified = on; }
    bool IsMarkerModified() const { return m_markerModified; }
    void SetMarkerModified(bool on) { m_markerModified = on; }

    // --- Markers ---

    // Tells of a change of the text (logical forms): moves the markers, sets both flags.
    void TextInserted(int line1, int byte1, int line2, int byte2);
    void TextDeleted(int line1, int byte1, int line2, int byte2);

    // Lays a mark of the kind over the text between two positions in either order; one below 0
    // erases there. Can be undone. Nothing happens for an empty range.
    void DrawMarker(int kind, const CTextPos& a, const CTextPos& b);
    // Adds a record to the arranged array alone; the next arrangement drops it.
    void DrawSimpleMarker(int kind, const CTextPos& a, const CTextPos& b);
    // Erases all marks. Can be undone.
    void EraseAllMarkers();
    // Forgets all marks and their history. Cannot be undone; the flag is left alone.
    void ClearMarkers();
    // Replaces all marks by those of the array. Cannot be undone; the flag is left alone.
    void InitMarkers(const CEditorLineMarkerArray& markers);
    // The same with those parts of the marks that lie in [from, to) of another text, `from`
    // becoming the start of this one.
    void CopyMarkersWithin(const CEditorLineMarkerArray& markers, CTextPos from, CTextPos to);
    // Marks in force, from the first on; the others stay to be redone.
    int GetMarkerHistorySize() const { return m_markers.GetUsedCount(); }
    void SetMarkerHistorySize(int count);
    // Rebuilds the arranged array. So does every change of marks or text, or, within a group, the
    // first GetMarkers behind it.
    void ArrangeMarkers() const;
    // What shows: in text order, not overlapping; both forms set.
    const CEditorLineMarkerArray& GetMarkers() const;

private:
    CTextPos Insert(const CTextPos& at, const char* text, int length);
    void Delete(const CTextPos& from, const CTextPos& to, CBuffer& deleted);
    void TextChanged(const TextChange& change);
    CTextPos FillUpTo(const CTextPos& at, CBuffer& filling) const;
    void Apply(ChangeRecord& change, bool undo, CTextPos& caret);
    void AddMarker(const CEditorLineMarker& marker);
    void MarkersChanged();
    void UpdateMarkerViews() const;
    void ShiftLines(int lines);

    Document m_document;
    ChangeHistory m_history;
    MarkerHistory m_markers;
    mutable CEditorLineMarkerArray m_arranged;
    mutable bool m_arrangeLater = false;
    ChangeListener m_listener;
    bool m_modified = false;
    bool m_markerModified = false;
};

// All changes of a scope are undone in one step.
class ChangeGroup {
public:
    explicit ChangeGroup(TextModel& model) : m_model(model) { m_model.BeginGroup(); }
    ~ChangeGroup() { m_model.EndGroup(); }
    ChangeGroup(const ChangeGroup&) = delete;
    ChangeGroup& operator=(const ChangeGroup&) = delete;

private:
    TextModel& m_model;
};

} // namespace tlvn
