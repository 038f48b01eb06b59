// A service in short: `class GreetingService final : public Service<GreetingService>`, with those of the functions
// below that it needs and the procedures of its commands, listed by Methods<…>().
#pragma once

#include "corvane/author/Client.h"
#include "corvane/base/Dictionary.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

namespace corvane {

// What all services have, whatever their class: also the base of what several of them share.
class __attribute__((visibility("default"))) AnyService : public IServiceAccess, protected Client {
public:
    Ref<IService> Service() override { return m_oServiceBase; }

protected:
    AnyService();
    ~AnyService() override;

    virtual void OnInitialize() {} // menus and explorer are built, and nothing is started yet
    virtual void OnTerminate() {}  // the main window has been closed; what was kept is unsubscribed already
    // Adds what isn't saved yet to the dictionary, by a name that the user reads. The order says when the service is
    // asked to save among the others: it comes in as 2.
    virtual void OnUnsaved(Dictionary& /*dctItems*/, Double& /*dblOrder*/) {}
    virtual void OnSave(const Ref<Object>& /*oItem*/) {} // one of those
    virtual void OnSaveComplete(bool /*bWasCancelled*/) {}
    virtual void OnReportContextTypes(KeyedCollection<Ref<Object>>& /*colTypes*/) {}
    virtual void OnReportContexts(Long /*lTypeID*/, Dictionary& /*dctContexts*/) {}
    virtual void OnExit(const Ref<Window>& /*oWindow*/, bool /*bWasCancelled*/) {} // a window that it opened

    [[nodiscard]] const Ref<ServiceBase>& Base() const { return m_oServiceBase; }

private:
    [[nodiscard]] Ref<Object> BaseObject() const override { return m_oServiceBase; }

    Ref<ServiceBase> m_oServiceBase = New<ServiceBase>();
    std::vector<Subscription> m_aEvents;
};

// Part is AnyService or derives from it.
template <class T, class Part = AnyService>
class Service : public Automation<T, Part> {
public:
    static constexpr auto Members = MemberTable(); // of a service without procedures
};

} // namespace corvane
