// Opens the forms of an application's pages for this host: in the user's language, and so that what the user does to
// them can be followed.
#pragma once

#include "desktop/translation/DefinitionTranslation.h"
#include "desktop/windows/QtFormPage.h"
#include "desktop/windows/WindowHost.h"

#include <functional>
#include <string>

namespace corvane::desktop {

class CommonDialog;

// As WindowHost::openForm, whose host and what it refers to outlive it.
class FormOpener {
public:
    // isStub says of a ProgID whether its objects take any name; askFile is as FormHost has it.
    FormOpener(const WindowHost& host, const DefinitionTranslation& translation, std::string folder,
               std::function<bool(const std::string&)> isStub, decltype(FormHost::askFile) askFile)
        : m_host(&host), m_translation(&translation), m_folder(std::move(folder)), m_isStub(std::move(isStub)),
          m_askFile(std::move(askFile)) {}

    [[nodiscard]] Ref<QtFormPage> operator()(const Ref<PageDef>& pageDef) const;

private:
    const WindowHost* m_host;
    const DefinitionTranslation* m_translation;
    std::string m_folder;
    std::function<bool(const std::string&)> m_isStub;
    decltype(FormHost::askFile) m_askFile;
};

// Asks for the file or folder of a field in the host's dialogs, which begin in the folder of the last file that was
// chosen for the field's label; "" when the user cancels.
[[nodiscard]] std::string AskForPath(CommonDialog& dialog, const forms::FieldDef& field, const std::string& path);

} // namespace corvane::desktop
