#include "@Name@Service.h"

#include "@Name@Items.h"
#include "@Name@Page.h"

using namespace corvane;

void @Name@Service::OnInitialize() {
    @Name@Folder::Names() = {"Item 1"};
}

@startDefinition@void @Name@Service::OnNew() {
    auto& names = @Name@Folder::Names();
    names.push_back("Item " + std::to_string(names.size() + 1));
    Explorer()->AddToExplorer(New<@Name@Item>(names.back()), "@Name@Item");
    SetStatus("Added " + names.back());
}

CORVANE_PLUGIN(Class<@Name@Service>("@Name@Svc.@Name@Service"), Class<@Name@Folder>("@Name@Svc.@Name@Folder"),
               Class<@Name@Page>("@Name@Svc.@Name@Page"))
