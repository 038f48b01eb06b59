#include "adapters/xml/PlainSchema.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string_view>

namespace corvane {

namespace {

bool IsNamed(const xmlChar* name, const std::string& other) {
    const char* here = reinterpret_cast<const char*>(name);
    return *here == *other.c_str() && std::strcmp(here, other.c_str()) == 0; // mostly the first letter decides
}

// The place of the first that is it, from from on and round; the size when there is none. What comes next in a file is
// mostly what comes next in the list.
template <class LIST, class IS>
std::size_t FindFrom(const LIST& list, std::size_t from, IS is) {
    for (std::size_t n = 0; n < list.size(); ++n, ++from) {
        if (from >= list.size())
            from = 0;
        if (is(list[from]))
            return from;
    }
    return list.size();
}

// Ends the reading of a schema that isn't plain.
struct NotPlain {};

void Demand(bool isTrue) {
    if (!isTrue)
        throw NotPlain();
}

} // namespace

class PlainSchema::Reader {
public:
    explicit Reader(xmlDocPtr schema) : m_schema(schema) {}

    std::unique_ptr<PlainSchema> Read() {
        xmlNodePtr root = xmlDocGetRootElement(m_schema);
        Demand(Is(root, "schema") && !m_schema->intSubset);
        ExpectOnly(root, {"elementFormDefault", "attributeFormDefault", "version"});
        for (const char* name : {"elementFormDefault", "attributeFormDefault"}) {
            const std::string form = Value(root, name);
            Demand(form.empty() || form == "qualified" || form == "unqualified");
        }
        // With a default namespace a type's name without a prefix would mean another type.
        Demand(!xmlSearchNs(m_schema, root, nullptr));
        ForEachPart(root, [&](xmlNodePtr part) {
            if (Is(part, "complexType")) {
                const std::size_t type = NamedType(Value(part, "name"));
                Demand(m_read.insert(type).second);
                ReadType(part, type, {"name", "mixed"});
            } else {
                ReadElement(part, m_plain->m_document);
            }
        });
        for (const auto& [name, type] : m_types)
            Demand(m_read.contains(type));
        return std::move(m_plain);
    }

private:
    static bool Is(const xmlNode* node, std::string_view name) {
        return node->ns && View(node->ns->href) == xmlSchemaNamespace && View(node->name) == name;
    }
    static void ExpectOnly(const xmlNode* node, std::initializer_list<std::string_view> names) {
        Demand(!node->nsDef || Is(node, "schema"));
        for (const xmlAttr* p = node->properties; p; p = p->next)
            Demand(!p->ns && std::find(names.begin(), names.end(), View(p->name)) != names.end());
    }
    static std::string Value(const xmlNode* node, const char* name) {
        xmlChar* value = xmlGetNoNsProp(node, reinterpret_cast<const xmlChar*>(name));
        std::string text(View(value));
        xmlFree(value);
        return text;
    }
    template <class F>
    static void ForEachPart(const xmlNode* parent, F act) {
        for (xmlNodePtr p = parent->children; p; p = p->next) {
            if (p->type == XML_ELEMENT_NODE)
                act(p);
            else
                Demand(p->type == XML_COMMENT_NODE || xmlIsBlankNode(p));
        }
    }
    static std::string NameOf(const xmlNode* node) {
        std::string name = Value(node, "name");
        Demand(xmlValidateNCName(reinterpret_cast<const xmlChar*>(name.c_str()), 0) == 0);
        return name;
    }

    std::size_t NewType() {
        m_plain->m_types.emplace_back();
        return m_plain->m_types.size() - 1;
    }
    std::size_t NamedType(const std::string& name) {
        Demand(xmlValidateNCName(reinterpret_cast<const xmlChar*>(name.c_str()), 0) == 0);
        const auto [it, isNew] = m_types.try_emplace(name, 0);
        if (isNew)
            it->second = NewType();
        return it->second;
    }

    void ReadElement(xmlNodePtr element, Type& parent) {
        Demand(Is(element, "element"));
        ExpectOnly(element, {"name", "type"});
        const std::string name = NameOf(element);
        const std::string type = Value(element, "type");
        for (const auto& [other, typeIndex] : parent.elements)
            Demand(other != name);
        const std::size_t typeIndex = type.empty() ? NewType() : NamedType(type);
        parent.elements.emplace_back(name, typeIndex);
        bool hasType = !type.empty();
        ForEachPart(element, [&](xmlNodePtr part) {
            Demand(!hasType && Is(part, "complexType"));
            hasType = true;
            ReadType(part, typeIndex, {"mixed"});
        });
        Demand(hasType);
    }

    void ReadType(xmlNodePtr typeNode, std::size_t typeIndex, std::initializer_list<std::string_view> names) {
        ExpectOnly(typeNode, names);
        const std::string mixed = Value(typeNode, "mixed");
        Demand(mixed == "true" || mixed == "1");
        Type type; // the types may move meanwhile
        bool first = true;
        ForEachPart(typeNode, [&](xmlNodePtr part) {
            if (std::exchange(first, false) && Is(part, "choice"))
                ReadChoice(part, type);
            else
                ReadAttribute(part, type);
        });
        m_plain->m_types[typeIndex] = std::move(type);
    }

    void ReadChoice(xmlNodePtr choice, Type& type) {
        ExpectOnly(choice, {"minOccurs", "maxOccurs"});
        Demand(Value(choice, "minOccurs") == "0" && Value(choice, "maxOccurs") == "unbounded");
        ForEachPart(choice, [&](xmlNodePtr part) { ReadElement(part, type); });
    }

    void ReadAttribute(xmlNodePtr attribute, Type& type) {
        Demand(Is(attribute, "attribute"));
        ExpectOnly(attribute, {"name", "type"});
        ForEachPart(attribute, [](xmlNodePtr) { throw NotPlain(); });
        const std::string typeName = Value(attribute, "type");
        const std::size_t colon = typeName.find(':');
        Demand(colon != std::string::npos && typeName.substr(colon + 1) == "string");
        const xmlNs* xmlNamespace =
            xmlSearchNs(m_schema, attribute, reinterpret_cast<const xmlChar*>(typeName.substr(0, colon).c_str()));
        Demand(xmlNamespace && View(xmlNamespace->href) == xmlSchemaNamespace);
        const std::string name = NameOf(attribute);
        Demand(name != "xmlns" &&
               std::find(type.attributes.begin(), type.attributes.end(), name) == type.attributes.end());
        type.attributes.push_back(name);
    }

    xmlDocPtr m_schema;
    std::unique_ptr<PlainSchema> m_plain = std::make_unique<PlainSchema>();
    std::map<std::string, std::size_t> m_types;
    std::set<std::size_t> m_read; // of those with a name
};

std::unique_ptr<PlainSchema> PlainSchema::Of(xmlDocPtr schema) {
    try {
        return Reader(schema).Read();
    } catch (const NotPlain&) {
        return nullptr; // which isn't a fault of the schema
    }
}

bool PlainSchema::Accepts(const xmlDoc* document) const {
    // What is in a document type may bring attributes and texts into the tree.
    if (document->intSubset)
        return false;
    xmlNode asParent{};
    asParent.children = document->children;
    return AcceptsElement(&asParent, m_document);
}

bool PlainSchema::AcceptsElement(const xmlNode* element, const Type& type) const {
    std::size_t attribute = 0;
    for (const xmlAttr* p = element->properties; p; p = p->next, ++attribute) {
        attribute = FindFrom(type.attributes, attribute, [&](const auto& name) { return IsNamed(p->name, name); });
        if (p->ns || attribute == type.attributes.size())
            return false;
    }
    std::size_t elementIndex = 0;
    for (const xmlNode* p = element->children; p; p = p->next) {
        if (p->type != XML_ELEMENT_NODE) {
            if (p->type != XML_TEXT_NODE)
                return false;
            continue;
        }
        elementIndex = FindFrom(type.elements, elementIndex, [&](const auto& o) { return IsNamed(p->name, o.first); });
        if (p->ns || elementIndex == type.elements.size() ||
            !AcceptsElement(p, m_types[type.elements[elementIndex].second]))
            return false;
    }
    return true;
}

} // namespace corvane
