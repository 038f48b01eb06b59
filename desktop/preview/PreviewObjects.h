// The objects of a previewed application: those of plug-ins that are there, and stand-ins for the others.
#pragma once

#include "adapters/plugins/PluginFactory.h"
#include "desktop/IQtPage.h"
#include "desktop/preview/LoadedPlugins.h"
#include "headless/StandIns.h"

#include <map>
#include <set>
#include <string>

namespace corvane::desktop {

// A stand-in that can also be seen, as the page of a window.
class QtStandIn final : public inspect::StandIn, public IQtPage {
public:
    using StandIn::StandIn;
    QWidget* NewWidget(QWidget* pParent) override;
};

class PreviewFactory final : public inspect::StandInFactory {
public:
    // bAll: stand-ins also for what is there. pLoaded, if given, is told of each plug-in that is loaded.
    PreviewFactory(Ref<inspect::Record> oRecord, std::shared_ptr<const inspect::StandInFile> pFile,
                   Ref<IObjectFactory> oReal, Ref<PluginFactory> oPlugins, bool bAll,
                   std::shared_ptr<LoadedPlugins> pLoaded = {})
        : StandInFactory(std::move(oRecord), std::move(pFile)), m_oReal(std::move(oReal)),
          m_oPlugins(std::move(oPlugins)), m_bAll(bAll), m_pLoaded(std::move(pLoaded)) {}

    [[nodiscard]] Ref<Object> Create(std::string_view sProgID) override;
    // Whether objects of that ProgID are stand-ins: there is no such plug-in, or it hasn't got that class (yet).
    [[nodiscard]] bool IsStandIn(const std::string& sProgID);
    // What keeps plug-ins that are there from being used, a text each.
    [[nodiscard]] const std::map<std::string, std::string>& Unusable() const { return m_mapUnusable; }

protected:
    [[nodiscard]] Ref<Object> Make(const inspect::StandInSpec& oSpec, const std::string& sId) override;

private:
    [[nodiscard]] std::set<std::string> ClassesOf(const std::string& sLibrary); // folded

    Ref<IObjectFactory> m_oReal;
    Ref<PluginFactory> m_oPlugins;
    bool m_bAll;
    std::map<std::string, std::set<std::string>> m_mapClasses; // by folded library
    std::map<std::string, std::string> m_mapUnusable;          // by path
    std::shared_ptr<LoadedPlugins> m_pLoaded;
};

} // namespace corvane::desktop
