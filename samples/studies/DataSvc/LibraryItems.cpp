#include "LibraryItems.h"

#include "DataService.h"
#include "Shell.h"
#include "Windows.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"

#include <filesystem>

namespace studies {

using namespace corvane;

LibraryRoot::LibraryRoot() {
    m_oInitialize = m_oBase->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& colChildren) {
        m_oBase->NameSilently("Library");
        const std::string sFolder = AppPath("Data");
        if (!std::filesystem::is_directory(sFolder))
            return;
        for (const std::string& sPath : CurrentPlatform().oFileSystem->Files(sFolder))
            if (EqualText(CurrentPlatform().oFileSystem->Extension(sPath), "csv"))
                colChildren->Add(New<LibraryFile>(sPath));
    });
}

LibraryFile::LibraryFile(std::string sPath) : m_sPath(std::move(sPath)) {
    m_oBase->NameSilently(FileNameOf(m_sPath));
}

void LibraryFile::OnOpen() {
    ServiceByName("Data").As<DataService>()->OpenFile(m_sPath);
}

void LibraryFile::OnAnalyse(const Ref<ActionItem>& oActionItem) {
    OpenNewAnalysis(ServiceByName("Data").As<DataService>()->Data(m_sPath), oActionItem->Name());
}

void LibraryFile::OnImport() {
    const Variant aArguments[] = {m_sPath};
    ServiceByName("Studies")->Invoke("ImportFile", aArguments);
}

void LibraryFile::OfferImport() {
    // The menu belongs to the type, and any item of the type stands for it.
    const auto oFile = New<LibraryFile>(std::string());
    oFile->m_oBase->Initialize(CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs()->Item("LibraryFile"));
    CorvaneMain::Framework()->NavigationManager()->MenuManager()->AddContextMenu(
        oFile, "Import", "", 90, MenuType::fwContextMenuItem, "&Import into Study", "OnImport", false,
        "Imports the file into the selected study");
}

} // namespace studies
