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
    InspectorDialog(Ref<ActiveBar> oActiveBar, Ref<PanelForm> frmPanel, const PersonalBars& oBars,
                    const ExplorerItemNotes& oNotes, const QString& sLogFile, QWidget* pParent);
    ~InspectorDialog() override;

    // Brings it under the cursor. False when it isn't there any more.
    bool Select(const Tool& oInstance);
    bool Select(const Node& oNode);
    // What is said of the thing under the cursor.
    [[nodiscard]] QString FactsText() const;
    [[nodiscard]] QTreeWidget& Things() { return *m_pThings; }

protected:
    void showEvent(QShowEvent* pEvent) override;
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    using FactsFunction = std::function<Facts()>;

    // A line of the list as it is to be.
    struct Thing {
        QString sText;
        QString sState;
        QString sKey;
        FactsFunction fnFacts;
        std::vector<Thing> aBelow;
    };

    void Schedule();
    void Fill();
    [[nodiscard]] Thing Services() const;
    void AddBands(std::vector<Thing>& aGroups) const;
    [[nodiscard]] Thing ThingOf(const Ref<Band>& oBand) const;
    [[nodiscard]] std::vector<Thing> ThingsOf(const TreeView& oTree, const std::vector<Node*>& aNodes) const;
    [[nodiscard]] Thing Windows() const;
    // Brings the items below into line, and touches no more than differs.
    void Sync(QTreeWidgetItem& oAbove, std::vector<Thing>& aThings);
    QTreeWidgetItem* MoveOrMake(QTreeWidgetItem& oAbove, int iRow, const QString& sKey);
    void Forget(QTreeWidgetItem& oItem);
    bool SelectKey(const QString& sKey);
    void ShowFacts();
    [[nodiscard]] const Explainer& Explained() const;

    Ref<ActiveBar> m_oActiveBar;
    Ref<PanelForm> m_frmPanel;
    const PersonalBars& m_oBars;
    const ExplorerItemNotes& m_oNotes;
    DefinitionPlaces m_oPlaces = Explainer::ReadPlaces(); // as the files were when the inspector was opened
    mutable std::unique_ptr<Explainer> m_pExplainer;      // made when something is asked, and again after a change
    QTreeWidget* m_pThings;
    QPlainTextEdit* m_pFacts;
    QHash<QString, QTreeWidgetItem*> m_mapItems;
    QHash<const QTreeWidgetItem*, FactsFunction> m_mapFacts;
    QTimer m_oRefresh; // a while after a change
    bool m_bFills = false;
    bool m_bStale = false; // something has changed while nobody could see it
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::desktop
