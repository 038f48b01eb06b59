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
    ExplorerPage(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, Guard guard, QWidget* parent = nullptr);

    [[nodiscard]] ExplorerTree* Tree() const { return m_tree; }
    [[nodiscard]] QLineEdit* Filter() const { return m_filter; }
    // The line that is in place of an empty tree.
    [[nodiscard]] QLabel* Message() const { return m_message; }
    // Puts the cursor in the field.
    void StartFilter();
    void ClearFilter();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Update();

    ExplorerTree* m_tree;
    QLineEdit* m_filter;
    QLabel* m_message;
};

// The friendly line of an empty place.
[[nodiscard]] QLabel* NewMessageLabel(const QString& text, QWidget* parent);

} // namespace corvane::desktop
