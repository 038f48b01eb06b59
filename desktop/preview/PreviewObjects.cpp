#include "desktop/preview/PreviewObjects.h"

#include "corvane/base/Failure.h"
#include "corvane/services/PageDef.h"
#include "corvane/windows/PageBase.h"

#include <QCoreApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <filesystem>

namespace corvane::desktop {

QWidget* QtStandIn::NewWidget(QWidget* pParent) {
    auto* pWidget = new QWidget(pParent);
    auto* pLayout = new QVBoxLayout(pWidget);
    const Ref<PageDef> oPageDef = Page()->PageDef();
    const QString sCaption = oPageDef ? QString::fromStdString(std::string(oPageDef->Caption())) : QString();
    const QString sProgID = QString::fromStdString(m_sId.substr(0, m_sId.find('#')));
    const QString sText = QCoreApplication::translate("Preview", "This is a stub for the page of %1.").arg(sProgID);
    auto* pText = new QLabel(sCaption.isEmpty() ? sText : sCaption + "\n\n" + sText);
    pText->setTextFormat(Qt::PlainText);
    pText->setAlignment(Qt::AlignCenter);
    pText->setWordWrap(true);
    pText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    pLayout->addWidget(pText);
    return pWidget;
}

std::set<std::string> PreviewFactory::ClassesOf(const std::string& sLibrary) {
    std::set<std::string> setClasses;
    const std::string sPath = m_oPlugins->PathOf(sLibrary);
    std::error_code oError;
    if (!std::filesystem::exists(sPath, oError))
        return setClasses;
    if (m_pLoaded)
        m_pLoaded->Note(QString::fromStdString(sPath));
    try {
        for (const auto& oClass : m_oPlugins->Classes(sLibrary))
            setClasses.insert(FoldText(oClass.sProgID));
    } catch (const Failure& oFailure) {
        m_mapUnusable[sPath] = oFailure.Description;
    }
    return setClasses;
}

bool PreviewFactory::IsStandIn(const std::string& sProgID) {
    const std::size_t iPoint = sProgID.find('.');
    if (m_bAll || iPoint == std::string::npos || iPoint == 0)
        return true;
    const std::string sLibrary = sProgID.substr(0, iPoint);
    auto it = m_mapClasses.find(FoldText(sLibrary));
    if (it == m_mapClasses.end())
        it = m_mapClasses.emplace(FoldText(sLibrary), ClassesOf(sLibrary)).first;
    return !it->second.contains(FoldText(sProgID));
}

Ref<Object> PreviewFactory::Create(std::string_view sProgID) {
    if (IsStandIn(std::string(sProgID)))
        return StandInFactory::Create(sProgID);
    Ref<Object> oObject = m_oReal->Create(sProgID);
    Recorded()->Name(*oObject, Recorded()->NewId(sProgID));
    return oObject;
}

Ref<Object> PreviewFactory::Make(const inspect::StandInSpec& oSpec, const std::string& sId) {
    return New<QtStandIn>(Recorded(), oSpec, sId);
}

} // namespace corvane::desktop
