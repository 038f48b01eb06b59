#include "corvane/platform/controls/TabStrip.h"

#include "corvane/base/Ref.h"

namespace corvane {

void TabStrip::SetTabs(Long lTabs) {
    if (lTabs < 0)
        Fail(FailureNumber::InvalidProcedureCall);
    m_aCaptions.resize(static_cast<std::size_t>(lTabs));
    if (m_lTab >= lTabs)
        m_lTab = lTabs > 0 ? lTabs - 1 : 0;
    Changed.Raise();
}

void TabStrip::SetTabsPerRow(Long lTabs) {
    CheckThread();
    m_lTabsPerRow = lTabs;
    Changed.Raise();
}

void TabStrip::SetTab(Long lTab) {
    CheckThread();
    if (lTab < 0 || lTab >= Tabs())
        Fail(FailureNumber::InvalidProcedureCall, "There is no tab " + std::to_string(lTab));
    m_lTab = lTab;
    Changed.Raise();
}

std::string TabStrip::Caption() const {
    return m_aCaptions.empty() ? std::string() : CaptionOf(m_lTab);
}

void TabStrip::SetCaption(std::string sCaption) {
    CheckThread();
    if (m_aCaptions.empty())
        return;
    m_aCaptions[static_cast<std::size_t>(m_lTab)] = std::move(sCaption);
    Changed.Raise();
}

void TabStrip::SetBounds(Single fTop, Single fWidth, Single fHeight) {
    m_fTop = fTop;
    m_fWidth = fWidth;
    m_fHeight = fHeight;
}

void TabStrip::ChooseTab(Long lTab) {
    if (lTab == m_lTab || lTab < 0 || lTab >= Tabs())
        return;
    const Ref<TabStrip> oSelf(this);
    const Long lPrevious = m_lTab;
    SetTab(lTab);
    Click.Raise(lPrevious);
}

} // namespace corvane
