// A live view of what an application is made of: services, menus and toolbars, the explorer, windows, the log.
#pragma once

#include "corvane/platform/controls/PanelForm.h"
#include "desktop/inspector/Explainer.h"

#include <QDialog>
#include <QTimer>
#include <memory>

class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane::desktop {

class InspectorDialog final : public QDialog {
    Q_OBJECT
public:
    InspectorDialog(Ref<ActiveBar> activeBar, Ref<PanelForm> panelForm, const PersonalBars& bars,
                    const ExplorerItemNotes& notes, const QString& logFile, QWidget* parent);
    ~InspectorDialog() override;

    // Brings it under the cursor. False when it isn't there any more.
    bool Select(const Tool& instance);
    bool Select(const Node& node);
    // What is said of the thing under the cursor.
    [[nodiscard]] QString FactsText() const;
    [[nodiscard]] QTreeWidget& Things() { return *m_things; }
    // A change has been heard and is shown a moment later; never while the list can't be seen.
    [[nodiscard]] bool IsFollowing() const { return m_refresh.isActive(); }

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using FactsFunction = std::function<Facts()>;

    // A line of the list as it is to be.
    struct Thing {
        QString text;
        QString state;
        QString key;
        FactsFunction facts;
        std::vector<Thing> below;
    };

    void Schedule();
    void Fill();
    [[nodiscard]] Thing Services() const;
    void AddBands(std::vector<Thing>& groups) const;
    [[nodiscard]] Thing ThingOf(const Ref<Band>& band) const;
    [[nodiscard]] std::vector<Thing> ThingsOf(const TreeView& tree, const std::vector<Node*>& nodes) const;
    [[nodiscard]] Thing Windows() const;
    // Brings the items below into line, and touches no more than differs.
    void Sync(QTreeWidgetItem& above, std::vector<Thing>& things);
    QTreeWidgetItem* MoveOrMake(QTreeWidgetItem& above, int row, const QString& key);
    void Forget(QTreeWidgetItem& item);
    bool SelectKey(const QString& key);
    void ShowFacts();
    [[nodiscard]] const Explainer& Explained() const;

    Ref<ActiveBar> m_activeBar;
    Ref<PanelForm> m_panelForm;
    const PersonalBars& m_bars;
    const ExplorerItemNotes& m_notes;
    DefinitionPlaces m_places = Explainer::ReadPlaces(); // as the files were when the inspector was opened
    mutable std::unique_ptr<Explainer> m_explainer;      // made when something is asked, and again after a change
    QTreeWidget* m_things;
    QPlainTextEdit* m_facts;
    QHash<QString, QTreeWidgetItem*> m_items;
    QHash<const QTreeWidgetItem*, FactsFunction> m_factMap;
    QTimer m_refresh; // a while after a change
    bool m_fills = false;
    bool m_stale = false; // something has changed while no one could see it
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
