// Measures a command of a service in Python there and back, and compares it with a line that a bare program in Python
// sends back over the same kind of socket in the same run; properties of fifty fields, read as a form does and written
// at once; the start of an application with twenty services that aren't needed yet; and how long the command of another
// service takes right after one of twenty-one has died. Prints medians and the 99th in a hundred in milliseconds.

#include "adapters/process/ProcessFactory.h"
#include "adapters/process/ProcessObject.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <unistd.h>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int rounds = 5000;
constexpr int forms = 200;
constexpr int fields = 50;
constexpr int starts = 15;
constexpr int deaths = 15;
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

class Times {
public:
    void Measure(int count, const std::function<void()>& work) {
        for (int i = 0; i < count; ++i) {
            const auto begin = std::chrono::steady_clock::now();
            work();
            m_times.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
        }
    }
    [[nodiscard]] double At(double part) {
        std::sort(m_times.begin(), m_times.end());
        return m_times[static_cast<std::size_t>(part * static_cast<double>(m_times.size() - 1))];
    }
    void Print(const char* what, double floor) {
        std::printf("%-34s median %7.3f ms  99th %7.3f ms  ratio %5.2f\n", what, At(0.5), At(0.99), At(0.5) / floor);
    }

private:
    std::vector<double> m_times;
};

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
    Times none;
    Times twenty;
    std::size_t interpreters = 0;
    for (int i = 0; i < starts; ++i)
        for (auto [times, name] : {std::pair(&none, "none"), std::pair(&twenty, "twenty")}) {
            inspect::ModelHost host({(folder / name).string()});
            times->Measure(1, [&] { (void)host.Start(); });
            interpreters += Interpreters();
        }
    none.Print("start without services", none.At(0.5));
    twenty.Print("start with 20 of them", none.At(0.5));
    std::printf("%-34s %.3f ms more, %zu interpreters\n", "", twenty.At(0.5) - none.At(0.5), interpreters);
}

void MeasureDeaths(const std::filesystem::path& folder) {
    WriteApplication(folder / "dying", neighbours + 1);
    Times times;
    for (int i = 0; i < deaths; ++i) {
        inspect::ModelHost host({(folder / "dying").string()});
        (void)host.Start();
        for (int n = 0; n <= neighbours; ++n)
            inspect::Take(host, {"click", "File.NS" + std::to_string(n), 1});
        inspect::Take(host, {"click", "File.DS0", 1});
        times.Measure(1, [&] { inspect::Take(host, {"click", "File.NS7", 1}); });
    }
    times.Print("another's command after a death", times.At(0.5));
}

int Run() {
    const auto folder = std::filesystem::temp_directory_path() / "corvane-bench-process";
    Write(folder / "Bench/plugin.json", R"({"run": ["python3", "bench.py"]})");
    Write(folder / "Bench/bench.py", service);
    Write(folder / "Echo/plugin.json", R"({"run": ["python3", "echo.py"]})");
    Write(folder / "Echo/echo.py", echo);

    ChildProcess bare(ReadProcessSettings("Echo", (folder / "Echo/plugin.json").string()).command, {});
    Times line;
    line.Measure(rounds, [&] {
        bare.Send(R"({"arguments":[],"call":"OnNothing","id":1,"on":1})");
        while (!bare.IsClosed() && !bare.NextLine())
            bare.Turn(1000);
    });

    const auto factory = New<ProcessFactory>(folder.string());
    const Ref<Object> object = factory->Create("Bench", "Bench.Bench");
    (void)object->Invoke("OnNothing", {}); // starts it
    Times command;
    command.Measure(rounds, [&] { (void)object->Invoke("OnNothing", {}); });
    Times read;
    std::vector<std::pair<std::string, Variant>> values;
    for (int i = 0; i < fields; ++i)
        values.emplace_back("Field" + std::to_string(i), "text");
    read.Measure(forms, [&] {
        (void)object->Invoke("OnNothing", {}); // what has been read before is of no use any more
        for (const auto& [name, value] : values)
            (void)object->Invoke(name, {});
    });
    Times write;
    const auto own = object.As<ProcessObject>();
    write.Measure(forms, [&] { own->PutAll(values); });
    line.Print("a line to a bare program", line.At(0.5));
    command.Print("a command", line.At(0.5));
    read.Print("50 fields read", line.At(0.5));
    write.Print("50 fields written", line.At(0.5));
    std::fflush(stdout);
    MeasureStart(folder);
    MeasureDeaths(folder);
    std::filesystem::remove_all(folder);
    return 0;
}

} // namespace
} // namespace corvane::bench

int main() {
    return corvane::bench::Run();
}
