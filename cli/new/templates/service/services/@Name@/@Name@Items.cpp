#include "@Name@Items.h"

using namespace corvane;

void @Name@Item::OnOpen() {
    // The window is opened once an item: its name is the window's key.
    OpenWindow("@Name@Window", Ref<Object>(this), {.key = Name()});
}

std::vector<std::string>& @Name@Folder::Names() {
    static std::vector<std::string> names;
    return names;
}

void @Name@Folder::OnInitialize() {
    for (const std::string& name : Names())
        AddChild(New<@Name@Item>(name));
}
