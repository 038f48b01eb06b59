// A catalogue of translations, in the form of gettext's PO files: what it says for a text of a definition file, and how
// it follows the files when they change. It knows nothing of who shows the texts.
#pragma once

#include "adapters/catalogue/DefinitionTexts.h"
#include "corvane/base/Failure.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {

struct CatalogueMessage {
    std::string sKey;  // where the text stands, see DefinitionText; msgctxt in the file
    std::string sText; // the text itself; msgid
    std::string sTranslation;
    std::vector<std::string> aRemarks; // the translator's own
    std::string sPlace;                // "Data.xml:12"
    std::string sPrevious;             // what was translated, when the text has changed since
    bool bUnsure = false;              // to be looked at by a translator, and not shown before; "fuzzy" in the file
    bool bVanished = false;            // no definition has the text any more
    Long lLine = 0;                    // in the catalogue

    // Whether the translation may be shown.
    [[nodiscard]] bool IsFinished() const { return !sTranslation.empty() && !bUnsure && !bVanished; }
};

struct CatalogueFault {
    Long lLine = 0;
    std::string sText;
};

// What an update has done, in messages.
struct CatalogueUpdate {
    int nNew = 0; // of them those that took over the translation of an equal text: nFilled
    int nFilled = 0;
    int nChanged = 0;  // the old translation is kept, and marked
    int nVanished = 0; // in all
    int nUnfinished = 0;
};

class Catalogue {
public:
    // A file that can't be read as a catalogue of UTF-8 gives an empty one and a fault; so does a single translation
    // that clashes with its text, but the others hold.
    [[nodiscard]] static Catalogue Read(std::string_view sBytes, std::vector<CatalogueFault>& aFaults);

    // The finished translation of that text in that place; a null pointer for none.
    [[nodiscard]] const std::string* Find(const std::string& sKey, const std::string& sText) const;

    // Takes over the texts as they are now, and keeps every translation.
    CatalogueUpdate Update(const std::vector<DefinitionText>& aTexts, std::string_view sLanguage);
    [[nodiscard]] std::string AsText() const;

    [[nodiscard]] const std::vector<CatalogueMessage>& Messages() const { return m_aMessages; }

private:
    void Index();

    CatalogueMessage m_oHeader; // its translation holds lines like "Language: de"
    std::vector<CatalogueMessage> m_aMessages;
    std::unordered_map<std::string, std::size_t> m_mapMessages; // by key and text
};

// Whether the text under that key is one of a menu, in which "#" stands before the letter of the mnemonic.
[[nodiscard]] bool HasMnemonic(std::string_view sKey);

// Why a translation can't stand for the text: other placeholders, a line break or two mnemonics; empty when it can.
[[nodiscard]] std::string ClashOf(const CatalogueMessage& oMessage);

} // namespace corvane
