// Finds the nodes of a tree by key: a hash table of open addressing, which keeps the hash beside the node, so that
// neither growing nor passing over another node touches the nodes themselves.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace corvane {

class Node;

class __attribute__((visibility("default"))) NodeTable {
public:
    // All keys ignore case. The hash is that of HashText, so that one look-up and the insertion after it share it.
    [[nodiscard]] Node* Find(std::string_view sKey, std::size_t uHash) const;
    [[nodiscard]] Node* Find(std::string_view sKey) const;
    // The node's key must not be present.
    void Insert(Node* pNode, std::size_t uHash);
    // The node must be present under its key.
    void Erase(const Node* pNode);
    void Clear();
    [[nodiscard]] std::size_t Count() const { return m_nNodes; }

private:
    struct Slot {
        Node* pNode = nullptr; // null for a free slot
        std::size_t uHash = 0;
    };
    [[nodiscard]] std::size_t Next(std::size_t i) const { return (i + 1) & (m_aSlots.size() - 1); }
    void Place(const Slot& oSlot);
    void Grow();

    std::vector<Slot> m_aSlots; // a power of two of them, at most two thirds of them taken
    std::size_t m_nNodes = 0;
};

} // namespace corvane
