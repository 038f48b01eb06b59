// An application folder whose files a test edits as an author does, and a preview of it.
#pragma once

#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/preview/CallList.h"
#include "desktop/preview/MenuOutline.h"
#include "desktop/preview/PreviewWindow.h"
#include "desktop/problems/ProblemList.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>

namespace corvane::desktop {

constexpr const char* birds = R"(<ActionItems><ActionItem Name="Count" Action="OnCount" PassActionItemParam="true"/>
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

class PreviewFixture : public ::testing::Test {
protected:
    PreviewFixture() {
        m_folder.Write("App/Images/nest.svg", Picture("#00ff00"));
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Service("Birds", "BirdsSvc.Birds", birds);
    }

    static QByteArray Picture(const char* colour) {
        return QByteArray(
                   R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16"><rect width="16" height="16" fill=")") +
               colour + "\"/></svg>";
    }
    PreviewWindow& Preview(PreviewOptions options = {}) {
        options.folder = m_folder.App();
        options.withDialogs = false;
        m_preview = std::make_unique<PreviewWindow>(std::move(options));
        m_preview->Start();
        QApplication::processEvents();
        return *m_preview;
    }
    // Waits for what comes by itself; the time is that of a test that hangs.
    static bool Until(const std::function<bool()>& isTrue) {
        QElapsedTimer elapsed;
        elapsed.start();
        while (!isTrue() && elapsed.elapsed() < 30000)
            QTest::qWait(5);
        return isTrue();
    }
    bool UntilShown(int count) {
        return Until([&] { return m_preview->ShownCount() >= count; });
    }
    // Nothing more happens by itself: what has changed has been looked at, and shown where it can be.
    void Rest() {
        EXPECT_TRUE(Until([&] { return m_preview->IsAtRest(); }));
        QApplication::processEvents();
    }
    // Something stands in the way, and it has been looked several times whether it still does.
    void WaitForTries() {
        const int tryCount = m_preview->TryCount();
        EXPECT_TRUE(Until([&] { return m_preview->TryCount() >= tryCount + 3; }));
    }

    void Edit(const char* service, const QByteArray& from, const QByteArray& to) const {
        const QString file = QString("App/Services/%1.xml").arg(service);
        QByteArray text = m_folder.Read(file);
        ASSERT_TRUE(text.contains(from)) << from.constData();
        m_folder.Write(file, text.replace(from, to));
    }
    [[nodiscard]] Application& App() const { return *m_preview->Shown(); }
    [[nodiscard]] MainWindow& Window() const { return App().Window(); }
    [[nodiscard]] std::string Caption(const char* bandName, const char* toolName) const {
        const auto band = App().Bar()->Bands()->Find(bandName);
        const auto tool = band ? band->Tools()->Find(toolName) : nullptr;
        return tool ? tool->Caption() : "none";
    }
    [[nodiscard]] ExplorerTree* Tree(int tab) const { return Window().Explorer().Page(tab)->Tree(); }
    [[nodiscard]] std::string Selected(int tab) const {
        const Ref<Node> node = Tree(tab)->Tree()->SelectedItem();
        return node ? node->Key() : std::string();
    }
    void ClickNode(int tab, const char* key, Qt::MouseButton button = Qt::LeftButton) const {
        ExplorerTree* tree = Tree(tab);
        QApplication::processEvents(); // the tab may have been changed just now
        tree->Sync();
        const QModelIndex index = IndexOf(*tree, key);
        ASSERT_TRUE(index.isValid()) << key;
        QTest::mouseClick(tree->viewport(), button, {}, tree->visualRect(index).center());
    }
    static QModelIndex IndexOf(const ExplorerTree& tree, const char* key, const QModelIndex& below = {}) {
        const Ref<Node> node = tree.Tree()->GetNodes()->Find(key);
        const QAbstractItemModel& model = *tree.model();
        for (int i = 0; node && i < model.rowCount(below); ++i) {
            const QModelIndex index = model.index(i, 0, below);
            if (index.data().toString().toStdString() == node->Text())
                return index;
            if (const QModelIndex found = IndexOf(tree, key, index); found.isValid())
                return found;
        }
        return {};
    }
    QMenu* OpenMenu(const QString& title) const {
        for (QAction* action : Window().menuBar()->actions())
            if (action->text().remove('&') == title) {
                Window().menuBar()->setActiveAction(action);
                return action->menu();
            }
        return nullptr;
    }
    // The entry of that caption, without its mnemonic.
    static QAction* EntryOf(const QMenu& menu, const QString& caption) {
        for (QAction* action : menu.actions())
            if (action->text().section('\t', 0, 0).remove('&') == caption)
                return action;
        return nullptr;
    }
    static QString OpenMenuTitle() {
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu ? menu->menuAction()->text().remove('&') : QString();
    }
    static QString LitEntry() {
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu && menu->activeAction() ? menu->activeAction()->text().section('\t', 0, 0).remove('&') : QString();
    }
    [[nodiscard]] QString Problem(int row) const {
        const QTreeWidgetItem* item = m_preview->Problems().topLevelItem(row);
        return item ? item->text(0) + " | " + item->text(1) + " | " + item->text(2) + " | " + item->text(3) : QString();
    }
    [[nodiscard]] QStringList Calls() const {
        QStringList rows;
        const CallList& calls = m_preview->Calls();
        for (int i = 0; i < calls.topLevelItemCount(); ++i) {
            QStringList texts;
            for (int column = 1; column < calls.columnCount(); ++column)
                texts << calls.topLevelItem(i)->text(column);
            rows << texts.join(" | ");
        }
        return rows;
    }

    AppFolder m_folder;
    std::unique_ptr<PreviewWindow> m_preview;
};

} // namespace corvane::desktop
