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
    std::uintptr_t nBegin;
    std::uintptr_t nEnd;
    char aName[128];
};

// A signal handler reads what stands below the count, which doesn't change any more.
constexpr std::size_t nMostRanges = 1024;
std::array<Range, nMostRanges> aRanges;
std::atomic<std::size_t> nRanges{0};

bool IsNoted(std::uintptr_t nBegin) {
    for (std::size_t i = 0; i < nRanges.load(std::memory_order_relaxed); ++i)
        if (aRanges[i].nBegin == nBegin)
            return true;
    return false;
}

std::string PluginName(const std::filesystem::path& oPath) {
    const std::string sName = oPath.stem().string();
    return sName.starts_with("lib") ? sName.substr(3) : sName;
}

int NoteLibrary(dl_phdr_info* pInfo, std::size_t, void* pFolder) {
    const auto& oFolder = *static_cast<const std::filesystem::path*>(pFolder);
    std::error_code oError;
    if (!pInfo->dlpi_name || !*pInfo->dlpi_name ||
        !std::filesystem::equivalent(std::filesystem::path(pInfo->dlpi_name).parent_path(), oFolder, oError))
        return 0;
    for (int i = 0; i < pInfo->dlpi_phnum; ++i) {
        const auto& oHeader = pInfo->dlpi_phdr[i];
        const std::uintptr_t nBegin = pInfo->dlpi_addr + oHeader.p_vaddr;
        const std::size_t n = nRanges.load(std::memory_order_relaxed);
        if (oHeader.p_type != PT_LOAD || !(oHeader.p_flags & PF_X) || IsNoted(nBegin) || n == nMostRanges)
            continue;
        aRanges[n] = {nBegin, nBegin + oHeader.p_memsz, {}};
        std::strncpy(aRanges[n].aName, PluginName(pInfo->dlpi_name).c_str(), sizeof aRanges[n].aName - 1);
        nRanges.store(n + 1, std::memory_order_release);
    }
    return 0;
}

} // namespace

void NoteLibraries(const std::string& sFolder) {
    std::filesystem::path oFolder(sFolder);
    ::dl_iterate_phdr(NoteLibrary, &oFolder);
}

const char* Innermost() noexcept {
    std::array<void*, 256> aCalls;
    const int nCalls = ::backtrace(aCalls.data(), static_cast<int>(aCalls.size()));
    const std::size_t n = nRanges.load(std::memory_order_acquire);
    for (int iCall = 0; iCall < nCalls; ++iCall) {
        const auto nAddress = reinterpret_cast<std::uintptr_t>(aCalls[static_cast<std::size_t>(iCall)]);
        for (std::size_t i = 0; i < n; ++i)
            if (nAddress >= aRanges[i].nBegin && nAddress < aRanges[i].nEnd)
                return aRanges[i].aName;
    }
    return nullptr;
}

} // namespace corvane::desktop::PluginCode
