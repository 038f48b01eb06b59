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

    // fnChoose and fnExplain (Ctrl+Alt+Enter) are called once the palette has closed.
    PaletteDialog(std::vector<PaletteEntry> aEntries, ToolFunction fnChoose, ToolFunction fnExplain, QWidget* pParent);

    [[nodiscard]] QLineEdit& Field() { return *m_pField; }
    [[nodiscard]] QListView& List() { return *m_pList; }
    [[nodiscard]] QLabel& Status() { return *m_pStatus; }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    void Search(const QString& sTyped);
    void ShowStatus();
    void Choose(bool bExplain);

    PaletteModel* m_pModel;
    ToolFunction m_fnChoose;
    ToolFunction m_fnExplain;
    QLineEdit* m_pField;
    QListView* m_pList;
    QLabel* m_pStatus;
};

} // namespace corvane::desktop
