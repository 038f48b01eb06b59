// Stands for an object that lives in a process: its events go there, and so do calls by name.
#pragma once

#include "adapters/common/Recoverable.h"
#include "adapters/process/Process.h"
#include "adapters/process/ProcessRows.h"
#include "corvane/base/Text.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IForm.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane {

class ProcessObject final : public IServiceAccess,
                            public IExplorerItemAccess,
                            public IPageAccess,
                            public IFormUser,
                            public Recoverable {
public:
    // Made by its class, in the process and when it is first needed; made again after the process has died.
    ProcessObject(Ref<Process> process, std::string progID);
    // There already, under that handle. When the process has died, it is found again among the children of the same
    // explorer item, or is gone.
    ProcessObject(Ref<Process> process, std::string progID, LongLong handle, std::string name);
    ~ProcessObject() override;

    // It is what it is first asked for; the others are nothing from then on.
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
    [[nodiscard]] bool IsItem() const { return m_itemBase != nullptr; }
    // A service that has been, or is to be, initialized.
    [[nodiscard]] bool IsBegunService() const { return m_serviceBase && (m_isInitialized || m_mustInitialize); }
    [[nodiscard]] bool IsLive() const;
    // Starts the process and makes and initializes the other half, unless they are there.
    void Need();
    // The process has ended.
    void FollowProcess();

    // As Recoverable; WhyLost of a page that was there when its process ended.
    [[nodiscard]] bool IsIdle() const override { return !m_process->IsRunning(); }
    [[nodiscard]] const std::string& WhyLost() const override { return m_whyLost; }
    void Recover() override;
    void PutAll(const std::vector<std::pair<std::string, Variant>>& values) override;

    // It has that many rows, and is an object with Count and Item for whoever asks by name.
    void SetRows(std::size_t count);
    // Row from 0. While the process doesn't run, what hasn't been asked for yet is empty.
    [[nodiscard]] Variant RowCell(std::size_t row, std::string_view column);
    void SetRowCell(std::size_t row, std::string_view column, const Variant& value);

private:
    // What its stored properties were when two of them had been asked for in a row; of no use after the next message.
    struct Snapshot {
        std::uint64_t turns = 0;
        std::chrono::steady_clock::time_point taken = {};
        std::unordered_map<std::string, Variant, TextHash, TextEqual> values = {};
    };

    void Make();
    void FindAgain();
    [[nodiscard]] Ref<ProcessObject> ParentItem() const;
    [[nodiscard]] bool IsChild(const std::string& className, const std::string& name) const;
    void Take(LongLong handle);
    void AddChildren(const nlohmann::json& answer, const Ref<KeyedCollection<Ref<Object>>>& children);
    [[nodiscard]] Variant InvokeRows(std::string_view name, std::span<const Variant> arguments);
    [[nodiscard]] std::optional<Variant> Stored(std::string_view name);
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
    ProcessObject* m_parent = nullptr;   // the item that has passed it as a child, and holds it
    std::shared_ptr<ProcessRows> m_rows; // another one once it is passed again, perhaps while a row is asked for
    std::string m_whyLost;
    Snapshot m_snapshot;
    std::uint64_t m_lastRead = 0;  // the process's turns after a property was read
    bool m_mustInitialize = false; // before the next call
    bool m_isInitialized = false;  // has been, perhaps by an earlier process
    Ref<ServiceBase> m_serviceBase;
    Ref<ExplorerItemBase> m_itemBase;
    Ref<PageBase> m_pageBase;
    Ref<IForm> m_form;
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane
