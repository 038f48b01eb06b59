#include "corvane/platform/controls/NodeTable.h"

#include "corvane/base/Text.h"
#include "corvane/platform/controls/TreeView.h"

namespace corvane {

namespace {

std::size_t Start(std::size_t uHash, std::size_t nSlots) {
    return uHash & (nSlots - 1);
}

} // namespace

Node* NodeTable::Find(std::string_view sKey) const {
    return Find(sKey, HashText(sKey));
}

Node* NodeTable::Find(std::string_view sKey, std::size_t uHash) const {
    if (m_aSlots.empty())
        return nullptr;
    for (std::size_t i = Start(uHash, m_aSlots.size()); m_aSlots[i].pNode; i = Next(i))
        if (m_aSlots[i].uHash == uHash && EqualText(m_aSlots[i].pNode->Key(), sKey))
            return m_aSlots[i].pNode;
    return nullptr;
}

void NodeTable::Place(const Slot& oSlot) {
    std::size_t i = Start(oSlot.uHash, m_aSlots.size());
    while (m_aSlots[i].pNode)
        i = Next(i);
    m_aSlots[i] = oSlot;
}

void NodeTable::Grow() {
    std::vector<Slot> aOld(m_aSlots.empty() ? 16 : m_aSlots.size() * 2);
    aOld.swap(m_aSlots);
    for (const Slot& oSlot : aOld)
        if (oSlot.pNode)
            Place(oSlot);
}

void NodeTable::Insert(Node* pNode, std::size_t uHash) {
    if ((m_nNodes + 1) * 3 > m_aSlots.size() * 2)
        Grow();
    Place({pNode, uHash});
    ++m_nNodes;
}

// What was displaced by the node moves up, so that no search meets a gap.
void NodeTable::Erase(const Node* pNode) {
    std::size_t iGap = Start(HashText(pNode->Key()), m_aSlots.size());
    while (m_aSlots[iGap].pNode != pNode)
        iGap = Next(iGap);
    const std::size_t uMask = m_aSlots.size() - 1;
    for (std::size_t i = Next(iGap); m_aSlots[i].pNode; i = Next(i)) {
        const std::size_t iStart = Start(m_aSlots[i].uHash, m_aSlots.size());
        if (((i - iStart) & uMask) < ((i - iGap) & uMask))
            continue;
        m_aSlots[iGap] = m_aSlots[i];
        iGap = i;
    }
    m_aSlots[iGap] = {};
    --m_nNodes;
}

void NodeTable::Clear() {
    m_aSlots.clear();
    m_aSlots.shrink_to_fit();
    m_nNodes = 0;
}

} // namespace corvane
