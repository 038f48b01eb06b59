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

    // For the library's items: calls then with the file's data, which are read when they aren't open yet; a large file
    // by a job.
    void WithData(const std::string& path, const std::function<void(const corvane::Ref<DataSetContext>&)>& then);

    static constexpr auto Members = corvane::Methods<&DataService::OnOpen, &DataService::OpenFile>();

private:
    void OnInitialize() override;
    void OnTerminate() override;
    [[nodiscard]] corvane::Ref<DataSetContext> Add(const std::string& path,
                                                   const std::shared_ptr<const CsvResult>& read);

    corvane::Ref<Workspace> m_workspace;
    Id m_studyId = 0; // the one study there, which holds all files
};

} // namespace studies
