#include "desktop/bars/MenuBuilder.h"

#include <QCoreApplication>
#include <QHideEvent>
#include <QTimer>

namespace corvane::desktop {

namespace {

// A menu that doesn't come up when a handler has refused its opening: Qt has no way to say so before it shows.
class BandMenu final : public QMenu {
public:
    using QMenu::QMenu;
    void SetRefused(bool refused) { m_refused = refused; }

    void setVisible(bool visible) override {
        if (!visible || !m_refused)
            return QMenu::setVisible(visible);
        // Whoever opened it believes that it is open until it hides.
        QTimer::singleShot(0, this, [this] {
            QHideEvent event;
            hideEvent(&event);
        });
    }

private:
    bool m_refused = false;
};

} // namespace

QMenu* MenuBuilder::NewMenu(const std::string& bandName, QWidget* parent) {
    auto* menu = new BandMenu(parent);
    menu->setSeparatorsCollapsible(true);
    menu->setToolTipsVisible(false);
    QObject::connect(menu, &QMenu::aboutToShow, menu, [this, menu, bandName] {
        const Ref<Band> band = m_activeBar->Bands()->Find(bandName);
        menu->SetRefused(!band || !Fill(menu, band));
    });
    // An empty menu is never asked to open; this entry goes when the menu is filled.
    menu->addAction(QStringLiteral("…"));
    return menu;
}

bool MenuBuilder::Fill(QMenu* menu, const Ref<Band>& band) {
    bool opens = false;
    m_guard([&] { opens = m_activeBar->Open(band); });
    if (!opens)
        return false;
    FillWith(menu, m_changes->InstancesOf(*band));
    if (menu->isEmpty())
        menu->addAction(QCoreApplication::translate("MenuBuilder", "(empty)"))->setEnabled(false);
    return true;
}

void MenuBuilder::Clear(QMenu* menu) {
    qDeleteAll(menu->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    menu->clear();
}

void MenuBuilder::FillWith(QMenu* menu, const std::vector<Ref<Tool>>& instances) {
    Clear(menu);
    for (const auto& instance : instances)
        AddInstance(menu, instance);
}

void MenuBuilder::AddInstance(QMenu* menu, const Ref<Tool>& instance) {
    if (EqualText(instance->Name(), "Separator")) {
        menu->addSeparator();
    } else if (EqualText(instance->Name(), "WindowList")) {
        AddWindows(menu);
    } else if (!instance->DropDownBand().empty() && m_activeBar->Bands()->Find(instance->DropDownBand())) {
        QMenu* subMenu = NewMenu(instance->DropDownBand(), menu);
        m_actions.Follow(instance, ActionPlace::Menu, subMenu->menuAction(), false);
        menu->addMenu(subMenu);
    } else {
        menu->addAction(m_actions.Add(instance, ActionPlace::Menu, menu));
    }
}

void MenuBuilder::AddWindows(QMenu* menu) {
    const auto windows = m_windows ? m_windows() : std::vector<OpenWindowEntry>();
    if (windows.empty()) {
        menu->addAction(QCoreApplication::translate("MenuBuilder", "(no open windows)"))->setEnabled(false);
        return;
    }
    int number = 0;
    for (const auto& window : windows) {
        QString caption = QString(window.caption).replace('&', "&&");
        if (++number <= 9)
            caption = QString("&%1 %2").arg(number).arg(caption);
        QAction* action = menu->addAction(caption);
        action->setCheckable(true);
        action->setChecked(window.active);
        QObject::connect(action, &QAction::triggered, action,
                         [this, activate = window.activate] { m_guard(activate); });
    }
}

} // namespace corvane::desktop
