// Shows the keys of every command and lets a person give others.
#pragma once

#include "desktop/commands/WindowKeys.h"
#include "desktop/custom/PersonalBars.h"

#include <QDialog>

class QKeySequenceEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane::desktop {

class ShortcutsDialog final : public QDialog {
    Q_OBJECT
public:
    ShortcutsDialog(PersonalBars& oBars, const ActiveBar& oActiveBar, QWidget* pParent);
    ~ShortcutsDialog() override;

    // Brings the command of that tool under the cursor. False when there is none.
    bool Select(const Tool& oTool);
    [[nodiscard]] QTreeWidget& List() { return *m_pList; }
    [[nodiscard]] QKeySequenceEdit& Keys() { return *m_pKeys; }
    // What the keys that are typed, or those of the command, are taken by as well.
    [[nodiscard]] QString Conflict() const;

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    [[nodiscard]] QKeySequence Typed() const;
    QTreeWidgetItem* NewRow(const CommandEntry& oCommand);
    QWidget* NewEditRow();
    void ShowRow(QTreeWidgetItem* pItem, const CommandEntry& oCommand);
    void ShowAll();
    void ShowAside();
    void ShowCurrent();
    void ShowConflict();
    void LeaveKeys();
    void Filter(const QString& sText);
    void Assign();
    [[nodiscard]] const CommandEntry* Current() const;
    // The other commands of those keys, as "File › Open (Data)".
    [[nodiscard]] QStringList OthersOf(const QKeySequence& oKeys, const CommandEntry& oCommand) const;
    // What the window itself does at those keys; the one that comes before a command first. Null for nothing.
    [[nodiscard]] const WindowKey* WindowKeyOf(const QKeySequence& oKeys) const;
    void AddWindowKeys();

    PersonalBars& m_oBars;
    CommandList m_oCommands;
    std::vector<WindowKey> m_aWindowKeys;
    QHash<int, QList<const CommandEntry*>> m_mapByKeys;
    QLineEdit* m_pFilter;
    QTreeWidget* m_pList;
    QKeySequenceEdit* m_pKeys;
    QLabel* m_pConflict;
    QPushButton* m_pAssign;
    QPushButton* m_pNone;
    QPushButton* m_pReset;
    QPushButton* m_pForget;
};

} // namespace corvane::desktop
