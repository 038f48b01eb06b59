// The service: the procedures behind its commands.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

class @Name@Service final : public corvane::Automation<@Name@Service, corvane::IServiceAccess> {
public:
    corvane::Ref<corvane::IService> Service() override { return m_serviceBase; }

    // Called once, after all services are initialised, if the definition says IsStartService.
    void Start();
    void OnNew();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("Start", &@Name@Service::Start),
                                                         corvane::Method("OnNew", &@Name@Service::OnNew));

private:
    corvane::Ref<corvane::ServiceBase> m_serviceBase = corvane::New<corvane::ServiceBase>();
};
