// The service: the procedures behind its commands.
#pragma once

#include "corvane/Service.h"

class @Name@Service final : public corvane::Service<@Name@Service> {
public:
@startDeclaration@    void OnNew();

    static constexpr auto Members = corvane::Methods<@startMember@&@Name@Service::OnNew>();

private:
    void OnInitialize() override;
};
