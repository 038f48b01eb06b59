#include "LibraryItems.h"

#include "DataService.h"
#include "Errors.h"
#include "Files.h"
#include "Windows.h"
#include "corvane/author/Host.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"

#include <filesystem>

namespace studies {

using namespace corvane;

void LibraryRoot::OnInitialize() {
    const std::string folder = AppPath("Data");
    if (!std::filesystem::is_directory(folder))
        return;
    for (const std::string& path : CurrentPlatform().oFileSystem->Files(folder))
        if (EqualText(CurrentPlatform().oFileSystem->Extension(path), "csv"))
            AddChild(New<LibraryFile>(path));
}

LibraryFile::LibraryFile(std::string path) : ExplorerItem(FileNameOf(path)), m_path(std::move(path)) {}

void LibraryFile::OnOpen() {
    ServiceNamed<DataService>("Data")->OpenFile(m_path);
}

void LibraryFile::OnAnalyse(const Ref<ActionItem>& actionItem) {
    ServiceNamed<DataService>("Data")->WithData(
        m_path, [name = actionItem->Name()](const Ref<DataSetContext>& data) { OpenNewAnalysis(data, name); });
}

void LibraryFile::OnImport() {
    CallByName(FindService("Studies"), "ImportAndOpen", m_path);
}

void LibraryFile::OfferImport() {
    // The menu belongs to the type, and any item of the type stands for it.
    const auto file = New<LibraryFile>(std::string());
    file->Base()->Initialize(Singleton::Framework()->ServiceManager()->ExplorerItemDefs()->Item("LibraryFile"));
    Singleton::Framework()->NavigationManager()->MenuManager()->AddContextMenu(
        file, "Import", "", 90, MenuType::fwContextMenuItem, Translated("&Import into Study"), "OnImport", false,
        Translated("Imports the file into the selected study"));
}

} // namespace studies
