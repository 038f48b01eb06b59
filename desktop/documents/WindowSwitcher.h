// The list of open windows while Ctrl is held: each Tab goes one further, and letting go of Ctrl chooses.
#pragma once

#include <QFrame>
#include <QIcon>
#include <functional>
#include <vector>

class QListWidget;

namespace corvane::desktop {

class WindowSwitcher final : public QFrame {
    Q_OBJECT
public:
    struct Entry {
        QString title;
        QIcon icon;
        std::function<void()> choose;
    };
    // Over the middle of a window, which owns it. The entries come in the order of use, the active one first; step is 1
    // for the one used before it and -1 for the one not used for longest. It deletes itself; where Ctrl isn't held any
    // more it chooses at once.
    WindowSwitcher(std::vector<Entry> entries, int step, QWidget& over, bool isHeld);

    void Step(int step);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void End(bool chooses);

    std::vector<Entry> m_entries;
    QListWidget* m_list;
};

} // namespace corvane::desktop
