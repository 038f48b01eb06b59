#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/Application.h"
#include "desktop/service/HostService.h"
#include "desktop/service/ScreenPrinter.h"
#include "desktop/service/UnsavedDialog.h"
#include "desktop/style/ContrastStyle.h"

#include <QApplication>
#include <QStyle>

namespace corvane::desktop {

namespace {

// The window's own definition holds the host's page; the services' pages join it when it first opens.
void OpenPreferences() {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto colPageDefs = oFramework->ServiceManager()->WindowDefs()->Item(WindowHost::ListedWindow)->PageDefs();
    for (const auto& oPageDef : oFramework->ServiceManager()->PreferencePageDefs())
        if (!colPageDefs->HasKey(oPageDef->Key()))
            colPageDefs->Add(oPageDef, oPageDef->Key());
    oFramework->WindowManager()->OpenWindow(WindowHost::ListedWindow, nullptr);
}

} // namespace

void Application::SetUpService() {
    m_oToolClick = m_oActiveBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) {
        const auto oActionItem = oTool->TagVariant().TryAs<ActionItem>();
        m_oRunningProvider = oActionItem ? oActionItem->ActionsProviderObj() : nullptr;
        if (oActionItem)
            m_pBlame->CommandBegins(*oActionItem);
    });
    // Before the main window's subscription, which closes what is open.
    m_oQueryUnload = m_frmMain->OnQueryUnload.Subscribe([this](bool& bRefused) {
        if (!bRefused)
            bRefused = !SettleUnsavedWork();
    });
    m_oProgress->SetSources({[this] { return StatusText(); }, [this] { return RunningService(); }});
}

PersonalDesktop::Parts Application::PartsOfPerson(const ApplicationOptions& oOptions) {
    return {*m_pWindow,
            m_frmMain,
            m_oActiveBar,
            m_frmPanel,
            m_oFailures,
            m_oPlatform.oUtilities,
            m_oPlatform.sFolder,
            m_oPlatform.oSettings->Folder(),
            [this] {
                const std::string sText = QCoreApplication::translate("Application", "Text").toStdString();
                return QString::fromStdString(m_oCommonDialog->ShowSave(
                    QCoreApplication::translate("Application", "Save Report").toStdString(), sText + " (*.txt)|*.txt",
                    QCoreApplication::translate("Application", "%1 report.txt")
                        .arg(QString::fromStdString(m_oPlatform.sName))
                        .toStdString()));
            },
            [this] {
                QStringList aNames;
                for (const std::string& sName : m_pBlame->Filter()->Services())
                    aNames.append(QString::fromStdString(sName));
                return aNames;
            },
            oOptions.bPersonal && !m_pBlame->WithoutServices().bAllPlugins,
            oOptions.sSessionFile};
}

Ref<HostObjectFactory> Application::MakeObjectFactory() {
    Ref<IObjectFactory> oObjects = m_pBlame->Factory(m_oPlatform.oPlugins);
    if (m_fnObjects)
        oObjects = m_fnObjects(oObjects, m_oPlatform.oPlugins);
    auto oFactory = New<HostObjectFactory>(oObjects);
    oFactory->Add("CorvaneDesktop.HostService", [this] {
        return New<HostService>(
            HostCommands{&OpenPreferences, [this] { m_pPersonal->ShowPalette(); },
                         [this] { m_pPersonal->ShowShortcuts(); }, [this] { m_pPersonal->ShowCustomize(); },
                         [this] { m_pPersonal->ShowInspector(); }, [this] { m_pPersonal->ShowLog(); }});
    });
    oFactory->Add("CorvaneDesktop.AppearancePage", [this] {
        return New<AppearancePage>([this](const Appearance& oAppearance) { ApplyAppearance(oAppearance); });
    });
    for (const auto& [sProgID, fnMake] : m_aClasses)
        oFactory->Add(sProgID, fnMake);
    return oFactory;
}

Ref<IScreenPrinter> Application::MakeScreenPrinter() {
    ScreenPrinter::Host oHost;
    oHost.fnMainWindow = [this] { return m_pWindow.get(); };
    oHost.fnWindowOf = [this](Long lHwnd) -> ScreenPrinter::Window {
        for (const auto& frm : m_frmMain->Forms())
            if (const auto oForm = frm.TryAs<WindowForm>(); oForm && frm->HWnd() == lHwnd)
                return {oForm->Body(), TitleOf(*frm)};
        return {};
    };
    oHost.fnFile = [this] {
        return QString::fromStdString(m_oCommonDialog->ShowSave(
            QCoreApplication::translate("Application", "Print").toStdString(), "PDF (*.pdf)|*.pdf", ""));
    };
    oHost.bWithDialogs = m_bWithDialogs;
    return New<ScreenPrinter>(std::move(oHost));
}

// The service in whose code the latest command is; an explorer item or a page is told by its kind.
QString Application::RunningService() const {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!m_oRunningProvider || !oManager)
        return {};
    for (const auto& oDef : *oManager->ServiceDefs())
        if (oManager->Services()->Item(oDef->Name()) == m_oRunningProvider)
            return QString::fromStdString(oDef->Name());
    return QString::fromUtf8(m_oRunningProvider->TypeName().data(),
                             static_cast<qsizetype>(m_oRunningProvider->TypeName().size()));
}

QString Application::StatusText() const {
    const auto oBand = m_oActiveBar->Bands()->Find("StatusBar");
    const auto oStatus = oBand ? oBand->Tools()->Find("Status") : nullptr;
    return oStatus ? QString::fromStdString(oStatus->Caption()) : QString();
}

bool Application::HasUnsavedWork() {
    for (const auto& frm : m_frmMain->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && oForm->HasChanges())
            return true;
    const Ref<Framework> oFramework = Singleton::Framework();
    return oFramework && oFramework->ServiceManager() &&
           !FindUnsavedWork(oFramework, {}, [this](const auto& fnAct) { ByHost(fnAct); }).empty();
}

// False when the application must stay open.
bool Application::SettleUnsavedWork() {
    const Ref<Framework> oFramework = Singleton::Framework();
    if (!oFramework || !oFramework->ServiceManager())
        return true;
    std::vector<UnsavedItem> aWindows;
    std::vector<Ref<WindowForm>> aForms;
    for (const auto& frm : m_frmMain->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && oForm->HasUnsavedChanges()) {
            aForms.push_back(oForm);
            aWindows.push_back(
                {TitleOf(*oForm).toStdString(), oForm->BusinessContext(), [oForm] {
                     oForm->Save();
                     if (oForm->HasUnsavedChanges())
                         Fail(FailureNumber::InvalidProcedureCall,
                              QCoreApplication::translate("Application", "The window has missing or invalid entries")
                                  .toStdString());
                 }});
        }
    const bool bExit = corvane::desktop::SettleUnsavedWork(
        oFramework, std::move(aWindows), [this](const auto& aGroups) { return AskAboutUnsavedWork(aGroups); },
        [this](const std::function<void()>& fnAct) { m_oFailures.Guard(fnAct); });
    if (bExit)
        for (const auto& oForm : aForms)
            oForm->SettleChanges(!oForm->HasUnsavedChanges());
    return bExit;
}

// A run that nobody watches is told "Save" or "Stay" beforehand; otherwise the work goes.
ExitAnswer Application::AskAboutUnsavedWork(const std::vector<UnsavedGroup>& aGroups) {
    if (const auto oAnswer = m_oCommonDialog->TakeAnswer()) {
        ExitAnswer oExit;
        oExit.eWhat = EqualText(*oAnswer, "Save")   ? ExitAnswer::What::Save
                      : EqualText(*oAnswer, "Stay") ? ExitAnswer::What::Cancel
                                                    : ExitAnswer::What::Discard;
        if (oExit.eWhat == ExitAnswer::What::Save)
            for (const auto& oGroup : aGroups)
                oExit.aItems.insert(oExit.aItems.end(), oGroup.aItems.begin(), oGroup.aItems.end());
        return oExit;
    }
    UnsavedDialog oDialog(aGroups, m_pWindow.get());
    oDialog.exec();
    return oDialog.Answer();
}

void Application::ApplyAppearance(const Appearance& oAppearance) {
    ApplyTheme(oAppearance.sTheme);
    ContrastStyle::Follow();
    const int nSize = oAppearance.nIconSize;
    const int nStyleSize = m_pWindow->style()->pixelMetric(QStyle::PM_ToolBarIconSize, nullptr, m_pWindow.get());
    m_pWindow->setIconSize(QSize(1, 1) * (nSize > 0 ? nSize : nStyleSize));
    m_pWindow->SetTabbedWindows(oAppearance.bTabbedWindows);
}

} // namespace corvane::desktop
