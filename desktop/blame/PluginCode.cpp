#include "desktop/blame/PluginCode.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <execinfo.h>
#include <filesystem>
#include <link.h>

namespace corvane::desktop::PluginCode {

namespace {

struct Range {
    std::uintptr_t begin;
    std::uintptr_t end;
    char name[128];
};

// A signal handler reads what is below the count, which doesn't change any more.
constexpr std::size_t mostRanges = 1024;
std::array<Range, mostRanges> ranges;
std::atomic<std::size_t> rangeCount{0};

bool IsNoted(std::uintptr_t begin) {
    for (std::size_t i = 0; i < rangeCount.load(std::memory_order_relaxed); ++i)
        if (ranges[i].begin == begin)
            return true;
    return false;
}

std::string PluginName(const std::filesystem::path& path) {
    const std::string name = path.stem().string();
    return name.starts_with("lib") ? name.substr(3) : name;
}

int NoteLibrary(dl_phdr_info* info, std::size_t, void* userData) {
    const auto& folder = *static_cast<const std::filesystem::path*>(userData);
    std::error_code error;
    if (!info->dlpi_name || !*info->dlpi_name ||
        !std::filesystem::equivalent(std::filesystem::path(info->dlpi_name).parent_path(), folder, error))
        return 0;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto& header = info->dlpi_phdr[i];
        const std::uintptr_t begin = info->dlpi_addr + header.p_vaddr;
        const std::size_t n = rangeCount.load(std::memory_order_relaxed);
        if (header.p_type != PT_LOAD || !(header.p_flags & PF_X) || IsNoted(begin) || n == mostRanges)
            continue;
        ranges[n] = {begin, begin + header.p_memsz, {}};
        std::strncpy(ranges[n].name, PluginName(info->dlpi_name).c_str(), sizeof ranges[n].name - 1);
        rangeCount.store(n + 1, std::memory_order_release);
    }
    return 0;
}

} // namespace

void NoteLibraries(const std::string& folderPath) {
    std::filesystem::path folder(folderPath);
    ::dl_iterate_phdr(NoteLibrary, &folder);
}

const char* Innermost() noexcept {
    std::array<void*, 256> calls;
    const int callCount = ::backtrace(calls.data(), static_cast<int>(calls.size()));
    const std::size_t n = rangeCount.load(std::memory_order_acquire);
    for (int call = 0; call < callCount; ++call) {
        const auto address = reinterpret_cast<std::uintptr_t>(calls[static_cast<std::size_t>(call)]);
        for (std::size_t i = 0; i < n; ++i)
            if (address >= ranges[i].begin && address < ranges[i].end)
                return ranges[i].name;
    }
    return nullptr;
}

} // namespace corvane::desktop::PluginCode
