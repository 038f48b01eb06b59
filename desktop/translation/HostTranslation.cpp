#include "desktop/translation/HostTranslation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <string_view>

namespace corvane::desktop {

namespace {

// Qt's standard buttons, for a machine on which Qt's own catalogues aren't installed.
[[maybe_unused]] constexpr const char* aStandardButtons[] = {QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),
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
    QString translate(const char* sContext, const char* sText, const char* sRemark, int n) const override {
        const auto iColons = std::string_view(sContext).rfind("::");
        return QTranslator::translate(iColons == std::string_view::npos ? sContext : sContext + iColons + 2, sText,
                                      sRemark, n);
    }
};

} // namespace

QStringList WantedLanguages() {
    QStringList aLanguages;
    for (const QString& sLanguage : QLocale::system().uiLanguages()) {
        if (sLanguage == "en" || sLanguage.startsWith("en-"))
            break;
        if (sLanguage != "C") // what Qt makes of a language that it doesn't know
            aLanguages.append(sLanguage);
    }
    return aLanguages;
}

QStringList CatalogueNames(const QString& sLanguage) {
    QStringList aNames;
    QStringList aParts = QString(sLanguage).replace('-', '_').split('_', Qt::SkipEmptyParts);
    for (; !aParts.isEmpty(); aParts.removeLast())
        aNames.append(aParts.join('_'));
    return aNames;
}

HostTranslation::HostTranslation(const QStringList& aLanguages) {
    auto pHost = std::make_unique<HostTranslator>();
    for (const QString& sLanguage : aLanguages)
        for (const QString& sName : CatalogueNames(sLanguage)) {
            if (!pHost->load(":/corvane/translations/corvane_" + sName + ".qm"))
                continue;
            m_sLanguage = sName;
            m_pHost = std::move(pHost);
            QCoreApplication::installTranslator(m_pHost.get());
            auto pQt = std::make_unique<QTranslator>();
            if (pQt->load("qtbase_" + sName, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
                m_pQt = std::move(pQt);
                QCoreApplication::installTranslator(m_pQt.get());
            }
            return;
        }
}

HostTranslation::~HostTranslation() = default; // a translator uninstalls itself

} // namespace corvane::desktop
