#include "cli/package/RunPath.h"

#include "corvane/base/Failure.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <link.h>
#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

namespace corvane::package {

namespace {

constexpr std::string_view Own = "$ORIGIN";

[[noreturn]] void FailAccess(const std::filesystem::path& file, const std::string& what) {
    Fail(FailureNumber::FileAccess, "\"" + file.string() + "\" can't be " + what, "corvane package");
}

// The bytes of an ELF file. Whatever its offsets say, nothing outside of them is read.
class Image {
public:
    explicit Image(std::string& bytes) : m_bytes(bytes) {}

    [[nodiscard]] bool IsNative() const {
        constexpr unsigned char wordSize = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
        return m_bytes.size() >= sizeof(ElfW(Ehdr)) && m_bytes.compare(0, SELFMAG, ELFMAG) == 0 &&
               static_cast<unsigned char>(m_bytes[EI_CLASS]) == wordSize;
    }

    // Where the run path's text begins in the file.
    [[nodiscard]] std::optional<std::size_t> RunPath() const {
        std::optional<std::size_t> texts;
        std::vector<std::size_t> paths;
        for (const auto& segment : Segments()) {
            if (segment.p_type != PT_DYNAMIC)
                continue;
            for (std::size_t at = segment.p_offset; at < segment.p_offset + segment.p_filesz; at += sizeof(ElfW(Dyn))) {
                const auto entry = At<ElfW(Dyn)>(at);
                if (!entry || entry->d_tag == DT_NULL)
                    break;
                if (entry->d_tag == DT_STRTAB)
                    texts = OffsetOf(entry->d_un.d_ptr);
                else if (entry->d_tag == DT_RUNPATH || entry->d_tag == DT_RPATH)
                    paths.push_back(entry->d_un.d_val);
            }
        }
        if (!texts || paths.empty() || *texts + paths.front() >= m_bytes.size())
            return {};
        return *texts + paths.front();
    }

private:
    template <class T>
    [[nodiscard]] std::optional<T> At(std::size_t at) const {
        if (at > m_bytes.size() || m_bytes.size() - at < sizeof(T))
            return {};
        T value;
        std::memcpy(&value, m_bytes.data() + at, sizeof(T));
        return value;
    }

    [[nodiscard]] std::vector<ElfW(Phdr)> Segments() const {
        std::vector<ElfW(Phdr)> segments;
        const auto header = At<ElfW(Ehdr)>(0);
        for (std::size_t i = 0; header && i < header->e_phnum; ++i)
            if (const auto segment = At<ElfW(Phdr)>(header->e_phoff + i * sizeof(ElfW(Phdr))))
                segments.push_back(*segment);
        return segments;
    }

    // Of an address in memory.
    [[nodiscard]] std::optional<std::size_t> OffsetOf(std::size_t address) const {
        for (const auto& segment : Segments())
            if (segment.p_type == PT_LOAD && address >= segment.p_vaddr && address - segment.p_vaddr < segment.p_filesz)
                return address - segment.p_vaddr + segment.p_offset;
        return {};
    }

    std::string& m_bytes;
};

} // namespace

std::string RemoveForeignRunPath(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in)
        FailAccess(file, "read");
    const Image image(bytes);
    const auto at = image.IsNative() ? image.RunPath() : std::nullopt;
    if (!at)
        return {};
    const std::string before(bytes.c_str() + *at);
    std::string kept;
    std::string removed;
    std::istringstream folders(before);
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string& list = folder.starts_with(Own) || folder.starts_with("${ORIGIN}") ? kept : removed;
        list += (list.empty() ? "" : ":") + folder;
    }
    if (removed.empty())
        return {};
    if (kept.empty() && before.size() >= Own.size())
        kept = Own;
    kept.resize(before.size(), '\0');
    std::copy(kept.begin(), kept.end(), bytes.begin() + static_cast<std::ptrdiff_t>(*at));
    std::ofstream out(file, std::ios::binary | std::ios::in | std::ios::out);
    out.seekp(static_cast<std::streamoff>(*at));
    if (!out.write(bytes.data() + *at, static_cast<std::streamsize>(before.size())) || !out.flush())
        FailAccess(file, "written");
    return removed;
}

} // namespace corvane::package
