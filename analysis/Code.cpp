#include "analysis/Code.h"

#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"

#include <algorithm>
#include <cctype>

namespace corvane::check {

namespace {

bool MayBeOfName(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '.' || c == '_';
}

} // namespace

const std::vector<Code::Library>& Code::Libraries() const {
    if (m_isRead)
        return m_libraries;
    m_isRead = true;
    const PluginFactory factory(JoinPath(m_application, "plugins"));
    for (const std::string& name : factory.Libraries()) {
        const std::string path = factory.PathOf(name);
        if (auto bytes = ReadBytes(path))
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
    const std::string_view bytes = library.bytes;
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
