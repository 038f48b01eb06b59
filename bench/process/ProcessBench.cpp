// Measures a command of a service in Python there and back, and compares it with a line that a bare program in Python
// sends back over the same kind of socket in the same run, and one in C++; properties of fifty fields, read as a form
// does and written at once; the start of an application with twenty services that aren't needed yet, by processor time;
// and how long the command of another service takes right after one of twenty others has died. Prints medians and the
// 99th in a hundred in milliseconds.

#include "adapters/process/ProcessFactory.h"
#include "adapters/process/ProcessObject.h"
#include "bench/Times.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int rounds = 5000;
constexpr int forms = 200;
constexpr int fields = 50;
constexpr int starts = 15;
constexpr int neighbours = 20;

constexpr const char* service = R"(import os

import corvane

class Bench(corvane.Service):
    def OnNothing(self):
        pass

    def OnDie(self):
        os.abort()

Bench.__annotations__ = {f"Field{i}": str for i in range(50)}
for i in range(50):
    setattr(Bench, f"Field{i}", "")

corvane.run()
)";

constexpr const char* echo = R"(import os, socket
s = socket.socket(fileno=int(os.environ["CORVANE_SOCKET"]))
while True:
    line = s.recv(65536)
    if not line:
        break
    s.sendall(line)
)";

std::vector<double> Measured(int count, const std::function<void()>& work) {
    std::vector<double> milliseconds;
    for (int i = 0; i < count; ++i)
        milliseconds.push_back(Microseconds(work) / 1000);
    return milliseconds;
}

void Print(const char* what, const std::vector<double>& times, double floor) {
    std::printf("%-34s median %7.3f ms  99th %7.3f ms  ratio %5.2f\n", what, Median(times), Quantile(times, 0.99),
                Median(times) / floor);
}

void Write(const std::filesystem::path& file, const char* text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

std::string DefinitionOf(const std::string& name) {
    return R"(<Service Name=")" + name + R"(" ProgID=")" + name + R"(.Bench" Active="True"><ActionItems>)" +
           R"(<ActionItem Name="N)" + name + R"(" Action="OnNothing"/><ActionItem Name="D)" + name +
           R"(" Action="OnDie"/></ActionItems><Menus><MenuItem Type="MenuItem" ActionItem="N)" + name +
           R"(" Path="File" PositionOrder="1" Caption="N"/><MenuItem Type="MenuItem" ActionItem="D)" + name +
           R"(" Path="File" PositionOrder="2" Caption="D"/></Menus></Service>)";
}

// An application with that many services in Python.
void WriteApplication(const std::filesystem::path& folder, int services) {
    Write(folder / "Services/Framework.xml", "");
    std::filesystem::copy_file(std::filesystem::path(CORVANE_SOURCE) / "tests/author/shop/Services/Framework.xml",
                               folder / "Services/Framework.xml", std::filesystem::copy_options::overwrite_existing);
    std::filesystem::copy_file(std::filesystem::path(CORVANE_SOURCE) / "packaging/schema/Service.xdr",
                               folder / "Services/Service.xdr", std::filesystem::copy_options::overwrite_existing);
    for (int i = 0; i < services; ++i) {
        const std::string name = "S" + std::to_string(i);
        Write(folder / ("Services/" + name + ".xml"), DefinitionOf(name).c_str());
        Write(folder / "plugins" / name / "plugin.json", R"({"run": ["python3", "bench.py"]})");
        Write(folder / "plugins" / name / "bench.py", service);
    }
}

std::size_t Interpreters() {
    std::ifstream file("/proc/self/task/" + std::to_string(::getpid()) + "/children");
    std::size_t count = 0;
    for (int child = 0; file >> child;)
        ++count;
    return count;
}

void MeasureStart(const std::filesystem::path& folder) {
    WriteApplication(folder / "none", 0);
    WriteApplication(folder / "twenty", neighbours);
    std::vector<double> none;
    std::vector<double> twenty;
    std::size_t interpreters = 0;
    for (int i = 0; i < starts; ++i)
        for (auto [times, name] : {std::pair(&none, "none"), std::pair(&twenty, "twenty")}) {
            inspect::ModelHost host({(folder / name).string(), false, nullptr});
            bool isStarted = false;
            times->push_back(ProcessorMilliseconds([&] { isStarted = host.Start(); }));
            if (!isStarted)
                std::printf("failed: %s\n", host.FirstFailure()->Description.c_str());
            interpreters += Interpreters();
        }
    Print("start without services", none, Median(none));
    Print("start with 20 of them", twenty, Median(none));
    std::printf("%-34s %.3f ms more, %zu interpreters\n", "", Median(twenty) - Median(none), interpreters);
}

void MeasureDeaths(const std::filesystem::path& folder) {
    WriteApplication(folder / "dying", neighbours + 1);
    inspect::ModelHost host({(folder / "dying").string(), false, nullptr});
    (void)host.Start();
    const auto click = [&](const char* command, int number) {
        inspect::Take(host, {"click", "File." + std::string(command) + "S" + std::to_string(number), 1});
    };
    for (int n = 0; n <= neighbours; ++n)
        click("N", n);
    std::vector<double> times;
    for (int n = 0; n < neighbours; ++n) { // the last one lives
        click("D", n);
        times.push_back(Microseconds([&] { click("N", neighbours); }) / 1000);
    }
    Print("another's command after a death", times, Median(times));
}

// A line to a program that sends it back.
std::vector<double> MeasureBare(const std::filesystem::path& folder, const char* plugin) {
    const auto file = folder / plugin / "plugin.json";
    ChildProcess bare(ReadProcessSettings(plugin, file.string()).command, {});
    return Measured(rounds, [&] {
        bare.Send(R"({"arguments":[],"call":"OnNothing","id":1,"on":1})");
        while (!bare.IsClosed() && !bare.NextLine())
            bare.Turn(1000);
    });
}

void MeasureCommands(const std::filesystem::path& folder, double floor) {
    const auto factory = New<ProcessFactory>(folder.string());
    const Ref<Object> object = factory->Create("Bench", "Bench.Bench");
    (void)object->Invoke("OnNothing", {}); // starts it
    Print("a command", Measured(rounds, [&] { (void)object->Invoke("OnNothing", {}); }), floor);
    std::vector<std::pair<std::string, Variant>> values;
    for (int i = 0; i < fields; ++i)
        values.emplace_back("Field" + std::to_string(i), "text");
    const auto read = Measured(forms, [&] {
        (void)object->Invoke("OnNothing", {}); // what has been read before is of no use any more
        for (const auto& [name, value] : values)
            (void)object->Invoke(name, {});
    });
    Print("a command, then 50 fields read", read, floor);
    const auto own = object.As<ProcessObject>();
    Print("50 fields written", Measured(forms, [&] { own->PutAll(values); }), floor);
}

int SendBack() {
    std::array<char, 65536> bytes;
    for (;;) {
        const ssize_t count = ::recv(ChildProcess::SocketNumber, bytes.data(), bytes.size(), 0);
        if (count <= 0 ||
            ::send(ChildProcess::SocketNumber, bytes.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL) != count)
            return 0;
    }
}

int Run(const std::filesystem::path& program) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::string pattern = (std::filesystem::temp_directory_path() / "corvane-bench-XXXXXX").string();
    const std::filesystem::path folder = ::mkdtemp(pattern.data());
    Write(folder / "Bench/plugin.json", R"({"run": ["python3", "bench.py"]})");
    Write(folder / "Bench/bench.py", service);
    Write(folder / "Echo/plugin.json", R"({"run": ["python3", "echo.py"]})");
    Write(folder / "Echo/echo.py", echo);
    Write(folder / "Bare/plugin.json", (R"({"run": [")" + program.string() + R"(", "echo"]})").c_str());
    ::setenv("PYTHONPATH", CORVANE_SOURCE "/python", 1);

    const std::vector<double> line = MeasureBare(folder, "Echo");
    const double floor = Median(line);
    Print("a line to a bare program in C++", MeasureBare(folder, "Bare"), floor);
    Print("a line to one in Python", line, floor);
    MeasureCommands(folder, floor);
    MeasureStart(folder);
    MeasureDeaths(folder);
    std::filesystem::remove_all(folder);
    return 0;
}

} // namespace
} // namespace corvane::bench

int main(int count, char** words) {
    if (count > 1 && std::string_view(words[1]) == "echo")
        return corvane::bench::SendBack();
    return corvane::bench::Run(std::filesystem::absolute(words[0]));
}
