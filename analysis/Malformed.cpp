#include "analysis/Malformed.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Nearest.h"

#include <algorithm>
#include <libxml/parser.h>
#include <memory>
#include <regex>
#include <vector>

namespace corvane::check {

namespace {

struct Words {
    std::string sText;
    std::string sCure;
};

// The library's parser tells the line; where in it, libxml2 is asked again.
Long ErrorColumn(std::string_view sBytes, Long lLine) {
    constexpr std::size_t nLargest = 1 << 26; // beyond it, the line must do
    if (sBytes.size() > nLargest)
        return 0;
    const std::string sText = DecodeWindows1252(sBytes);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> oContext(xmlNewParserCtxt(), &xmlFreeParserCtxt);
    if (!oContext)
        return 0;
    struct First {
        Long lLine = 0;
        Long lColumn = 0;
    } oFirst;
    oContext->_private = &oFirst;
    oContext->sax->serror = [](void* pContext, xmlErrorPtr pError) {
        auto& oTo = *static_cast<First*>(static_cast<xmlParserCtxtPtr>(pContext)->_private);
        if (oTo.lLine == 0 && pError->level >= XML_ERR_ERROR)
            oTo = {pError->line, pError->int2};
    };
    xmlFreeDoc(xmlCtxtReadMemory(oContext.get(), sText.data(), static_cast<int>(sText.size()), nullptr, "UTF-8",
                                 XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC));
    return oFirst.lLine == lLine ? oFirst.lColumn : 0;
}

// What the parser's message names, from 1.
std::smatch Parts(const std::string& sMessage, const char* sPattern) {
    std::smatch oMatch;
    (void)std::regex_search(sMessage, oMatch, std::regex(sPattern));
    return oMatch;
}

Words OfNoElement(std::string_view sBytes) {
    const std::size_t iText = sBytes.find_first_not_of(" \t\r\n");
    if (iText == std::string_view::npos)
        return {"the file is empty", "write a Service element, or remove the file"};
    if (sBytes[iText] == '<')
        return {"the file has no element", "write a Service element, or remove the file"};
    return {"there is text before the first element", "remove everything before \"<\""};
}

// Of what isn't one byte a character.
Words OfEncoding(std::string_view sBytes) {
    if (sBytes.starts_with("\xEF\xBB\xBF"))
        return {"the file begins with the byte order mark of UTF-8, and is read as Windows-1252",
                "save it as Windows-1252, or without the mark"};
    if (sBytes.starts_with("\xFF\xFE") || sBytes.starts_with("\xFE\xFF") ||
        sBytes.substr(0, 4).find('\0') != std::string_view::npos)
        return {"the file is UTF-16, and is read as Windows-1252", "save it as Windows-1252"};
    return {};
}

Words OfTags(const std::string& sMessage) {
    const std::smatch oNames = Parts(sMessage, "mismatch: (\\S+) line (\\d+) and (\\S+)");
    if (oNames.empty())
        return {};
    const std::string sOpen = oNames[1];
    const std::string sClose = oNames[3];
    const std::string sOpened = Quoted(sOpen) + " of line " + oNames[2].str();
    if (Nearest(std::vector{sOpen}, sClose))
        return {Quoted("</" + sClose + ">") + " is to close " + sOpened, "write one name in both places"};
    return {sOpened + " isn't closed before " + Quoted("</" + sClose + ">"),
            "end it with \"/>\", or with " + Quoted("</" + sOpen + ">")};
}

Words OfSigns(int nCode, const std::string& sMessage) {
    switch (nCode) {
    case XML_ERR_ENTITYREF_SEMICOL_MISSING:
        return {"\"&\" begins a reference", "write &amp; for the character itself"};
    case XML_ERR_NAME_REQUIRED:
        if (sMessage.find("EntityRef") != std::string::npos)
            return OfSigns(XML_ERR_ENTITYREF_SEMICOL_MISSING, sMessage);
        if (sMessage.find("attribute") != std::string::npos)
            return {"this isn't the beginning of an attribute",
                    "remove it, or end the tag before with \"/>\" or \">\""};
        return {"\"<\" begins an element, and no name follows", "write &lt; for the character itself"};
    case XML_ERR_LT_IN_ATTRIBUTE:
        return {"the value that begins here goes on up to a \"<\"",
                "end it with its quotation mark, or write &lt; for the character itself"};
    case XML_ERR_UNDECLARED_ENTITY:
        return {sMessage, "write the character's number, as in &#252;"};
    case XML_ERR_HYPHEN_IN_COMMENT:
        return {"there is \"--\" in a comment", "write one hyphen, or end the comment there with \"-->\""};
    case XML_ERR_COMMENT_NOT_FINISHED:
        return {"a comment isn't closed", "end it with \"-->\""};
    default:
        return {};
    }
}

Words OfAttributes(int nCode, const std::string& sMessage) {
    const std::smatch oName = Parts(sMessage, nCode == XML_ERR_ATTRIBUTE_REDEFINED ? "Attribute (\\S+)" : "(\\S+)$");
    const std::string sName = oName.size() > 1 ? oName[1].str() : std::string();
    switch (nCode) {
    case XML_ERR_ATTRIBUTE_REDEFINED:
        return {"the attribute " + Quoted(sName) + " is there twice", "remove one of them"};
    case XML_ERR_ATTRIBUTE_WITHOUT_VALUE:
        return {"the attribute " + Quoted(sName) + " has no value", "write " + sName + "=\"...\""};
    case XML_ERR_ATTRIBUTE_NOT_STARTED:
        return {"a value isn't in quotation marks", "write it as in Name=\"Value\""};
    case XML_ERR_ATTRIBUTE_NOT_FINISHED:
        return {"a value isn't closed", "end it with its quotation mark"};
    case XML_ERR_SPACE_REQUIRED:
        return {"there is no space between two attributes", "write one"};
    default:
        return {};
    }
}

Words OfStructure(int nCode, const std::string& sMessage, std::string_view sBytes) {
    switch (nCode) {
    case XML_ERR_DOCUMENT_EMPTY:
        return OfNoElement(sBytes);
    case XML_ERR_DOCUMENT_END:
        return {"there is something after the end of the root element", "remove it, or move it inside"};
    case XML_ERR_TAG_NAME_MISMATCH:
        return OfTags(sMessage);
    case XML_ERR_TAG_NOT_FINISHED:
        if (const std::smatch oName = Parts(sMessage, "tag (\\S+) line (\\d+)"); !oName.empty())
            return {"the file ends before " + Quoted(oName[1].str()) + " of line " + oName[2].str() + " is closed",
                    "end it with " + Quoted("</" + oName[1].str() + ">")};
        return {};
    case XML_ERR_GT_REQUIRED:
        return {"a tag has no end", "end it with \"/>\" or \">\""};
    case XML_ERR_RESERVED_XML_NAME:
        return {"the XML declaration isn't at the very beginning", "remove everything before it"};
    default:
        return {};
    }
}

// What has no words of its own keeps those of the parser.
Words InWords(int nCode, const std::string& sMessage, std::string_view sBytes) {
    for (const Words& oWords : {OfEncoding(sBytes), OfStructure(nCode, sMessage, sBytes), OfSigns(nCode, sMessage),
                                OfAttributes(nCode, sMessage)})
        if (!oWords.sText.empty())
            return oWords;
    return {sMessage, "correct the XML there, or just before"};
}

// A quotation mark that is missing shows at the next one's "<", maybe lines later: back to where the value begins.
Position BeginOfValue(const File& oFile, Position oAt) {
    const std::string_view sText = oFile.sBytes;
    const auto iLine = static_cast<std::size_t>(oFile.oLines.EndOf(sText, oAt.lLine - 1) - sText.data());
    const std::size_t iSign = sText.rfind('<', iLine + static_cast<std::size_t>(std::max<Long>(oAt.lColumn - 1, 0)));
    const std::size_t iMark = iSign == std::string_view::npos ? iSign : sText.find_last_of("\"'", iSign);
    return iMark == std::string_view::npos ? oAt : oFile.oLines.PositionOf(sText, sText.data() + iMark + 1);
}

} // namespace

std::string WithoutLine(const std::string& sReason) {
    const std::size_t iColon = sReason.find(": ");
    return sReason.starts_with("line ") && iColon != std::string::npos ? sReason.substr(iColon + 2) : sReason;
}

void ReportMalformed(const File& oFile, const XmlError& oError, Report& oReport) {
    const auto nCode = static_cast<int>(oError.lErrorCode);
    const Words oWords = InWords(nCode, WithoutLine(oError.sReason), oFile.sBytes);
    Position oAt{oError.lLine, ErrorColumn(oFile.sBytes, oError.lLine)};
    if (nCode == XML_ERR_LT_IN_ATTRIBUTE)
        oAt = BeginOfValue(oFile, oAt);
    oReport.Add(Rule::NotWellFormed, {oFile.sPath, oAt}, oWords.sText, oWords.sCure);
}

} // namespace corvane::check
