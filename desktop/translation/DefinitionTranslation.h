// The texts of definition files in the person's language, by the catalogues beside them and the host's own. What the
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
    using NoteFunction = std::function<void(const std::string& sText)>;

    // The catalogues are Services/translations/LANGUAGE.po. fnNote is told what is wrong with one, for the log.
    DefinitionTranslation(QStringList aLanguages, std::string sServicesFolder, NoteFunction fnNote);
    ~DefinitionTranslation();
    DefinitionTranslation(const DefinitionTranslation&) = delete;
    DefinitionTranslation& operator=(const DefinitionTranslation&) = delete;

    // When definitions are read and menus are built. False when there is nothing to translate, as for English.
    bool Begin(const ServiceManager& oManager);

private:
    class Translator;

    QStringList m_aLanguages;
    std::string m_sServicesFolder;
    NoteFunction m_fnNote;
    std::unique_ptr<Translator> m_pTranslator;
};

} // namespace corvane::desktop
