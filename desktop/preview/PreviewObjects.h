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
    QWidget* NewWidget(QWidget* parent) override;
};

class PreviewFactory final : public inspect::StandInFactory, public IClassFinder {
public:
    // all: stand-ins also for what is there. loaded, if given, is notified of each plug-in that is loaded.
    PreviewFactory(Ref<inspect::Record> record, std::shared_ptr<const inspect::StandInFile> file,
                   Ref<IObjectFactory> real, Ref<PluginFactory> plugins, bool all,
                   std::shared_ptr<LoadedPlugins> loaded = {})
        : StandInFactory(std::move(record), std::move(file)), m_real(std::move(real)), m_plugins(std::move(plugins)),
          m_all(all), m_loaded(std::move(loaded)) {}

    [[nodiscard]] Ref<Object> Create(std::string_view progID) override;
    // A page of preferences without a class needs none.
    [[nodiscard]] bool HasClass(std::string_view progID) override { return !IsStandIn(std::string(progID)); }
    // Whether objects of that ProgID are stand-ins: there is no such plug-in, or it hasn't got that class (yet).
    [[nodiscard]] bool IsStandIn(const std::string& progID);
    // Ends the process of that plug-in, whose program has changed; what needs it next starts it. False when that isn't
    // enough: it isn't a plug-in with a process, or has other classes by now.
    [[nodiscard]] bool RestartProcess(const std::string& library);
    // What keeps plug-ins that are there from being used, a text each.
    [[nodiscard]] const std::map<std::string, std::string>& Unusable() const { return m_unusable; }

protected:
    [[nodiscard]] Ref<Object> Make(const inspect::StandInSpec& spec, const std::string& id) override;

private:
    [[nodiscard]] std::set<std::string> ClassesOf(const std::string& library); // folded

    Ref<IObjectFactory> m_real;
    Ref<PluginFactory> m_plugins;
    bool m_all;
    std::map<std::string, std::set<std::string>> m_classes; // by folded library
    std::map<std::string, std::string> m_unusable;          // by path
    std::shared_ptr<LoadedPlugins> m_loaded;
};

} // namespace corvane::desktop
