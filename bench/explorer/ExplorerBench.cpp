// Measures the explorer's tree against a hand-written item model and Qt's standard one, which do the same in the same
// run: filled, looked up, changed, thinned out and cleared, alone and under a view that is painted, closed and open.
// Prints medians in milliseconds and their ratios to the hand-written model.

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
    explicit Inputs(int nItems) {
        for (int i = 0; i < nItems; ++i) {
            aKeys.push_back("Item" + std::to_string(i));
            aTexts.push_back("Sample " + std::to_string(i));
            aQtKeys.push_back(QString::fromStdString(aKeys.back()));
            aQtTexts.push_back(QString::fromStdString(aTexts.back()));
        }
        const int iStep = nItems / Few;
        for (int i = 0; i < Few; ++i)
            aFew.push_back(static_cast<std::size_t>(i * iStep + (i * iStep % FolderSize == 0 ? 1 : 0)));
        std::shuffle(aFew.begin(), aFew.end(), std::mt19937(1)); // changes come in no order
    }
    static bool IsFolder(std::size_t i) { return i % FolderSize == 0; }
    static std::size_t FolderOf(std::size_t i) { return i - i % FolderSize; }
    [[nodiscard]] std::size_t Count() const { return aKeys.size(); }

    std::vector<std::string> aKeys;
    std::vector<std::string> aTexts;
    std::vector<QString> aQtKeys;
    std::vector<QString> aQtTexts;
    std::vector<std::size_t> aFew; // different ones, no folders
};

// One way to hold the items. Each step ends when the screen is up to date.
class Subject {
public:
    virtual ~Subject() = default;
    virtual void Fill(const Inputs& oInputs) = 0;
    virtual std::size_t LookUp(const Inputs& oInputs) = 0;
    virtual void Change(const Inputs& oInputs, const QString& sText) = 0;
    virtual void Delete(const Inputs& oInputs) = 0;
    virtual void Clear() = 0;
    virtual QTreeView* Widget() = 0;

    void Show(View eView) {
        if (eView == View::None)
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
    explicit CorvaneSubject(View eView) : m_eView(eView) {
        m_oTree->SetImageList(New<ImageList>());
        m_oTree->SetVisible(true);
        if (eView == View::None)
            return;
        m_pView = std::make_unique<desktop::ExplorerTree>(m_oTree, std::make_shared<desktop::ImageIcons>(),
                                                          [](const std::function<void()>& fnCall) { fnCall(); });
    }
    void Fill(const Inputs& oInputs) override {
        const Ref<Nodes> oNodes = m_oTree->GetNodes();
        for (std::size_t i = 0; i < oInputs.Count(); ++i) {
            if (!Inputs::IsFolder(i)) {
                oNodes->Add(oInputs.aKeys[Inputs::FolderOf(i)], NodeRelationship::Child, oInputs.aKeys[i],
                            oInputs.aTexts[i]);
                continue;
            }
            const auto oFolder = oNodes->Add({}, NodeRelationship::First, oInputs.aKeys[i], oInputs.aTexts[i]);
            if (m_eView == View::Open)
                oFolder->SetExpanded(true);
        }
    }
    std::size_t LookUp(const Inputs& oInputs) override {
        std::size_t nFound = 0;
        for (const std::string& sKey : oInputs.aKeys)
            nFound += m_oTree->GetNodes()->Item(sKey)->Text().size();
        return nFound;
    }
    void Change(const Inputs& oInputs, const QString& sText) override {
        const std::string sNew = sText.toStdString();
        for (const std::size_t i : oInputs.aFew)
            m_oTree->GetNodes()->Item(oInputs.aKeys[i])->SetText(sNew);
    }
    void Delete(const Inputs& oInputs) override {
        for (const std::size_t i : oInputs.aFew)
            m_oTree->GetNodes()->Remove(oInputs.aKeys[i]);
    }
    void Clear() override { m_oTree->GetNodes()->Clear(); }
    QTreeView* Widget() override { return m_pView.get(); }

private:
    View m_eView;
    Ref<TreeView> m_oTree = New<TreeView>("Bench");
    std::unique_ptr<desktop::ExplorerTree> m_pView;
};

// A plain view, set up as thriftily as the explorer's.
std::unique_ptr<QTreeView> NewPlainView(View eView, QAbstractItemModel& oModel) {
    if (eView == View::None)
        return nullptr;
    auto pView = std::make_unique<QTreeView>();
    pView->setHeaderHidden(true);
    pView->setUniformRowHeights(true);
    pView->setModel(&oModel);
    return pView;
}

class PlainSubject final : public Subject {
public:
    explicit PlainSubject(View eView) : m_eView(eView), m_pView(NewPlainView(eView, m_oModel)) {}
    void Fill(const Inputs& oInputs) override {
        for (std::size_t i = 0; i < oInputs.Count(); ++i) {
            PlainModel::Item* pFolder =
                Inputs::IsFolder(i) ? nullptr : m_oModel.Find(oInputs.aQtKeys[Inputs::FolderOf(i)]);
            PlainModel::Item* pItem = m_oModel.Add(pFolder, oInputs.aQtKeys[i], oInputs.aQtTexts[i]);
            if (!pFolder && m_eView == View::Open)
                m_pView->expand(m_oModel.IndexOf(pItem));
        }
    }
    std::size_t LookUp(const Inputs& oInputs) override {
        std::size_t nFound = 0;
        for (const QString& sKey : oInputs.aQtKeys)
            nFound += static_cast<std::size_t>(m_oModel.Find(sKey)->sText.size());
        return nFound;
    }
    void Change(const Inputs& oInputs, const QString& sText) override {
        for (const std::size_t i : oInputs.aFew)
            m_oModel.SetText(m_oModel.Find(oInputs.aQtKeys[i]), sText);
    }
    void Delete(const Inputs& oInputs) override {
        for (const std::size_t i : oInputs.aFew)
            m_oModel.Remove(m_oModel.Find(oInputs.aQtKeys[i]));
    }
    void Clear() override { m_oModel.Clear(); }
    QTreeView* Widget() override { return m_pView.get(); }

private:
    View m_eView;
    PlainModel m_oModel;
    std::unique_ptr<QTreeView> m_pView;
};

class StandardSubject final : public Subject {
public:
    explicit StandardSubject(View eView) : m_eView(eView), m_pView(NewPlainView(eView, m_oModel)) {}
    void Fill(const Inputs& oInputs) override {
        for (std::size_t i = 0; i < oInputs.Count(); ++i) {
            auto* pItem = new QStandardItem(oInputs.aQtTexts[i]);
            if (Inputs::IsFolder(i))
                m_oModel.appendRow(pItem);
            else
                m_hashItems.value(oInputs.aQtKeys[Inputs::FolderOf(i)])->appendRow(pItem);
            m_hashItems.insert(oInputs.aQtKeys[i], pItem);
            if (Inputs::IsFolder(i) && m_eView == View::Open)
                m_pView->expand(pItem->index());
        }
    }
    std::size_t LookUp(const Inputs& oInputs) override {
        std::size_t nFound = 0;
        for (const QString& sKey : oInputs.aQtKeys)
            nFound += static_cast<std::size_t>(m_hashItems.value(sKey)->text().size());
        return nFound;
    }
    void Change(const Inputs& oInputs, const QString& sText) override {
        for (const std::size_t i : oInputs.aFew)
            m_hashItems.value(oInputs.aQtKeys[i])->setText(sText);
    }
    void Delete(const Inputs& oInputs) override {
        for (const std::size_t i : oInputs.aFew) {
            QStandardItem* pItem = m_hashItems.take(oInputs.aQtKeys[i]);
            pItem->parent()->removeRow(pItem->row());
        }
    }
    void Clear() override {
        m_hashItems.clear();
        m_oModel.clear();
    }
    QTreeView* Widget() override { return m_pView.get(); }

private:
    View m_eView;
    QStandardItemModel m_oModel;
    QHash<QString, QStandardItem*> m_hashItems;
    std::unique_ptr<QTreeView> m_pView;
};

constexpr std::array<const char*, 5> Steps{"fill", "look up all", "change 1,000", "delete 1,000", "clear"};
using Times = std::array<double, Steps.size()>;

template <class T>
Times Run(const Inputs& oInputs, View eView) {
    T oSubject(eView);
    oSubject.Show(eView);
    Paint();
    Times aTimes{};
    std::size_t iStep = 0;
    const auto Measure = [&](const auto& fnStep) {
        QElapsedTimer oTimer;
        oTimer.start();
        fnStep();
        if (eView != View::None)
            Paint();
        aTimes[iStep++] = static_cast<double>(oTimer.nsecsElapsed()) / 1e6;
    };
    std::size_t nFound = 0;
    Measure([&] { oSubject.Fill(oInputs); });
    if (eView != View::None) { // the middle of the tree, where nothing is near
        oSubject.Widget()->scrollTo(oSubject.Widget()->model()->index(static_cast<int>(oInputs.Count()) / 200, 0));
        Paint();
    }
    Measure([&] { nFound = oSubject.LookUp(oInputs); });
    Measure([&] { oSubject.Change(oInputs, QStringLiteral("changed")); });
    Measure([&] { oSubject.Delete(oInputs); });
    Measure([&] { oSubject.Clear(); });
    if (nFound == 0)
        std::puts("Nothing was found, so nothing was measured.");
    return aTimes;
}

Times Medians(std::vector<Times> aRuns) {
    Times aMedians{};
    for (std::size_t iStep = 0; iStep < aMedians.size(); ++iStep) {
        const auto itMiddle = aRuns.begin() + static_cast<std::ptrdiff_t>(aRuns.size() / 2);
        std::nth_element(aRuns.begin(), itMiddle, aRuns.end(),
                         [iStep](const Times& a, const Times& b) { return a[iStep] < b[iStep]; });
        aMedians[iStep] = (*itMiddle)[iStep];
    }
    return aMedians;
}

void Compare(int nItems, View eView, int nRuns) {
    const Inputs oInputs(nItems);
    std::vector<Times> aCorvane, aPlain, aStandard;
    for (int i = 0; i < nRuns; ++i) { // in turns, so that a slow moment of the machine meets all three
        aCorvane.push_back(Run<CorvaneSubject>(oInputs, eView));
        aPlain.push_back(Run<PlainSubject>(oInputs, eView));
        aStandard.push_back(Run<StandardSubject>(oInputs, eView));
    }
    const Times aC = Medians(aCorvane), aP = Medians(aPlain), aS = Medians(aStandard);
    static const char* const aViews[] = {"model alone", "view, closed", "view, open"};
    std::printf("\n%d items, %s (medians of %d runs, ms)\n", nItems, aViews[static_cast<int>(eView)], nRuns);
    std::printf("  %-14s %10s %10s %10s %9s %9s\n", "", "explorer", "by hand", "standard", "/by hand", "/standard");
    for (std::size_t i = 0; i < Steps.size(); ++i)
        std::printf("  %-14s %10.2f %10.2f %10.2f %9.2f %9.2f\n", Steps[i], aC[i], aP[i], aS[i], aC[i] / aP[i],
                    aC[i] / aS[i]);
    std::fflush(stdout);
}

std::size_t Allocated() {
    const auto oInfo = mallinfo2();
    return oInfo.uordblks + oInfo.hblkhd; // small blocks, and those that have a mapping of their own
}

// Texts longer than a string holds within itself have memory of their own, which isn't the node's.
void CountMemory(int nItems) {
    const Inputs oInputs(nItems);
    const std::size_t nBefore = Allocated();
    CorvaneSubject oSubject(View::None);
    oSubject.Fill(oInputs);
    const auto fNode = static_cast<double>(Allocated() - nBefore) / nItems;
    std::printf("\n%d items: %.0f bytes a node, with keys and texts of up to 15 characters in them\n", nItems, fNode);
}

void Filter(int nItems) {
    const Inputs oInputs(nItems);
    CorvaneSubject oSubject(View::Open);
    oSubject.Show(View::Open);
    oSubject.Fill(oInputs);
    Paint();
    auto* pTree = static_cast<desktop::ExplorerTree*>(oSubject.Widget());
    std::printf("\n%d items, filter typed (ms)\n", nItems);
    for (const char* sText : {"e", "9", "99", "999", "999x", ""}) {
        QElapsedTimer oTimer;
        oTimer.start();
        pTree->SetFilter(QString::fromLatin1(sText));
        Paint();
        std::printf("  %-14s %10.2f\n", *sText ? sText : "(cleared)", static_cast<double>(oTimer.nsecsElapsed()) / 1e6);
    }
}

} // namespace
} // namespace corvane::bench

int main(int nArguments, char** pArguments) {
    using namespace corvane::bench;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // the platform's remarks
    // Memory that one run gives back stays for the next; otherwise the system's work is what is measured.
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    const QApplication oApplication(nArguments, pArguments);
    QApplication::setStyle("fusion");
    CountMemory(100000); // first, as nodes later take the memory of earlier ones
    for (const int nItems : {10000, 100000}) {
        for (const View eView : {View::None, View::Closed, View::Open})
            Compare(nItems, eView, nItems == 10000 ? 9 : 5);
        Filter(nItems);
    }
    return 0;
}
