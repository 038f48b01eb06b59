// Shows the keys of every command and lets a user give others.
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
    ShortcutsDialog(PersonalBars& bars, const ActiveBar& activeBar, QWidget* parent);
    ~ShortcutsDialog() override;

    // Brings the command of that tool under the cursor. False when there is none.
    bool Select(const Tool& tool);
    [[nodiscard]] QTreeWidget& List() { return *m_list; }
    [[nodiscard]] QKeySequenceEdit& Keys() { return *m_keys; }
    // What the keys that are typed, or those of the command, are taken by as well.
    [[nodiscard]] QString Conflict() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QKeySequence Typed() const;
    QTreeWidgetItem* NewRow(const CommandEntry& command);
    QWidget* NewEditRow();
    void ShowRow(QTreeWidgetItem* item, const CommandEntry& command);
    void ShowAll();
    void ShowAside();
    void ShowCurrent();
    void ShowConflict();
    void LeaveKeys();
    void Filter(const QString& text);
    void Assign();
    [[nodiscard]] const CommandEntry* Current() const;
    // The other commands of those keys, as "File › Open (Data)".
    [[nodiscard]] QStringList OthersOf(const QKeySequence& keys, const CommandEntry& command) const;
    [[nodiscard]] QStringList HalvesOf(const QKeySequence& keys, const CommandEntry& command) const;
    // What the window itself does at those keys; the one that comes before a command first. Null for nothing.
    [[nodiscard]] const WindowKey* WindowKeyOf(const QKeySequence& keys) const;
    void AddWindowKeys();

    PersonalBars& m_bars;
    CommandList m_commands;
    std::vector<WindowKey> m_windowKeys;
    QHash<int, QList<std::pair<const CommandEntry*, QKeySequence>>> m_byKeys; // by their first strokes
    QLineEdit* m_filter;
    QTreeWidget* m_list;
    QKeySequenceEdit* m_keys;
    QLabel* m_conflict;
    QPushButton* m_assign;
    QPushButton* m_none;
    QPushButton* m_reset;
    QPushButton* m_forget;
};

} // namespace corvane::desktop
