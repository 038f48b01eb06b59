// The service: the procedures behind its commands.
#pragma once

#include "corvane/Service.h"

class @Name@Service final : public corvane::Service<@Name@Service> {
public:
    // Called once, after all services are initialized, if the definition says IsStartService.
    void Start();
    void OnNew();

    static constexpr auto Members = corvane::Methods<&@Name@Service::Start, &@Name@Service::OnNew>();

private:
    void OnInitialize() override;
};
