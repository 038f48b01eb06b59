// Lets a user hide, move and add entries of menus and toolbars.
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
    // Asks the user for a command and calls back with it.
    using PickFunction = std::function<void(QWidget* parent, std::function<void(const Ref<Tool>&)>)>;

    CustomizeDialog(PersonalBars& bars, Ref<ActiveBar> activeBar, PickFunction pick, QWidget* parent);

    // False when there is no such menu or toolbar.
    bool SelectBand(const std::string& band);
    [[nodiscard]] QListWidget& Entries() { return *m_entries; }
    void MoveCurrent(int step);
    void AddCommand(const Ref<Tool>& tool);
    void SelectEntry(const Tool& tool);

private:
    void FillBands();
    QWidget* NewButtons();
    QPushButton* NewButton(const QString& text, const std::function<void()>& click);
    void AddBand(QTreeWidgetItem* group, const Ref<Band>& band, const QString& caption);
    void ShowBand();
    void ShowButtons();
    void Entry_Changed(QListWidgetItem* item);
    void Entries_Moved(int row);
    void ForgetAside();
    [[nodiscard]] Ref<Band> CurrentBand() const;
    [[nodiscard]] Ref<Tool> ToolAt(int row) const;

    PersonalBars& m_bars;
    Ref<ActiveBar> m_activeBar;
    PickFunction m_pick;
    QTreeWidget* m_bands;
    QListWidget* m_entries;
    QLabel* m_aside;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_reset = nullptr;
    QPushButton* m_forget = nullptr;
    bool m_fills = false;
};

} // namespace corvane::desktop
