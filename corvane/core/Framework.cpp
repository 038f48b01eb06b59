#include "corvane/core/Framework.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/CVProgressBar.h"
#include "corvane/windows/IWindowFormFactory.h"
#include "corvane/windows/WindowManager.h"

namespace corvane {

Framework::Framework()
    : m_oServiceManager(New<corvane::ServiceManager>()), m_oWindowManager(New<corvane::WindowManager>()),
      m_oNavigationManager(New<corvane::NavigationManager>()), m_oCVProgressBar(New<corvane::CVProgressBar>()),
      m_colImages(New<KeyedCollection<Ref<Picture>>>()), m_oServiceBase(New<ServiceBase>()) {}

Framework::~Framework() = default;

Ref<corvane::ServiceManager> Framework::ServiceManager() const {
    return m_oServiceManager;
}

Ref<corvane::WindowManager> Framework::WindowManager() const {
    return m_oWindowManager;
}

Ref<corvane::NavigationManager> Framework::NavigationManager() const {
    return m_oNavigationManager;
}

Ref<corvane::CVProgressBar> Framework::CVProgressBar() const {
    return m_oCVProgressBar;
}

Ref<IService> Framework::Service() {
    return m_oServiceBase;
}

Ref<ActiveBar> Framework::MainActiveBar() const {
    return ToObject(m_frmMain->Invoke("ActiveBar", {})).As<ActiveBar>();
}

void Framework::Initialize(const Ref<MdiForm>& frmMain, const Ref<PanelForm>& frmExplorerPanel,
                           const Ref<IWindowFormFactory>& oWindowFormFactory) try {
    const Ref<Framework> oSelf(this); // a plug-in may end the application
    const Ref<corvane::ServiceManager> oServiceManager = m_oServiceManager;
    const Ref<corvane::NavigationManager> oNavigationManager = m_oNavigationManager;
    m_frmMain = frmMain;
    m_oMainUnload = m_frmMain->OnUnload.Subscribe([this](bool&) { m_frmMain_Unload(); });
    const Ref<ActiveBar> oActiveBar = MainActiveBar();
    m_oStatusTool = oActiveBar->Bands()->Item("StatusBar")->Tools()->Item("Status");
    oServiceManager->Initialize();
    if (!m_frmMain)
        return;
    m_oWindowManager->Initialize(frmMain, oWindowFormFactory);
    oNavigationManager->Initialize(frmMain, frmExplorerPanel);
    if (!m_frmMain)
        return;
    m_oCVProgressBar->Initialize(oActiveBar, frmMain);
} catch (...) {
    Reraise("Framework", "Initialize");
}

void Framework::Start() try {
    const Ref<Framework> oSelf(this);
    ServiceManager()->Start();
} catch (...) {
    Reraise("Framework", "Start");
}

// A failure leaves the library through the form's event. The status tool, the pictures and the framework's own service
// part stay until the library is unloaded.
void Framework::m_frmMain_Unload() {
    const Ref<Framework> oSelf(this);
    WindowManager()->SetIsAppClosing(true);
    ServiceManager()->Terminate();
    LetGo();
}

void Framework::LetGo() {
    m_oNavigationManager = nullptr;
    m_oWindowManager = nullptr;
    m_oServiceManager = nullptr;
    m_oMainUnload.Cancel();
    m_frmMain = nullptr;
    m_oCVProgressBar = nullptr;
}

void Framework::EndAfterFailure() {
    const Ref<Framework> oSelf(this);
    if (const Ref<corvane::ServiceManager> oServiceManager = m_oServiceManager)
        oServiceManager->TerminateRest();
    LetGo();
}

// A picture that can't be loaded isn't a picture: callers show none, and the next call tries again.
Ref<Picture> Framework::GetImage(const std::string& sImageName) {
    try {
        const auto& oPlatform = CurrentPlatform();
        const std::string sFolder = oPlatform.oUtilities->GetAppFolder("Images");
        if (KeyExists(m_colImages, sImageName))
            return m_colImages->Item(sImageName);
        Ref<Picture> oPicture =
            oPlatform.oPictureLoader->Load(oPlatform.oFileSystem->Join(sFolder, sImageName), sImageName);
        m_colImages->Add(oPicture, sImageName);
        return oPicture;
    } catch (...) {
        return nullptr;
    }
}

} // namespace corvane
