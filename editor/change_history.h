// Undo and redo: the changes of a text in groups, each undone in one step.
//
// A change outside a group makes a group of its own. A new change drops the groups that could be
// redone. There is no limit.
//
//   history.BeginGroup();
//   history.Add(...); history.Add(...);
//   history.EndGroup();
//   ...
//   ChangeHistory::Group* group = history.StepBack();      // undo its changes, the last first
//   group = history.StepForward();                         // redo them, the first first

#pragma once

#include "editor/text_pos.h"
#include "foundation/buffer.h"

#include <vector>

namespace tlvn {

struct ChangeRecord {
    enum Kind : int {
        Inserted = 0, // the text from start to end
        Deleted = 1,  // the text from start to end
        Marked = 2,   // a marker operation
    };

    Kind kind;
    CTextPos start; // logical forms
    CTextPos end;
    int countBefore; // Marked: marks in force; else: lines of the header block
    int countAfter;
    CBuffer text; // Deleted, or an Inserted that is undone: the bytes; else empty
};

class TLVN_API ChangeHistory {
public:
    using Group = std::vector<ChangeRecord>;

    void Clear();

    // Changes until the matching EndGroup go into one group. Groups may be nested, the outermost
    // counts; one without a change leaves no trace.
    void BeginGroup();
    void EndGroup();
    bool IsInGroup() const { return m_nesting > 0; }
    void Add(ChangeRecord&& change);

    bool CanUndo() const { return m_position > 0; }
    bool CanRedo() const { return m_position < m_groups.size(); }
    // The group to undo, or to redo; null when there is none. It counts as undone, or redone.
    Group* StepBack();
    Group* StepForward();

    // Moves all records by `delta` lines, after lines were put in front of the text or taken
    // away there. Forgets everything where a record would come to lie above the text.
    void ShiftLines(int delta);

private:
    std::vector<Group> m_groups;
    std::size_t m_position = 0; // groups that can be undone
    int m_nesting = 0;
    bool m_groupOpen = false; // the last group is that of BeginGroup
};

} // namespace tlvn
