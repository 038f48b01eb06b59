// One tab's content: a tree, the field above it that finds items, and what is said when there is nothing to show.
#pragma once

#include "desktop/explorer/ExplorerTree.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace corvane::desktop {

class ExplorerPage final : public QWidget {
    Q_OBJECT
public:
    ExplorerPage(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, GuardFunction fnGuard,
                 QWidget* pParent = nullptr);

    [[nodiscard]] ExplorerTree* Tree() const { return m_pTree; }
    [[nodiscard]] QLineEdit* Filter() const { return m_pFilter; }
    // The line that stands in place of an empty tree.
    [[nodiscard]] QLabel* Message() const { return m_pMessage; }
    // Puts the cursor in the field.
    void StartFilter();
    void ClearFilter();

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void Update();

    ExplorerTree* m_pTree;
    QLineEdit* m_pFilter;
    QLabel* m_pMessage;
};

// The friendly line of an empty place.
[[nodiscard]] QLabel* NewMessageLabel(const QString& sText, QWidget* pParent);

} // namespace corvane::desktop
