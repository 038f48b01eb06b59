#include "adapters/common/Paths.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>

namespace corvane::check {

namespace {

class ImageCheck {
public:
    ImageCheck(const std::string& application, Report& report)
        : m_folder(JoinPath(application, "Images")), m_report(report) {}

    void Check(const File& file, const Element& element) {
        if (element.name == "MenuItem")
            return;
        for (const Attribute& attribute : element.attributes)
            if (attribute.Name().starts_with("Image") && !attribute.Value().empty())
                CheckImage(std::string(attribute.Value()), file, attribute.AtValue());
        for (const Element& child : element.Children())
            Check(file, child);
    }

    // Of explorer items that name none.
    void CheckGeneric(const std::deque<Provider>& items) {
        for (const Provider& item : items)
            if (item.element->Value("Image").empty())
                return CheckImage("GenericExplorerItem.ico", *item.file, item.element->At());
    }

private:
    enum class State { Good, Missing, Unreadable };

    void CheckImage(const std::string& name, const File& file, Spot spot) {
        const auto [it, isNew] = m_states.try_emplace(name, State::Good);
        if (isNew)
            it->second = StateOf(name);
        if (it->second == State::Missing)
            m_report.Add(Rule::MissingImage, file.At(spot),
                         "there is no picture " + Quoted(name) + " in the folder Images",
                         WriteInstead(Names(), name, "put it there"));
        else if (it->second == State::Unreadable)
            m_report.Add(Rule::UnreadableImage, file.At(spot),
                         "the file " + Quoted(name) + " isn't a supported picture",
                         "save it as PNG, BMP, ICO, GIF, JPEG or SVG");
    }

    [[nodiscard]] State StateOf(const std::string& name) const {
        const std::optional<std::string> path = FindPath(JoinPath(m_folder, name));
        std::error_code error;
        if (!path || std::filesystem::is_directory(*path, error))
            return State::Missing;
        const std::optional<std::string> bytes = ReadBytes(*path);
        return bytes && PictureLoader::FormatOf(*bytes) ? State::Good : State::Unreadable;
    }

    [[nodiscard]] const std::vector<std::string>& Names() {
        if (!m_names)
            m_names = NamesIn(FindPath(m_folder).value_or(m_folder)).value_or(std::vector<std::string>());
        return *m_names;
    }

    std::string m_folder;
    Report& m_report;
    std::unordered_map<std::string, State, TextHash, TextEqual> m_states; // by name
    std::optional<std::vector<std::string>> m_names;
};

class ProgIdCheck {
public:
    ProgIdCheck(const std::string& application, bool plugins, Report& report)
        : m_factory(JoinPath(application, "plugins")), m_report(report) {
        std::error_code error;
        m_built = plugins || std::filesystem::is_directory(JoinPath(application, "plugins"), error);
    }

    void Check(const Provider& provider) {
        const std::string& progID = provider.progID;
        const bool page = provider.kind == ProviderKind::Page || provider.kind == ProviderKind::PreferencePage;
        if (progID.empty() || (provider.kind == ProviderKind::Service && EqualText(progID, "Corvane.Framework")))
            return;
        const std::string_view attribute = page ? "PageProgID" : "ProgID";
        const std::size_t point = progID.find('.');
        if (point == 0 || point == std::string::npos || point + 1 == progID.size() ||
            progID.find_first_of("/\\") < point) {
            m_report.Add(Rule::BadProgId, provider.At(attribute),
                         Quoted(progID) + " isn't of the form \"Library.Class\"",
                         "write the name of the plug-in, a point, and the class");
            return;
        }
        const std::string library = progID.substr(0, point);
        if (m_built && !IsThere(library))
            m_report.Add(Rule::MissingPlugin, provider.At(attribute),
                         "there is no plug-in " + Quoted(m_factory.PathOf(library)),
                         WriteInstead(m_libraries, library, "build it into that folder"));
    }

private:
    [[nodiscard]] bool IsThere(const std::string& library) {
        if (!m_read)
            m_libraries = m_factory.Libraries();
        m_read = true;
        return std::any_of(m_libraries.begin(), m_libraries.end(),
                           [&](const std::string& name) { return EqualText(name, library); });
    }

    PluginFactory m_factory;
    Report& m_report;
    std::vector<std::string> m_libraries;
    bool m_read = false;
    bool m_built = false;
};

} // namespace

void CheckFolder(Model& model, const std::string& application, bool plugins, Report& report) {
    ImageCheck images(application, report);
    for (const auto& file : model.files)
        if (file->active)
            images.Check(*file, *file->root);
    images.CheckGeneric(model.items);
    ProgIdCheck progIds(application, plugins, report);
    for (const auto* providers : {&model.services, &model.items, &model.pages, &model.preferencePages})
        for (const Provider& provider : *providers)
            progIds.Check(provider);
}

} // namespace corvane::check
