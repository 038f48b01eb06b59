// The explorer's panel form on the screen: the tab strip, and below it the page of the current tab's tree.
#pragma once

#include "corvane/platform/controls/PanelForm.h"
#include "desktop/explorer/ExplorerPage.h"

#include <QWidget>
#include <memory>
#include <vector>

class QLabel;
class QStackedWidget;
class QTabBar;

namespace corvane::desktop {

class ExplorerPanel final : public QWidget {
    Q_OBJECT
public:
    // Shows the trees that the form holds already and those that it gets later; the trees are in order of the tabs.
    // Without a guard a failure is reported to Qt's message log alone. Without items the trees are on their own.
    explicit ExplorerPanel(Ref<PanelForm> form, Guard guard = {}, QWidget* parent = nullptr,
                           std::shared_ptr<items::Items> items = {});
    ~ExplorerPanel() override;

    [[nodiscard]] QTabBar* TabBar() const { return m_tabBar; }
    // The page of a tree, by the number of its tab; a null pointer when there is none.
    [[nodiscard]] ExplorerPage* Page(int tab) const;
    [[nodiscard]] ExplorerPage* CurrentPage() const;
    // As ExplorerTree's, for all trees.
    void SetTakesFiles(std::function<bool()> takes) { m_takesFiles = std::move(takes); }
    QSize sizeHint() const override { return {260, 420}; }

Q_SIGNALS:
    // As ExplorerTree's, of the tree that is shown.
    void NameTyped(const QString& name, QString& problem);
    void FilesDropped(const QStringList& files);
    // Before a menu may open from one of the trees: it belongs there, in pixels of the screen.
    void PopupPlace(const QPoint& global);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void AddPage(const Ref<Object>& control);
    void Strip_Changed();
    void ShowStrip();
    void TabBar_CurrentChanged(int tab);

    Ref<PanelForm> m_form;
    Ref<TabStrip> m_strip; // nothing when the form has none
    Guard m_guard;
    std::shared_ptr<items::Items> m_items;
    std::function<bool()> m_takesFiles;
    std::shared_ptr<ImageIcons> m_icons = std::make_shared<ImageIcons>();
    QTabBar* m_tabBar;
    QStackedWidget* m_stack;
    QLabel* m_empty;
    std::vector<ExplorerPage*> m_pages;
    bool m_scheduled = false;
    bool m_followsModel = false;
    Subscription m_form_ControlAdded;
    Subscription m_strip_Changed;
};

} // namespace corvane::desktop
