// A panel on the screen with two trees, and a listener that writes down what the first one reports.
#pragma once

#include "desktop/explorer/ExplorerPanel.h"

#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QtTest/QTest>
#include <string>
#include <vector>

namespace corvane::desktop {

class ExplorerFixture {
public:
    ExplorerFixture() {
        AddTree("Studies");
        AddTree("Library");
        m_strip->SetTab(0);
        m_panel.resize(260, 400);
        m_panel.show();
        Turn();
        Listen();
        QObject::connect(&m_panel, &ExplorerPanel::PopupPlace, [this](const QPoint& point) { m_popupPlace = point; });
    }

    // One tab with its tree, as the explorer makes them.
    Ref<TreeView> AddTree(const std::string& name) {
        const Long tab = m_strip->Tabs();
        m_strip->SetTabs(tab + 1);
        m_strip->SetTab(tab);
        m_strip->SetCaption(name);
        auto tree = m_form->AddControl("MSComctlLib.TreeCtrl.2", name).As<TreeView>();
        tree->SetImageList(New<ImageList>());
        tree->SetVisible(true);
        return tree;
    }

    // A root "Root" that is open, with children A, B and C.
    void Fill() {
        Add("", "Root")->SetExpanded(true);
        for (const char* key : {"A", "B", "C"})
            Add("Root", key);
        Turn();
    }
    Ref<Node> Add(const std::string& parent, const std::string& key) {
        return Tree()->GetNodes()->Add(parent, parent.empty() ? NodeRelationship::First : NodeRelationship::Child, key,
                                       key);
    }

    static void Turn() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Ref<TreeView> Tree() { return m_form->Control("Studies").As<TreeView>(); }
    Ref<Node> NodeOf(const std::string& key) { return Tree()->GetNodes()->Item(key); }
    ExplorerPage& Page() { return *m_panel.Page(0); }
    ExplorerTree& View() { return *Page().Tree(); }
    QPoint PointOf(const std::string& key) {
        return View().visualRect(View().IndexOf(NodeOf(key).Get())).adjusted(4, 0, 0, 0).topLeft() + QPoint(0, 5);
    }
    QPoint Outside() { return View().viewport()->rect().bottomRight() - QPoint(5, 5); }

    void Press(Qt::MouseButton button, const QPoint& point, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mousePress(View().viewport(), button, modifiers, point);
    }
    void Release(Qt::MouseButton button, const QPoint& point, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseRelease(View().viewport(), button, modifiers, point);
        Turn();
    }
    void Click(Qt::MouseButton button, const QPoint& point, Qt::KeyboardModifiers modifiers = {}) {
        Press(button, point, modifiers);
        Release(button, point, modifiers);
    }
    void DoubleClick(const QPoint& point) {
        Click(Qt::LeftButton, point);
        QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, point);
        Release(Qt::LeftButton, point);
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&View(), static_cast<Qt::Key>(key), modifiers);
        Turn();
    }
    // The inline editor, or null when none is open.
    QLineEdit* Editor() { return View().viewport()->findChild<QLineEdit*>(); }

    std::string Selected() { return Tree()->SelectedItem() ? Tree()->SelectedItem()->Key() : "-"; }
    std::string Shown() { return View().selectionModel()->selectedIndexes().value(0).data().toString().toStdString(); }
    // What the tree reported since the last call.
    std::string Reported() { return std::exchange(m_reported, {}); }
    // The texts of all rows that the view shows, from the top, by depth of their indentation.
    std::string Rows() {
        std::string rows;
        for (QModelIndex index = View().model()->index(0, 0); index.isValid(); index = View().indexBelow(index)) {
            for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
                rows += '.';
            rows += index.data().toString().toStdString() + " ";
        }
        return rows;
    }

    Ref<PanelForm> m_form = New<PanelForm>();
    Ref<TabStrip> m_strip = m_form->Control("tabExplorer").As<TabStrip>();
    std::string m_failure;
    ExplorerPanel m_panel{m_form, [this](const std::function<void()>& call) {
                              try {
                                  call();
                              } catch (const Failure& failure) {
                                  m_failure = failure.Description;
                              }
                          }};
    QPoint m_popupPlace;
    std::vector<Subscription> m_subscriptions;

private:
    void Note(const std::string& what) { m_reported += (m_reported.empty() ? "" : " ") + what; }

    // As the explorer does, the press selects what it hits.
    void Listen() {
        const auto tree = Tree();
        const auto Keep = [this](Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); };
        Keep(tree->MouseDown.Subscribe([this](Long button, Long shift, Single x, Single y) {
            Note("down" + std::to_string(button) + "/" + std::to_string(shift));
            if (const Ref<Node> node = Tree()->HitTest(x, y))
                node->SetSelected(true);
        }));
        Keep(tree->MouseUp.Subscribe([this](Long button, Long shift, Single, Single) {
            Note("up" + std::to_string(button) + "/" + std::to_string(shift));
        }));
        Keep(tree->NodeClick.Subscribe(
            [this](const Ref<Node>& node) { Note("node:" + node->Key() + (node->Selected() ? "" : "!")); }));
        Keep(tree->Click.Subscribe([this] { Note("click"); }));
        Keep(tree->DblClick.Subscribe([this] { Note("open:" + Selected()); }));
    }

    std::string m_reported;
};

} // namespace corvane::desktop
