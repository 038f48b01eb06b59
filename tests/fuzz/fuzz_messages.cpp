// What the process of a service sends, of any bytes, line by line, while the application makes its objects and uses
// them in every way. Everything that is wrong with it ends in a Failure in plain words.
#include "adapters/process/Process.h"
#include "adapters/process/ProcessObject.h"
#include "corvane/base/Dictionary.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/PageDef.h"
#include "headless/ModelHost.h"
#include "tests/fuzz/FuzzedFolder.h"
#include "tests/process/ScriptedConnection.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <sstream>

using namespace corvane;
using corvane::testing::Script;
using corvane::testing::ScriptedConnection;

namespace {

std::size_t messages = 0;
// How texts of the JSON library's exceptions begin. An input that has it says nothing of them.
constexpr const char* foreign = "[json.exception";
bool isInInput = false;

void Judge(const Failure& failure) {
    if (isInInput || failure.Description.find(foreign) == std::string::npos)
        return;
    std::fputs(failure.Description.c_str(), stderr);
    std::abort();
}

void Try(const std::function<void()>& act) {
    try {
        act();
    } catch (const Failure& failure) {
        Judge(failure);
    }
}

Variant Called(const Ref<Object>& object, const char* name, const std::vector<Variant>& arguments = {}) {
    return object->Invoke(name, arguments);
}

void UseService(const Ref<ProcessObject>& object) {
    const Ref<IService> service = object->Service();
    Try([&] { service->Initialize(); });
    Try([&] { Called(object, "Same", {Variant(object), "a", 1.5}); });
    Try([&] { object->Put("Title", "Siskin"); });
    Try([&] {
        Double order = 1;
        const auto items = service->UnsavedItems(order);
        for (const auto& key : items->Keys())
            service->Save(ToObject(items->Item(key)));
    });
    Try([&] { service->SaveComplete(false); });
}

void UseItem(const Ref<ProcessObject>& object) {
    const Ref<IExplorerItem> item = object->ExplorerItem();
    Try([&] { item->Initialize(New<ExplorerItemDef>()); });
    Try([&] { (void)item->DisplayName(); });
    Try([&] { (void)item->EditName(); });
    Try([&] { item->SetName("Wren"); });
    Try([&] {
        const auto children = item->Children();
        for (Long i = 1; i <= children->Count(); ++i)
            Called(children->Item(i), "OnOpen");
    });
}

void UsePage(const Ref<ProcessObject>& object) {
    const Ref<IPage> page = object->Page();
    Try([&] { page->Initialize(nullptr, New<PageDef>(), nullptr, nullptr); });
    for (const char* name : {"Note", "Photo", "Note"})
        Try([&] { Called(object, name); });
    Try([&] { object->PutAll({{"Note", "shy"}, {"Photo", Variant()}}); });
    Try([&] {
        const Ref<Object> rows = ToObject(Called(object, "Seen"));
        if (!rows)
            return;
        Called(rows, "Count");
        const Ref<Object> row = ToObject(Called(rows, "Item", {Long{1}}));
        Called(row, "Day");
        row->Put("Count", Long{7});
    });
    Try([&] { (void)page->IsValid(); });
    Try([&] { page->Activate(); });
    Try([&] { page->Save(); });
    Try([&] { page->CommandClick(StandardCommandConstants::cvOK); });
    Try([&] { object->Recover(); });
    Try([&] { page->Terminate(nullptr); });
}

std::unique_ptr<inspect::ModelHost> NewHost() {
    static const fuzz::FuzzedFolder folder;
    inspect::HostOptions options;
    options.applicationFolder = folder.Path();
    options.oneThread = true;
    auto host = std::make_unique<inspect::ModelHost>(options);
    if (!host->Start())
        std::abort();
    return host;
}

std::shared_ptr<Script> ScriptOf(std::string text) {
    auto script = std::make_shared<Script>();
    std::istringstream lines(std::move(text));
    for (std::string line; std::getline(lines, line); ++messages)
        script->lines.push_back(std::move(line));
    return script;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool counts = std::atexit([] { std::fprintf(stderr, "%zu messages\n", messages); }) == 0;
    (void)counts;
    constexpr int most = 100; // what the messages have done to the application is forgotten after some inputs
    static int uses = 0;
    static std::unique_ptr<inspect::ModelHost> host;
    if (uses++ % most == 0 || host->HasExited()) {
        host = nullptr;
        host = NewHost();
    }
    const std::string input(reinterpret_cast<const char*>(data), size);
    isInInput = input.find(foreign) != std::string::npos;
    const auto script = ScriptOf(input);
    ProcessSettings settings;
    settings.name = "Birds";
    const auto process = New<Process>(settings, New<LoggingMonitor>(0), nullptr,
                                      [&](const LaunchCommand&, const ChildProcess::SaidFunction&) {
                                          return std::make_unique<ScriptedConnection>(script);
                                      });
    const auto service = New<ProcessObject>(process, "Birds.Birds");
    UseService(service);
    UseItem(New<ProcessObject>(process, "Birds.Aviary"));
    UsePage(New<ProcessObject>(process, "Birds.BirdPage"));
    process->Pump();
    host->RunJobs();
    Try([&] { service->Service()->Terminate(); });
    process->Stop();
    for (const auto& entry : host->Recorded().log)
        Judge(entry.failure);
    host->Recorded().log.clear();
    return 0;
}
