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
[[nodiscard]] QString CaptionOf(const Tool& instance);

enum class ActionPlace { Menu, Toolbar };

class BarActions {
public:
    using ClickFunction = std::function<void(const Ref<Tool>&)>;
    explicit BarActions(ClickFunction click) : m_click(std::move(click)) {}

    // A new action that shows the instance and clicks it. The parent owns it.
    QAction* Add(const Ref<Tool>& instance, ActionPlace place, QObject* parent);
    // Follows an instance with an action that someone else made, such as that of a menu.
    void Follow(const Ref<Tool>& instance, ActionPlace place, QAction* action, bool clicks);
    void Leave(const Tool* instance, const QAction* action);
    void Click(const Ref<Tool>& instance) { m_click(instance); }

    void ShowState(const Tool& master);
    void ShowTexts(const Tool* instance);
    void ShowAllTexts();
    void SetChanges(const BarChanges& changes) { m_changes = &changes; }
    // As BarRenderer's.
    void SetWhyNot(std::function<QString(const Tool&)> whyNot) { m_whyNot = std::move(whyNot); }
    [[nodiscard]] QString WhyNot(const Tool& tool) const { return m_whyNot ? m_whyNot(tool) : QString(); }
    void ShowAllStates();
    // The instance that an action shows; nothing for an action of others.
    [[nodiscard]] Ref<Tool> InstanceOf(const QAction* action) const;
    // How often an action was touched since the start, for measuring what a change costs.
    [[nodiscard]] long TouchCount() const { return m_touched; }

private:
    struct Shown {
        Ref<Tool> instance;
        ActionPlace place;
        QPointer<QAction> action;
    };

    // The icons of toolbars by normal and disabled picture, as buttons change hands all the time.
    struct ShownIcon {
        Ref<Picture> normal;
        Ref<Picture> disabled;
        QIcon icon;
    };

    const QIcon& IconFor(const Tool& instance);
    void State(const Shown& shown);
    void Texts(const Shown& shown);

    ClickFunction m_click;
    const BarChanges* m_changes = &BarChanges::None();
    std::function<QString(const Tool&)> m_whyNot;
    std::unordered_map<const Tool*, std::vector<Shown>> m_shown; // by instance
    std::map<std::pair<const Picture*, const Picture*>, ShownIcon> m_icons;
    long m_touched = 0;
};

} // namespace corvane::desktop
