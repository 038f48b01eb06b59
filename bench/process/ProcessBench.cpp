// Measures a command of a service in Python there and back, and compares it with a line that a bare program in Python
// sends back over the same kind of socket in the same run; and properties of fifty fields, read and written. Prints
// medians and the 99th in a hundred in milliseconds.

#include "adapters/process/ProcessFactory.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int rounds = 5000;
constexpr int forms = 200;
constexpr int fields = 50;

constexpr const char* service = R"(import corvane

class Bench(corvane.Service):
    Field: str = ""

    def OnNothing(self):
        pass

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
        std::sort(m_times.begin(), m_times.end());
    }
    [[nodiscard]] double At(double part) const {
        return m_times[static_cast<std::size_t>(part * static_cast<double>(m_times.size() - 1))];
    }
    void Print(const char* what, double floor) const {
        std::printf("%-34s median %7.3f ms  99th %7.3f ms  ratio %5.2f\n", what, At(0.5), At(0.99), At(0.5) / floor);
    }

private:
    std::vector<double> m_times;
};

void Write(const std::filesystem::path& file, const char* text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text;
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
    Times form;
    form.Measure(forms, [&] {
        for (int i = 0; i < fields; ++i) {
            object->Put("Field", "text");
            (void)object->Invoke("Field", {});
        }
    });
    line.Print("a line to a bare program", line.At(0.5));
    command.Print("a command", line.At(0.5));
    form.Print("50 fields, written and read", line.At(0.5));
    std::filesystem::remove_all(folder);
    return 0;
}

} // namespace
} // namespace corvane::bench

int main() {
    return corvane::bench::Run();
}
