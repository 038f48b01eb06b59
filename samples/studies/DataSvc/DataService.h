// The service of files that are opened without being in a study. They are read into a store of their own, which ends
// with the program, so that the same windows show them.
#pragma once

#include "Workspace.h"
#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

#include <string>
#include <vector>

namespace studies {

class DataService final : public corvane::Automation<DataService, corvane::IServiceAccess> {
public:
    DataService();

    corvane::Ref<corvane::IService> Service() override { return m_serviceBase; }
    std::string_view TypeName() const override { return "DataService"; }

    void OnOpen();

    // For other services, by name. Fails for a file that can't be read.
    void OpenFile(const std::string& path);

    // For the library's items: the file's data, read when they aren't open yet.
    [[nodiscard]] corvane::Ref<DataSetContext> Data(const std::string& path);

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnOpen", &DataService::OnOpen),
                                                         corvane::Method("OpenFile", &DataService::OpenFile));

private:
    void OnInitialize();

    corvane::Ref<corvane::ServiceBase> m_serviceBase = corvane::New<corvane::ServiceBase>();
    std::vector<corvane::Subscription> m_subscriptions;
    corvane::Ref<Workspace> m_workspace;
    Id m_studyId = 0; // the one study there, which holds all files
};

} // namespace studies
