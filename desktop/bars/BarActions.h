// The actions on screen: one for each instance of a tool that is shown at present, and how they follow the model.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/bars/BarChanges.h"

#include <QAction>
#include <QIcon>
#include <QPointer>
#include <functional>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane::desktop {

// The caption of an instance; for an empty one the last part of the tool's name.
[[nodiscard]] QString CaptionOf(const Tool& oInstance);

enum class ActionPlace { Menu, Toolbar };

class BarActions {
public:
    using ClickFunction = std::function<void(const Ref<Tool>&)>;
    explicit BarActions(ClickFunction fnClick) : m_fnClick(std::move(fnClick)) {}

    // A new action that shows the instance and clicks it. The parent owns it.
    QAction* Add(const Ref<Tool>& oInstance, ActionPlace ePlace, QObject* pParent);
    // Follows an instance with an action that somebody else made, such as that of a menu.
    void Follow(const Ref<Tool>& oInstance, ActionPlace ePlace, QAction* pAction, bool bClicks);
    void Leave(const Tool* pInstance, const QAction* pAction);
    void Click(const Ref<Tool>& oInstance) { m_fnClick(oInstance); }

    void ShowState(const Tool& oMaster);
    void ShowTexts(const Tool* pInstance);
    void ShowAllTexts();
    void SetChanges(const BarChanges& oChanges) { m_pChanges = &oChanges; }
    // The instance that an action shows; nothing for an action of others.
    [[nodiscard]] Ref<Tool> InstanceOf(const QAction* pAction) const;
    // How often an action was touched since the start, for measuring what a change costs.
    [[nodiscard]] long TouchCount() const { return m_nTouched; }

private:
    struct Shown {
        Ref<Tool> oInstance;
        ActionPlace ePlace;
        QPointer<QAction> pAction;
    };

    // The icons of toolbars by normal and disabled picture, as buttons change hands all the time.
    struct ShownIcon {
        Ref<Picture> oNormal;
        Ref<Picture> oDisabled;
        QIcon oIcon;
    };

    const QIcon& IconFor(const Tool& oInstance);
    void State(const Shown& oShown);
    void Texts(const Shown& oShown);

    ClickFunction m_fnClick;
    const BarChanges* m_pChanges = &BarChanges::None();
    std::unordered_map<const Tool*, std::vector<Shown>> m_mapShown; // by instance
    std::map<std::pair<const Picture*, const Picture*>, ShownIcon> m_mapIcons;
    long m_nTouched = 0;
};

} // namespace corvane::desktop
