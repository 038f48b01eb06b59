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
    std::string key;  // where the text is, see DefinitionText; msgctxt in the file
    std::string text; // the text itself; msgid
    std::string translation;
    std::vector<std::string> remarks; // the translator's own
    std::string place;                // "Data.xml:12"
    std::string previous;             // what was translated, when the text has changed since
    bool unsure = false;              // to be looked at by a translator, and not shown before; "fuzzy" in the file
    bool vanished = false;            // no definition has the text any more
    Long line = 0;                    // in the catalogue

    // Whether the translation may be shown.
    [[nodiscard]] bool IsFinished() const { return !translation.empty() && !unsure && !vanished; }
};

struct CatalogueFault {
    Long line = 0;
    std::string text;
};

// What an update has done, in messages.
struct CatalogueUpdate {
    int newCount = 0; // of them those that took over the translation of an equal text: filled
    int filled = 0;
    int changed = 0;  // the old translation is kept, and marked
    int vanished = 0; // in all
    int unfinished = 0;
};

class Catalogue {
public:
    // A file that can't be read as a catalogue of UTF-8 gives an empty one and a fault; so does a single translation
    // that clashes with its text, but the others hold.
    [[nodiscard]] static Catalogue Read(std::string_view bytes, std::vector<CatalogueFault>& faults);

    // The finished translation of that text in that place; a null pointer for none.
    [[nodiscard]] const std::string* Find(const std::string& key, const std::string& text) const;

    // Takes over the texts as they are now, and keeps every translation.
    CatalogueUpdate Update(const std::vector<DefinitionText>& texts, std::string_view language);
    [[nodiscard]] std::string AsText() const;

    [[nodiscard]] const std::vector<CatalogueMessage>& Messages() const { return m_messages; }

private:
    void Index();

    CatalogueMessage m_header; // its translation holds lines like "Language: de"
    std::vector<CatalogueMessage> m_messages;
    std::unordered_map<std::string, std::size_t> m_messageMap; // by key and text
};

// Whether the text under that key is one of a menu, in which "#" is before the letter of the mnemonic.
[[nodiscard]] bool HasMnemonic(std::string_view key);

// Why a translation can't represent the text: other placeholders, a line break or two mnemonics; empty when it can.
[[nodiscard]] std::string ClashOf(const CatalogueMessage& message);

} // namespace corvane
