// The page of the window "@Name@Window".
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "desktop/IQtPage.h"

class @Name@Page final
    : public corvane::Automation<@Name@Page, corvane::IPageAccess, corvane::desktop::IQtPage> {
public:
    corvane::Ref<corvane::IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override;

    static constexpr auto Members = corvane::MemberTable();

private:
    corvane::Ref<corvane::PageBase> m_base = corvane::New<corvane::PageBase>();
};
