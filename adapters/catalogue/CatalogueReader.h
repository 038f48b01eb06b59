// Reads the text of a PO file, line by line. Only sources of this folder include it.
#pragma once

#include "adapters/catalogue/Catalogue.h"

#include <utility>

namespace corvane {

class CatalogueReader {
public:
    explicit CatalogueReader(std::vector<CatalogueFault>& aFaults) : m_aFaults(aFaults) {}

    // False when it is no catalogue; the last fault says why.
    bool Read(std::string_view sText);
    // Afterwards.
    [[nodiscard]] CatalogueMessage TakeHeader() { return std::move(m_oHeader); }
    [[nodiscard]] std::vector<CatalogueMessage> TakeMessages() { return std::move(m_aMessages); }

private:
    struct Pending {
        CatalogueMessage oMessage;
        bool bHasText = false;
        bool bHasTranslation = false;
    };

    bool ReadLine(std::string_view sLine);
    void ReadComment(std::string_view sLine);
    bool ReadStatement(std::string_view sLine);
    bool ReadString(std::string_view sQuoted, std::string& sText);
    bool Finish();
    bool Broken(const std::string& sWhy);

    CatalogueMessage m_oHeader;
    std::vector<CatalogueMessage> m_aMessages;
    std::vector<CatalogueFault>& m_aFaults;
    Long m_lLine = 0;
    Pending m_oPending;
    std::string* m_pString = nullptr;   // that a line of nothing but a string continues
    std::string* m_pPrevious = nullptr; // the same of lines that begin with "#|"
    std::string m_sIgnored;
};

} // namespace corvane
