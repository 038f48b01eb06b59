// Objects that stand in for plug-ins: they answer any member, write down what they are told, and misbehave as a file
// "standins.json" of the application says.
#pragma once

#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"
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
    std::optional<Failure> oCreate;         // creation fails so
    bool bAccess = true;                    // false: no access interface
    std::map<std::string, Failure> mapFail; // the call is written down, then fails so
    std::set<std::string> setMissing;       // can't be called by name
    std::string sName;                      // that an explorer item gives itself
    std::vector<StandInSpec> aChildren;     // made anew at each Initialize
    std::optional<std::string> sDisplayName;
    std::optional<std::string> sEditName;
};

struct StandInFile {
    std::map<std::string, StandInSpec> mapObjects; // by folded ProgID
    bool bHasIni = false;                          // else the application's own INI file counts
    std::optional<Long> lVGEnabled;
    std::optional<std::string> sProductName;
    bool bFormReportsDeactivate = true;
};

// Reads "standins.json". Fails with 53 when there is none and with 5, saying where, when it can't be understood.
[[nodiscard]] StandInFile ReadStandIns(const std::string& sFile);

// What all stand-ins have in common: the record and the misbehaviour.
class StandInObject : public virtual Object {
public:
    StandInObject(Ref<Record> oRecord, StandInSpec oSpec, const std::string& sId);
    ~StandInObject() override;

    Variant Invoke(std::string_view sName, std::span<const Variant> aArguments) override;

    std::string_view TypeName() const override { return "StandIn"; }

protected:
    void Hear(std::string_view sMember, std::vector<Variant> aArguments, bool bHasArguments = true);

    Ref<Record> m_oRecord;
    StandInSpec m_oSpec;
    std::string m_sId;
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
    void FillChildren(const Ref<KeyedCollection<Ref<Object>>>& colChildren);
    void Hold(Subscription oSubscription) { m_aSubscriptions.push_back(std::move(oSubscription)); }

    Ref<ServiceBase> m_oServiceBase;
    Ref<ExplorerItemBase> m_oExplorerItemBase;
    Ref<PageBase> m_oPageBase;
    std::vector<Subscription> m_aSubscriptions;
};

class StandInFactory : public IObjectFactory {
public:
    StandInFactory(Ref<Record> oRecord, std::shared_ptr<const StandInFile> pFile)
        : m_oRecord(std::move(oRecord)), m_pFile(std::move(pFile)) {}
    [[nodiscard]] Ref<Object> Create(std::string_view sProgID) override;

protected:
    // An object that behaves so, under that id.
    [[nodiscard]] virtual Ref<Object> Make(const StandInSpec& oSpec, const std::string& sId);
    [[nodiscard]] const Ref<Record>& Recorded() const { return m_oRecord; }

private:
    Ref<Record> m_oRecord;
    std::shared_ptr<const StandInFile> m_pFile;
};

// Names the objects that another factory makes, so that the record can speak of them.
class NamingFactory final : public IObjectFactory {
public:
    NamingFactory(Ref<Record> oRecord, Ref<IObjectFactory> oFactory)
        : m_oRecord(std::move(oRecord)), m_oFactory(std::move(oFactory)) {}
    [[nodiscard]] Ref<Object> Create(std::string_view sProgID) override;

private:
    Ref<Record> m_oRecord;
    Ref<IObjectFactory> m_oFactory;
};

// Stands for the INI file when "standins.json" says what is in it.
class StandInIni final : public IIniReader {
public:
    StandInIni(std::shared_ptr<const StandInFile> pFile, Ref<IIniReader> oFile)
        : m_pFile(std::move(pFile)), m_oFile(std::move(oFile)) {}
    [[nodiscard]] Long ReadInteger(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                                   Long lDefault) const override;
    [[nodiscard]] std::string ReadString(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                                         std::string_view sDefault, std::size_t nMaximum) const override;

private:
    std::shared_ptr<const StandInFile> m_pFile;
    Ref<IIniReader> m_oFile;
};

// Whether a form of that factory shows the window.
[[nodiscard]] bool IsFormOf(const Ref<Form>& oForm, const Ref<Window>& oWindow);

// Windows without anything to see: they create and report their pages, the first page being the one in front. Commands
// do what they do on screen: pages are told, asked whether they are valid, and saved. A modal one is unloaded when the
// function has returned.
using ModalLoopFunction = std::function<void(const Form&)>;
[[nodiscard]] Ref<IWindowFormFactory> NewStandInFormFactory(MdiForm* frmMain, bool bReportsDeactivate,
                                                            ModalLoopFunction fnModalLoop);

} // namespace corvane::inspect
