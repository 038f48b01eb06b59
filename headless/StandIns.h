// Stubs for the objects of plug-ins: they accept any member, record calls, and fail as a file
// "standins.json" of the application says.
#pragma once

#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/platform/IClassFinder.h"
#include "corvane/platform/IIniReader.h"
#include "corvane/platform/IObjectFactory.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/IWindowFormFactory.h"
#include "corvane/windows/PageBase.h"
#include "headless/Recording.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane {
class Form;
class MdiForm;
class Window;
} // namespace corvane

namespace corvane::inspect {

// How the objects of one ProgID behave. Member names are folded.
struct StandInSpec {
    std::optional<Failure> create;       // creation fails so
    bool access = true;                  // false: no access interface
    std::map<std::string, Failure> fail; // the call is written down, then fails so
    std::set<std::string> missing;       // can't be called by name
    std::string name;                    // that an explorer item gives itself
    std::vector<StandInSpec> children;   // created again at each Initialize
    std::optional<std::string> displayName;
    std::optional<std::string> editName;
};

struct StandInFile {
    std::map<std::string, StandInSpec> objects; // by folded ProgID
    bool hasIni = false;                        // else the application's own INI file counts
    std::optional<Long> vgEnabled;
    std::optional<std::string> productName;
    bool formReportsDeactivate = true;
};

// Reads "standins.json". Fails with 53 when there is none and with 5, saying where, when it can't be understood.
[[nodiscard]] StandInFile ReadStandIns(const std::string& filePath);

// The common part of all stubs: the record and the failures.
class StandInObject : public virtual Object {
public:
    StandInObject(Ref<Record> record, StandInSpec spec, const std::string& id);
    ~StandInObject() override;

    Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;
    void Put(std::string_view name, const Variant& value) override;

    std::string_view TypeName() const override { return "StandIn"; }

protected:
    void Hear(std::string_view member, std::vector<Variant> arguments, bool hasArguments = true);

    Ref<Record> m_record;
    StandInSpec m_spec;
    std::string m_id;
};

// Serves as a service, an explorer item or a page, whichever it is asked for.
class StandIn : public StandInObject, public IServiceAccess, public IExplorerItemAccess, public IPageAccess {
public:
    using StandInObject::StandInObject;

    Ref<IService> Service() override;
    Ref<IExplorerItem> ExplorerItem() override;
    Ref<IPage> Page() override;

private:
    void BecomeService();
    void BecomeExplorerItem();
    void BecomePage();
    void FillChildren(const Ref<KeyedCollection<Ref<Object>>>& children);
    void Hold(Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); }

    Ref<ServiceBase> m_serviceBase;
    Ref<ExplorerItemBase> m_explorerItemBase;
    Ref<PageBase> m_pageBase;
    std::vector<Subscription> m_subscriptions;
};

class StandInFactory : public IObjectFactory {
public:
    StandInFactory(Ref<Record> record, std::shared_ptr<const StandInFile> file)
        : m_record(std::move(record)), m_file(std::move(file)) {}
    [[nodiscard]] Ref<Object> Create(std::string_view progID) override;

protected:
    // An object that behaves so, under that id.
    [[nodiscard]] virtual Ref<Object> Make(const StandInSpec& spec, const std::string& id);
    [[nodiscard]] const Ref<Record>& Recorded() const { return m_record; }

private:
    Ref<Record> m_record;
    std::shared_ptr<const StandInFile> m_file;
};

// Names the objects that another factory makes, so that the record can speak of them.
class NamingFactory final : public IObjectFactory, public IClassFinder {
public:
    NamingFactory(Ref<Record> record, Ref<IObjectFactory> factory)
        : m_record(std::move(record)), m_factory(std::move(factory)) {}
    [[nodiscard]] Ref<Object> Create(std::string_view progID) override;
    [[nodiscard]] bool HasClass(std::string_view progID) override;

private:
    Ref<Record> m_record;
    Ref<IObjectFactory> m_factory;
};

// Stands for the INI file when "standins.json" says what is in it.
class StandInIni final : public IIniReader {
public:
    StandInIni(std::shared_ptr<const StandInFile> standInFile, Ref<IIniReader> file)
        : m_standInFile(std::move(standInFile)), m_file(std::move(file)) {}
    [[nodiscard]] Long ReadInteger(std::string_view file, std::string_view section, std::string_view key,
                                   Long defaultNumber) const override;
    [[nodiscard]] std::string ReadString(std::string_view file, std::string_view section, std::string_view key,
                                         std::string_view defaultText, std::size_t maximum) const override;

private:
    std::shared_ptr<const StandInFile> m_standInFile;
    Ref<IIniReader> m_file;
};

// Whether a form of that factory shows the window.
[[nodiscard]] bool IsFormOf(const Ref<Form>& form, const Ref<Window>& window);

// Windows without anything to see: they create and report their pages, the first page being the one in front. Commands
// do what they do on screen: pages are notified, asked whether they are valid, and saved. A modal one is unloaded when
// the function has returned.
using ModalLoopFunction = std::function<void(const Form&)>;
// Pages of that application that are forms are shown as such; with standIns their objects are stubs.
[[nodiscard]] Ref<IWindowFormFactory> NewStandInFormFactory(MdiForm* mainForm, bool reportsDeactivate,
                                                            ModalLoopFunction modalLoop,
                                                            const std::string& applicationFolder, bool standIns);

} // namespace corvane::inspect
