// Measures what users do to many items at once in the explorer of a running application, against a QTreeView over Qt's
// standard model that gets the same events: 1,000 of 100,000 are selected, dragged over 100 rows, and a folder of
// 10,000 is asked for its children.
#include "bench/explorer/ItemsBench.h"

#include "bench/Times.h"
#include "corvane/Explorer.h"
#include "corvane/Service.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/explorer/ExplorerTree.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTreeView>
#include <array>
#include <cstdio>

namespace corvane::bench {
namespace {

constexpr int manyItems = 100'000;
constexpr int selectedItems = 1000;
constexpr int lazyItems = 10'000;
constexpr int draggedRows = 100;
constexpr int rounds = 7;

std::string NameOf(int number) {
    return "Item " + std::to_string(number);
}

class One final : public ExplorerItem<One> {
public:
    using ExplorerItem::ExplorerItem;
    bool CanDrop(const Ref<Dropped>& dropped) { return dropped->Count() > 0; }
    void Drop(const Ref<Dropped>& /*dropped*/) {}
    static constexpr auto Members = Methods<&One::CanDrop, &One::Drop>();
};

class Many final : public ExplorerItem<Many> {
    void OnInitialize() override {
        for (int i = 0; i < manyItems; ++i)
            AddChild(New<One>(NameOf(i)));
    }
};

class Later final : public ExplorerItem<Later> {
public:
    void LazyChildren(const Ref<NewChildren>& children) {
        for (int i = 0; i < lazyItems; ++i)
            children->Add(New<One>(Name() + " " + NameOf(i)), "Late");
    }
    static constexpr auto Members = Methods<&Later::LazyChildren>();
};

class Fills final : public Service<Fills> {
public:
    void Start() { Explorer()->Populate(); }
    static constexpr auto Members = Methods<&Fills::Start>();
};

constexpr const char* definition =
    R"(<Service Name="S" ProgID="B.Fills" Active="true" IsStartService="true"><ExplorerItems>
<ExplorerItem Name="Many" ProgID="B.Many" Type="Folder" PositionOrder="1"/>
<ExplorerItem Name="One" Type="Default" Parent="Many"/>
<ExplorerItem Name="Later" Type="Folder" PositionOrder="2"/>
<ExplorerItem Name="Late" Type="Default" Parent="Later"/>)";

// A lazy folder for each round.
std::string Definition() {
    std::string text = definition;
    for (int i = 0; i < rounds; ++i)
        text += "<ExplorerItem Name=\"Later" + std::to_string(i) +
                "\" ProgID=\"B.Later\" Type=\"Folder\" Parent=\"Later\"/>\n";
    return text + "</ExplorerItems></Service>\n";
}

void DrawAll() {
    QApplication::processEvents();
    QApplication::processEvents();
}

void Click(QTreeView& view, const QModelIndex& index, Qt::KeyboardModifiers modifiers) {
    view.scrollTo(index);
    const QPointF point = view.visualRect(index).center();
    const QPointF global = view.viewport()->mapToGlobal(point);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool isPress = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, point, global, Qt::LeftButton, isPress ? Qt::LeftButton : Qt::NoButton, modifiers);
        QApplication::sendEvent(view.viewport(), &event);
    }
    DrawAll();
}

void Press(QTreeView& view, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(&view, &event);
    DrawAll();
}

// A range with Shift, then the same number one by one with Ctrl. How many are selected afterwards.
std::pair<double, double> Select(QTreeView& view, const QModelIndex& folder) {
    const auto row = [&](int i) { return view.model()->index(i, 0, folder); };
    Click(view, row(manyItems / 2), Qt::NoModifier);
    const double range = Microseconds([&] { Click(view, row(manyItems / 2 + selectedItems - 1), Qt::ShiftModifier); });
    const auto inRange = view.selectionModel()->selectedIndexes().size();
    Click(view, row(0), Qt::NoModifier);
    const double single = Microseconds([&] {
        for (int i = 1; i < selectedItems; ++i)
            Click(view, row(2 * i), Qt::ControlModifier);
    });
    if (inRange != selectedItems || view.selectionModel()->selectedIndexes().size() != selectedItems)
        std::puts("Other items were selected, so this measures nothing.");
    return {range, single};
}

struct Runs {
    std::vector<double> range, single, drag, lazy;
};

void RunCorvane(desktop::Application& application, int round, Runs& runs) {
    auto& many = *application.Window().Explorer().Page(0)->Tree();
    const QModelIndex folder = many.model()->index(0, 0);
    const auto [range, single] = Select(many, folder);
    runs.range.push_back(range);
    runs.single.push_back(single);
    many.setFocus();
    runs.drag.push_back(Microseconds([&] {
        Press(many, Qt::Key_M, Qt::ControlModifier);
        for (int i = 0; i < draggedRows; ++i)
            Press(many, Qt::Key_Up);
        Press(many, Qt::Key_Escape);
    }));
    application.Panel()->Control("tabExplorer").As<TabStrip>()->ChooseTab(1);
    DrawAll();
    auto& later = *application.Window().Explorer().Page(1)->Tree();
    const QModelIndex lazy = later.model()->index(round, 0, later.model()->index(0, 0));
    runs.lazy.push_back(Microseconds([&] {
        later.expand(lazy);
        DrawAll();
    }));
    if (later.model()->rowCount(lazy) != lazyItems)
        std::puts("The folder wasn't filled, so this measures nothing.");
    later.collapse(lazy);
    application.Panel()->Control("tabExplorer").As<TabStrip>()->ChooseTab(0);
    DrawAll();
}

void RunQt(QTreeView& view, QStandardItemModel& model, Runs& runs) {
    const QModelIndex folder = model.index(0, 0);
    const auto [range, single] = Select(view, folder);
    runs.range.push_back(range);
    runs.single.push_back(single);
    runs.drag.push_back(Microseconds([&] {
        const std::unique_ptr<QMimeData> data(model.mimeData(view.selectionModel()->selectedIndexes()));
        QModelIndex over = view.currentIndex();
        for (int i = 0; i < draggedRows && model.canDropMimeData(data.get(), Qt::MoveAction, -1, -1, over); ++i) {
            view.selectionModel()->setCurrentIndex(over, QItemSelectionModel::NoUpdate);
            over = view.indexAbove(over);
            DrawAll();
        }
    }));
    auto* lazy = new QStandardItem("Later");
    lazy->appendRow(new QStandardItem("to come")); // what gives it its branch
    model.appendRow(lazy);
    DrawAll();
    const auto fills = QObject::connect(&view, &QTreeView::expanded, [&](const QModelIndex& index) {
        QStandardItem* item = model.itemFromIndex(index);
        item->removeRow(0);
        QList<QStandardItem*> items;
        for (int i = 0; i < lazyItems; ++i)
            items << new QStandardItem(QString::fromStdString(NameOf(i)));
        item->appendRows(items);
    });
    view.scrollToBottom();
    runs.lazy.push_back(Microseconds([&] {
        view.expand(lazy->index());
        DrawAll();
    }));
    QObject::disconnect(fills);
    model.removeRow(1);
    DrawAll();
}

} // namespace

void CompareItems() {
    QTemporaryDir folder;
    for (const char* name : {"Services", "Images", "plugins"})
        QDir(folder.path()).mkpath(name);
    QFile::copy(CORVANE_SCHEMA, folder.filePath("Services/Service.xdr"));
    QFile file(folder.filePath("Services/S.xml"));
    (void)file.open(QIODevice::WriteOnly);
    file.write(QByteArray::fromStdString(Definition()));
    file.close();
    desktop::ApplicationOptions options;
    options.folder = folder.path().toStdString();
    options.withDialogs = options.personal = false;
    options.classes = {{"B.Fills", [] { return Ref<Object>(New<Fills>()); }},
                       {"B.Many", [] { return Ref<Object>(New<Many>()); }},
                       {"B.Later", [] { return Ref<Object>(New<Later>()); }}};
    desktop::Application application(options);
    if (!application.Start())
        return std::puts("The application didn't start."), void();
    DrawAll();
    QStandardItemModel model;
    auto* many = new QStandardItem("Many");
    for (int i = 0; i < manyItems; ++i)
        many->appendRow(new QStandardItem(QString::fromStdString(NameOf(i))));
    model.appendRow(many);
    QTreeView view;
    view.setModel(&model);
    view.setHeaderHidden(true);
    view.setUniformRowHeights(true);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.resize(260, 420);
    view.show();
    view.expand(many->index());
    DrawAll();
    Runs corvaneRuns, qtRuns;
    for (int i = 0; i < rounds; ++i) { // in turns
        RunCorvane(application, i, corvaneRuns);
        RunQt(view, model, qtRuns);
    }
    std::printf("\n%d items, medians of %d runs, ms\n  %-44s %10s %10s %8s\n", manyItems, rounds, "", "explorer", "Qt",
                "ratio");
    const auto print = [](const char* what, const std::vector<double>& ours, const std::vector<double>& theirs) {
        std::printf("  %-44s %10.2f %10.2f %8.2f\n", what, Median(ours) / 1000, Median(theirs) / 1000,
                    Median(ours) / Median(theirs));
    };
    print("select 1,000 by a range", corvaneRuns.range, qtRuns.range);
    print("select 1,000 one by one", corvaneRuns.single, qtRuns.single);
    print("drag 1,000 over 100 rows", corvaneRuns.drag, qtRuns.drag);
    print("open a lazy folder of 10,000", corvaneRuns.lazy, qtRuns.lazy);
}

} // namespace corvane::bench
