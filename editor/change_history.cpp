#include "editor/change_history.h"

#include "framework/guard_memory.h"

#include <utility>

namespace tlvn {

void ChangeHistory::Clear()
{
    m_groups.clear();
    m_position = 0;
    m_groupOpen = false;
}

void ChangeHistory::BeginGroup()
{
    ++m_nesting;
}

void ChangeHistory::EndGroup()
{
    if (m_nesting > 0 && --m_nesting == 0)
        m_groupOpen = false;
}

void ChangeHistory::Add(ChangeRecord&& change)
{
    GuardMemory([&] {
        m_groups.erase(m_groups.begin() + static_cast<std::ptrdiff_t>(m_position), m_groups.end());
        if (!m_groupOpen) {
            m_groups.emplace_back();
            m_groups.back().push_back(std::move(change));
            m_groupOpen = m_nesting > 0;
        } else {
            m_groups.back().push_back(std::move(change));
        }
        m_position = m_groups.size();
    });
}

ChangeHistory::Group* ChangeHistory::StepBack()
{
    if (!CanUndo())
        return nullptr;
    m_groupOpen = false;
    return &m_groups[--m_position];
}

ChangeHistory::Group* ChangeHistory::StepForward()
{
    if (!CanRedo())
        return nullptr;
    m_groupOpen = false;
    return &m_groups[m_position++];
}

void ChangeHistory::ShiftLines(int delta)
{
    for (Group& group : m_groups) {
        for (ChangeRecord& change : group) {
            if (change.kind == ChangeRecord::Marked)
                continue;
            change.start.line += delta;
            change.end.line += delta;
            if (change.start.line < 0)
                return Clear();
        }
    }
}

} // namespace tlvn
