// The items of the explorer's tab "Library": the sample files of the application.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"

#include <string>

namespace studies {

class LibraryRoot final : public corvane::Automation<LibraryRoot, corvane::IExplorerItemAccess> {
public:
    LibraryRoot();

    corvane::Ref<corvane::IExplorerItem> ExplorerItem() override { return m_base; }
    std::string_view TypeName() const override { return "LibraryRoot"; }

    static constexpr auto Members = corvane::MemberTable();

private:
    corvane::Ref<corvane::ExplorerItemBase> m_base = corvane::New<corvane::ExplorerItemBase>();
    corvane::Subscription m_initialize;
};

class LibraryFile final : public corvane::Automation<LibraryFile, corvane::IExplorerItemAccess> {
public:
    explicit LibraryFile(std::string path);

    corvane::Ref<corvane::IExplorerItem> ExplorerItem() override { return m_base; }
    std::string_view TypeName() const override { return "LibraryFile"; }

    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name
    void OnImport(); // into the chosen study; the entry stands in the menu when there is a service of studies

    // Puts the entry for OnImport into the menu of all library files. To be called before there are any.
    static void OfferImport();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnOpen", &LibraryFile::OnOpen),
                                                         corvane::Method("OnAnalyse", &LibraryFile::OnAnalyse),
                                                         corvane::Method("OnImport", &LibraryFile::OnImport));

private:
    std::string m_path;
    corvane::Ref<corvane::ExplorerItemBase> m_base = corvane::New<corvane::ExplorerItemBase>();
};

} // namespace studies
