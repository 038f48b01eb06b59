// The texts of definition files in the user's language, by the catalogues beside them and the host's own. What the
// library has read isn't touched: the texts are translated where they are drawn, see ShownText.h.
#pragma once

#include "adapters/catalogue/Catalogue.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/services/ServiceManager.h"

#include <QStringList>
#include <QTranslator>
#include <functional>
#include <memory>
#include <string>

namespace corvane::desktop {

class DefinitionTranslation {
public:
    using NoteFunction = std::function<void(const std::string& text)>;

    // The catalogues are Services/translations/LANGUAGE.po. note gets what is wrong with one, for the log.
    DefinitionTranslation(QStringList languages, std::string servicesFolder, NoteFunction note);
    ~DefinitionTranslation();
    DefinitionTranslation(const DefinitionTranslation&) = delete;
    DefinitionTranslation& operator=(const DefinitionTranslation&) = delete;

    // When definitions are read and menus are built. False when there is nothing to translate, as for English.
    bool Begin(const ServiceManager& manager);
    // The translation of a text of a form, by its key there; a null pointer without one.
    [[nodiscard]] const std::string* OfForm(const std::string& key, const std::string& text) const;

private:
    class Translator;

    QStringList m_languages;
    std::string m_servicesFolder;
    NoteFunction m_note;
    std::unique_ptr<Translator> m_translator;
};

} // namespace corvane::desktop
