#include "cli/check/Source.h"

#include "adapters/common/Encoding.h"

#include <algorithm>
#include <cstring>

namespace corvane::check {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool NeedsTheParser(std::string_view sRaw) {
    return sRaw.find_first_of("&\t\n\r") != std::string_view::npos;
}

// Whether a value reads as it is written.
bool IsPlain(std::string_view sRaw) {
    return std::all_of(sRaw.begin(), sRaw.end(), [](char c) { return c >= ' ' && c != '&'; });
}

class Scanner {
public:
    explicit Scanner(std::string_view sText) : m_sText(sText) {}

    // Elements in order of their start tags; each has its place in the tree already.
    std::optional<Element> Run() {
        while (const char* pNext = Find('<')) {
            m_i = static_cast<std::size_t>(pNext - m_sText.data());
            if (At("<!--"))
                SkipThrough("-->");
            else if (At("<![CDATA["))
                SkipThrough("]]>");
            else if (At("<?"))
                SkipThrough("?>");
            else if (At("<!"))
                SkipDeclaration();
            else if (At("</"))
                EndTag();
            else
                StartTag();
        }
        return std::move(m_oRoot);
    }

    [[nodiscard]] bool IsPlainText() const { return m_bPlain; }

private:
    [[nodiscard]] const char* Find(char c) const {
        return m_i < m_sText.size()
                   ? static_cast<const char*>(std::memchr(m_sText.data() + m_i, c, m_sText.size() - m_i))
                   : nullptr;
    }
    [[nodiscard]] bool At(std::string_view sWhat) const { return m_sText.substr(m_i, sWhat.size()) == sWhat; }
    [[nodiscard]] char Here() const { return m_i < m_sText.size() ? m_sText[m_i] : '\0'; }
    void SkipThrough(std::string_view sEnd) {
        const std::size_t i = m_sText.find(sEnd, m_i);
        m_i = i == std::string_view::npos ? m_sText.size() : i + sEnd.size();
    }
    void SkipBlanks() {
        while (IsBlank(Here()))
            ++m_i;
    }

    // A document type, with the declarations in its brackets.
    void SkipDeclaration() {
        int nBrackets = 0;
        for (; m_i < m_sText.size(); ++m_i) {
            if (At("<!--")) {
                SkipThrough("-->");
                --m_i;
            } else if (Here() == '"' || Here() == '\'') {
                m_i = std::min(m_sText.find(Here(), m_i + 1), m_sText.size() - 1);
            } else if (Here() == '[') {
                ++nBrackets;
            } else if (Here() == ']') {
                --nBrackets;
            } else if (Here() == '>' && nBrackets == 0) {
                ++m_i;
                return;
            }
        }
    }

    void EndTag() {
        if (!m_aOpen.empty())
            m_aOpen.pop_back();
        SkipThrough(">");
    }

    // Lines are counted up to the place that is asked for, which only moves forward.
    [[nodiscard]] Position PositionOf(std::size_t i) {
        while (const auto* p =
                   static_cast<const char*>(std::memchr(m_sText.data() + m_iCounted, '\n', i - m_iCounted))) {
            m_iCounted = static_cast<std::size_t>(p - m_sText.data()) + 1;
            m_iLine = m_iCounted;
            ++m_lLine;
        }
        m_iCounted = i;
        return {m_lLine, static_cast<Long>(i - m_iLine) + 1};
    }

    [[nodiscard]] std::string_view Name() {
        const std::size_t iBegin = m_i;
        while (m_i < m_sText.size() && !IsBlank(Here()) && Here() != '=' && Here() != '>' && Here() != '/')
            ++m_i;
        return m_sText.substr(iBegin, m_i - iBegin);
    }

    void StartTag() {
        Element* pElement = nullptr;
        if (m_aOpen.empty()) {
            m_oRoot.emplace();
            pElement = &*m_oRoot;
        } else {
            pElement = &m_aOpen.back()->aChildren.emplace_back();
        }
        pElement->oAt = PositionOf(m_i);
        ++m_i;
        pElement->sName = Name();
        m_aAttributes.clear();
        for (SkipBlanks(); m_i < m_sText.size() && Here() != '>' && Here() != '/'; SkipBlanks())
            AddAttribute();
        pElement->aAttributes.assign(m_aAttributes.begin(), m_aAttributes.end());
        const bool bEmpty = Here() == '/';
        SkipThrough(">");
        if (!bEmpty)
            m_aOpen.push_back(pElement);
    }

    void AddAttribute() {
        Attribute& oAttribute = m_aAttributes.emplace_back();
        oAttribute.oName = PositionOf(m_i);
        oAttribute.sName = Name();
        while (m_i < m_sText.size() && Here() != '"' && Here() != '\'')
            ++m_i;
        const char cQuote = Here();
        const std::size_t iBegin = std::min(++m_i, m_sText.size());
        oAttribute.oValue = PositionOf(iBegin);
        m_i = std::min(m_sText.find(cQuote, iBegin), m_sText.size());
        oAttribute.sRaw = m_sText.substr(iBegin, m_i - iBegin);
        oAttribute.sValue = oAttribute.sRaw;
        m_bPlain = m_bPlain && IsPlain(oAttribute.sRaw);
        ++m_i;
    }

    std::string_view m_sText;
    std::size_t m_i = 0;
    std::size_t m_iCounted = 0;
    std::size_t m_iLine = 0; // where the line begins
    Long m_lLine = 1;
    bool m_bPlain = true;
    std::optional<Element> m_oRoot;
    std::vector<Element*> m_aOpen;
    std::vector<Attribute> m_aAttributes; // of the tag at hand
};

std::size_t CountOf(const Element& oElement) {
    std::size_t n = 1;
    for (const Element& oChild : oElement.aChildren)
        n += CountOf(oChild);
    return n;
}

// Values that differ from what is written, from the document's elements, in document order as they are met here. aNodes
// is empty where entities hold elements; values then stay as they are written.
class Values {
public:
    Values(std::vector<Ref<IXmlNode>> aNodes, std::deque<std::string>& aTexts)
        : m_aNodes(std::move(aNodes)), m_aTexts(aTexts) {}

    void Fill(Element& oElement) {
        const std::size_t iThis = m_iNode++;
        for (Attribute& oAttribute : oElement.aAttributes) {
            if (!m_aNodes.empty() && NeedsTheParser(oAttribute.sRaw))
                oAttribute.sValue = m_aTexts.emplace_back(m_aNodes[iThis]->Attribute(oAttribute.sName).value_or(""));
            else if (!IsAscii(oAttribute.sRaw))
                oAttribute.sValue = m_aTexts.emplace_back(DecodeWindows1252(oAttribute.sRaw));
        }
        for (Element& oChild : oElement.aChildren)
            Fill(oChild);
    }

private:
    std::vector<Ref<IXmlNode>> m_aNodes;
    std::deque<std::string>& m_aTexts;
    std::size_t m_iNode = 0;
};

} // namespace

const Attribute* Element::Find(std::string_view sAttribute) const {
    for (const Attribute& oAttribute : aAttributes)
        if (oAttribute.sName == sAttribute)
            return &oAttribute;
    return nullptr;
}

Attribute* Element::Find(std::string_view sAttribute) {
    return const_cast<Attribute*>(std::as_const(*this).Find(sAttribute));
}

std::string_view Element::Value(std::string_view sAttribute) const {
    const Attribute* pAttribute = Find(sAttribute);
    return pAttribute ? pAttribute->sValue : std::string_view();
}

Position Element::At(std::string_view sAttribute) const {
    const Attribute* pAttribute = Find(sAttribute);
    return pAttribute ? pAttribute->oValue : oAt;
}

std::optional<Element> ScanElements(std::string_view sBytes, const Ref<IXmlDocument>& oDocument,
                                    std::deque<std::string>& aTexts) {
    Scanner oScanner(sBytes);
    std::optional<Element> oRoot = oScanner.Run();
    if (!oRoot || oScanner.IsPlainText())
        return oRoot;
    std::vector<Ref<IXmlNode>> aNodes;
    if (const Ref<IXmlNode> oNode = oDocument->SelectSingleNode("/*"))
        aNodes = oNode->SelectNodes("//*");
    if (aNodes.size() != CountOf(*oRoot))
        aNodes.clear();
    Values(std::move(aNodes), aTexts).Fill(*oRoot);
    return oRoot;
}

} // namespace corvane::check
