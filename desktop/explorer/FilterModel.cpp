#include "desktop/explorer/FilterModel.h"

#include "desktop/translation/ShownText.h"

#include <QStringMatcher>
#include <limits>

namespace corvane::desktop {

namespace {

struct Candidate {
    Node* pNode;
    std::size_t iParent; // itself for a root
    bool bMatches;
    bool bShown;
};

constexpr std::size_t None = std::numeric_limits<std::size_t>::max();

// All nodes of a tree, each behind its parent and in the order in which the tree shows them.
// A translated text is found by itself and by what was translated.
std::vector<Candidate> AllNodes(const TreeView& oTree, const QStringMatcher& oMatcher) {
    const Nodes& oNodes = *oTree.GetNodes();
    const bool bTranslated = AreTextsTranslated();
    std::vector<Candidate> aAll;
    aAll.reserve(static_cast<std::size_t>(oNodes.Count()));
    std::vector<std::pair<Node*, std::size_t>> aWaiting;
    const auto Wait = [&aWaiting](const std::vector<Node*>& aNodes, std::size_t iParent) {
        for (auto it = aNodes.rbegin(); it != aNodes.rend(); ++it)
            aWaiting.emplace_back(*it, iParent);
    };
    Wait(oNodes.Roots(), None);
    while (!aWaiting.empty()) {
        const auto [pNode, iParent] = aWaiting.back();
        aWaiting.pop_back();
        const std::string& sText = pNode->Text();
        const bool bMatches = oMatcher.indexIn(QString::fromUtf8(sText.data(), static_cast<int>(sText.size()))) >= 0 ||
                              (bTranslated && oMatcher.indexIn(ShownNode(oTree, *pNode)) >= 0);
        aAll.push_back({pNode, iParent, bMatches, bMatches});
        Wait(pNode->Children(), aAll.size() - 1);
    }
    for (auto it = aAll.rbegin(); it != aAll.rend(); ++it)
        if (it->bShown && it->iParent != None)
            aAll[it->iParent].bShown = true;
    return aAll;
}

} // namespace

std::vector<FilterModel::Item> FilterModel::Matches(const QString& sText) const {
    std::vector<Item> aItems;
    aItems.push_back({nullptr, 0, 0, false, {}});
    const std::vector<Candidate> aAll = AllNodes(*Tree(), QStringMatcher(sText, Qt::CaseInsensitive));
    std::vector<std::size_t> aItemOf(aAll.size());
    for (std::size_t i = 0; i < aAll.size(); ++i) {
        if (!aAll[i].bShown)
            continue;
        const std::size_t iParent = aAll[i].iParent == None ? 0 : aItemOf[aAll[i].iParent];
        aItemOf[i] = aItems.size();
        const auto iRow = static_cast<int>(aItems[iParent].aChildren.size());
        aItems[iParent].aChildren.push_back(aItems.size());
        aItems.push_back({Ref<Node>(aAll[i].pNode), iParent, iRow, aAll[i].bMatches, {}});
    }
    return aItems;
}

void FilterModel::Find(const QString& sText) {
    beginResetModel();
    m_aItems = Matches(sText);
    endResetModel();
}

void FilterModel::Empty() {
    beginResetModel();
    m_aItems.clear();
    endResetModel();
}

Node* FilterModel::FirstMatch() const {
    for (const Item& oItem : m_aItems)
        if (oItem.bMatches && oItem.oNode->IsInTree())
            return oItem.oNode.Get();
    return nullptr;
}

std::size_t FilterModel::ItemAt(const QModelIndex& oIndex) const {
    return oIndex.isValid() ? static_cast<std::size_t>(oIndex.internalId()) : 0;
}

QModelIndex FilterModel::IndexOfItem(std::size_t iItem) const {
    return iItem == 0 ? QModelIndex() : createIndex(m_aItems[iItem].iRow, 0, static_cast<quintptr>(iItem));
}

Node* FilterModel::NodeAt(const QModelIndex& oIndex) const {
    const std::size_t iItem = ItemAt(oIndex);
    if (iItem == 0 || !m_aItems[iItem].oNode->IsInTree())
        return nullptr;
    return m_aItems[iItem].oNode.Get();
}

QModelIndex FilterModel::IndexOf(const Node* pNode) {
    for (std::size_t i = 1; i < m_aItems.size(); ++i)
        if (m_aItems[i].oNode.Get() == pNode)
            return IndexOfItem(i);
    return {};
}

QModelIndex FilterModel::index(int iRow, int iColumn, const QModelIndex& oParent) const {
    if (iColumn != 0 || iRow < 0 || iRow >= rowCount(oParent))
        return {};
    return IndexOfItem(m_aItems[ItemAt(oParent)].aChildren[static_cast<std::size_t>(iRow)]);
}

QModelIndex FilterModel::parent(const QModelIndex& oIndex) const {
    return oIndex.isValid() ? IndexOfItem(m_aItems[ItemAt(oIndex)].iParent) : QModelIndex();
}

int FilterModel::rowCount(const QModelIndex& oParent) const {
    return m_aItems.empty() ? 0 : static_cast<int>(m_aItems[ItemAt(oParent)].aChildren.size());
}

} // namespace corvane::desktop
