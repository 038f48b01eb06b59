#include "analysis/Code.h"

#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <elf.h>
#include <filesystem>
#include <optional>

namespace corvane::check {

namespace {

template <class Header>
std::optional<Header> HeaderAt(std::string_view bytes, std::size_t offset) {
    Header header;
    if (offset > bytes.size() || bytes.size() - offset < sizeof header)
        return std::nullopt;
    std::memcpy(&header, bytes.data() + offset, sizeof header);
    return header;
}

// The constants of a shared library: what the code itself uses, without the names of symbols and of debug information.
std::vector<std::string_view> ConstantsOf(std::string_view bytes) {
    std::vector<std::string_view> constants;
    const auto file = HeaderAt<Elf64_Ehdr>(bytes, 0);
    if (!file || !bytes.starts_with(ELFMAG) || file->e_ident[EI_CLASS] != ELFCLASS64)
        return {bytes}; // whatever it is
    for (std::size_t i = 0; i < file->e_shnum; ++i) {
        const auto section = HeaderAt<Elf64_Shdr>(bytes, file->e_shoff + i * sizeof(Elf64_Shdr));
        if (section && section->sh_type == SHT_PROGBITS && (section->sh_flags & SHF_ALLOC) != 0 &&
            (section->sh_flags & SHF_EXECINSTR) == 0 && section->sh_offset <= bytes.size())
            constants.push_back(bytes.substr(section->sh_offset, section->sh_size));
    }
    return constants;
}

bool MayBeOfName(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '.' || c == '_';
}

// The sources of a service in a process, each as it is and as the words in it, which end as texts of a library do.
std::string SourcesBeside(const std::string& path) {
    std::string all;
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        constexpr std::uintmax_t most = 1 << 20;
        if (!entry.is_regular_file(error) || entry.file_size(error) > most)
            continue;
        std::string text = ReadBytes(entry.path().string()).value_or(std::string());
        all += text + '\0';
        std::replace_if(
            text.begin(), text.end(), [](char c) { return !MayBeOfName(c); }, '\0');
        all += text + '\0';
    }
    return all;
}

} // namespace

const std::vector<Code::Library>& Code::Libraries() const {
    if (m_isRead)
        return m_libraries;
    m_isRead = true;
    const PluginFactory factory(JoinPath(m_application, "plugins"));
    for (const std::string& name : factory.Libraries()) {
        const std::string path = factory.PathOf(name);
        if (factory.Processes()->FileOf(name))
            m_libraries.push_back({name, path, SourcesBeside(path)});
        else if (auto bytes = ReadBytes(path))
            m_libraries.push_back({name, path, *std::move(bytes)});
    }
    return m_libraries;
}

bool Code::Holds(std::string_view text) const {
    return std::any_of(Libraries().begin(), Libraries().end(),
                       [&](const Library& library) { return Holds(library, text); });
}

bool Code::Holds(const Library& library, std::string_view text) {
    return library.bytes.find(text) != std::string::npos;
}

std::set<std::string> Code::Names(const Library& library) {
    std::set<std::string> names;
    for (const std::string_view bytes : ConstantsOf(library.bytes))
        for (std::size_t begin = 0; begin < bytes.size();) {
            const std::size_t end = std::min(bytes.find('\0', begin), bytes.size());
            const std::string_view text = bytes.substr(begin, end - begin);
            if (text.size() >= 3 && text.size() <= 100 && std::all_of(text.begin(), text.end(), MayBeOfName))
                names.emplace(text);
            begin = end + 1;
        }
    return names;
}

} // namespace corvane::check
