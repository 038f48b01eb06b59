#include "analysis/CheckForm.h"

#include "adapters/common/Encoding.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Malformed.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>

namespace corvane::check {

namespace {

std::vector<std::string> NamesOf(const auto& aFormats) {
    std::vector<std::string> aNames;
    for (const auto& oFormat : aFormats)
        aNames.emplace_back(oFormat.sName);
    return aNames;
}

std::string Listed(std::span<const std::string_view> aWords) {
    std::string sList;
    for (std::size_t i = 0; i < aWords.size(); ++i)
        sList += (i == 0 ? "" : i + 1 == aWords.size() ? " or " : ", ") + Quoted(aWords[i]);
    return sList;
}

// "&#xDC;ber" for the bytes of a UTF-8 text.
std::string WithReferences(std::string_view sRaw) {
    constexpr std::string_view sDigits = "0123456789ABCDEF";
    std::string sText;
    for (std::size_t i = 0; i < sRaw.size();) {
        const auto c = static_cast<unsigned char>(sRaw[i++]);
        if (c < 0x80) {
            sText += static_cast<char>(c);
            continue;
        }
        unsigned u = c >= 0xF0 ? c & 0x07u : c >= 0xE0 ? c & 0x0Fu : c & 0x1Fu;
        for (; i < sRaw.size() && (static_cast<unsigned char>(sRaw[i]) & 0xC0u) == 0x80; ++i)
            u = (u << 6) | (static_cast<unsigned char>(sRaw[i]) & 0x3Fu);
        std::string sHex;
        for (; u != 0; u >>= 4)
            sHex.insert(sHex.begin(), sDigits[u & 15u]);
        sText += "&#x" + sHex + ";";
    }
    return sText;
}

class FormCheck {
public:
    FormCheck(const File& oFile, Report& oReport)
        : m_oFile(oFile), m_oReport(oReport), m_bAscii(IsAscii(oFile.sBytes)) {}

    void Check(const Element& oElement, const ElementFormat& oFormat, bool bValues) {
        for (Attribute& oAttribute : oElement.aAttributes)
            CheckAttribute(oElement, oFormat, oAttribute, bValues);
        if (bValues)
            for (const AttributeFormat& oAttribute : oFormat.aAttributes)
                CheckNeed(oElement, oAttribute);
        for (const Element& oChild : oElement.Children()) {
            if (const ElementFormat* pFormat = oFormat.Child(oChild.sName))
                Check(oChild, *pFormat, bValues);
            else
                ReportElement(oElement, oFormat, oChild);
        }
    }

    // Whether something was found that a schema would find, too.
    [[nodiscard]] bool Names(const std::string& sMessage) const {
        return std::any_of(m_aUnknown.begin(), m_aUnknown.end(), [&](const std::string& sName) {
            return sMessage.find("'" + sName + "'") != std::string::npos;
        });
    }

private:
    void ReportElement(const Element& oParent, const ElementFormat& oFormat, const Element& oElement) {
        m_aUnknown.emplace_back(oElement.sName);
        const std::vector<std::string> aNames = NamesOf(oFormat.aChildren);
        m_oReport.Add(Rule::UnknownElement, m_oFile.At(oElement.At()),
                      std::string(oParent.sName) + " has no element " + Quoted(oElement.sName),
                      WriteInstead(aNames, oElement.sName, ElementCure(oFormat, oElement.sName)));
    }

    // An entry that stands beside its group is meant to stand in it.
    static std::string ElementCure(const ElementFormat& oParent, std::string_view sName) {
        for (const ElementFormat& oGroup : oParent.aChildren)
            if (oGroup.Child(sName))
                return "move it into " + Quoted(oGroup.sName);
        return "remove it";
    }

    void CheckAttribute(const Element& oElement, const ElementFormat& oFormat, Attribute& oAttribute, bool bValues) {
        if (oAttribute.Name().find(':') != std::string_view::npos || oAttribute.Name() == "xmlns")
            return; // the schema's affair
        const std::string_view sWritten = m_bAscii ? std::string_view() : oAttribute.Written();
        if (!IsAscii(sWritten) && IsUtf8(sWritten))
            m_oReport.Add(Rule::Utf8Bytes, m_oFile.At(oAttribute.AtValue()),
                          "the bytes of this text look like UTF-8, but are read as Windows-1252",
                          "write " + Quoted(WithReferences(sWritten)) + ", or save the file as Windows-1252");
        const AttributeFormat* pFormat = oFormat.Attribute(oAttribute.Name());
        if (!pFormat) {
            m_aUnknown.emplace_back(oAttribute.Name());
            const std::vector<std::string> aNames = NamesOf(oFormat.aAttributes);
            m_oReport.Add(Rule::UnknownAttribute, m_oFile.At(oAttribute.AtName()),
                          std::string(oElement.sName) + " has no attribute " + Quoted(oAttribute.Name()),
                          WriteInstead(aNames, oAttribute.Name(), "remove it"));
        } else if (bValues || (oElement.sName == "Service" && oAttribute.Name() == "Active")) {
            CheckValue(*pFormat, oAttribute); // whether a file takes part is read of every one
        }
    }

    void CheckValue(const AttributeFormat& oFormat, Attribute& oAttribute) {
        try {
            switch (oFormat.eKind) {
            case ValueKind::Text:
                break;
            case ValueKind::Boolean:
                (void)ToBoolean(Variant(oAttribute.Value()));
                break;
            case ValueKind::Number:
                (void)ToSingle(Variant(oAttribute.Value()));
                break;
            case ValueKind::WholeNumber:
                (void)ToLong(Variant(oAttribute.Value()));
                break;
            case ValueKind::Word:
                CheckWord(oFormat, oAttribute);
                break;
            }
        } catch (const Failure& oFailure) {
            oAttribute.SetBad();
            ReportValue(oFormat, oAttribute, oFailure.Number == FailureNumber::Overflow);
        }
    }

    void CheckWord(const AttributeFormat& oFormat, Attribute& oAttribute) {
        const bool bKnown = std::any_of(oFormat.aWords.begin(), oFormat.aWords.end(),
                                        [&](std::string_view s) { return EqualText(s, oAttribute.Value()); });
        if (bKnown || (oAttribute.Value().empty() && oFormat.eNeed == Need::Optional))
            return;
        oAttribute.SetBad();
        const std::vector<std::string> aWords(oFormat.aWords.begin(), oFormat.aWords.end());
        m_oReport.Add(Rule::BadWord, m_oFile.At(oAttribute.AtValue()),
                      Quoted(oAttribute.Value()) + " is no " + std::string(oFormat.sName),
                      WriteInstead(aWords, oAttribute.Value(), "write " + Listed(oFormat.aWords)));
    }

    void ReportValue(const AttributeFormat& oFormat, const Attribute& oAttribute, bool bOverflow) {
        const std::string sValue(oAttribute.Value());
        const bool bBoolean = oFormat.eKind == ValueKind::Boolean;
        std::string sCure = bBoolean ? "write True or False" : "write a number such as 10 or 12.5";
        if (bOverflow)
            sCure = "write a smaller one";
        else if (sValue.empty())
            sCure = oFormat.eNeed == Need::Required ? sCure : "remove the attribute";
        else if (const std::string sPoint = ReplaceText(sValue, ',', '.'); !bBoolean && NumberIn(sPoint))
            sCure = "write " + Quoted(sPoint);
        else if (bBoolean)
            sCure = BooleanCure(sValue);
        m_oReport.Add(Rule::BadValue, m_oFile.At(oAttribute.AtValue()),
                      std::string(oFormat.sName) +
                          (bOverflow  ? " is too large: "
                           : bBoolean ? " is neither true nor false: "
                                      : " isn't a number: ") +
                          Quoted(sValue),
                      sCure);
    }

    static std::string BooleanCure(const std::string& sValue) {
        for (const char* sWord : {"yes", "on", "y", "t", "wahr", "ja"})
            if (EqualText(sValue, sWord))
                return "write \"True\"";
        for (const char* sWord : {"no", "off", "n", "f", "falsch", "nein"})
            if (EqualText(sValue, sWord))
                return "write \"False\"";
        return WriteInstead(std::array<std::string, 2>{"True", "False"}, sValue, "write True or False");
    }

    void CheckNeed(const Element& oElement, const AttributeFormat& oFormat) {
        if (oFormat.eNeed == Need::Optional)
            return;
        const Attribute* pAttribute = oElement.Find(oFormat.sName);
        if (oFormat.eNeed == Need::Required && !pAttribute)
            m_oReport.Add(Rule::MissingAttribute, m_oFile.At(oElement.At()),
                          std::string(oElement.sName) + " needs the attribute " + std::string(oFormat.sName),
                          oFormat.eKind == ValueKind::Word      ? "write " + Listed(oFormat.aWords)
                          : oFormat.eKind == ValueKind::Boolean ? "write True or False"
                                                                : "add it");
        if (oFormat.eNeed == Need::Name && (!pAttribute || pAttribute->Value().empty()))
            m_oReport.Add(Rule::MissingName, m_oFile.At(oElement.At(oFormat.sName)),
                          std::string(oElement.sName) + " has no " + std::string(oFormat.sName), "give it one");
    }

    const File& m_oFile;
    Report& m_oReport;
    bool m_bAscii; // the whole file
    std::vector<std::string> m_aUnknown;
};

// The last element of that name before the spot.
const Element* ElementBefore(const Element& oRoot, std::string_view sName, Spot pSpot) {
    const Element* pFound = nullptr;
    for (const Element& oElement : std::span(&oRoot, 1 + oRoot.nBelow)) {
        if (oElement.At() >= pSpot)
            break;
        if (oElement.sName == sName)
            pFound = &oElement;
    }
    return pFound;
}

void ReportViolations(const File& oFile, const Ref<IXmlDocument>& oDocument, const Ref<IXmlSchemaCache>& oSchema,
                      const FormCheck& oCheck, Report& oReport) {
    for (const XmlError& oError : Violations(oDocument, oSchema)) {
        if (oCheck.Names(oError.sReason))
            continue;
        const std::string sReason = WithoutLine(oError.sReason);
        Place oPlace{oFile.sPath, {oError.lLine, 1}};
        if (const std::size_t iName = sReason.find("lement '"); iName != std::string::npos) {
            const std::size_t iBegin = iName + 8;
            const std::string sName = sReason.substr(iBegin, sReason.find('\'', iBegin) - iBegin);
            // The validator stood on the last line of a tag.
            const Spot pEnd = oFile.oLines.EndOf(oFile.sBytes, oError.lLine);
            if (const Element* pElement = ElementBefore(*oFile.pRoot, sName, pEnd))
                oPlace = oFile.At(pElement->At());
        }
        oReport.Add(Rule::Schema, std::move(oPlace), sReason,
                    "correct it, or use the Service.xdr that comes with Corvane");
    }
}

} // namespace

void ReadFile(File& oFile, const Ref<IXmlService>& oXml, const Ref<IXmlSchemaCache>& oSchema,
              std::pmr::memory_resource& oMemory, Report& oReport) {
    const Ref<IXmlDocument> oDocument = oXml->NewDocument();
    if (!oDocument->LoadXml(oFile.sBytes)) {
        ReportMalformed(oFile, oDocument->ParseError(), oReport);
        return;
    }
    const Element* pRoot = ScanElements(oFile.sBytes, oDocument, oMemory);
    if (!pRoot || !oDocument->SelectSingleNode("Service")) {
        const bool bNamespace = pRoot && pRoot->Find("xmlns");
        oReport.Add(Rule::NoServiceElement, oFile.At(pRoot ? pRoot->At() : oFile.sBytes.data()),
                    bNamespace ? "the root element has a namespace"
                               : "the root element is " + Quoted(pRoot ? pRoot->sName : "") + ", not \"Service\"",
                    bNamespace ? "remove xmlns" : "name it Service");
        return;
    }
    oFile.pRoot = pRoot;
    const Element& oElement = *pRoot;
    FormCheck oCheck(oFile, oReport);
    const Attribute* pActive = oElement.Find("Active");
    const bool bProgID = !oElement.Value("ProgID").empty();
    bool bTrue = pActive != nullptr;
    try {
        bTrue = pActive && ToBoolean(Variant(pActive->Value()));
    } catch (const Failure&) {
        bTrue = true; // the check of values below says so
    }
    oFile.bActive = bTrue && bProgID;
    // The library reads no record of a file that takes no part.
    oCheck.Check(oElement, ServiceFormat(), oFile.bActive);
    if (!pActive || (bTrue && !bProgID))
        oReport.Add(Rule::InactiveFile, oFile.At(oElement.At()),
                    std::string("the file has no effect, as it has no ") + (bProgID ? "Active" : "ProgID"),
                    bProgID ? "write Active=\"True\"" : "name the service's class");
    if (oSchema && !oDocument->Validate(oSchema).sReason.empty())
        ReportViolations(oFile, oDocument, oSchema, oCheck, oReport);
}

} // namespace corvane::check
