#include "analysis/Code.h"

#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Source.h"

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

bool HoldsConstants(const Elf64_Shdr& section) {
    return section.sh_type == SHT_PROGBITS && (section.sh_flags & SHF_ALLOC) != 0 &&
           (section.sh_flags & SHF_EXECINSTR) == 0;
}

bool HoldsNamesToLink(const Elf64_Shdr& section) {
    return section.sh_type == SHT_STRTAB && (section.sh_flags & SHF_ALLOC) != 0;
}

// Those sections of a shared library, without debug information; of anything else all.
std::vector<std::string_view> SectionsOf(std::string_view bytes, bool (&isWanted)(const Elf64_Shdr&)) {
    std::vector<std::string_view> sections;
    const auto file = HeaderAt<Elf64_Ehdr>(bytes, 0);
    if (!file || !bytes.starts_with(ELFMAG) || file->e_ident[EI_CLASS] != ELFCLASS64)
        return {bytes}; // whatever it is
    for (std::size_t i = 0; i < file->e_shnum; ++i) {
        const auto section = HeaderAt<Elf64_Shdr>(bytes, file->e_shoff + i * sizeof(Elf64_Shdr));
        if (section && isWanted(*section) && section->sh_offset <= bytes.size())
            sections.push_back(bytes.substr(section->sh_offset, section->sh_size));
    }
    return sections;
}

bool MayBeOfName(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '.' || c == '_';
}

// The sources beside the file that says how a service is started.
std::vector<std::filesystem::path> SourcesBeside(const std::string& path) {
    std::vector<std::filesystem::path> sources;
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        constexpr std::uintmax_t most = 1 << 20;
        if (entry.is_regular_file(error) && entry.file_size(error) <= most)
            sources.push_back(entry.path());
    }
    std::sort(sources.begin(), sources.end());
    return sources;
}

// What is in quotation marks, as texts of a library end: with zero bytes between.
std::string QuotedIn(std::string_view source) {
    std::string texts;
    char quote = 0;
    for (const char c : source) {
        if (c == '\n' || c == quote) {
            quote = 0;
            texts += '\0';
        } else if (!quote && (c == '"' || c == '\'')) {
            quote = c;
        } else if (quote) {
            texts += MayBeOfName(c) ? c : '\0';
        }
    }
    return texts + '\0';
}

// Each as it is, and its texts.
std::string TextsOf(const std::vector<std::filesystem::path>& sources) {
    std::string all;
    for (const auto& source : sources) {
        const std::string text = ReadBytes(source.string()).value_or(std::string());
        all += text + '\0' + QuotedIn(text);
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
            m_libraries.push_back({name, path, TextsOf(SourcesBeside(path))});
        else if (auto bytes = ReadBytes(path))
            m_libraries.push_back({name, path, *std::move(bytes)});
    }
    return m_libraries;
}

bool Code::Holds(std::string_view text) const {
    return std::any_of(Libraries().begin(), Libraries().end(),
                       [&](const Library& library) { return Holds(library, text); });
}

bool Code::Links(std::string_view name) const {
    return std::any_of(Libraries().begin(), Libraries().end(), [&](const Library& library) {
        const auto sections = SectionsOf(library.bytes, HoldsNamesToLink);
        return std::any_of(sections.begin(), sections.end(),
                           [&](std::string_view names) { return names.find(name) != std::string_view::npos; });
    });
}

bool Code::Holds(const Library& library, std::string_view text) {
    return library.bytes.find(text) != std::string::npos;
}

std::set<std::string> Code::Names(const Library& library) {
    std::set<std::string> names;
    for (const std::string_view bytes : SectionsOf(library.bytes, HoldsConstants))
        for (std::size_t begin = 0; begin < bytes.size();) {
            const std::size_t end = std::min(bytes.find('\0', begin), bytes.size());
            const std::string_view text = bytes.substr(begin, end - begin);
            if (text.size() >= 3 && text.size() <= 100 && std::all_of(text.begin(), text.end(), MayBeOfName))
                names.emplace(text);
            begin = end + 1;
        }
    return names;
}

Place Code::PlaceOf(const Library& library, std::string_view text) {
    if (!library.path.ends_with(".so"))
        for (const auto& source : SourcesBeside(library.path))
            for (const char quote : {'"', '\''}) {
                const std::string bytes = ReadBytes(source.string()).value_or(std::string());
                if (const std::size_t found = bytes.find(quote + std::string(text) + quote); found != std::string::npos)
                    return {source.string(), Lines().PositionOf(bytes, bytes.data() + found)};
            }
    return {library.path, {}};
}

} // namespace corvane::check
