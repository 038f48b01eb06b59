// The command palette: a few letters find a command, Enter chooses it.
#pragma once

#include "desktop/palette/PaletteModel.h"

#include <QDialog>
#include <functional>

class QLabel;
class QLineEdit;
class QListView;

namespace corvane::desktop {

class PaletteDialog final : public QDialog {
    Q_OBJECT
public:
    using ToolFunction = std::function<void(const Ref<Tool>&)>;

    // choose and explain (Ctrl+Alt+Enter) are called once the palette has closed.
    PaletteDialog(std::vector<PaletteEntry> entries, ToolFunction choose, ToolFunction explain, QWidget* parent);

    [[nodiscard]] QLineEdit& Field() { return *m_field; }
    [[nodiscard]] QListView& List() { return *m_list; }
    [[nodiscard]] QLabel& Status() { return *m_status; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Search(const QString& typed);
    void ShowStatus();
    void Choose(bool explain);

    PaletteModel* m_model;
    ToolFunction m_choose;
    ToolFunction m_explain;
    QLineEdit* m_field;
    QListView* m_list;
    QLabel* m_status;
};

} // namespace corvane::desktop
