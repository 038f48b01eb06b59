#include "desktop/service/AppearancePage.h"

#include "corvane/base/Variant.h"
#include "corvane/core/Preferences.h"
#include "corvane/platform/Platform.h"
#include "desktop/translation/HostTranslation.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <utility>

namespace corvane::desktop {

namespace {

Ref<Preferences> Store() {
    auto store = New<Preferences>();
    store->Initialize(LanguageSetting::service, LanguageSetting::category);
    return store;
}

QPalette DarkPalette() {
    const QColor base(0x1e, 0x1f, 0x22);
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor text(0xe6, 0xe6, 0xe6);
    const QColor faint(0x8a, 0x8d, 0x93);
    const QColor highlight(0x35, 0x74, 0xd6);
    QPalette palette(window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ToolTipBase, window.lighter(130));
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, base.lighter(125));
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6b, 0xa3, 0xf5));
    palette.setColor(QPalette::LinkVisited, QColor(0xb0, 0x8c, 0xe8));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

QPalette LightPalette() {
    QPalette palette(QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Highlight, QColor(0x24, 0x6a, 0xb0)); // darker than the style's, so that white is read
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x66, 0x66, 0x66));
    return palette;
}

// Each by its own name, the desktop's first. The application may be translated to others than the host.
QComboBox* NewLanguageBox() {
    auto* box = new QComboBox;
    box->addItem(AppearancePage::tr("Follow the system"), "");
    QStringList languages = HostLanguages();
    const QDir folder(QString::fromStdString(CurrentPlatform().oUtilities->GetAppFolder("Services")) + "/translations");
    for (const QString& file : folder.entryList({"*.po"}, QDir::Files, QDir::Name))
        if (const QString language = file.chopped(3); !languages.contains(language))
            languages.append(language);
    for (const QString& language : languages) {
        const QLocale locale(language);
        QString name = language == "en" ? "English" : locale.nativeLanguageName();
        if (locale.language() == QLocale::C)
            name = language;
        box->addItem(name.left(1).toUpper() + name.mid(1), language);
    }
    return box;
}

void Select(QComboBox& box, const QVariant& value) {
    box.setCurrentIndex(qMax(0, box.findData(value)));
}

} // namespace

QPalette ThemePalette(bool dark) {
    return dark ? DarkPalette() : LightPalette();
}

Appearance Appearance::Load() {
    const auto store = Store();
    Appearance appearance;
    appearance.theme = store->GetValue("Theme", appearance.theme);
    const auto size = QString::fromStdString(store->GetValue("IconSize", 0));
    appearance.iconSize = qBound(0, size.toInt(), 128);
    appearance.tabbedWindows = EqualText(store->GetValue("TabbedWindows", true), "True");
    appearance.startPage = EqualText(store->GetValue("StartPage", true), "True");
    appearance.language = store->GetValue(LanguageSetting::name, appearance.language);
    return appearance;
}

void Appearance::Save() const {
    const auto store = Store();
    store->SetValue("Theme", theme);
    store->SetValue("IconSize", iconSize);
    store->SetValue("TabbedWindows", tabbedWindows);
    store->SetValue("StartPage", startPage);
    store->SetValue(LanguageSetting::name, language);
}

void ApplyTheme(const std::string& theme) {
    static const QString firstStyle = QApplication::style()->objectName();
    static const QPalette firstPalette = QApplication::palette();
    static bool isFirst = true; // what the desktop says is followed as long as nothing has been set
    const bool dark = EqualText(theme, "Dark");
    if (!dark && !EqualText(theme, "Light")) {
        if (!std::exchange(isFirst, true)) {
            QApplication::setStyle(QStyleFactory::create(firstStyle));
            QApplication::setPalette(firstPalette);
        }
        return;
    }
    isFirst = false;
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(ThemePalette(dark));
}

AppearancePage::AppearancePage(ApplyFunction apply) : m_apply(std::move(apply)), m_saved(Appearance::Load()) {
    m_save = m_pageBase->SaveEvent.Subscribe([this] { Save(); });
}

QWidget* AppearancePage::NewWidget(QWidget* parent) {
    auto* widget = new QWidget(parent);
    auto* form = new QFormLayout(widget);
    m_theme = new QComboBox;
    m_theme->addItem(tr("Follow the system"), "System");
    m_theme->addItem(tr("Light"), "Light");
    m_theme->addItem(tr("Dark"), "Dark");
    m_iconSize = new QComboBox;
    m_iconSize->addItem(tr("Follow the system"), 0);
    for (const int size : {16, 22, 24, 32, 48})
        m_iconSize->addItem(tr("%1 pixels").arg(size), size);
    m_windows = new QComboBox;
    m_windows->addItem(tr("In tabs"), true);
    m_windows->addItem(tr("Free"), false);
    m_startPage = new QComboBox;
    m_startPage->addItem(tr("Show the start page"), true);
    m_startPage->addItem(tr("Show nothing"), false);
    m_language = NewLanguageBox();
    auto* later = new QLabel(tr("Another language is shown from the next start on."));
    later->setWordWrap(true);
    form->addRow(tr("&Theme:"), m_theme.data());
    form->addRow(tr("Toolbar &icon size:"), m_iconSize.data());
    form->addRow(tr("&Windows:"), m_windows.data());
    form->addRow(tr("While &no window is open:"), m_startPage.data());
    form->addRow(tr("&Language:"), m_language.data());
    form->addRow({}, later);
    Select(*m_language, QString::fromStdString(m_saved.language));
    Select(*m_theme, QString::fromStdString(m_saved.theme));
    Select(*m_iconSize, m_saved.iconSize);
    Select(*m_windows, m_saved.tabbedWindows);
    Select(*m_startPage, m_saved.startPage);
    for (QComboBox* box : {m_theme.data(), m_iconSize.data(), m_windows.data(), m_startPage.data(), m_language.data()})
        QObject::connect(box, &QComboBox::currentIndexChanged, widget, [this] { m_pageBase->ValidityChanged(); });
    return widget;
}

QWidget* AppearancePage::FirstFocus() {
    return m_theme;
}

bool AppearancePage::IsChanged() {
    return m_theme && Chosen() != m_saved;
}

Appearance AppearancePage::Chosen() const {
    Appearance chosen;
    chosen.theme = m_theme->currentData().toString().toStdString();
    chosen.iconSize = m_iconSize->currentData().toInt();
    chosen.tabbedWindows = m_windows->currentData().toBool();
    chosen.startPage = m_startPage->currentData().toBool();
    chosen.language = m_language->currentData().toString().toStdString();
    return chosen;
}

void AppearancePage::Save() {
    if (!m_theme)
        return;
    const Appearance chosen = Chosen();
    chosen.Save();
    m_saved = chosen;
    m_apply(chosen);
}

} // namespace corvane::desktop
