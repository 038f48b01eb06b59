// The order of menus, toolbars and context menus as an outline: an entry that is moved to another place in its menu, by
// dragging or with Alt and an arrow key, is written to the definition files, and so are lines between entries.
#pragma once

#include "analysis/Arrange.h"

#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

class QAction;

namespace corvane::desktop {

class MenuOutline : public QTreeWidget {
    Q_OBJECT
public:
    explicit MenuOutline(QWidget* parent = nullptr);

    // The lines of the application in that folder, those with a problem marked by its severity. The line that was
    // current stays so.
    void Show(const std::string& folder, std::vector<check::OutlineLine> lines,
              const std::vector<check::Finding>& findings);
    // Makes the entry current to which the place belongs. False when none does.
    bool Select(const check::Place& place);
    // Moves the current entry, or the line between two, by that many places in its menu.
    void Move(int places);
    // Draws a line below the current entry, or takes the current one away.
    void ToggleLine();
    // Takes back the latest change that was written here.
    void Undo();
    [[nodiscard]] bool CanUndo() const { return !m_written.empty(); }

Q_SIGNALS:
    // Files have been written, or, with the reason, can't be.
    void Written();
    void Refused(const QString& why);

protected:
    void dropEvent(QDropEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QAction* AddAction(const QString& text, const QKeySequence& keys, std::function<void()> act);
    void SetUpItem(QTreeWidgetItem& item, const check::OutlineLine& line);
    void Mark(QTreeWidgetItem& item, const check::OutlineLine& line, const std::vector<check::Finding>& findings) const;
    void Write(const QTreeWidgetItem& menu);
    void UpdateActions();

    std::string m_folder;
    std::vector<check::OutlineLine> m_lines;
    std::vector<std::vector<check::FixedFile>> m_written; // the latest last
    QAction* m_up;
    QAction* m_down;
    QAction* m_line;
    QAction* m_undo;
};

} // namespace corvane::desktop
