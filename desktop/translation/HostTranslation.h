// The languages that the user wants, and the host's own texts in the first of them that there is a catalogue for.
#pragma once

#include <QStringList>
#include <QTranslator>
#include <memory>
#include <string>

namespace corvane::desktop {

// What the desktop says, the most wanted first: "de-AT", "de". Nothing from English on, in which everything is written.
[[nodiscard]] QStringList WantedLanguages();

// The same, unless the user has chosen a language among the preferences of the application with those settings.
[[nodiscard]] QStringList WantedLanguages(const std::string& settings);

// Where that choice is kept: the code of the language, as in "de"; nothing for that of the desktop.
struct LanguageSetting {
    static constexpr const char* service = "Corvane.Desktop";
    static constexpr const char* category = "Appearance";
    static constexpr const char* name = "Language";
};

// Those that the host is translated to, and English.
[[nodiscard]] QStringList HostLanguages();

// The names under which a catalogue for that language may be found, the nearest first: "de_AT" and "de" for "de-AT".
[[nodiscard]] QStringList CatalogueNames(const QString& language);

// For as long as it lives, the texts of the host and those of Qt's own dialogs are shown in the first of the languages
// that the host is translated to. For English nothing is loaded.
class HostTranslation {
public:
    explicit HostTranslation(const QStringList& languages);
    ~HostTranslation();
    HostTranslation(const HostTranslation&) = delete;
    HostTranslation& operator=(const HostTranslation&) = delete;

private:
    std::unique_ptr<QTranslator> m_host;
    std::unique_ptr<QTranslator> m_qt;
};

} // namespace corvane::desktop
