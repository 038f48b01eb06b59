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

private:
    using FactsFunction = std::function<Facts()>;

    void Schedule();
    void Fill();
    void FillServices();
    void FillBands();
    void FillExplorer();
    void FillWindows();
    QTreeWidgetItem* Group(const QString& sText);
    QTreeWidgetItem* Add(QTreeWidgetItem* pAbove, const QString& sText, const QString& sState, const QString& sKey,
                         FactsFunction fnFacts);
    void AddBand(QTreeWidgetItem* pGroup, const Ref<Band>& oBand);
    void AddNodes(QTreeWidgetItem* pAbove, const std::vector<Node*>& aNodes);
    bool SelectKey(const QString& sKey);
    void ShowFacts();

    Ref<ActiveBar> m_oActiveBar;
    Ref<PanelForm> m_frmPanel;
    const PersonalBars& m_oBars;
    const ExplorerItemNotes& m_oNotes;
    DefinitionPlaces m_oPlaces = Explainer::ReadPlaces(); // as the files were when the inspector was opened
    std::unique_ptr<Explainer> m_pExplainer;
    QTreeWidget* m_pThings;
    QPlainTextEdit* m_pFacts;
    QHash<QString, QTreeWidgetItem*> m_mapItems;
    QHash<const QTreeWidgetItem*, FactsFunction> m_mapFacts;
    QTimer m_oRefresh; // a while after a change
    bool m_bFills = false;
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::desktop
