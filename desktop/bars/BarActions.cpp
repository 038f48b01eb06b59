#include "desktop/bars/BarActions.h"

#include "corvane/platform/controls/BarText.h"
#include "desktop/explorer/PictureIcon.h"
#include "desktop/translation/ShownText.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFont>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>

namespace corvane::desktop {

namespace {

constexpr std::size_t mostIcons = 512;

// A picture of its own for the disabled state, or the normal one greyed out.
QIcon IconOfPictures(const Ref<Picture>& normalPicture, const Ref<Picture>& disabledPicture) {
    QIcon normal = IconOf(normalPicture);
    if (normal.isNull())
        return normal;
    const QIcon disabled = IconOf(disabledPicture);
    QIcon icon;
    QStyleOption option;
    option.palette = QApplication::palette();
    for (const int size : {16, 24, 32, 48, 64}) {
        const QPixmap pixmap = normal.pixmap(QSize(size, size), 1.0);
        icon.addPixmap(pixmap);
        icon.addPixmap(disabled.isNull() ? QApplication::style()->generatedIconPixmap(QIcon::Disabled, pixmap, &option)
                                         : disabled.pixmap(QSize(size, size), 1.0),
                       QIcon::Disabled);
    }
    return icon;
}

// A toolbar would show and hide its buttons while it lays itself out, and begin its layout again after each of them.
void ShowButton(const QAction& action) {
    for (QObject* object : action.associatedObjects())
        if (auto* button = qobject_cast<QToolButton*>(object))
            button->setVisible(action.isVisible());
}

QString ToolTipOf(const Tool& instance, const QString& keys) {
    QString tip = ShownToolTip(instance);
    if (tip.isEmpty())
        tip = QString::fromStdString(WithoutMnemonic(CaptionOf(instance).toStdString()));
    return keys.isEmpty() ? tip : QString("%1 (%2)").arg(tip, keys);
}

} // namespace

QString CaptionOf(const Tool& instance) {
    if (!instance.Caption().empty())
        return ShownCaption(instance);
    const QString name = QString::fromStdString(instance.Name());
    return name.mid(name.lastIndexOf('.') + 1).replace('&', "&&");
}

QAction* BarActions::Add(const Ref<Tool>& instance, ActionPlace place, QObject* parent) {
    auto* action = new QAction(parent);
    Follow(instance, place, action, true);
    return action;
}

void BarActions::Follow(const Ref<Tool>& instance, ActionPlace place, QAction* action, bool clicks) {
    const Shown shown{instance, place, action};
    auto& shownItems = m_shown[instance.Get()];
    std::erase_if(shownItems, [](const Shown& old) { return old.action.isNull(); });
    shownItems.push_back(shown);
    Texts(shown);
    State(shown);
    if (clicks)
        QObject::connect(action, &QAction::triggered, action, [this, shown] {
            const QPointer<QAction> still = shown.action;
            m_click(shown.instance);
            if (still) // a click toggles the action by itself; what holds is the model
                State(shown);
        });
}

void BarActions::Leave(const Tool* instance, const QAction* action) {
    const auto it = m_shown.find(instance);
    if (it == m_shown.end())
        return;
    std::erase_if(it->second, [&](const Shown& shown) { return shown.action == action; });
    if (it->second.empty())
        m_shown.erase(it);
}

void BarActions::ShowState(const Tool& master) {
    for (const Tool* instance : master.Instances())
        if (const auto it = m_shown.find(instance); it != m_shown.end())
            for (const Shown& shown : it->second)
                State(shown);
}

void BarActions::ShowAllStates() {
    for (const auto& [instance, shownItems] : m_shown)
        for (const Shown& shown : shownItems)
            State(shown);
}

void BarActions::ShowTexts(const Tool* instance) {
    if (const auto it = m_shown.find(instance); it != m_shown.end())
        for (const Shown& shown : it->second)
            Texts(shown);
}

void BarActions::ShowAllTexts() {
    m_icons.clear(); // they have the palette's colours
    for (const auto& [instance, shownItems] : m_shown)
        for (const Shown& shown : shownItems)
            Texts(shown);
}

Ref<Tool> BarActions::InstanceOf(const QAction* action) const {
    for (const auto& [instance, shownItems] : m_shown)
        for (const Shown& shown : shownItems)
            if (shown.action == action)
                return shown.instance;
    return nullptr;
}

const QIcon& BarActions::IconFor(const Tool& instance) {
    const Ref<Picture> normal = instance.PictureOf(Tool::Normal);
    const Ref<Picture> disabled = instance.PictureOf(Tool::Disabled);
    if (m_icons.size() >= mostIcons)
        m_icons.clear();
    const auto [it, isNew] = m_icons.try_emplace({normal.Get(), disabled.Get()});
    if (isNew)
        it->second = {normal, disabled, IconOfPictures(normal, disabled)};
    return it->second.icon;
}

void BarActions::State(const Shown& shown) {
    QAction* action = shown.action;
    if (!action)
        return;
    const Tool& tool = *shown.instance;
    ++m_touched;
    if (action->isCheckable() != tool.Checked())
        action->setCheckable(tool.Checked());
    if (action->isChecked() != tool.Checked())
        action->setChecked(tool.Checked());
    const bool enabled = tool.Enabled() && WhyNot(tool).isEmpty();
    if (action->isEnabled() != enabled)
        action->setEnabled(enabled);
    if (action->isVisible() != tool.Visible()) {
        action->setVisible(tool.Visible());
        if (shown.place == ActionPlace::Toolbar)
            ShowButton(*action);
    }
}

void BarActions::Texts(const Shown& shown) {
    QAction* action = shown.action;
    if (!action)
        return;
    const Tool& tool = *shown.instance;
    ++m_touched;
    QString text = CaptionOf(tool);
    const QString whyNot = WhyNot(tool);
    if (shown.place == ActionPlace::Menu) {
        // Behind the tab a menu shows it in the column of shortcuts.
        if (!whyNot.isEmpty())
            text += "\t" + QCoreApplication::translate("BarActions", "for one item");
        else if (const QString keys = m_changes->KeysText(tool); !keys.isEmpty() && tool.DropDownBand().empty())
            text += "\t" + keys;
    } else {
        if (const QIcon& icon = IconFor(tool); icon.cacheKey() != action->icon().cacheKey())
            action->setIcon(icon);
        action->setIconText(QString::fromStdString(WithoutMnemonic(text.toStdString())));
        action->setToolTip(ToolTipOf(tool, m_changes->KeysText(tool)));
    }
    action->setText(text);
    action->setStatusTip(whyNot.isEmpty() ? ShownDescription(tool) : whyNot);
    if (action->font().bold() != tool.IsDefaultItem()) {
        QFont font = action->font();
        font.setBold(tool.IsDefaultItem());
        action->setFont(font);
    }
}

} // namespace corvane::desktop
