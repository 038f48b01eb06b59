#include "@Name@Service.h"

#include "@Name@Items.h"
#include "@Name@Page.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"

using namespace corvane;

void @Name@Service::Start() {
    Singleton::Framework()->NavigationManager()->ExplorerManager()->Populate();
    Singleton::Framework()->SetStatus("Ready");
}

void @Name@Service::OnNew() {
    const std::string name = @Name@Folder::AddItem();
    Singleton::Framework()->SetStatus("Added " + name);
}

CORVANE_PLUGIN(Class<@Name@Service>("@Name@Svc.@Name@Service"), Class<@Name@Folder>("@Name@Svc.@Name@Folder"),
               Class<@Name@Page>("@Name@Svc.@Name@Page"))
