#include "@Name@Items.h"

#include "corvane/base/Failure.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

using namespace corvane;

@Name@Folder* @Name@Folder::s_pShown = nullptr;

void @Name@Item::OnOpen() {
    // The window is opened once an item: its name is the window's key.
    using enum WindowStateConstants;
    (void)Singleton::Framework()->WindowManager()->OpenWindow(
        "@Name@Window", Ref<Object>(this), nullptr, WindowShowModeConstants::cvDefinitionDefault, cvDefinitionDefault,
        MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
        BusinessContextTypeConstants::cvDefinitionDefault, ShowApplyCommandConstants::cvDefinitionDefault, Name());
}

@Name@Folder::@Name@Folder() {
    s_pShown = this;
    m_oInitialize = m_oBase->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& colChildren) {
        m_oBase->NameSilently("@Name@");
        m_nItems = 1;
        colChildren->Add(New<@Name@Item>("Item 1"));
    });
}

@Name@Folder::~@Name@Folder() {
    if (s_pShown == this)
        s_pShown = nullptr;
}

std::string @Name@Folder::AddItem() {
    if (!s_pShown)
        Fail(FailureNumber::ObjectNotSet, "The explorer doesn't show the folder \"@Name@\" yet", "@Name@");
    const auto oItem = New<@Name@Item>("Item " + std::to_string(++s_pShown->m_nItems));
    s_pShown->m_oBase->AddToExplorer(oItem, "@Name@Item");
    return oItem->Name();
}
