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

class Room {
public:
    Room() {
        AddTree("Studies");
        AddTree("Library");
        m_oStrip->SetTab(0);
        m_oPanel.resize(260, 400);
        m_oPanel.show();
        Turn();
        Listen();
        QObject::connect(&m_oPanel, &ExplorerPanel::PopupPlace,
                         [this](const QPoint& oPoint) { m_oPopupPlace = oPoint; });
    }

    // One tab with its tree, as the explorer makes them.
    Ref<TreeView> AddTree(const std::string& sName) {
        const Long lTab = m_oStrip->Tabs();
        m_oStrip->SetTabs(lTab + 1);
        m_oStrip->SetTab(lTab);
        m_oStrip->SetCaption(sName);
        const auto oTree = m_oForm->AddControl("MSComctlLib.TreeCtrl.2", sName).As<TreeView>();
        oTree->SetImageList(New<ImageList>());
        oTree->SetVisible(true);
        return oTree;
    }

    // A root "Root" that is open, with children A, B and C.
    void Fill() {
        Add("", "Root")->SetExpanded(true);
        for (const char* sKey : {"A", "B", "C"})
            Add("Root", sKey);
        Turn();
    }
    Ref<Node> Add(const std::string& sParent, const std::string& sKey) {
        return Tree()->GetNodes()->Add(sParent, sParent.empty() ? NodeRelationship::First : NodeRelationship::Child,
                                       sKey, sKey);
    }

    static void Turn() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Ref<TreeView> Tree() { return m_oForm->Control("Studies").As<TreeView>(); }
    Ref<Node> NodeOf(const std::string& sKey) { return Tree()->GetNodes()->Item(sKey); }
    ExplorerPage& Page() { return *m_oPanel.Page(0); }
    ExplorerTree& View() { return *Page().Tree(); }
    QPoint PointOf(const std::string& sKey) {
        return View().visualRect(View().IndexOf(NodeOf(sKey).Get())).adjusted(4, 0, 0, 0).topLeft() + QPoint(0, 5);
    }
    QPoint Outside() { return View().viewport()->rect().bottomRight() - QPoint(5, 5); }

    void Press(Qt::MouseButton eButton, const QPoint& oPoint, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::mousePress(View().viewport(), eButton, eModifiers, oPoint);
    }
    void Release(Qt::MouseButton eButton, const QPoint& oPoint, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::mouseRelease(View().viewport(), eButton, eModifiers, oPoint);
        Turn();
    }
    void Click(Qt::MouseButton eButton, const QPoint& oPoint, Qt::KeyboardModifiers eModifiers = {}) {
        Press(eButton, oPoint, eModifiers);
        Release(eButton, oPoint, eModifiers);
    }
    void DoubleClick(const QPoint& oPoint) {
        Click(Qt::LeftButton, oPoint);
        QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, oPoint);
        Release(Qt::LeftButton, oPoint);
    }
    void Key(int iKey, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::keyClick(&View(), static_cast<Qt::Key>(iKey), eModifiers);
        Turn();
    }
    // The inline editor, or null when none is open.
    QLineEdit* Editor() { return View().viewport()->findChild<QLineEdit*>(); }

    std::string Selected() { return Tree()->SelectedItem() ? Tree()->SelectedItem()->Key() : "-"; }
    std::string Shown() { return View().selectionModel()->selectedIndexes().value(0).data().toString().toStdString(); }
    // What the tree reported since the last call.
    std::string Reported() { return std::exchange(m_sReported, {}); }
    // The texts of all rows that the view shows, from the top, by depth of their indentation.
    std::string Rows() {
        std::string sRows;
        for (QModelIndex oIndex = View().model()->index(0, 0); oIndex.isValid(); oIndex = View().indexBelow(oIndex)) {
            for (QModelIndex oAbove = oIndex.parent(); oAbove.isValid(); oAbove = oAbove.parent())
                sRows += '.';
            sRows += oIndex.data().toString().toStdString() + " ";
        }
        return sRows;
    }

    Ref<PanelForm> m_oForm = New<PanelForm>();
    Ref<TabStrip> m_oStrip = m_oForm->Control("tabExplorer").As<TabStrip>();
    std::string m_sFailure;
    ExplorerPanel m_oPanel{m_oForm, [this](const std::function<void()>& fnCall) {
                               try {
                                   fnCall();
                               } catch (const Failure& oFailure) {
                                   m_sFailure = oFailure.Description;
                               }
                           }};
    QPoint m_oPopupPlace;
    std::vector<Subscription> m_aSubscriptions;

private:
    void Note(const std::string& sWhat) { m_sReported += (m_sReported.empty() ? "" : " ") + sWhat; }

    // As the explorer does, the press selects what it hits.
    void Listen() {
        const auto oTree = Tree();
        const auto Keep = [this](Subscription oSubscription) { m_aSubscriptions.push_back(std::move(oSubscription)); };
        Keep(oTree->MouseDown.Subscribe([this](Long lButton, Long lShift, Single x, Single y) {
            Note("down" + std::to_string(lButton) + "/" + std::to_string(lShift));
            if (const Ref<Node> oNode = Tree()->HitTest(x, y))
                oNode->SetSelected(true);
        }));
        Keep(oTree->MouseUp.Subscribe([this](Long lButton, Long lShift, Single, Single) {
            Note("up" + std::to_string(lButton) + "/" + std::to_string(lShift));
        }));
        Keep(oTree->NodeClick.Subscribe(
            [this](const Ref<Node>& oNode) { Note("node:" + oNode->Key() + (oNode->Selected() ? "" : "!")); }));
        Keep(oTree->Click.Subscribe([this] { Note("click"); }));
        Keep(oTree->DblClick.Subscribe([this] { Note("open:" + Selected()); }));
    }

    std::string m_sReported;
};

} // namespace corvane::desktop
