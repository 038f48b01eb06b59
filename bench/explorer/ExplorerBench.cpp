// Measures the explorer's tree against a hand-written item model and Qt's standard one, which do the same in the same
// run: filled, looked up, changed, thinned out and cleared, alone and under a view that is painted, closed and open.
// Prints medians in milliseconds and their ratios to the hand-written model.

#include "bench/explorer/ItemsBench.h"
#include "bench/explorer/PlainModel.h"
#include "desktop/explorer/ExplorerTree.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QStandardItemModel>
#include <algorithm>
#include <array>
#include <cstdio>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int FolderSize = 100; // with the folder itself
constexpr int Few = 1000;       // that are changed or deleted

enum class View { None, Closed, Open };

// The inputs, made before any clock runs.
struct Inputs {
    explicit Inputs(int items) {
        for (int i = 0; i < items; ++i) {
            keys.push_back("Item" + std::to_string(i));
            texts.push_back("Sample " + std::to_string(i));
            qtKeys.push_back(QString::fromStdString(keys.back()));
            qtTexts.push_back(QString::fromStdString(texts.back()));
        }
        const int step = items / Few;
        for (int i = 0; i < Few; ++i)
            few.push_back(static_cast<std::size_t>(i * step + (i * step % FolderSize == 0 ? 1 : 0)));
        std::shuffle(few.begin(), few.end(), std::mt19937(1)); // changes come in no order
    }
    static bool IsFolder(std::size_t i) { return i % FolderSize == 0; }
    static std::size_t FolderOf(std::size_t i) { return i - i % FolderSize; }
    [[nodiscard]] std::size_t Count() const { return keys.size(); }

    std::vector<std::string> keys;
    std::vector<std::string> texts;
    std::vector<QString> qtKeys;
    std::vector<QString> qtTexts;
    std::vector<std::size_t> few; // different ones, no folders
};

// One way to hold the items. Each step ends when the screen is up to date.
class Subject {
public:
    virtual ~Subject() = default;
    virtual void Fill(const Inputs& inputs) = 0;
    virtual std::size_t LookUp(const Inputs& inputs) = 0;
    virtual void Change(const Inputs& inputs, const QString& text) = 0;
    virtual void Delete(const Inputs& inputs) = 0;
    virtual void Clear() = 0;
    virtual QTreeView* Widget() = 0;

    void Show(View view) {
        if (view == View::None)
            return;
        Widget()->resize(300, 600);
        Widget()->show();
    }
};

void Paint() {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

class CorvaneSubject final : public Subject {
public:
    explicit CorvaneSubject(View view) : m_viewKind(view) {
        m_tree->SetImageList(New<ImageList>());
        m_tree->SetVisible(true);
        if (view == View::None)
            return;
        m_view = std::make_unique<desktop::ExplorerTree>(m_tree, std::make_shared<desktop::ImageIcons>(),
                                                         [](const std::function<void()>& call) { call(); });
    }
    void Fill(const Inputs& inputs) override {
        const Ref<Nodes> nodes = m_tree->GetNodes();
        for (std::size_t i = 0; i < inputs.Count(); ++i) {
            if (!Inputs::IsFolder(i)) {
                nodes->Add(inputs.keys[Inputs::FolderOf(i)], NodeRelationship::Child, inputs.keys[i], inputs.texts[i]);
                continue;
            }
            const auto folder = nodes->Add({}, NodeRelationship::First, inputs.keys[i], inputs.texts[i]);
            if (m_viewKind == View::Open)
                folder->SetExpanded(true);
        }
    }
    std::size_t LookUp(const Inputs& inputs) override {
        std::size_t found = 0;
        for (const std::string& key : inputs.keys)
            found += m_tree->GetNodes()->Item(key)->Text().size();
        return found;
    }
    void Change(const Inputs& inputs, const QString& text) override {
        const std::string newText = text.toStdString();
        for (const std::size_t i : inputs.few)
            m_tree->GetNodes()->Item(inputs.keys[i])->SetText(newText);
    }
    void Delete(const Inputs& inputs) override {
        for (const std::size_t i : inputs.few)
            m_tree->GetNodes()->Remove(inputs.keys[i]);
    }
    void Clear() override { m_tree->GetNodes()->Clear(); }
    QTreeView* Widget() override { return m_view.get(); }

private:
    View m_viewKind;
    Ref<TreeView> m_tree = New<TreeView>("Bench");
    std::unique_ptr<desktop::ExplorerTree> m_view;
};

// A plain view, set up as thriftily as the explorer's.
std::unique_ptr<QTreeView> NewPlainView(View viewKind, QAbstractItemModel& model) {
    if (viewKind == View::None)
        return nullptr;
    auto view = std::make_unique<QTreeView>();
    view->setHeaderHidden(true);
    view->setUniformRowHeights(true);
    view->setModel(&model);
    return view;
}

class PlainSubject final : public Subject {
public:
    explicit PlainSubject(View view) : m_viewKind(view), m_view(NewPlainView(view, m_model)) {}
    void Fill(const Inputs& inputs) override {
        for (std::size_t i = 0; i < inputs.Count(); ++i) {
            PlainModel::Item* folder = Inputs::IsFolder(i) ? nullptr : m_model.Find(inputs.qtKeys[Inputs::FolderOf(i)]);
            PlainModel::Item* item = m_model.Add(folder, inputs.qtKeys[i], inputs.qtTexts[i]);
            if (!folder && m_viewKind == View::Open)
                m_view->expand(m_model.IndexOf(item));
        }
    }
    std::size_t LookUp(const Inputs& inputs) override {
        std::size_t found = 0;
        for (const QString& key : inputs.qtKeys)
            found += static_cast<std::size_t>(m_model.Find(key)->text.size());
        return found;
    }
    void Change(const Inputs& inputs, const QString& text) override {
        for (const std::size_t i : inputs.few)
            m_model.SetText(m_model.Find(inputs.qtKeys[i]), text);
    }
    void Delete(const Inputs& inputs) override {
        for (const std::size_t i : inputs.few)
            m_model.Remove(m_model.Find(inputs.qtKeys[i]));
    }
    void Clear() override { m_model.Clear(); }
    QTreeView* Widget() override { return m_view.get(); }

private:
    View m_viewKind;
    PlainModel m_model;
    std::unique_ptr<QTreeView> m_view;
};

class StandardSubject final : public Subject {
public:
    explicit StandardSubject(View view) : m_viewKind(view), m_view(NewPlainView(view, m_model)) {}
    void Fill(const Inputs& inputs) override {
        for (std::size_t i = 0; i < inputs.Count(); ++i) {
            auto* item = new QStandardItem(inputs.qtTexts[i]);
            if (Inputs::IsFolder(i))
                m_model.appendRow(item);
            else
                m_items.value(inputs.qtKeys[Inputs::FolderOf(i)])->appendRow(item);
            m_items.insert(inputs.qtKeys[i], item);
            if (Inputs::IsFolder(i) && m_viewKind == View::Open)
                m_view->expand(item->index());
        }
    }
    std::size_t LookUp(const Inputs& inputs) override {
        std::size_t found = 0;
        for (const QString& key : inputs.qtKeys)
            found += static_cast<std::size_t>(m_items.value(key)->text().size());
        return found;
    }
    void Change(const Inputs& inputs, const QString& text) override {
        for (const std::size_t i : inputs.few)
            m_items.value(inputs.qtKeys[i])->setText(text);
    }
    void Delete(const Inputs& inputs) override {
        for (const std::size_t i : inputs.few) {
            QStandardItem* item = m_items.take(inputs.qtKeys[i]);
            item->parent()->removeRow(item->row());
        }
    }
    void Clear() override {
        m_items.clear();
        m_model.clear();
    }
    QTreeView* Widget() override { return m_view.get(); }

private:
    View m_viewKind;
    QStandardItemModel m_model;
    QHash<QString, QStandardItem*> m_items;
    std::unique_ptr<QTreeView> m_view;
};

constexpr std::array<const char*, 5> Steps{"fill", "look up all", "change 1,000", "delete 1,000", "clear"};
using Times = std::array<double, Steps.size()>;

template <class T>
Times Run(const Inputs& inputs, View view) {
    T subject(view);
    subject.Show(view);
    Paint();
    Times times{};
    std::size_t stepIndex = 0;
    const auto Measure = [&](const auto& step) {
        QElapsedTimer timer;
        timer.start();
        step();
        if (view != View::None)
            Paint();
        times[stepIndex++] = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    };
    std::size_t found = 0;
    Measure([&] { subject.Fill(inputs); });
    if (view != View::None) { // the middle of the tree, where nothing is near
        subject.Widget()->scrollTo(subject.Widget()->model()->index(static_cast<int>(inputs.Count()) / 200, 0));
        Paint();
    }
    Measure([&] { found = subject.LookUp(inputs); });
    Measure([&] { subject.Change(inputs, QStringLiteral("changed")); });
    Measure([&] { subject.Delete(inputs); });
    Measure([&] { subject.Clear(); });
    if (found == 0)
        std::puts("Nothing was found, so nothing was measured.");
    return times;
}

Times Medians(std::vector<Times> runs) {
    Times medians{};
    for (std::size_t step = 0; step < medians.size(); ++step) {
        const auto middle = runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2);
        std::nth_element(runs.begin(), middle, runs.end(),
                         [step](const Times& a, const Times& b) { return a[step] < b[step]; });
        medians[step] = (*middle)[step];
    }
    return medians;
}

void Compare(int items, View view, int runs) {
    const Inputs inputs(items);
    std::vector<Times> corvaneTimes, plain, standard;
    for (int i = 0; i < runs; ++i) { // in turns, so that a slow moment of the machine meets all three
        corvaneTimes.push_back(Run<CorvaneSubject>(inputs, view));
        plain.push_back(Run<PlainSubject>(inputs, view));
        standard.push_back(Run<StandardSubject>(inputs, view));
    }
    const Times c = Medians(corvaneTimes), p = Medians(plain), s = Medians(standard);
    static const char* const views[] = {"model alone", "view, closed", "view, open"};
    std::printf("\n%d items, %s (medians of %d runs, ms)\n", items, views[static_cast<int>(view)], runs);
    std::printf("  %-14s %10s %10s %10s %9s %9s\n", "", "explorer", "by hand", "standard", "/by hand", "/standard");
    for (std::size_t i = 0; i < Steps.size(); ++i)
        std::printf("  %-14s %10.2f %10.2f %10.2f %9.2f %9.2f\n", Steps[i], c[i], p[i], s[i], c[i] / p[i], c[i] / s[i]);
    std::fflush(stdout);
}

std::size_t Allocated() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd; // small blocks, and those that have a mapping of their own
}

// Texts longer than a string holds within itself have memory of their own, which isn't the node's.
void CountMemory(int items) {
    const Inputs inputs(items);
    const std::size_t before = Allocated();
    CorvaneSubject subject(View::None);
    subject.Fill(inputs);
    const auto node = static_cast<double>(Allocated() - before) / items;
    std::printf("\n%d items: %.0f bytes a node, with keys and texts of up to 15 characters in them\n", items, node);
}

void Filter(int items) {
    const Inputs inputs(items);
    CorvaneSubject subject(View::Open);
    subject.Show(View::Open);
    subject.Fill(inputs);
    Paint();
    auto* tree = static_cast<desktop::ExplorerTree*>(subject.Widget());
    std::printf("\n%d items, filter typed (ms)\n", items);
    for (const char* text : {"e", "9", "99", "999", "999x", ""}) {
        QElapsedTimer timer;
        timer.start();
        tree->SetFilter(QString::fromLatin1(text));
        Paint();
        std::printf("  %-14s %10.2f\n", *text ? text : "(cleared)", static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
}

} // namespace
} // namespace corvane::bench

int main(int argumentCount, char** arguments) {
    using namespace corvane::bench;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // the platform's remarks
    // Memory that one run returns stays for the next; otherwise the system's work is what is measured.
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    const QApplication application(argumentCount, arguments);
    QApplication::setStyle("fusion");
    if (argumentCount > 1 && std::string(arguments[1]) == "--items") {
        CompareItems();
        return 0;
    }
    CountMemory(100000); // first, as nodes later take the memory of earlier ones
    for (const int items : {10000, 100000}) {
        for (const View view : {View::None, View::Closed, View::Open})
            Compare(items, view, items == 10000 ? 9 : 5);
        Filter(items);
    }
    CompareItems();
    return 0;
}
