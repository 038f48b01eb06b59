// The service of files that are opened without being in a study. They are read into a store of their own, which ends
// with the program, so that the same windows show them.
#pragma once

#include "Csv.h"
#include "Workspace.h"
#include "corvane/Service.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace studies {

class DataService final : public corvane::Service<DataService> {
public:
    void OnOpen();

    // For other services, by name. Fails for a file that can't be read.
    void OpenFile(const std::string& path);

    // For analyses of other services, by name: the data set that the window in front shows, its columns in order, and a
    // column's values as texts, a line each and empty where one is missing. Fail when no window in front shows data,
    // and Values for a column that there isn't.
    [[nodiscard]] std::string DataName();
    [[nodiscard]] std::string ColumnNames();
    [[nodiscard]] std::string Values(const std::string& column);

    // For the library's items: calls then with the file's data, which are read when they aren't open yet; a large file
    // by a job.
    void WithData(const std::string& path, const std::function<void(const corvane::Ref<DataSetContext>&)>& then);

    static constexpr auto Members =
        corvane::Methods<&DataService::OnOpen, &DataService::OpenFile, &DataService::DataName,
                         &DataService::ColumnNames, &DataService::Values>();

private:
    void OnInitialize() override;
    void OnTerminate() override;
    [[nodiscard]] corvane::Ref<DataSetContext> Add(const std::string& path,
                                                   const std::shared_ptr<const CsvResult>& read);

    corvane::Ref<Workspace> m_workspace;
    Id m_studyId = 0; // the one study there, which holds all files
};

} // namespace studies
