// The service of the data that are open: a table and its name, with summaries of it.
#pragma once

#include "Table.h"
#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

#include <string>

namespace studies {

class DataService final : public corvane::Automation<DataService, corvane::IServiceAccess> {
public:
    DataService();

    corvane::Ref<corvane::IService> Service() override { return m_oServiceBase; }
    std::string_view TypeName() const override { return "DataService"; }

    // The commands.
    void OnOpen();
    void OnSummary();
    void OnSummaryByGroup();

    // For other services, by name. Both fail for text that can't be read, and leave the data that are open.
    void OpenFile(const std::string& sPath);
    void OpenText(const std::string& sName, const std::string& sText);
    [[nodiscard]] std::string DataName() const { return m_sName; } // "" while no data are open

    static constexpr auto Members = corvane::MemberTable(
        corvane::Method("OnOpen", &DataService::OnOpen), corvane::Method("OnSummary", &DataService::OnSummary),
        corvane::Method("OnSummaryByGroup", &DataService::OnSummaryByGroup),
        corvane::Method("OpenFile", &DataService::OpenFile), corvane::Method("OpenText", &DataService::OpenText),
        corvane::Property("DataName", &DataService::DataName));

private:
    void OnInitialize();
    void SetData(std::string sName, Table oTable);

    corvane::Ref<corvane::ServiceBase> m_oServiceBase = corvane::New<corvane::ServiceBase>();
    corvane::Subscription m_oInitialize;
    std::string m_sName;
    Table m_oTable;
};

} // namespace studies
