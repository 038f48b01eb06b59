#include "desktop/blame/Blame.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/blame/PluginCode.h"

#include <QMessageBox>
#include <QPushButton>
#include <cstdio>
#include <filesystem>
#include <unordered_set>

namespace corvane::desktop {

namespace {

std::string PluginOf(std::string_view sProgID) {
    return std::string(sProgID.substr(0, sProgID.find('.')));
}

// Marks which object is being made, and knows each plug-in's code before any of it runs but the loading.
class MarkingFactory final : public IObjectFactory {
public:
    MarkingFactory(Ref<PluginFactory> oPlugins, CrashMarker& oMarker, EnteredCode& oEntered)
        : m_oPlugins(std::move(oPlugins)), m_oMarker(oMarker), m_oEntered(oEntered),
          m_sFolder(std::filesystem::path(m_oPlugins->PathOf("Any")).parent_path().string()) {}

    Ref<Object> Create(std::string_view sProgID) override {
        const Marked oMarked(*this, std::string(sProgID));
        if (m_setKnown.insert(PluginOf(sProgID)).second) {
            try {
                (void)m_oPlugins->Classes(PluginOf(sProgID));
            } catch (const Failure&) {
                // The creation meets the same failure.
            }
            PluginCode::NoteLibraries(m_sFolder);
        }
        Ref<Object> oMade = m_oPlugins->Create(sProgID);
        if (oMade)
            m_oEntered.Note(*oMade, sProgID);
        return oMade;
    }

private:
    // One may be made while another is.
    class Marked {
    public:
        Marked(MarkingFactory& oFactory, std::string sProgID)
            : m_oFactory(oFactory), m_sBefore(std::exchange(oFactory.m_sCreating, std::move(sProgID))) {
            m_oFactory.m_oMarker.SetCreating(m_oFactory.m_sCreating);
            m_oFactory.m_oEntered.Enter(m_oFactory.m_sCreating);
        }
        ~Marked() {
            m_oFactory.m_sCreating = m_sBefore;
            m_oFactory.m_oMarker.SetCreating(m_sBefore);
            m_oFactory.m_oEntered.Leave();
        }
        Marked(const Marked&) = delete;
        Marked& operator=(const Marked&) = delete;

    private:
        MarkingFactory& m_oFactory;
        std::string m_sBefore;
    };

    Ref<PluginFactory> m_oPlugins;
    CrashMarker& m_oMarker;
    EnteredCode& m_oEntered;
    std::string m_sFolder;
    std::string m_sCreating;
    std::unordered_set<std::string, TextHash, TextEqual> m_setKnown;
};

// The service to which an action belongs: its own, or that of an explorer item of its.
Ref<ServiceDef> ServiceOf(const ActionItemDef& oActionItemDef) {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    const auto fnHas = [&](const Ref<ActionItemDefCollection>& colDefs) {
        return colDefs->HasKey(oActionItemDef.Name()) && colDefs->Item(oActionItemDef.Name()).Get() == &oActionItemDef;
    };
    if (oManager)
        for (const auto& oServiceDef : oManager->ServiceDefs()) {
            if (fnHas(oServiceDef->ActionItemDefs()))
                return oServiceDef;
            for (const auto& oItemDef : oServiceDef->ExplorerItemDefs())
                if (fnHas(oItemDef->ActionItemDefs()))
                    return oServiceDef;
        }
    return nullptr;
}

std::string DeathOf(const CrashRecord& oRecord) {
    if (oRecord.bHung)
        return "didn't answer any more and was ended";
    return oRecord.nSignal == 0 ? std::string("was ended") : "died of signal " + std::to_string(oRecord.nSignal);
}

} // namespace

Blame::Blame(Ref<Utilities> oUtilities, std::string sStateFolder, LeftOut oLeftOut, const AskFunction& fnAsk)
    : m_oUtilities(std::move(oUtilities)), m_sServicesFolder(m_oUtilities->GetAppFolder("Services")),
      m_oLeftOut(std::move(oLeftOut)), m_oMarker(sStateFolder) {
    TellOfDead(fnAsk);
    Entering::SetWatcher(this);
}

Blame::~Blame() {
    Entering::SetWatcher(nullptr);
}

void Blame::Entered(const Object& oObject) noexcept {
    m_oEntered.Enter(oObject);
}

void Blame::Left() noexcept {
    m_oEntered.Leave();
}

void Blame::Log(const std::string& sText) const {
    m_oUtilities->LogError(m_oUtilities->AppName(), "Desktop", "Blame", Failure(FailureNumber::ObjectErrorBase, sText),
                           {}, false);
}

void Blame::TellOfDead(const AskFunction& fnAsk) {
    for (const CrashRecord& oRecord : m_oMarker.Found()) {
        const std::string sWho = Who(oRecord);
        Log("The program " + DeathOf(oRecord) + " in the code of " + sWho);
        const auto& aNames = m_oLeftOut.aNames;
        if (!fnAsk || m_oLeftOut.bAllPlugins || std::find(aNames.begin(), aNames.end(), sWho) != aNames.end())
            continue;
        const Answer eAnswer = fnAsk(oRecord, sWho);
        if (eAnswer == Answer::LeaveOut)
            m_oLeftOut.aNames.push_back(sWho);
        m_oLeftOut.bAllPlugins = eAnswer == Answer::Safe;
    }
}

Blame::Answer Blame::AskInBox(const CrashRecord& oRecord, const std::string& sWhoDied) {
    const QString sWho = QString::fromStdString(sWhoDied);
    QMessageBox oBox(QMessageBox::Warning, tr("Crash Recovery"),
                     oRecord.bHung ? tr("The application stopped responding while “%1” was running.").arg(sWho)
                                   : tr("The application quit unexpectedly while “%1” was running.").arg(sWho));
    oBox.setTextFormat(Qt::PlainText);
    oBox.setInformativeText(tr("You can start without “%1” this time; its commands and windows are unavailable then. "
                               "Safe mode starts without all plug-ins and without your customizations.")
                                .arg(sWho));
    auto* pLeaveOut = oBox.addButton(tr("Start &Without It"), QMessageBox::AcceptRole);
    auto* pAll = oBox.addButton(tr("&Start Normally"), QMessageBox::RejectRole);
    auto* pSafe = oBox.addButton(tr("Start in Safe &Mode"), QMessageBox::DestructiveRole);
    oBox.setDefaultButton(pLeaveOut);
    oBox.setEscapeButton(pAll);
    oBox.exec();
    return oBox.clickedButton() == pLeaveOut ? Answer::LeaveOut
           : oBox.clickedButton() == pSafe   ? Answer::Safe
                                             : Answer::StartAll;
}

Ref<IFileSystem> Blame::Files(Ref<IFileSystem> oFiles, const std::string& sServicesFolder) {
    m_oFilter = New<LeftOutServices>(std::move(oFiles), sServicesFolder, m_oLeftOut);
    return m_oFilter;
}

Ref<IObjectFactory> Blame::Factory(Ref<PluginFactory> oPlugins) {
    return New<MarkingFactory>(std::move(oPlugins), m_oMarker, m_oEntered);
}

void Blame::CommandBegins(const ActionItem& oActionItem) {
    const auto oDef = oActionItem.ActionItemDef();
    const auto oService = oDef ? ServiceOf(*oDef) : nullptr;
    if (!oService)
        return;
    m_oMarker.SetService(oService->Name(), PluginOf(oService->ProgID()));
    QMetaObject::invokeMethod(
        &m_oTurn, [this] { m_oMarker.SetService({}, {}); }, Qt::QueuedConnection);
}

void Blame::StartWatch(UiWatch::Milliseconds oLimit) {
    m_pWatch = std::make_unique<UiWatch>(oLimit, [this](const char* sPlugin, UiWatch::Milliseconds oFor, bool bOver) {
        TellOfBusy(sPlugin, oFor, bOver);
    });
}

// In the watching thread.
void Blame::TellOfBusy(const char* sPlugin, UiWatch::Milliseconds oFor, bool bOver) {
    if (!bOver) // when it is over, whose code it was has been left
        m_sBusy = Who(m_oMarker.Current(sPlugin));
    const std::string sWho = m_sBusy;
    m_oMarker.SetHung(bOver ? nullptr : sPlugin);
    char aSeconds[32];
    std::snprintf(aSeconds, sizeof aSeconds, "%.1f s", static_cast<double>(oFor.count()) / 1000);
    Log((sWho.empty() ? std::string("The program itself") : sWho) +
        (bOver ? " kept the user interface busy for " : " has kept the user interface busy for ") + aSeconds);
}

} // namespace corvane::desktop
