#include "adapters/xml/PlainSchema.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string_view>

namespace corvane {

namespace {

constexpr std::string_view sXmlSchemaNamespace = "http://www.w3.org/2001/XMLSchema";

std::string_view View(const xmlChar* sText) {
    return sText ? reinterpret_cast<const char*>(sText) : "";
}

bool IsNamed(const xmlChar* sName, const std::string& sOther) {
    const char* sHere = reinterpret_cast<const char*>(sName);
    return *sHere == *sOther.c_str() && std::strcmp(sHere, sOther.c_str()) == 0; // mostly the first letter tells
}

// The place of the first that is it, from iFrom on and round; the size when there is none. What comes next in a file is
// mostly what comes next in the list.
template <class LIST, class IS>
std::size_t FindFrom(const LIST& aList, std::size_t iFrom, IS fnIs) {
    for (std::size_t n = 0; n < aList.size(); ++n, ++iFrom) {
        if (iFrom >= aList.size())
            iFrom = 0;
        if (fnIs(aList[iFrom]))
            return iFrom;
    }
    return aList.size();
}

// Ends the reading of a schema that isn't plain.
struct NotPlain {};

void Demand(bool bTrue) {
    if (!bTrue)
        throw NotPlain();
}

} // namespace

class PlainSchema::Reader {
public:
    explicit Reader(xmlDocPtr pSchema) : m_pSchema(pSchema) {}

    std::unique_ptr<PlainSchema> Read() {
        xmlNodePtr pRoot = xmlDocGetRootElement(m_pSchema);
        Demand(Is(pRoot, "schema") && !m_pSchema->intSubset);
        ExpectOnly(pRoot, {"elementFormDefault", "attributeFormDefault", "version"});
        for (const char* sName : {"elementFormDefault", "attributeFormDefault"}) {
            const std::string sForm = Value(pRoot, sName);
            Demand(sForm.empty() || sForm == "qualified" || sForm == "unqualified");
        }
        // With a default namespace a type's name without a prefix would mean another type.
        Demand(!xmlSearchNs(m_pSchema, pRoot, nullptr));
        ForEachPart(pRoot, [&](xmlNodePtr pPart) {
            if (Is(pPart, "complexType")) {
                const std::size_t iType = NamedType(Value(pPart, "name"));
                Demand(m_setRead.insert(iType).second);
                ReadType(pPart, iType, {"name", "mixed"});
            } else {
                ReadElement(pPart, m_pPlain->m_oDocument);
            }
        });
        for (const auto& [sName, iType] : m_mapTypes)
            Demand(m_setRead.contains(iType));
        return std::move(m_pPlain);
    }

private:
    static bool Is(const xmlNode* pNode, std::string_view sName) {
        return pNode->ns && View(pNode->ns->href) == sXmlSchemaNamespace && View(pNode->name) == sName;
    }
    static void ExpectOnly(const xmlNode* pNode, std::initializer_list<std::string_view> aNames) {
        Demand(!pNode->nsDef || Is(pNode, "schema"));
        for (const xmlAttr* p = pNode->properties; p; p = p->next)
            Demand(!p->ns && std::find(aNames.begin(), aNames.end(), View(p->name)) != aNames.end());
    }
    static std::string Value(const xmlNode* pNode, const char* sName) {
        xmlChar* sValue = xmlGetNoNsProp(pNode, reinterpret_cast<const xmlChar*>(sName));
        std::string sText(View(sValue));
        xmlFree(sValue);
        return sText;
    }
    template <class F>
    static void ForEachPart(const xmlNode* pParent, F fnAct) {
        for (xmlNodePtr p = pParent->children; p; p = p->next) {
            if (p->type == XML_ELEMENT_NODE)
                fnAct(p);
            else
                Demand(p->type == XML_COMMENT_NODE || xmlIsBlankNode(p));
        }
    }
    static std::string NameOf(const xmlNode* pNode) {
        const std::string sName = Value(pNode, "name");
        Demand(xmlValidateNCName(reinterpret_cast<const xmlChar*>(sName.c_str()), 0) == 0);
        return sName;
    }

    std::size_t NewType() {
        m_pPlain->m_aTypes.emplace_back();
        return m_pPlain->m_aTypes.size() - 1;
    }
    std::size_t NamedType(const std::string& sName) {
        Demand(xmlValidateNCName(reinterpret_cast<const xmlChar*>(sName.c_str()), 0) == 0);
        const auto [it, bNew] = m_mapTypes.try_emplace(sName, 0);
        if (bNew)
            it->second = NewType();
        return it->second;
    }

    void ReadElement(xmlNodePtr pElement, Type& oParent) {
        Demand(Is(pElement, "element"));
        ExpectOnly(pElement, {"name", "type"});
        const std::string sName = NameOf(pElement);
        const std::string sType = Value(pElement, "type");
        for (const auto& [sOther, iType] : oParent.aElements)
            Demand(sOther != sName);
        const std::size_t iType = sType.empty() ? NewType() : NamedType(sType);
        oParent.aElements.emplace_back(sName, iType);
        bool bHasType = !sType.empty();
        ForEachPart(pElement, [&](xmlNodePtr pPart) {
            Demand(!bHasType && Is(pPart, "complexType"));
            bHasType = true;
            ReadType(pPart, iType, {"mixed"});
        });
        Demand(bHasType);
    }

    void ReadType(xmlNodePtr pType, std::size_t iType, std::initializer_list<std::string_view> aNames) {
        ExpectOnly(pType, aNames);
        const std::string sMixed = Value(pType, "mixed");
        Demand(sMixed == "true" || sMixed == "1");
        Type oType; // the types may move meanwhile
        bool bFirst = true;
        ForEachPart(pType, [&](xmlNodePtr pPart) {
            if (std::exchange(bFirst, false) && Is(pPart, "choice"))
                ReadChoice(pPart, oType);
            else
                ReadAttribute(pPart, oType);
        });
        m_pPlain->m_aTypes[iType] = std::move(oType);
    }

    void ReadChoice(xmlNodePtr pChoice, Type& oType) {
        ExpectOnly(pChoice, {"minOccurs", "maxOccurs"});
        Demand(Value(pChoice, "minOccurs") == "0" && Value(pChoice, "maxOccurs") == "unbounded");
        ForEachPart(pChoice, [&](xmlNodePtr pPart) { ReadElement(pPart, oType); });
    }

    void ReadAttribute(xmlNodePtr pAttribute, Type& oType) {
        Demand(Is(pAttribute, "attribute"));
        ExpectOnly(pAttribute, {"name", "type"});
        ForEachPart(pAttribute, [](xmlNodePtr) { throw NotPlain(); });
        const std::string sType = Value(pAttribute, "type");
        const std::size_t iColon = sType.find(':');
        Demand(iColon != std::string::npos && sType.substr(iColon + 1) == "string");
        const xmlNs* pNamespace =
            xmlSearchNs(m_pSchema, pAttribute, reinterpret_cast<const xmlChar*>(sType.substr(0, iColon).c_str()));
        Demand(pNamespace && View(pNamespace->href) == sXmlSchemaNamespace);
        const std::string sName = NameOf(pAttribute);
        Demand(sName != "xmlns" &&
               std::find(oType.aAttributes.begin(), oType.aAttributes.end(), sName) == oType.aAttributes.end());
        oType.aAttributes.push_back(sName);
    }

    xmlDocPtr m_pSchema;
    std::unique_ptr<PlainSchema> m_pPlain = std::make_unique<PlainSchema>();
    std::map<std::string, std::size_t> m_mapTypes;
    std::set<std::size_t> m_setRead; // of those with a name
};

std::unique_ptr<PlainSchema> PlainSchema::Of(xmlDocPtr pSchema) {
    try {
        return Reader(pSchema).Read();
    } catch (const NotPlain&) {
        return nullptr; // which is no fault of the schema
    }
}

bool PlainSchema::Accepts(const xmlDoc* pDocument) const {
    // What stands in a document type may bring attributes and texts into the tree.
    if (pDocument->intSubset)
        return false;
    xmlNode oAsParent{};
    oAsParent.children = pDocument->children;
    return AcceptsElement(&oAsParent, m_oDocument);
}

bool PlainSchema::AcceptsElement(const xmlNode* pElement, const Type& oType) const {
    std::size_t iAttribute = 0;
    for (const xmlAttr* p = pElement->properties; p; p = p->next, ++iAttribute) {
        iAttribute =
            FindFrom(oType.aAttributes, iAttribute, [&](const auto& sName) { return IsNamed(p->name, sName); });
        if (p->ns || iAttribute == oType.aAttributes.size())
            return false;
    }
    std::size_t iElement = 0;
    for (const xmlNode* p = pElement->children; p; p = p->next) {
        if (p->type != XML_ELEMENT_NODE) {
            if (p->type != XML_TEXT_NODE)
                return false;
            continue;
        }
        iElement = FindFrom(oType.aElements, iElement, [&](const auto& o) { return IsNamed(p->name, o.first); });
        if (p->ns || iElement == oType.aElements.size() ||
            !AcceptsElement(p, m_aTypes[oType.aElements[iElement].second]))
            return false;
    }
    return true;
}

} // namespace corvane
