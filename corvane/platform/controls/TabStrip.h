// The model of a tab strip.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

#include <string>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) TabStrip final : public virtual Object {
public:
    [[nodiscard]] Long Tabs() const { return static_cast<Long>(m_aCaptions.size()); }
    // More tabs come with empty captions. Fails with 5 below 0.
    void SetTabs(Long lTabs);
    [[nodiscard]] Long TabsPerRow() const { return m_lTabsPerRow; }
    void SetTabsPerRow(Long lTabs);
    // The current tab, from 0. Fails with 5 when there is none of that number; raises no event of the control.
    [[nodiscard]] Long Tab() const { return m_lTab; }
    void SetTab(Long lTab);
    // Of the current tab; writing does nothing when there is no tab.
    [[nodiscard]] std::string Caption() const;
    void SetCaption(std::string sCaption);
    [[nodiscard]] const std::string& CaptionOf(Long lTab) const {
        return m_aCaptions.at(static_cast<std::size_t>(lTab));
    }
    // In twips.
    [[nodiscard]] Single Width() const { return m_fWidth; }
    [[nodiscard]] Single Height() const { return m_fHeight; }
    [[nodiscard]] Single Top() const { return m_fTop; }
    void SetBounds(Single fTop, Single fWidth, Single fHeight);

    Event<Long> Click; // the control's: the user changed tab; the previous tab
    Event<> Changed;   // for renderers alone

    // What the user does: nothing when the tab is current or there is none of that number.
    void ChooseTab(Long lTab);

private:
    std::vector<std::string> m_aCaptions;
    Long m_lTab = 0;
    Long m_lTabsPerRow = 0;
    Single m_fWidth = 0;
    Single m_fHeight = 0;
    Single m_fTop = 0;
};

} // namespace corvane
