// The items of the explorer's tab "Library": the sample files of the application.
#pragma once

#include "corvane/Explorer.h"

#include <string>

namespace studies {

class LibraryRoot final : public corvane::ExplorerItem<LibraryRoot> {
    void OnInitialize() override;
};

class LibraryFile final : public corvane::ExplorerItem<LibraryFile> {
public:
    explicit LibraryFile(std::string path);
    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name
    void OnImport(); // into the chosen study; the entry stands in the menu when there is a service of studies

    // Puts the entry for OnImport into the menu of all library files. To be called before there are any.
    static void OfferImport();

    static constexpr auto Members =
        corvane::Methods<&LibraryFile::OnOpen, &LibraryFile::OnAnalyse, &LibraryFile::OnImport>();

private:
    std::string m_path;
};

} // namespace studies
