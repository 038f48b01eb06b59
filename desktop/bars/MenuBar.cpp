#include "desktop/bars/MenuBar.h"

#include "desktop/bars/BarActions.h"
#include "desktop/bars/MenuBuilder.h"

#include <algorithm>
#include <set>

namespace corvane::desktop {

namespace {

constexpr std::size_t mostTitles = 60;
constexpr std::size_t fewTitles = 24; // are measured as they are
constexpr int restDelay = 100;        // no one presses a key before the first picture

} // namespace

MenuBar::MenuBar(MenuBuilder& menus, BarActions& actions, QWidget* parent)
    : QMenuBar(parent), m_menus(menus), m_actions(actions), m_rest(new QMenu(tr("More"), this)) {
    m_rest->addAction(QString()); // an empty menu is never asked to open
    m_restKeys.setSingleShot(true);
    m_restKeys.setInterval(restDelay);
    connect(&m_restKeys, &QTimer::timeout, this, &MenuBar::TakeRestKeys);
    connect(m_rest, &QMenu::aboutToShow, this, [this] { m_menus.FillWith(m_rest, m_restItems); });
}

void MenuBar::Show(const Band& band) {
    setVisible(band.Visible());
    std::vector<Title> old = std::exchange(m_titles, {});
    std::vector<QAction*> beforeItems;
    for (const Title& title : old)
        beforeItems.push_back(title.action);
    std::vector<Ref<Tool>> rest;
    for (const auto& instance : band.Tools()->All()) {
        if (EqualText(instance->Name(), "Separator"))
            continue;
        if (m_titles.size() < mostTitles)
            m_titles.push_back(TakeOrMake(instance, old));
        else
            rest.push_back(instance);
    }
    const bool same = std::equal(m_titles.begin(), m_titles.end(), beforeItems.begin(), beforeItems.end(),
                                 [](const Title& title, const QAction* before) { return title.action == before; });
    if (!same) {
        for (QAction* action : beforeItems)
            removeAction(action);
        for (const Title& title : m_titles)
            insertAction(m_restItems.empty() ? nullptr : m_rest->menuAction(), title.action);
        for (const Title& title : old)
            if (title.action) {
                // One of its entries may be what is running now.
                if (QMenu* menu = title.action->menu())
                    menu->deleteLater();
                title.action->deleteLater();
            }
    }
    ShowRest(std::move(rest));
}

void MenuBar::ShowRest(std::vector<Ref<Tool>> rest) {
    if (rest.empty() && !m_restItems.empty())
        removeAction(m_rest->menuAction());
    else if (!rest.empty() && m_restItems.empty())
        addAction(m_rest->menuAction());
    if (!rest.empty() || !m_restShortcuts.empty())
        m_restKeys.start();
    m_restItems = std::move(rest);
}

// The first title of a letter has it. Those in the bar have theirs from Qt.
void MenuBar::TakeRestKeys() {
    m_restShortcuts.clear();
    std::set<QKeySequence> taken{QKeySequence()};
    for (const QAction* action : actions())
        if (action->isVisible())
            taken.insert(QKeySequence::mnemonic(action->text()));
    for (const Ref<Tool>& instance : m_restItems) {
        const QKeySequence key = QKeySequence::mnemonic(CaptionOf(*instance));
        if (!instance->Visible() || !taken.insert(key).second)
            continue;
        m_restShortcuts.push_back(std::make_unique<QShortcut>(key, this));
        connect(m_restShortcuts.back().get(), &QShortcut::activated, this, [this, instance] { OpenInRest(instance); });
    }
}

void MenuBar::OpenInRest(const Ref<Tool>& instance) {
    setActiveAction(m_rest->menuAction());
    for (QAction* action : m_rest->actions())
        if (m_actions.InstanceOf(action) == instance)
            m_rest->setActiveAction(action);
}

// What is taken leaves nothing behind in the old titles.
MenuBar::Title MenuBar::TakeOrMake(const Ref<Tool>& instance, std::vector<Title>& old) {
    const std::string& band = instance->DropDownBand();
    const auto oldPosition = std::find_if(old.begin(), old.end(), [&](const Title& title) {
        return title.action && title.instance == instance && title.dropDownBand == band;
    });
    if (oldPosition != old.end())
        return {instance, band, std::exchange(oldPosition->action, nullptr)};
    if (band.empty())
        return {instance, band, m_actions.Add(instance, ActionPlace::Menu, this)};
    auto* title = new QAction(this);
    m_actions.Follow(instance, ActionPlace::Menu, title, false);
    title->setMenu(m_menus.NewMenu(band, this));
    return {instance, band, title};
}

// To measure them one by one is what takes the time.
bool MenuBar::IsMeasuredByOneTitle() const {
    return m_titles.size() > fewTitles &&
           std::any_of(m_titles.begin(), m_titles.end(), [](const Title& title) { return title.action->isVisible(); });
}

const QMenuBar& MenuBar::Sample() const {
    if (!m_sample) {
        m_sample = std::make_unique<QMenuBar>();
        m_sample->addAction(QStringLiteral("X"));
    }
    if (m_sample->font() != font())
        m_sample->setFont(font());
    return *m_sample;
}

int MenuBar::heightForWidth(int width) const {
    return IsMeasuredByOneTitle() ? Sample().heightForWidth(width) : QMenuBar::heightForWidth(width);
}

QSize MenuBar::sizeHint() const {
    return IsMeasuredByOneTitle() ? Sample().sizeHint() : QMenuBar::sizeHint();
}

QSize MenuBar::minimumSizeHint() const {
    return IsMeasuredByOneTitle() ? Sample().minimumSizeHint() : QMenuBar::minimumSizeHint();
}

} // namespace corvane::desktop
