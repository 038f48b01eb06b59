// The page of the window "@Name@Window". Its form is app/Forms/@Name@Svc.@Name@Page.ui, whose fields are bound to the
// values by their names.
#pragma once

#include "@Name@Items.h"
#include "corvane/Page.h"

#include <string>

class @Name@Page final : public corvane::Page<@Name@Page, @Name@Item> {
    std::string m_name;

    void OnInitialize() override {
        if (const auto item = About()) // nothing when the window was opened without one
            m_name = item->Name();
    }

public:
    static constexpr auto Members = corvane::Fields<&@Name@Page::m_name>();
};
