#include "desktop/translation/HostTranslation.h"

#include "adapters/files/SettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <string_view>

namespace corvane::desktop {

namespace {

// Qt's standard buttons, for a machine on which Qt's own catalogues aren't installed.
[[maybe_unused]] constexpr const char* standardButtons[] = {QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Save"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Open"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "&No"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Discard"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Help"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Apply"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Reset"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Retry"),
                                                            QT_TRANSLATE_NOOP("QPlatformTheme", "Restore Defaults")};

// Catalogues know classes by their names alone; at run time they come with their namespaces.
class HostTranslator final : public QTranslator {
public:
    QString translate(const char* context, const char* text, const char* remark, int n) const override {
        const auto colons = std::string_view(context).rfind("::");
        return QTranslator::translate(colons == std::string_view::npos ? context : context + colons + 2, text, remark,
                                      n);
    }
};

QStringList UntilEnglish(const QStringList& wanted) {
    QStringList languages;
    for (const QString& language : wanted) {
        if (language == "en" || language.startsWith("en-"))
            break;
        if (language != "C") // what Qt makes of a language that it doesn't know
            languages.append(language);
    }
    return languages;
}

} // namespace

QStringList WantedLanguages() {
    return UntilEnglish(QLocale::system().uiLanguages());
}

QStringList WantedLanguages(const std::string& settings) {
    std::string chosen;
    try {
        chosen = SettingsStore(settings).Read(LanguageSetting::service, LanguageSetting::category,
                                              LanguageSetting::name, {});
    } catch (...) { // it is reported where the other preferences are read
    }
    return chosen.empty() ? WantedLanguages() : UntilEnglish({QString::fromStdString(chosen)});
}

QStringList HostLanguages() {
    QStringList languages{"en"};
    for (const QString& file : QDir(":/corvane/translations").entryList({"corvane_*.qm"}, QDir::Files, QDir::Name))
        languages.append(file.section('_', 1).section('.', 0, 0));
    return languages;
}

QStringList CatalogueNames(const QString& language) {
    QStringList names;
    QStringList parts = QString(language).replace('-', '_').split('_', Qt::SkipEmptyParts);
    for (; !parts.isEmpty(); parts.removeLast())
        names.append(parts.join('_'));
    return names;
}

HostTranslation::HostTranslation(const QStringList& languages) {
    auto host = std::make_unique<HostTranslator>();
    for (const QString& language : languages)
        for (const QString& name : CatalogueNames(language)) {
            if (!host->load(":/corvane/translations/corvane_" + name + ".qm"))
                continue;
            m_host = std::move(host);
            QCoreApplication::installTranslator(m_host.get());
            auto qt = std::make_unique<QTranslator>();
            if (qt->load("qtbase_" + name, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
                m_qt = std::move(qt);
                QCoreApplication::installTranslator(m_qt.get());
            }
            return;
        }
}

HostTranslation::~HostTranslation() = default; // a translator uninstalls itself

} // namespace corvane::desktop
