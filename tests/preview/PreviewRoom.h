// An application folder whose files a test edits as an author does, and a preview of it.
#pragma once

#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/preview/CallList.h"
#include "desktop/preview/PreviewWindow.h"
#include "desktop/problems/ProblemList.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

namespace corvane::desktop {

constexpr const char* sBirds = R"(<ActionItems><ActionItem Name="Count" Action="OnCount" PassActionItemParam="true"/>
<ActionItem Name="Feed" Action="OnFeed"/><ActionItem Name="Window"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Window" PositionOrder="5" Caption="#Window"/>
<MenuItem Type="MenuItem" ActionItem="Count" Path="File" PositionOrder="1" Caption="#Count" ShortCutKey="Control+K"/>
<MenuItem Type="MenuItem" ActionItem="Feed" Path="File" PositionOrder="2" Caption="#Feed"/>
</Menus><ExplorerItems>
<ExplorerItem Name="Nests" Type="Folder" PositionOrder="1" Image="nest.svg"/>
<ExplorerItem Name="Inner" Type="Folder" Parent="Nests" PositionOrder="1" Image="nest.svg"/>
<ExplorerItem Name="Owls" Type="Folder" ProgID="BirdsSvc.Owls" Parent="Nests" PositionOrder="2" Image="nest.svg">
<ActionItems><ActionItem Name="Hoot" Action="OnHoot"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="Hoot" PositionOrder="1" Caption="#Hoot"/></Menus></ExplorerItem>
<ExplorerItem Name="Seas" Type="Folder" PositionOrder="2" Image="nest.svg"/></ExplorerItems>
<Windows><Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="BirdsSvc.Page" Caption="One" IsOptional="false" IsResizable="true"/>
<Page PageProgID="BirdsSvc.Page" Caption="Two" IsOptional="false" IsResizable="true"/></Window>
<Window Name="Ask" Caption="Ask" Type="Dialog" State="Normal" IsMDIChild="false" IsModal="true">
<Page PageProgID="BirdsSvc.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)";

class PreviewRoom : public ::testing::Test {
protected:
    PreviewRoom() {
        m_oFolder.Write("App/Images/nest.svg", Picture("#00ff00"));
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Service("Birds", "BirdsSvc.Birds", sBirds);
    }

    static QByteArray Picture(const char* sColour) {
        return QByteArray(
                   R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16"><rect width="16" height="16" fill=")") +
               sColour + "\"/></svg>";
    }
    PreviewWindow& Preview(PreviewOptions oOptions = {}) {
        oOptions.sFolder = m_oFolder.App();
        oOptions.bWithDialogs = false;
        m_pPreview = std::make_unique<PreviewWindow>(std::move(oOptions));
        m_pPreview->Start();
        QApplication::processEvents();
        return *m_pPreview;
    }
    // Waits for what comes by itself; the time is that of a test that hangs.
    static bool Until(const std::function<bool()>& fnTrue) {
        QElapsedTimer oElapsed;
        oElapsed.start();
        while (!fnTrue() && oElapsed.elapsed() < 30000)
            QTest::qWait(5);
        return fnTrue();
    }
    bool UntilShown(int nCount) {
        return Until([&] { return m_pPreview->ShownCount() >= nCount; });
    }
    // Nothing more happens by itself.
    static void Rest() { QTest::qWait(400); }

    void Edit(const char* sService, const QByteArray& aFrom, const QByteArray& aTo) const {
        const QString sFile = QString("App/Services/%1.xml").arg(sService);
        QByteArray aText = m_oFolder.Read(sFile);
        ASSERT_TRUE(aText.contains(aFrom)) << aFrom.constData();
        m_oFolder.Write(sFile, aText.replace(aFrom, aTo));
    }
    [[nodiscard]] Application& App() const { return *m_pPreview->Shown(); }
    [[nodiscard]] MainWindow& Window() const { return App().Window(); }
    [[nodiscard]] std::string Caption(const char* sBand, const char* sTool) const {
        const auto oBand = App().Bar()->Bands()->Find(sBand);
        const auto oTool = oBand ? oBand->Tools()->Find(sTool) : nullptr;
        return oTool ? oTool->Caption() : "none";
    }
    [[nodiscard]] ExplorerTree* Tree(int iTab) const { return Window().Explorer().Page(iTab)->Tree(); }
    [[nodiscard]] std::string Selected(int iTab) const {
        const Ref<Node> oNode = Tree(iTab)->Tree()->SelectedItem();
        return oNode ? oNode->Key() : std::string();
    }
    void ClickNode(int iTab, const char* sKey, Qt::MouseButton eButton = Qt::LeftButton) const {
        ExplorerTree* pTree = Tree(iTab);
        QApplication::processEvents(); // the tab may have been changed just now
        pTree->Sync();
        const QModelIndex oIndex = IndexOf(*pTree, sKey);
        ASSERT_TRUE(oIndex.isValid()) << sKey;
        QTest::mouseClick(pTree->viewport(), eButton, {}, pTree->visualRect(oIndex).center());
    }
    static QModelIndex IndexOf(const ExplorerTree& oTree, const char* sKey, const QModelIndex& oBelow = {}) {
        const Ref<Node> oNode = oTree.Tree()->GetNodes()->Find(sKey);
        const QAbstractItemModel& oModel = *oTree.model();
        for (int i = 0; oNode && i < oModel.rowCount(oBelow); ++i) {
            const QModelIndex oIndex = oModel.index(i, 0, oBelow);
            if (oIndex.data().toString().toStdString() == oNode->Text())
                return oIndex;
            if (const QModelIndex oFound = IndexOf(oTree, sKey, oIndex); oFound.isValid())
                return oFound;
        }
        return {};
    }
    QMenu* OpenMenu(const QString& sTitle) const {
        for (QAction* pAction : Window().menuBar()->actions())
            if (pAction->text().remove('&') == sTitle) {
                Window().menuBar()->setActiveAction(pAction);
                return pAction->menu();
            }
        return nullptr;
    }
    static QString OpenMenuTitle() {
        const auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return pMenu ? pMenu->menuAction()->text().remove('&') : QString();
    }
    static QString LitEntry() {
        const auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return pMenu && pMenu->activeAction() ? pMenu->activeAction()->text().section('\t', 0, 0).remove('&')
                                              : QString();
    }
    [[nodiscard]] QString Problem(int iRow) const {
        const QTreeWidgetItem* pItem = m_pPreview->Problems().topLevelItem(iRow);
        return pItem ? pItem->text(0) + " | " + pItem->text(1) + " | " + pItem->text(2) + " | " + pItem->text(3)
                     : QString();
    }
    [[nodiscard]] QStringList Calls() const {
        QStringList aRows;
        const CallList& oCalls = m_pPreview->Calls();
        for (int i = 0; i < oCalls.topLevelItemCount(); ++i) {
            QStringList aTexts;
            for (int iColumn = 1; iColumn < oCalls.columnCount(); ++iColumn)
                aTexts << oCalls.topLevelItem(i)->text(iColumn);
            aRows << aTexts.join(" | ");
        }
        return aRows;
    }

    AppFolder m_oFolder;
    std::unique_ptr<PreviewWindow> m_pPreview;
};

} // namespace corvane::desktop
