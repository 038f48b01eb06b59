#include "@Name@Items.h"

#include "corvane/base/Failure.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

using namespace corvane;

@Name@Folder* @Name@Folder::s_shown = nullptr;

void @Name@Item::OnOpen() {
    // The window is opened once an item: its name is the window's key.
    using enum WindowStateConstants;
    (void)Singleton::Framework()->WindowManager()->OpenWindow(
        "@Name@Window", Ref<Object>(this), nullptr, WindowShowModeConstants::cvDefinitionDefault, cvDefinitionDefault,
        MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
        BusinessContextTypeConstants::cvDefinitionDefault, ShowApplyCommandConstants::cvDefinitionDefault, Name());
}

@Name@Folder::@Name@Folder() {
    s_shown = this;
    m_initialize = m_base->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& children) {
        m_base->NameSilently("@Name@");
        m_items = 1;
        children->Add(New<@Name@Item>("Item 1"));
    });
}

@Name@Folder::~@Name@Folder() {
    if (s_shown == this)
        s_shown = nullptr;
}

std::string @Name@Folder::AddItem() {
    if (!s_shown)
        Fail(FailureNumber::ObjectNotSet, "The explorer doesn't show the folder \"@Name@\" yet", "@Name@");
    const auto item = New<@Name@Item>("Item " + std::to_string(++s_shown->m_items));
    s_shown->m_base->AddToExplorer(item, "@Name@Item");
    return item->Name();
}
