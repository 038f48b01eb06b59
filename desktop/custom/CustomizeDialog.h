// Lets a person hide entries of menus and toolbars, and move and add buttons of toolbars.
#pragma once

#include "desktop/custom/PersonalBars.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane::desktop {

class CustomizeDialog final : public QDialog {
    Q_OBJECT
public:
    // Asks the person for a command and calls back with it.
    using PickFunction = std::function<void(QWidget* pParent, std::function<void(const Ref<Tool>&)>)>;

    CustomizeDialog(PersonalBars& oBars, Ref<ActiveBar> oActiveBar, PickFunction fnPick, QWidget* pParent);

    // False when there is no such menu or toolbar.
    bool SelectBand(const std::string& sBand);
    [[nodiscard]] QListWidget& Entries() { return *m_pEntries; }
    void MoveCurrent(int nStep);
    void AddCommand(const Ref<Tool>& oTool);
    void SelectEntry(const Tool& oTool);

private:
    void FillBands();
    QWidget* NewButtons();
    QPushButton* NewButton(const QString& sText, const std::function<void()>& fnClick);
    void AddBand(QTreeWidgetItem* pGroup, const Ref<Band>& oBand, const QString& sCaption);
    void ShowBand();
    void ShowButtons();
    void Entry_Changed(QListWidgetItem* pItem);
    void ForgetAside();
    [[nodiscard]] Ref<Band> CurrentBand() const;
    [[nodiscard]] Ref<Tool> ToolAt(int nRow) const;

    PersonalBars& m_oBars;
    Ref<ActiveBar> m_oActiveBar;
    PickFunction m_fnPick;
    QTreeWidget* m_pBands;
    QListWidget* m_pEntries;
    QLabel* m_pAside;
    QPushButton* m_pUp = nullptr;
    QPushButton* m_pDown = nullptr;
    QPushButton* m_pAdd = nullptr;
    QPushButton* m_pRemove = nullptr;
    QPushButton* m_pReset = nullptr;
    QPushButton* m_pForget = nullptr;
    bool m_bFills = false;
};

} // namespace corvane::desktop
