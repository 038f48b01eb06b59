// The page of the window "@Name@". Its form is app/Forms/@Service@Svc.@Name@Page.ui, whose fields are bound to the values by
// their names.
#pragma once

#include "corvane/Page.h"

#include <string>

class @Name@Page final : public corvane::Page<@Name@Page> {
    std::string m_title;
    corvane::Long m_count = 1;

    void OnInitialize() override {} // About() is what the window is about: take the values from it here,
    void OnSave() override {}       // and give them back here

public:
    static constexpr auto Members = corvane::Fields<&@Name@Page::m_title, &@Name@Page::m_count>();
};
