#include "analysis/Source.h"

#include "adapters/common/Encoding.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace corvane::check {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool EndsName(char c) {
    return IsBlank(c) || c == '=' || c == '>' || c == '/';
}

bool NeedsTheParser(std::string_view sWritten) {
    return sWritten.find_first_of("&\t\n\r") != std::string_view::npos;
}

// Whether a value reads as it is written.
bool IsPlain(std::string_view sWritten) {
    bool bPlain = true;
    for (const char c : sWritten) // to the end, as that is faster than to look where to stop
        bPlain &= c >= ' ' && c != '&';
    return bPlain;
}

template <class T>
std::span<T> Copied(std::pmr::memory_resource& oMemory, const std::vector<T>& aThings) {
    if (aThings.empty())
        return {};
    auto* pCopy = static_cast<T*>(oMemory.allocate(aThings.size() * sizeof(T), alignof(T)));
    std::uninitialized_copy(aThings.begin(), aThings.end(), pCopy);
    return {pCopy, aThings.size()};
}

class Scanner {
public:
    Scanner(std::string_view sText, std::pmr::memory_resource& oMemory) : m_sText(sText), m_oMemory(oMemory) {}

    std::span<Element> Run() {
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
        while (!m_aOpen.empty())
            Close();
        return Copied(m_oMemory, m_aElements);
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
            Close();
        SkipThrough(">");
    }

    void Close() {
        m_aElements[m_aOpen.back()].nBelow = m_aElements.size() - m_aOpen.back() - 1;
        m_aOpen.pop_back();
    }

    [[nodiscard]] std::string_view Name() {
        const auto itBegin = m_sText.begin() + static_cast<std::ptrdiff_t>(m_i);
        const auto itEnd = std::find_if(itBegin, m_sText.end(), EndsName);
        m_i = static_cast<std::size_t>(itEnd - m_sText.begin());
        return {itBegin, itEnd};
    }

    void StartTag() {
        ++m_i;
        const std::string_view sName = Name();
        m_aAttributes.clear();
        for (SkipBlanks(); m_i < m_sText.size() && Here() != '>' && Here() != '/'; SkipBlanks())
            AddAttribute();
        if (m_aOpen.empty())
            m_aElements.clear(); // the root
        m_aElements.push_back({sName, Copied(m_oMemory, m_aAttributes)});
        const bool bEmpty = Here() == '/';
        SkipThrough(">");
        if (!bEmpty)
            m_aOpen.push_back(m_aElements.size() - 1);
    }

    void AddAttribute() {
        const std::string_view sName = Name();
        while (m_i < m_sText.size() && Here() != '"' && Here() != '\'')
            ++m_i;
        const char cQuote = Here();
        const std::size_t iBegin = std::min(++m_i, m_sText.size());
        m_i = std::min(m_sText.find(cQuote, iBegin), m_sText.size());
        const std::string_view sWritten = m_sText.substr(iBegin, m_i - iBegin);
        m_aAttributes.emplace_back(sName, sWritten);
        m_bPlain = m_bPlain && IsPlain(sWritten);
        ++m_i;
    }

    std::string_view m_sText;
    std::pmr::memory_resource& m_oMemory;
    std::size_t m_i = 0;
    bool m_bPlain = true;
    std::vector<Element> m_aElements;
    std::vector<std::size_t> m_aOpen;
    std::vector<Attribute> m_aAttributes; // of the tag at hand
};

// Values that differ from what is written, from the document's elements, which are in the same order. aNodes is empty
// where entities hold elements; values then stay as they are written.
void FillValues(std::span<Element> aElements, const std::vector<Ref<IXmlNode>>& aNodes,
                std::pmr::memory_resource& oMemory) {
    for (std::size_t i = 0; i < aElements.size(); ++i)
        for (Attribute& oAttribute : aElements[i].aAttributes) {
            const std::string_view sWritten = oAttribute.Written();
            if (!aNodes.empty() && NeedsTheParser(sWritten))
                oAttribute.SetValue(Kept(oMemory, {aNodes[i]->Attribute(oAttribute.Name()).value_or("")}));
            else if (!IsAscii(sWritten))
                oAttribute.SetValue(Kept(oMemory, {DecodeWindows1252(sWritten)}));
        }
}

} // namespace

std::string_view Attribute::Written() const {
    // The text has an end sign, should it end within a tag.
    const char* pBegin = m_pName + m_nName;
    while (*pBegin && *pBegin != '"' && *pBegin != '\'')
        ++pBegin;
    if (!*pBegin)
        return {pBegin, 0};
    const char* pEnd = pBegin + 1;
    while (*pEnd && *pEnd != *pBegin)
        ++pEnd;
    return {pBegin + 1, pEnd};
}

Attribute* Element::Find(std::string_view sAttribute) const {
    for (Attribute& oAttribute : aAttributes)
        if (oAttribute.Name() == sAttribute)
            return &oAttribute;
    return nullptr;
}

std::string_view Element::Value(std::string_view sAttribute) const {
    const Attribute* pAttribute = Find(sAttribute);
    return pAttribute ? pAttribute->Value() : std::string_view();
}

Spot Element::At(std::string_view sAttribute) const {
    const Attribute* pAttribute = Find(sAttribute);
    return pAttribute ? pAttribute->AtValue() : At();
}

const Element* ScanElements(const std::string& sBytes, const Ref<IXmlDocument>& oDocument,
                            std::pmr::memory_resource& oMemory) {
    Scanner oScanner(sBytes, oMemory);
    const std::span<Element> aElements = oScanner.Run();
    if (aElements.empty())
        return nullptr;
    if (!oScanner.IsPlainText()) {
        std::vector<Ref<IXmlNode>> aNodes;
        if (const Ref<IXmlNode> oNode = oDocument->SelectSingleNode("/*"))
            aNodes = oNode->SelectNodes("//*");
        if (aNodes.size() != aElements.size())
            aNodes.clear();
        FillValues(aElements, aNodes, oMemory);
    }
    return aElements.data();
}

std::string_view Kept(std::pmr::memory_resource& oMemory, std::initializer_list<std::string_view> aParts) {
    std::size_t nLength = 0;
    for (const std::string_view sPart : aParts)
        nLength += sPart.size();
    auto* pText = static_cast<char*>(oMemory.allocate(std::max<std::size_t>(nLength, 1), 1));
    char* pEnd = pText;
    for (const std::string_view sPart : aParts)
        pEnd = std::copy(sPart.begin(), sPart.end(), pEnd);
    return {pText, nLength};
}

void Lines::Read(std::string_view sText) {
    if (!m_aBegins.empty())
        return;
    m_aBegins.push_back(sText.data());
    for (std::size_t i = sText.find('\n'); i != std::string_view::npos; i = sText.find('\n', i + 1))
        m_aBegins.push_back(sText.data() + i + 1);
}

Position Lines::PositionOf(std::string_view sText, Spot pSpot) {
    Read(sText);
    const auto itNext = std::upper_bound(m_aBegins.begin(), m_aBegins.end(), pSpot);
    return {static_cast<Long>(itNext - m_aBegins.begin()), static_cast<Long>(pSpot - *(itNext - 1)) + 1};
}

Spot Lines::EndOf(std::string_view sText, Long lLine) {
    Read(sText);
    const auto i = static_cast<std::size_t>(std::max<Long>(lLine, 0));
    return i < m_aBegins.size() ? m_aBegins[i] : sText.data() + sText.size();
}

} // namespace corvane::check
