#include "headless/ModelHost.h"

#include "adapters/files/FileSystem.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/ini/IniReader.h"
#include "adapters/messages/WindowMessages.h"
#include "adapters/plugins/PluginFactory.h"
#include "adapters/xml/XmlService.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"

#include <filesystem>

namespace corvane::inspect {

namespace {

class NoPrinter final : public IScreenPrinter {
public:
    void PrintWindow(Long /*lMode*/, Long /*lHwnd*/) override {}
};

std::shared_ptr<const StandInFile> StandInsOf(const std::string& sApplicationFolder) {
    const std::string sFile = sApplicationFolder + "/standins.json";
    return std::make_shared<StandInFile>(std::filesystem::exists(sFile) ? ReadStandIns(sFile) : StandInFile());
}

} // namespace

Platform ModelHost::MakePlatform(const HostOptions& oOptions) {
    Platform oPlatform;
    oPlatform.oUtilities = New<RecordingUtilities>(m_oRecord, oOptions.sApplicationFolder);
    oPlatform.oXmlService = oOptions.oXml ? oOptions.oXml : Ref<IXmlService>(New<XmlService>());
    oPlatform.oFileSystem = New<FileSystem>();
    oPlatform.oPictureLoader = New<PictureLoader>();
    oPlatform.oSettingsStore = New<MemorySettings>();
    oPlatform.oScreen = New<FixedScreen>();
    oPlatform.oTimers = m_oTimers;
    oPlatform.oMessageBox = New<RecordingMessageBox>(m_oRecord);
    oPlatform.oWindowMessages = m_oMessages;
    oPlatform.oScreenPrinter = New<NoPrinter>();
    bool bReportsDeactivate = true;
    if (oOptions.bStandIns) {
        const auto pStandIns = StandInsOf(oOptions.sApplicationFolder);
        bReportsDeactivate = pStandIns->bFormReportsDeactivate;
        oPlatform.oIniReader = New<StandInIni>(pStandIns, New<IniReader>());
        oPlatform.oObjectFactory = New<StandInFactory>(m_oRecord, pStandIns);
    } else {
        oPlatform.oIniReader = New<IniReader>();
        oPlatform.oObjectFactory =
            New<NamingFactory>(m_oRecord, New<PluginFactory>(oOptions.sApplicationFolder + "/plugins"));
    }
    m_oFormFactory = NewStandInFormFactory(m_frmMain.Get(), bReportsDeactivate, [this](const Form& frm) {
        if (m_fnModalLoop)
            m_fnModalLoop(frm);
    });
    return oPlatform;
}

ModelHost::ModelHost(const HostOptions& oOptions) {
    m_oPopupRequested = m_oActiveBar->PopupRequested.Subscribe(
        [this](const Ref<Band>& oBand) { m_oRecord->aPopups.push_back(oBand->Name()); });
    m_oChildLoaded = m_frmMain->ChildLoaded.Subscribe([this](const Ref<Form>& oForm) { RegisterWindow(oForm); });
    m_oMainUnload = m_frmMain->OnUnload.Subscribe([this](bool&) { m_bExitBegun = true; });
    m_frmMain->AddMember("ActiveBar", m_oActiveBar);
    m_frmMain->AddMember("ctlCVProgress", New<ProgressModel>());
    m_pLibrary = std::make_unique<Library>(MakePlatform(oOptions));
    m_frmMain->Load();
}

void ModelHost::RegisterWindow(const Ref<Form>& oForm) {
    Form* pForm = oForm.Get(); // the handle answers to it only while the form is loaded
    m_oMessages->RegisterWindow(oForm->HWnd(), [pForm](Long, Long uMsg, Long, std::intptr_t) -> Long {
        if (uMsg == WindowMessage::Close)
            pForm->Unload();
        return 0;
    });
}

// Also after AppExit, which leaves the windows as they are: a window and its form hold each other.
ModelHost::~ModelHost() {
    Exit();
}

bool ModelHost::Start() {
    Do([this] {
        const Ref<Framework> oFramework = CorvaneMain::Framework();
        oFramework->Initialize(m_frmMain, m_frmPanel, m_oFormFactory);
        oFramework->Start();
    });
    return !m_oFirstFailure;
}

void ModelHost::Do(const std::function<void()>& fnAct) {
    try {
        fnAct();
    } catch (...) {
        if (!m_oFirstFailure)
            m_oFirstFailure = CurrentFailure();
    }
}

void ModelHost::Exit() {
    const std::vector<Ref<Form>> aForms = m_frmMain->Forms();
    for (auto it = aForms.rbegin(); it != aForms.rend(); ++it)
        Do([&] { (*it)->Unload(); });
    Do([this] { m_frmMain->Unload(); });
}

std::vector<Ref<TreeView>> ModelHost::Trees() const {
    std::vector<Ref<TreeView>> aTrees;
    for (const auto& oControl : m_frmPanel->Controls())
        if (const auto tvw = oControl.TryAs<TreeView>())
            aTrees.push_back(tvw);
    return aTrees;
}

Ref<TreeView> ModelHost::ActiveTree() const {
    for (const auto& tvw : Trees())
        if (tvw->Container() == Tabs()->Tab())
            return tvw;
    return nullptr;
}

Ref<ImageList> ModelHost::Images() const {
    for (const auto& oControl : m_frmPanel->Controls())
        if (const auto oImages = oControl.TryAs<ImageList>())
            return oImages;
    return nullptr;
}

} // namespace corvane::inspect
