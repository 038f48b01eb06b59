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
    m_initialize = m_base->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& children) {
        m_base->NameSilently("Library");
        const std::string folder = AppPath("Data");
        if (!std::filesystem::is_directory(folder))
            return;
        for (const std::string& path : CurrentPlatform().oFileSystem->Files(folder))
            if (EqualText(CurrentPlatform().oFileSystem->Extension(path), "csv"))
                children->Add(New<LibraryFile>(path));
    });
}

LibraryFile::LibraryFile(std::string path) : m_path(std::move(path)) {
    m_base->NameSilently(FileNameOf(m_path));
}

void LibraryFile::OnOpen() {
    ServiceByName("Data").As<DataService>()->OpenFile(m_path);
}

void LibraryFile::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(ServiceByName("Data").As<DataService>()->Data(m_path), actionItem->Name());
}

void LibraryFile::OnImport() {
    const Variant arguments[] = {m_path};
    ServiceByName("Studies")->Invoke("ImportFile", arguments);
}

void LibraryFile::OfferImport() {
    // The menu belongs to the type, and any item of the type stands for it.
    const auto file = New<LibraryFile>(std::string());
    file->m_base->Initialize(CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs()->Item("LibraryFile"));
    CorvaneMain::Framework()->NavigationManager()->MenuManager()->AddContextMenu(
        file, "Import", "", 90, MenuType::fwContextMenuItem, "&Import into Study", "OnImport", false,
        "Imports the file into the selected study");
}

} // namespace studies
