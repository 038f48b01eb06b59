#include "desktop/application/PersonalDesktop.h"

#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/log/LogDialog.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/translation/ShownText.h"

#include <filesystem>

namespace corvane::desktop {

namespace {

QString DescriptionOf(const Tool& oTool) {
    QString sDescription = ShownDescription(oTool);
    for (const Tool* pInstance : oTool.Instances())
        if (sDescription.isEmpty())
            sDescription = ShownDescription(*pInstance);
    return sDescription;
}

std::string FolderOf(const std::string& sPath) {
    return std::filesystem::path(sPath).parent_path().string();
}

} // namespace

PersonalDesktop::PersonalDesktop(Parts oParts)
    : m_oParts(std::move(oParts)), m_sStateFolder(FolderOf(m_oParts.oUtilities->LogPath())),
      m_oBars(File(m_oParts.sConfigFolder, "desktop.json"), m_oParts.oActiveBar,
              [this] { m_oParts.oWindow.Bars().Redraw(); }),
      m_oSession(SessionFile(), SessionParts()),
      m_oPicker(
          m_oParts.oWindow.Bars().Actions(), [this](const Ref<Tool>& oTool) { ShowInspector(oTool); },
          [this](const Ref<Node>& oNode) { ShowInspector(nullptr, oNode); }, nullptr) {
    m_oParts.frmMain->AddMember("RecentFiles", New<RecentFiles>(File(m_sStateFolder, "recent.json")));
    m_oParts.oWindow.Bars().SetChanges(m_oBars);
}

PersonalDesktop::~PersonalDesktop() {
    delete m_pInspector; // it looks at what is kept here
}

void PersonalDesktop::Initialized() {
    m_oNotes.Follow();
}

StateFile PersonalDesktop::File(const std::string& sFolder, const char* sName) const {
    const bool bKeeps = m_oParts.bKeeps && !sFolder.empty();
    return FileAt(bKeeps ? QString::fromStdString(sFolder) + "/" + QLatin1String(sName) : QString());
}

StateFile PersonalDesktop::SessionFile() const {
    return m_oParts.sSessionFile.empty() ? File(m_sStateFolder, "session.json")
                                         : FileAt(QString::fromStdString(m_oParts.sSessionFile));
}

StateFile PersonalDesktop::FileAt(const QString& sPath) const {
    return {sPath, [oUtilities = m_oParts.oUtilities](const QString& sText) {
                oUtilities->LogError(oUtilities->AppName(), "Desktop", "StateFile",
                                     Failure(FailureNumber::FileAccess, sText.toStdString()), {}, false);
            }};
}

Session::Parts PersonalDesktop::SessionParts() const {
    return {&m_oParts.oWindow,
            m_oParts.frmMain,
            m_oParts.oActiveBar,
            m_oParts.frmPanel,
            [pFailures = &m_oParts.oFailures](const std::function<void()>& fnAct) { pFailures->Guard(fnAct); },
            [pWindow = &m_oParts.oWindow] {
                pWindow->Bars().RedrawToolbars();
                pWindow->Flush();
            },
            m_oParts.sSessionFile.empty()};
}

void PersonalDesktop::Restore(bool bWhole) {
    if (KeepsSession())
        m_oSession.Restore(bWhole && m_oParts.fnLeftOut().isEmpty());
}

void PersonalDesktop::RestoreWindows() {
    if (KeepsSession())
        m_oSession.RestoreWindows();
}

// Without bAll only what can be chosen where the person is: a context menu's command is for the item that is chosen.
PaletteDialog* PersonalDesktop::Pick(QWidget* pParent, bool bAll,
                                     const std::function<void(const Ref<Tool>&)>& fnChoose) {
    const CommandList oCommands(*m_oParts.oActiveBar);
    std::vector<PaletteEntry> aEntries;
    aEntries.reserve(oCommands.All().size());
    for (const CommandEntry& oCommand : oCommands.All())
        aEntries.push_back({oCommand.oTool, oCommand.sCaption, oCommand.sPath, m_oBars.KeysText(*oCommand.oTool),
                            oCommand.oOwner.Text(), bAll ? QString() : oCommand.WhyNot(),
                            DescriptionOf(*oCommand.oTool), oCommand.sOriginal});
    auto* pPalette = new PaletteDialog(
        std::move(aEntries), fnChoose, [this](const Ref<Tool>& oTool) { ShowInspector(oTool); }, pParent);
    pPalette->open();
    return pPalette;
}

PaletteDialog* PersonalDesktop::ShowPalette() {
    return Pick(&m_oParts.oWindow, false, [this](const Ref<Tool>& oTool) {
        m_oParts.oFailures.Guard([&] { m_oParts.oActiveBar->Click(oTool); });
    });
}

LogDialog* PersonalDesktop::ShowLog() {
    auto* pDialog = new LogDialog(QString::fromStdString(m_oParts.oUtilities->LogPath()),
                                  {QString::fromStdString(m_oParts.oUtilities->AppName()),
                                   QString::fromStdString(m_oParts.sAppFolder),
                                   m_oParts.fnLeftOut(),
                                   {}},
                                  m_oParts.fnAskReportPath, &m_oParts.oWindow);
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->show();
    return pDialog;
}

InspectorDialog* PersonalDesktop::ShowInspector(const Ref<Tool>& oTool, const Ref<Node>& oNode) {
    m_oParts.oFailures.Guard([&] {
        if (!m_pInspector) {
            m_pInspector =
                new InspectorDialog(m_oParts.oActiveBar, m_oParts.frmPanel, m_oBars, m_oNotes,
                                    QString::fromStdString(m_oParts.oUtilities->LogPath()), &m_oParts.oWindow);
            m_pInspector->setAttribute(Qt::WA_DeleteOnClose);
        }
        if (oTool)
            m_pInspector->Select(*oTool);
        if (oNode)
            m_pInspector->Select(*oNode);
        m_pInspector->show();
        m_pInspector->raise();
        m_pInspector->activateWindow();
    });
    return m_pInspector;
}

void PersonalDesktop::ShowShortcuts() {
    ShortcutsDialog oDialog(m_oBars, *m_oParts.oActiveBar, &m_oParts.oWindow);
    oDialog.exec();
}

void PersonalDesktop::ShowCustomize() {
    CustomizeDialog oDialog(
        m_oBars, m_oParts.oActiveBar,
        [this](QWidget* pParent, const std::function<void(const Ref<Tool>&)>& fnChoose) {
            Pick(pParent, true, fnChoose);
        },
        &m_oParts.oWindow);
    oDialog.exec();
}

} // namespace corvane::desktop
