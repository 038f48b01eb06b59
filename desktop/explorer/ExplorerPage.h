// One tab's content: a tree, the field above it that finds items, and what is said when there is nothing to show.
#pragma once

#include "desktop/explorer/ExplorerTree.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace corvane::desktop {

class ExplorerPage final : public QWidget {
    Q_OBJECT
public:
    ExplorerPage(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, Guard guard, QWidget* parent = nullptr,
                 std::shared_ptr<items::Items> items = {});

    [[nodiscard]] ExplorerTree* Tree() const { return m_tree; }
    [[nodiscard]] QLineEdit* Filter() const { return m_filter; }
    // The line that is in place of an empty tree.
    [[nodiscard]] QLabel* Message() const { return m_message; }
    // What an empty tree says, and a button that does it; act is empty for none. A tree with nothing but its root says
    // it as well, below that.
    void SetEmptyHint(const QString& text, const QString& button, std::function<void()> act);
    // Puts the cursor in the field.
    void StartFilter();
    void ClearFilter();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Update();
    [[nodiscard]] bool HasRootAlone() const;

    ExplorerTree* m_tree;
    QLineEdit* m_filter;
    QWidget* m_empty; // in place of the tree while that has nothing to show
    QLabel* m_message;
    QPushButton* m_act = nullptr; // below the line, where there is something to be done
    QString m_emptyText;
    bool m_hasHint = false;
};

// The friendly line of an empty place.
[[nodiscard]] QLabel* NewMessageLabel(const QString& text, QWidget* parent);

} // namespace corvane::desktop
