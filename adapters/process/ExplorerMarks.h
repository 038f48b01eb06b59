// Marks the explorer's nodes whose items have gone with their process.
#pragma once

#include "corvane/platform/controls/PanelForm.h"

#include <vector>

namespace corvane {

class ExplorerMarks {
public:
    static constexpr const char* Mark = "\u26A0 "; // in front of the text

    explicit ExplorerMarks(Ref<PanelForm> panel) : m_panel(std::move(panel)) {}

    // Of those objects; others are left alone.
    void Set(const std::vector<Ref<Object>>& items, bool isMarked) const;

private:
    Ref<PanelForm> m_panel;
};

} // namespace corvane
