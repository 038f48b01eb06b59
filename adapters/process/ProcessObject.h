// Stands for an object that lives in a process: its events go there, and so do calls by name.
#pragma once

#include "adapters/process/Process.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IForm.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"

#include <string>
#include <vector>

namespace corvane {

class ProcessObject final : public IServiceAccess, public IExplorerItemAccess, public IPageAccess, public IFormUser {
public:
    // Made by its class, in the process and when it is first needed; made again after the process has died.
    ProcessObject(Ref<Process> process, std::string progID);
    // There already, under that handle; gone when the process dies.
    ProcessObject(Ref<Process> process, std::string progID, LongLong handle, std::string name);
    ~ProcessObject() override;

    Ref<IService> Service() override;
    Ref<IExplorerItem> ExplorerItem() override;
    Ref<IPage> Page() override;
    void UseForm(const Ref<IForm>& form) override { m_form = form; }

    // All of them start the process, unless it runs, and fail with Process::Ended when that isn't possible.
    Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;
    void Put(std::string_view name, const Variant& value) override;
    [[nodiscard]] std::vector<MemberInfo> MembersByName() const override;
    [[nodiscard]] bool HasMember(std::string_view name) const override;

    std::string_view TypeName() const override { return m_progID; }

    [[nodiscard]] const Ref<Process>& Owner() const { return m_process; }
    // The base that is in use, whichever it is; nothing before the library has asked for one.
    [[nodiscard]] Ref<Object> Base() const;
    [[nodiscard]] LongLong NeedHandle();
    // Of a page; nothing when it has none.
    [[nodiscard]] const Ref<IForm>& Form() const { return m_form; }
    // The process has passed it once more.
    void Received() { ++m_received; }

private:
    [[nodiscard]] bool IsLive() const;
    void Need();
    [[nodiscard]] bool Handles(const char* event) const;
    nlohmann::json Raise(const char* event, nlohmann::json arguments);
    void RaiseIfLive(const char* event, std::vector<Variant> arguments);
    [[nodiscard]] std::string TextFrom(const char* event, const std::string& text);
    void Begin();
    void BecomeService();
    void BecomeExplorerItem();
    void BecomePage();
    void FillItem(const Ref<KeyedCollection<Ref<Object>>>& children);
    void AddUnsaved(const Ref<Dictionary>& items, Double& order);
    void Keep(Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); }

    Ref<Process> m_process;
    std::string m_progID;
    bool m_isMadeByClass;
    LongLong m_handle = 0;
    int m_generation = 0; // of the process in which it lives
    int m_received = 0;
    std::string m_name;
    bool m_mustInitialize = false; // before the next call
    bool m_isInitialized = false;  // has been, perhaps by an earlier process
    Ref<ServiceBase> m_serviceBase;
    Ref<ExplorerItemBase> m_itemBase;
    Ref<PageBase> m_pageBase;
    Ref<IForm> m_form;
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane
