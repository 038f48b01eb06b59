// The user's named layouts in a list, with what can be done to each.
#pragma once

#include "desktop/session/Layouts.h"

#include <QDialog>
#include <functional>
#include <vector>

class QLabel;
class QListWidget;
class QPushButton;

namespace corvane::desktop {

class LayoutsDialog final : public QDialog {
    Q_OBJECT
public:
    // Asks for a path, with a proposed name or nothing for a file that is there; empty when the user cancelled.
    struct Paths {
        std::function<QString(const QString& proposed)> toSave;
        std::function<QString()> toOpen;
    };

    LayoutsDialog(Layouts& layouts, Paths paths, QWidget* parent);

private:
    void Fill(const QString& current);
    [[nodiscard]] QString Current() const; // empty without one
    void UpdateButtons();
    void ShowProblem(const QString& problem);
    void Delete();

    Layouts& m_layouts;
    Paths m_paths;
    QListWidget* m_list;
    QLabel* m_empty;
    std::vector<QPushButton*> m_ofOne; // that need a selected layout
    bool m_fills = false;
};

} // namespace corvane::desktop
