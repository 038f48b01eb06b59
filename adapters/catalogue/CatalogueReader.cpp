#include "adapters/catalogue/CatalogueReader.h"

#include "adapters/common/Encoding.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view sSpace = " \t\r";

std::string_view Trimmed(std::string_view sText) {
    const std::size_t iBegin = sText.find_first_not_of(sSpace);
    if (iBegin == std::string_view::npos)
        return {};
    return sText.substr(iBegin, sText.find_last_not_of(sSpace) + 1 - iBegin);
}

// Cuts the word off the text, with the blanks behind it.
bool Take(std::string_view& sText, std::string_view sWord) {
    if (!sText.starts_with(sWord))
        return false;
    sText = Trimmed(sText.substr(sWord.size()));
    return true;
}

// What the header says of the encoding; empty when it says nothing.
std::string CharsetIn(const std::string& sHeader) {
    const std::size_t i = FoldText(sHeader).find("charset=");
    if (i == std::string::npos)
        return {};
    const std::size_t iBegin = i + 8;
    return sHeader.substr(iBegin, sHeader.find_first_of(" \t\n;", iBegin) - iBegin);
}

} // namespace

bool CatalogueReader::Broken(const std::string& sWhy) {
    m_aFaults.push_back({m_lLine, sWhy});
    return false;
}

bool CatalogueReader::Read(std::string_view sText) {
    if (sText.starts_with("\xEF\xBB\xBF"))
        sText.remove_prefix(3);
    while (!sText.empty()) {
        const std::size_t iEnd = std::min(sText.find('\n'), sText.size());
        ++m_lLine;
        const std::string_view sLine = Trimmed(sText.substr(0, iEnd));
        if (!IsUtf8(sLine))
            return Broken("isn't UTF-8; save the catalogue in that encoding");
        if (sLine.find('\0') != std::string_view::npos)
            return Broken("contains a zero byte, so it isn't text");
        if (!ReadLine(sLine))
            return false;
        sText.remove_prefix(std::min(iEnd + 1, sText.size()));
    }
    if (!Finish())
        return false;
    const std::string sCharset = CharsetIn(m_oHeader.sTranslation);
    m_lLine = 1;
    if (!sCharset.empty() && !EqualText(sCharset, "UTF-8") && !EqualText(sCharset, "ASCII") &&
        !EqualText(sCharset, "CHARSET"))
        return Broken("says that it is written in " + sCharset + "; save it as UTF-8, and say so in its header");
    return true;
}

bool CatalogueReader::ReadLine(std::string_view sLine) {
    if (sLine.empty())
        return true;
    if (Take(sLine, "#~")) {
        if (sLine.starts_with("|"))
            return true; // what a vanished text was before
        if (m_oPending.bHasTranslation && !sLine.starts_with("\"") && !Finish())
            return false;
        m_oPending.oMessage.bVanished = true;
        return ReadStatement(sLine);
    }
    if (!sLine.starts_with("#"))
        return ReadStatement(sLine);
    if (m_oPending.bHasTranslation && !Finish())
        return false;
    m_pString = nullptr;
    if (Take(sLine, "#|")) {
        if (Take(sLine, "msgctxt"))
            m_pPrevious = &m_sIgnored;
        else if (Take(sLine, "msgid"))
            m_pPrevious = &m_oPending.oMessage.sPrevious;
        return !m_pPrevious || ReadString(sLine, *m_pPrevious);
    }
    ReadComment(sLine);
    return true;
}

void CatalogueReader::ReadComment(std::string_view sLine) {
    CatalogueMessage& oMessage = m_oPending.oMessage;
    if (Take(sLine, "#,"))
        oMessage.bUnsure = oMessage.bUnsure || sLine.find("fuzzy") != std::string_view::npos;
    else if (Take(sLine, "#:"))
        oMessage.sPlace = oMessage.sPlace.empty() ? std::string(sLine) : oMessage.sPlace + " " + std::string(sLine);
    else if (!sLine.starts_with("#."))
        oMessage.aRemarks.emplace_back(Trimmed(sLine.substr(1)));
}

bool CatalogueReader::ReadStatement(std::string_view sLine) {
    if (sLine.starts_with("\"")) {
        if (!m_pString)
            return Broken("there is a string without msgctxt, msgid or msgstr before it");
        return ReadString(sLine, *m_pString);
    }
    if (Take(sLine, "msgid_plural") || Take(sLine, "msgstr["))
        return Broken("plural forms have no meaning for texts of definition files; take them out");
    CatalogueMessage& oMessage = m_oPending.oMessage;
    if (Take(sLine, "msgctxt")) {
        if (m_oPending.bHasTranslation && !Finish())
            return false;
        if (m_oPending.bHasText)
            return Broken("msgstr is missing before this msgctxt");
        m_pString = &oMessage.sKey;
    } else if (Take(sLine, "msgid")) {
        if (m_oPending.bHasTranslation && !Finish())
            return false;
        if (m_oPending.bHasText)
            return Broken("msgstr is missing before this msgid");
        m_oPending.bHasText = true;
        oMessage.lLine = m_lLine;
        m_pString = &oMessage.sText;
    } else if (Take(sLine, "msgstr")) {
        if (!m_oPending.bHasText || m_oPending.bHasTranslation)
            return Broken("msgid is missing before this msgstr");
        m_oPending.bHasTranslation = true;
        m_pString = &oMessage.sTranslation;
    } else {
        return Broken("\"" + std::string(FirstCharacters(sLine, 20)) +
                      "\" isn't a line of a catalogue; expected: msgctxt, msgid, msgstr, a string or a comment");
    }
    return ReadString(sLine, *m_pString);
}

bool CatalogueReader::ReadString(std::string_view sQuoted, std::string& sText) {
    if (sQuoted.size() < 2 || sQuoted.front() != '"' || sQuoted.back() != '"')
        return Broken("a string must stand between two quotation marks on one line");
    for (std::size_t i = 1; i + 1 < sQuoted.size(); ++i) {
        if (sQuoted[i] == '"')
            return Broken("a quotation mark in a string needs a backslash before it");
        if (sQuoted[i] != '\\') {
            sText += sQuoted[i];
            continue;
        }
        static constexpr std::string_view sLetters = "nrt\"\\";
        static constexpr std::string_view sMeanings = "\n\r\t\"\\";
        const std::size_t iLetter = i + 2 < sQuoted.size() ? sLetters.find(sQuoted[++i]) : std::string_view::npos;
        if (iLetter == std::string_view::npos)
            return Broken("a backslash must stand before n, r, t, a quotation mark or a backslash");
        sText += sMeanings[iLetter];
    }
    return true;
}

bool CatalogueReader::Finish() {
    m_pString = nullptr;
    m_pPrevious = nullptr;
    Pending oPending = std::exchange(m_oPending, {});
    CatalogueMessage& oMessage = oPending.oMessage;
    if (!oPending.bHasText)
        return true; // comments at the end
    if (!oPending.bHasTranslation)
        return Broken("msgstr is missing behind the last msgid");
    if (oMessage.sText.empty() && oMessage.sKey.empty()) {
        m_oHeader = std::move(oMessage);
        return true;
    }
    m_aMessages.push_back(std::move(oMessage));
    return true;
}

} // namespace corvane
