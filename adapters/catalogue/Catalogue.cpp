#include "adapters/catalogue/Catalogue.h"

#include "adapters/catalogue/CatalogueReader.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>

namespace corvane {

namespace {

std::string IndexKey(const std::string& sKey, const std::string& sText) {
    return sKey + '\x04' + sText; // as gettext itself joins the two
}

// "%1", "%n" and the like, sorted.
std::vector<std::string> PlaceholdersIn(const std::string& sText) {
    std::vector<std::string> aPlaceholders;
    for (std::size_t i = sText.find('%'); i != std::string::npos; i = sText.find('%', i + 1))
        if (const char c = i + 1 < sText.size() ? sText[i + 1] : ' '; c == 'n' || (c >= '0' && c <= '9'))
            aPlaceholders.push_back(sText.substr(i, 2));
    std::sort(aPlaceholders.begin(), aPlaceholders.end());
    return aPlaceholders;
}

// "Caption" of "Service Data/MenuItem File.Open/Caption".
std::string_view AttributeIn(std::string_view sKey) {
    return sKey.substr(sKey.rfind('/') + 1);
}

std::string Quoted(const std::string& sText) {
    std::string sQuoted = "\"";
    for (const char c : sText) {
        static constexpr std::string_view sMeanings = "\n\r\t\"\\";
        static constexpr std::string_view sLetters = "nrt\"\\";
        if (const std::size_t i = sMeanings.find(c); i != std::string_view::npos)
            sQuoted.append("\\").append(1, sLetters[i]);
        else
            sQuoted += c;
    }
    return sQuoted + '"';
}

// A text of several lines stands on several, below an empty string, as gettext's own tools write it.
std::string Statement(const std::string& sPrefix, const char* sWord, const std::string& sText) {
    std::string sStatement = sPrefix + sWord + " ";
    if (const std::size_t i = sText.find('\n'); i == std::string::npos || i + 1 == sText.size())
        return sStatement + Quoted(sText) + "\n";
    sStatement += "\"\"\n";
    for (std::size_t i = 0; i < sText.size();) {
        const std::size_t iEnd = std::min(sText.find('\n', i), sText.size() - 1) + 1;
        sStatement += sPrefix + Quoted(sText.substr(i, iEnd - i)) + "\n";
        i = iEnd;
    }
    return sStatement;
}

std::string MessageText(const CatalogueMessage& oMessage) {
    std::string sText;
    for (const std::string& sRemark : oMessage.aRemarks)
        sText += sRemark.empty() ? "#\n" : "# " + sRemark + "\n";
    if (!oMessage.sPlace.empty() && !oMessage.bVanished)
        sText += "#: " + oMessage.sPlace + "\n";
    if (oMessage.bUnsure)
        sText += "#, fuzzy\n";
    const std::string sPrefix = oMessage.bVanished ? "#~ " : "";
    if (!oMessage.sPrevious.empty() && !oMessage.bVanished)
        sText += Statement("#| ", "msgid", oMessage.sPrevious);
    if (!oMessage.sKey.empty())
        sText += Statement(sPrefix, "msgctxt", oMessage.sKey);
    return sText + Statement(sPrefix, "msgid", oMessage.sText) + Statement(sPrefix, "msgstr", oMessage.sTranslation);
}

} // namespace

bool HasMnemonic(std::string_view sKey) {
    return AttributeIn(sKey) == "Caption" &&
           (sKey.find("MenuItem ") != std::string_view::npos || sKey.find("MenuTitle ") != std::string_view::npos ||
            sKey.find("ToolbarItem ") != std::string_view::npos);
}

std::string ClashOf(const CatalogueMessage& oMessage) {
    const std::string& sText = oMessage.sText;
    const std::string& sTranslation = oMessage.sTranslation;
    if (PlaceholdersIn(sText) != PlaceholdersIn(sTranslation))
        return "the placeholders differ from those of the text";
    if (sText.find('\n') == std::string::npos && sTranslation.find('\n') != std::string::npos)
        return "there is a line break, and none in the text";
    if (HasMnemonic(oMessage.sKey) && std::count(sText.begin(), sText.end(), '#') < 2 &&
        std::count(sTranslation.begin(), sTranslation.end(), '#') > 1)
        return "there is more than one \"#\", which marks the letter of the mnemonic";
    return {};
}

Catalogue Catalogue::Read(std::string_view sBytes, std::vector<CatalogueFault>& aFaults) {
    Catalogue oCatalogue;
    CatalogueReader oReader(aFaults);
    if (!oReader.Read(sBytes))
        return {};
    oCatalogue.m_oHeader = oReader.TakeHeader();
    oCatalogue.m_aMessages = oReader.TakeMessages();
    for (const CatalogueMessage& oMessage : oCatalogue.m_aMessages)
        if (const std::string sClash = oMessage.IsFinished() ? ClashOf(oMessage) : ""; !sClash.empty())
            aFaults.push_back({oMessage.lLine, "the translation \"" + oMessage.sTranslation + "\" of \"" +
                                                   oMessage.sText + "\" isn't used: " + sClash});
    oCatalogue.Index();
    for (std::size_t i = 0; i < oCatalogue.m_aMessages.size(); ++i) {
        const CatalogueMessage& oMessage = oCatalogue.m_aMessages[i];
        if (!oMessage.bVanished && oCatalogue.m_mapMessages.at(IndexKey(oMessage.sKey, oMessage.sText)) != i)
            aFaults.push_back({oMessage.lLine, "\"" + oMessage.sText + "\" of \"" + oMessage.sKey +
                                                   "\" is translated a second time; the first one counts"});
    }
    return oCatalogue;
}

void Catalogue::Index() {
    m_mapMessages.clear();
    for (std::size_t i = 0; i < m_aMessages.size(); ++i)
        if (!m_aMessages[i].bVanished)
            m_mapMessages.try_emplace(IndexKey(m_aMessages[i].sKey, m_aMessages[i].sText), i);
}

const std::string* Catalogue::Find(const std::string& sKey, const std::string& sText) const {
    const auto it = m_mapMessages.find(IndexKey(sKey, sText));
    if (it == m_mapMessages.end())
        return nullptr;
    const CatalogueMessage& oMessage = m_aMessages[it->second];
    return oMessage.IsFinished() && ClashOf(oMessage).empty() ? &oMessage.sTranslation : nullptr;
}

CatalogueUpdate Catalogue::Update(const std::vector<DefinitionText>& aTexts, std::string_view sLanguage) {
    if (m_oHeader.sTranslation.empty())
        m_oHeader.sTranslation = "Language: " + std::string(sLanguage) +
                                 "\nMIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n"
                                 "Content-Transfer-Encoding: 8bit\n";
    CatalogueUpdate oUpdate;
    std::vector<CatalogueMessage> aOld = std::move(m_aMessages);
    std::vector<bool> aTaken(aOld.size());
    std::map<std::string, std::size_t> mapExact;                             // of key and text
    std::map<std::string, std::vector<std::size_t>> mapByKey;                // what may have changed
    std::map<std::pair<std::string, std::string>, std::string> mapElsewhere; // by attribute and text
    for (const bool bVanished : {false, true})
        for (std::size_t i = 0; i < aOld.size(); ++i)
            if (aOld[i].bVanished == bVanished)
                mapExact.try_emplace(IndexKey(aOld[i].sKey, aOld[i].sText), i);
    for (std::size_t i = 0; i < aOld.size(); ++i) {
        if (aOld[i].IsFinished() && ClashOf(aOld[i]).empty())
            mapElsewhere.try_emplace({std::string(AttributeIn(aOld[i].sKey)), aOld[i].sText}, aOld[i].sTranslation);
        mapByKey[aOld[i].sKey].push_back(i);
    }
    m_aMessages.clear();
    for (const DefinitionText& oText : aTexts)
        if (const auto it = mapExact.find(IndexKey(oText.sKey, oText.sText)); it != mapExact.end())
            aTaken[it->second] = true;
    for (const DefinitionText& oText : aTexts) {
        CatalogueMessage oMessage;
        if (const auto it = mapExact.find(IndexKey(oText.sKey, oText.sText)); it != mapExact.end()) {
            oMessage = aOld[it->second];
            oMessage.bVanished = false;
        } else {
            oMessage.sKey = oText.sKey;
            oMessage.sText = oText.sText;
            const auto& aSameKey = mapByKey[oText.sKey];
            const auto itChanged = std::find_if(aSameKey.begin(), aSameKey.end(), [&](std::size_t i) {
                return !aTaken[i] && !aOld[i].bVanished && !aOld[i].sTranslation.empty();
            });
            const auto itElsewhere = mapElsewhere.find({std::string(AttributeIn(oText.sKey)), oText.sText});
            if (itElsewhere != mapElsewhere.end()) {
                oMessage.sTranslation = itElsewhere->second;
                ++oUpdate.nFilled;
                ++oUpdate.nNew;
            } else if (itChanged != aSameKey.end()) {
                const CatalogueMessage& oBefore = aOld[*itChanged];
                aTaken[*itChanged] = true;
                oMessage.sTranslation = oBefore.sTranslation;
                oMessage.aRemarks = oBefore.aRemarks;
                oMessage.sPrevious = oBefore.bUnsure && !oBefore.sPrevious.empty() ? oBefore.sPrevious : oBefore.sText;
                oMessage.bUnsure = oMessage.sPrevious != oText.sText;
                if (oMessage.bUnsure)
                    ++oUpdate.nChanged;
                else
                    oMessage.sPrevious.clear(); // it has changed back
            } else {
                ++oUpdate.nNew;
            }
        }
        oMessage.sPlace = oText.sFile + ":" + std::to_string(oText.lLine);
        oUpdate.nUnfinished += oMessage.IsFinished() ? 0 : 1;
        m_aMessages.push_back(std::move(oMessage));
    }
    for (std::size_t i = 0; i < aOld.size(); ++i)
        if (!aTaken[i] && !aOld[i].sTranslation.empty()) {
            aOld[i].bVanished = true;
            m_aMessages.push_back(std::move(aOld[i]));
            ++oUpdate.nVanished;
        }
    Index();
    return oUpdate;
}

std::string Catalogue::AsText() const {
    std::string sText = MessageText(m_oHeader);
    for (const CatalogueMessage& oMessage : m_aMessages)
        sText += "\n" + MessageText(oMessage);
    return sText;
}

} // namespace corvane
