#include "desktop/blame/CrashMarker.h"

#include "corvane/base/Text.h"
#include "desktop/blame/PluginCode.h"
#include "desktop/service/DefinitionTags.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace corvane::desktop {

// As it is in the file. Texts end with a zero; the last byte of each stays one.
struct CrashMarker::Mark {
    char magic[8];
    char plugin[128];
    char service[128];
    char servicePlugin[128];
    char creating[128];
    char entered[128];
    int signal;
    int hung;
};

namespace {

constexpr char magic[8] = {'C', 'V', 'M', 'A', 'R', 'K', '2', '\n'};
constexpr std::array crashSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr std::size_t handlerStack = 64 * 1024;

std::array<struct sigaction, crashSignals.size()> earlier;

template <std::size_t N>
void Write(char (&buffer)[N], const char* text) noexcept {
    std::size_t i = 0;
    for (; i + 1 < N && text[i] != '\0'; ++i)
        buffer[i] = text[i];
    for (; i < N; ++i)
        buffer[i] = '\0';
}

template <std::size_t N>
std::string Read(const char (&text)[N]) {
    return {text, ::strnlen(text, N)};
}

} // namespace

// The mark of this program, for the handler.
static std::atomic<void*> livingMark{nullptr};

namespace {

// For whom a thread of jobs works: nothing but memory, as the handler reads it.
thread_local char threadService[128];

// A handler's stack for a thread of its own; the handlers' first one is that of the user interface.
class ThreadStack {
public:
    ThreadStack() {
        stack_t stack{};
        stack.ss_sp = m_memory.get();
        stack.ss_size = handlerStack;
        ::sigaltstack(&stack, nullptr);
    }
    ~ThreadStack() {
        stack_t stack{};
        stack.ss_flags = SS_DISABLE;
        ::sigaltstack(&stack, nullptr);
    }
    ThreadStack(const ThreadStack&) = delete;
    ThreadStack& operator=(const ThreadStack&) = delete;

private:
    std::unique_ptr<char[]> m_memory = std::make_unique<char[]>(handlerStack);
};

} // namespace

void CrashMarker::SetThreadService(const std::string& service) {
    static thread_local const ThreadStack stack;
    (void)stack;
    Write(threadService, service.c_str());
}

void CrashMarker::OnSignal(int signal) {
    if (auto* mark = static_cast<Mark*>(livingMark.load())) {
        mark->signal = signal;
        mark->hung = 0;
        if (const char* plugin = PluginCode::Innermost())
            Write(mark->plugin, plugin);
        if (threadService[0] != 0) { // what the user interface is doing has nothing to do with it
            Write(mark->service, threadService);
            Write(mark->servicePlugin, mark->plugin);
            Write(mark->creating, "");
            Write(mark->entered, "");
        }
    }
    // What was here before has its turn as soon as this returns.
    for (std::size_t i = 0; i < crashSignals.size(); ++i)
        if (crashSignals[i] == signal)
            ::sigaction(signal, &earlier[i], nullptr);
    ::raise(signal);
}

void CrashMarker::InstallHandlers() {
    static bool installed = false;
    if (std::exchange(installed, true))
        return;
    (void)PluginCode::Innermost(); // loads what it needs, which a handler mustn't
    // A stack that has run over leaves no space for a handler.
    static char* stackMemory = static_cast<char*>(std::malloc(handlerStack));
    stack_t stack{};
    stack.ss_sp = stackMemory;
    stack.ss_size = handlerStack;
    ::sigaltstack(&stack, nullptr);
    for (std::size_t i = 0; i < crashSignals.size(); ++i) {
        struct sigaction action {};
        action.sa_handler = &CrashMarker::OnSignal;
        action.sa_flags = SA_ONSTACK;
        ::sigemptyset(&action.sa_mask);
        ::sigaction(crashSignals[i], &action, &earlier[i]);
    }
}

namespace {

std::string TextOfFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The service that defines what has been entered, or anything where that is empty, if it is one alone and of that
// plug-in; else nothing.
std::string ServiceBehind(const std::string& entered, const std::string& plugin, const std::string& servicesFolder) {
    const bool item = entered.starts_with('#');
    std::string found;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(servicesFolder, error)) {
        if (!EqualText(entry.path().extension().string(), ".xml"))
            continue;
        std::string service;
        bool defines = false;
        const std::string text = TextOfFile(entry.path());
        for (const DefinitionTag& tag : TagsIn(text, {"Service", "ExplorerItem", "Page"})) {
            if (tag.element == "Service") {
                if (EqualText(tag.Attribute("Active"), "false") ||
                    !EqualText(PluginOf(std::string(tag.Attribute("ProgID"))), plugin))
                    break;
                service = tag.Attribute("Name");
            }
            defines =
                defines || entered.empty() ||
                (item ? tag.element == "ExplorerItem" &&
                            EqualText(tag.Attribute("Name"), std::string_view(entered).substr(1))
                      : EqualText(tag.Attribute("ProgID"), entered) || EqualText(tag.Attribute("PageProgID"), entered));
        }
        if (!defines || service.empty())
            continue;
        if (!found.empty())
            return {};
        found = service;
    }
    return found;
}

} // namespace

std::string OnlyServiceOf(const std::string& plugin, const std::string& servicesFolder) {
    return ServiceBehind({}, plugin, servicesFolder);
}

std::string WhoIn(const CrashRecord& record, const std::string& servicesFolder) {
    const std::string plugin = record.plugin.empty() ? PluginOf(record.creating) : record.plugin;
    if (plugin.empty())
        return record.service;
    if (!record.entered.empty() && record.entered != "?")
        if (std::string service = ServiceBehind(record.entered, plugin, servicesFolder); !service.empty())
            return service;
    const bool ofCommand = record.entered.empty() && EqualText(plugin, record.servicePlugin);
    return ofCommand ? record.service : plugin;
}

CrashRecord CrashMarker::RecordOf(const Mark& mark) {
    return {Read(mark.plugin), Read(mark.service), Read(mark.servicePlugin), Read(mark.creating), Read(mark.entered),
            mark.signal,       mark.hung != 0};
}

CrashRecord CrashMarker::Current(const char* plugin) const {
    CrashRecord record = m_mark ? RecordOf(*m_mark) : CrashRecord();
    record.plugin = plugin ? plugin : "";
    return record;
}

CrashMarker::CrashMarker(const std::string& folder) {
    if (folder.empty())
        return;
    TakeOld(folder);
    Make(folder);
    if (!m_mark)
        return;
    livingMark = m_mark;
    InstallHandlers();
}

CrashMarker::~CrashMarker() {
    if (!m_mark)
        return;
    void* mine = m_mark;
    livingMark.compare_exchange_strong(mine, nullptr);
    ::unlink(m_path.c_str());
    ::munmap(m_mark, sizeof(Mark));
    ::close(m_file);
}

// The lock of a program that lives can't be had.
void CrashMarker::TakeOld(const std::string& folder) {
    std::error_code error;
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        if (entry.path().extension() == ".running")
            paths.push_back(entry.path().string());
    for (const std::string& path : paths) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0)
            continue;
        Mark mark{};
        if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
            const bool whole = ::read(file, &mark, sizeof mark) == static_cast<ssize_t>(sizeof mark) &&
                               std::memcmp(mark.magic, magic, sizeof magic) == 0;
            CrashRecord record = RecordOf(mark);
            if (whole && !(record.plugin.empty() && record.service.empty() && record.creating.empty()))
                m_found.push_back(std::move(record));
            ::unlink(path.c_str());
        }
        ::close(file);
    }
}

void CrashMarker::Make(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    m_path = folder + "/" + std::to_string(::getpid()) + ".running";
    m_file = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_file < 0)
        return;
    void* mapped = MAP_FAILED;
    if (::flock(m_file, LOCK_EX | LOCK_NB) == 0 && ::ftruncate(m_file, sizeof(Mark)) == 0)
        mapped = ::mmap(nullptr, sizeof(Mark), PROT_READ | PROT_WRITE, MAP_SHARED, m_file, 0);
    if (mapped == MAP_FAILED) {
        ::close(m_file);
        return;
    }
    m_mark = static_cast<Mark*>(mapped);
    *m_mark = {};
    std::memcpy(m_mark->magic, magic, sizeof magic);
}

void CrashMarker::SetService(const std::string& service, const std::string& plugin) {
    if (!m_mark)
        return;
    Write(m_mark->service, service.c_str());
    Write(m_mark->servicePlugin, plugin.c_str());
}

void CrashMarker::SetCreating(const std::string& progID) {
    if (m_mark)
        Write(m_mark->creating, progID.c_str());
}

void CrashMarker::SetEntered(const std::string& what) {
    if (m_mark)
        Write(m_mark->entered, what.c_str());
}

void CrashMarker::SetHung(const char* plugin) {
    if (!m_mark)
        return;
    Write(m_mark->plugin, plugin ? plugin : "");
    m_mark->hung = plugin ? 1 : 0;
}

} // namespace corvane::desktop
