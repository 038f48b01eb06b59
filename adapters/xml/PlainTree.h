// The nodes of a document of nothing but elements and attributes without namespaces, which is what definition files
// are. Only sources of this folder include it: it shows libxml2's types.
#pragma once

#include <cstddef>
#include <libxml/tree.h>
#include <memory>
#include <memory_resource>
#include <string_view>

namespace corvane {

// They are libxml2's own kinds of nodes, for all that reads a tree, but lie one behind the other in a few blocks of
// memory that go at once: to make and to free them one by one takes libxml2 as long as to read them. So nothing of
// libxml2 that frees or resizes a node may be called on such a tree.
class PlainTree {
public:
    // The first block, which the next tree takes over when this one goes: memory that was just in use is the fastest.
    struct Memory {
        static constexpr std::size_t block = 256 * 1024;
        std::unique_ptr<std::byte[]> spare;
    };

    explicit PlainTree(std::shared_ptr<Memory> memory);
    ~PlainTree();
    PlainTree(const PlainTree&) = delete;
    PlainTree& operator=(const PlainTree&) = delete;

    // The tree of a document; a null pointer for one of libxml2's own making.
    [[nodiscard]] static PlainTree* Of(const xmlDoc* document) noexcept {
        return static_cast<PlainTree*>(document->_private);
    }

    // The last child of the parent; the root, which isn't tied to the document yet, without one. The name is taken as
    // it is and is in the document's dictionary.
    xmlNodePtr AddElement(xmlDocPtr document, xmlNodePtr parent, const xmlChar* name);
    // The last attribute of the element, whose last one so far is last.
    xmlAttrPtr AddAttribute(xmlNodePtr element, xmlAttrPtr last, const xmlChar* name, std::string_view value);
    void SetValue(xmlAttrPtr attribute, std::string_view value);

    // The root becomes the document's, and the document the owner.
    static void Tie(std::unique_ptr<PlainTree> tree, xmlDocPtr document, xmlNodePtr root);

private:
    // With space for so many bytes behind it.
    template <class T>
    T* New(std::size_t behind = 0) {
        return new (m_memory.allocate(sizeof(T) + behind, alignof(T))) T{};
    }

    std::shared_ptr<Memory> m_sharedMemory;
    std::unique_ptr<std::byte[]> m_block;
    std::pmr::monotonic_buffer_resource m_memory;
};

} // namespace corvane
