// The library's view of a service.
#pragma once

#include "corvane/base/Dictionary.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Ref.h"

namespace corvane {

class __attribute__((visibility("default"))) IService : public virtual Object {
public:
    // The service begins work; called once, before any service is started.
    virtual void Initialize() = 0;
    // The service ends work; called once.
    virtual void Terminate() = 0;
    // What the service has not yet saved, by name, and the service's rank among the others.
    virtual Ref<Dictionary> UnsavedItems(Double& dblOrder) = 0;
    // Saves one of those items.
    virtual void Save(const Ref<Object>& oUnsavedItem) = 0;
    // The report context types that the service offers, and the report contexts of one type.
    virtual Ref<KeyedCollection<Ref<Object>>> ReportContextTypes() = 0;
    virtual Ref<Dictionary> ReportContexts(Long lReportContextTypeID) = 0;
    // The saving has ended.
    virtual void SaveComplete(bool bWasCancelled) = 0;
};

} // namespace corvane
