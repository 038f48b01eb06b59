// Reads the text of a PO file, line by line. Only sources of this folder include it.
#pragma once

#include "adapters/catalogue/Catalogue.h"

#include <utility>

namespace corvane {

class CatalogueReader {
public:
    explicit CatalogueReader(std::vector<CatalogueFault>& faults) : m_faults(faults) {}

    // False when it isn't a catalogue; the last fault says why.
    bool Read(std::string_view text);
    // Afterwards.
    [[nodiscard]] CatalogueMessage TakeHeader() { return std::move(m_header); }
    [[nodiscard]] std::vector<CatalogueMessage> TakeMessages() { return std::move(m_messages); }

private:
    struct Pending {
        CatalogueMessage message;
        bool hasText = false;
        bool hasTranslation = false;
    };

    bool ReadLine(std::string_view line);
    void ReadComment(std::string_view line);
    bool ReadStatement(std::string_view line);
    bool ReadString(std::string_view quoted, std::string& text);
    bool Finish();
    bool Broken(const std::string& why);

    CatalogueMessage m_header;
    std::vector<CatalogueMessage> m_messages;
    std::vector<CatalogueFault>& m_faults;
    Long m_line = 0;
    Pending m_pending;
    std::string* m_string = nullptr;   // that a line of nothing but a string continues
    std::string* m_previous = nullptr; // the same of lines that begin with "#|"
    std::string m_ignored;
};

} // namespace corvane
