#include "desktop/service/AppearancePage.h"

#include "corvane/base/Variant.h"
#include "corvane/core/Preferences.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <utility>

namespace corvane::desktop {

namespace {

Ref<Preferences> Store() {
    auto oStore = New<Preferences>();
    oStore->Initialize("Corvane.Desktop", "Appearance");
    return oStore;
}

QPalette DarkPalette() {
    const QColor oBase(0x1e, 0x1f, 0x22);
    const QColor oWindow(0x2b, 0x2d, 0x30);
    const QColor oText(0xe6, 0xe6, 0xe6);
    const QColor oFaint(0x8a, 0x8d, 0x93);
    const QColor oHighlight(0x35, 0x74, 0xd6);
    QPalette oPalette(oWindow);
    for (const auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        oPalette.setColor(eRole, oText);
    oPalette.setColor(QPalette::Window, oWindow);
    oPalette.setColor(QPalette::Button, oWindow);
    oPalette.setColor(QPalette::ToolTipBase, oWindow.lighter(130));
    oPalette.setColor(QPalette::Base, oBase);
    oPalette.setColor(QPalette::AlternateBase, oBase.lighter(125));
    oPalette.setColor(QPalette::PlaceholderText, oFaint);
    oPalette.setColor(QPalette::BrightText, Qt::white);
    oPalette.setColor(QPalette::Highlight, oHighlight);
    oPalette.setColor(QPalette::HighlightedText, Qt::white);
    oPalette.setColor(QPalette::Link, QColor(0x6b, 0xa3, 0xf5));
    oPalette.setColor(QPalette::LinkVisited, QColor(0xb0, 0x8c, 0xe8));
    for (const auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        oPalette.setColor(QPalette::Disabled, eRole, oFaint);
    return oPalette;
}

QPalette LightPalette() {
    QPalette oPalette(QColor(0xef, 0xef, 0xef));
    oPalette.setColor(QPalette::Highlight, QColor(0x24, 0x6a, 0xb0)); // darker than the style's, so that white is read
    oPalette.setColor(QPalette::HighlightedText, Qt::white);
    oPalette.setColor(QPalette::PlaceholderText, QColor(0x66, 0x66, 0x66));
    return oPalette;
}

void Select(QComboBox& oBox, const QVariant& oValue) {
    oBox.setCurrentIndex(qMax(0, oBox.findData(oValue)));
}

} // namespace

QPalette ThemePalette(bool bDark) {
    return bDark ? DarkPalette() : LightPalette();
}

Appearance Appearance::Load() {
    const auto oStore = Store();
    Appearance oAppearance;
    oAppearance.sTheme = oStore->GetValue("Theme", oAppearance.sTheme);
    const auto sSize = QString::fromStdString(oStore->GetValue("IconSize", 0));
    oAppearance.nIconSize = qBound(0, sSize.toInt(), 128);
    oAppearance.bTabbedWindows = EqualText(oStore->GetValue("TabbedWindows", false), "True");
    return oAppearance;
}

void Appearance::Save() const {
    const auto oStore = Store();
    oStore->SetValue("Theme", sTheme);
    oStore->SetValue("IconSize", nIconSize);
    oStore->SetValue("TabbedWindows", bTabbedWindows);
}

void ApplyTheme(const std::string& sTheme) {
    static const QString sFirstStyle = QApplication::style()->objectName();
    static const QPalette oFirstPalette = QApplication::palette();
    static bool bIsFirst = true; // what the desktop says is followed as long as nothing has been set
    const bool bDark = EqualText(sTheme, "Dark");
    if (!bDark && !EqualText(sTheme, "Light")) {
        if (!std::exchange(bIsFirst, true)) {
            QApplication::setStyle(QStyleFactory::create(sFirstStyle));
            QApplication::setPalette(oFirstPalette);
        }
        return;
    }
    bIsFirst = false;
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(ThemePalette(bDark));
}

AppearancePage::AppearancePage(ApplyFunction fnApply) : m_fnApply(std::move(fnApply)), m_oSaved(Appearance::Load()) {
    m_oSave = m_oPageBase->SaveEvent.Subscribe([this] { Save(); });
}

QWidget* AppearancePage::NewWidget(QWidget* pParent) {
    auto* pWidget = new QWidget(pParent);
    auto* pForm = new QFormLayout(pWidget);
    m_pTheme = new QComboBox;
    m_pTheme->addItem(tr("Follow the system"), "System");
    m_pTheme->addItem(tr("Light"), "Light");
    m_pTheme->addItem(tr("Dark"), "Dark");
    m_pIconSize = new QComboBox;
    m_pIconSize->addItem(tr("Follow the system"), 0);
    for (const int nSize : {16, 22, 24, 32, 48})
        m_pIconSize->addItem(tr("%1 pixels").arg(nSize), nSize);
    m_pWindows = new QComboBox;
    m_pWindows->addItem(tr("Overlapping windows"), false);
    m_pWindows->addItem(tr("Tabs"), true);
    pForm->addRow(tr("&Theme:"), m_pTheme.data());
    pForm->addRow(tr("Toolbar &icon size:"), m_pIconSize.data());
    pForm->addRow(tr("&Windows:"), m_pWindows.data());
    Select(*m_pTheme, QString::fromStdString(m_oSaved.sTheme));
    Select(*m_pIconSize, m_oSaved.nIconSize);
    Select(*m_pWindows, m_oSaved.bTabbedWindows);
    for (QComboBox* pBox : {m_pTheme.data(), m_pIconSize.data(), m_pWindows.data()})
        QObject::connect(pBox, &QComboBox::currentIndexChanged, pWidget, [this] { m_oPageBase->ValidityChanged(); });
    return pWidget;
}

QWidget* AppearancePage::FirstFocus() {
    return m_pTheme;
}

bool AppearancePage::IsChanged() {
    return m_pTheme && Chosen() != m_oSaved;
}

Appearance AppearancePage::Chosen() const {
    Appearance oChosen;
    oChosen.sTheme = m_pTheme->currentData().toString().toStdString();
    oChosen.nIconSize = m_pIconSize->currentData().toInt();
    oChosen.bTabbedWindows = m_pWindows->currentData().toBool();
    return oChosen;
}

void AppearancePage::Save() {
    if (!m_pTheme)
        return;
    const Appearance oChosen = Chosen();
    oChosen.Save();
    m_oSaved = oChosen;
    m_fnApply(oChosen);
}

} // namespace corvane::desktop
