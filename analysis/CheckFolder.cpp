#include "adapters/common/Nearest.h"
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
        : m_application(application), m_folder(JoinPath(application, "Images")), m_report(report) {}

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
                return CheckGenericImage(item);
    }

private:
    enum class State { Good, Missing, Unreadable };

    void CheckGenericImage(const Provider& item) {
        if (StateOf("GenericExplorerItem.ico") != State::Good)
            m_report.Add(Rule::MissingImage, item.file->At(item.element->At()),
                         item.Named() + " has no Image, and there is no picture \"GenericExplorerItem.ico\" in the " +
                             "folder Images for items without one",
                         "write Image=\"...\" here, or put \"GenericExplorerItem.ico\" there");
    }

    void CheckImage(const std::string& name, const File& file, Spot spot) {
        const auto [it, isNew] = m_states.try_emplace(name, State::Good);
        if (isNew)
            it->second = StateOf(name);
        if (it->second == State::Missing)
            ReportMissing(name, file, spot);
        else if (it->second == State::Unreadable)
            m_report.Add(Rule::UnreadableImage, file.At(spot),
                         "the file " + Quoted(name) + " isn't a picture that is known, so none is shown",
                         "save it as PNG, BMP, ICO, GIF, JPEG or SVG");
    }

    void ReportMissing(const std::string& name, const File& file, Spot spot) {
        const std::string last = name.substr(name.find_last_of("/\\") + 1);
        std::string meant;
        if (StateOf(last) == State::Good && last != name)
            meant = last; // with a folder in front
        else if (const auto nearest = Nearest(Names(), name))
            meant = *nearest;
        else
            meant = OfOtherKind(last);
        std::string cure = meant.empty() ? "put " + Quoted(last) + " into the folder Images" : "write " + Quoted(meant);
        if (const std::string folder = meant.empty() ? FolderOf(last) : std::string(); !folder.empty())
            cure = "move it there from " + folder;
        m_report.Add(Rule::MissingImage, file.At(spot),
                     "there is no picture " + Quoted(name) + " in the folder Images, so none is shown", cure);
        if (!meant.empty())
            m_report.Last().edits = {{file.path, static_cast<std::size_t>(spot - file.bytes.data()),
                                      EndOfValue(file, spot), AsValue(meant)}};
    }

    // Of the application, another one that has a picture of that name; empty when there is none.
    [[nodiscard]] std::string FolderOf(const std::string& name) const {
        if (FindPath(JoinPath(m_application, name)))
            return "the application's folder";
        for (const std::string& parent : {std::string(), std::string("Images")}) {
            const auto path = FindPath(JoinPath(m_application, parent));
            for (const std::string& folder : NamesIn(path.value_or("")).value_or(std::vector<std::string>())) {
                std::error_code error;
                const std::string below = JoinPath(*path, folder);
                if (std::filesystem::is_directory(below, error) && FindPath(JoinPath(below, name)))
                    return parent.empty() ? folder : parent + "/" + folder;
            }
        }
        return {};
    }

    // The same name with another ending.
    [[nodiscard]] std::string OfOtherKind(const std::string& name) {
        const std::string stem = name.substr(0, name.rfind('.'));
        for (const std::string& each : Names())
            if (EqualText(each.substr(0, each.rfind('.')), stem))
                return each;
        return {};
    }

    static std::size_t EndOfValue(const File& file, Spot spot) {
        const auto begin = static_cast<std::size_t>(spot - file.bytes.data());
        return file.bytes.find(file.bytes[begin - 1], begin);
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

    std::string m_application;
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
            ReportForm(provider, attribute);
            return;
        }
        const std::string library = progID.substr(0, point);
        if (m_built && !IsThere(library))
            ReportMissing(provider, attribute, library);
    }

private:
    void ReportForm(const Provider& provider, std::string_view attribute) {
        const std::string& written = provider.progID;
        std::string meant = written;
        for (const std::string_view other : {"::", "/", "\\", ":"})
            if (const std::size_t i = meant.find(other); i != std::string::npos && i > 0)
                meant = meant.substr(0, i) + "." + meant.substr(i + other.size());
        const bool isClear = meant != written && meant.find_first_of("/\\:") == std::string::npos;
        m_report.Add(Rule::BadProgId, provider.At(attribute),
                     std::string(attribute) + " " + Quoted(written) +
                         " isn't of the form \"Library.Class\", so its object can't be made",
                     isClear ? "write " + Quoted(meant)
                             : "write the name of the plug-in, a point and the class, as in \"PlotSvc.PlotService\"");
        if (isClear)
            m_report.Last().edits = {ValueEdit(*provider.file, *provider.element->Find(attribute), meant)};
    }

    void ReportMissing(const Provider& provider, std::string_view attribute, const std::string& library) {
        std::string plain = library;
        const bool hasEnds = FoldText(plain).starts_with("lib");
        if (hasEnds)
            plain.erase(0, 3);
        auto nearest = Nearest(m_libraries, library);
        if (!nearest && hasEnds)
            nearest = Nearest(m_libraries, plain);
        const std::string rest = provider.progID.substr(library.size());
        std::string cure = nearest ? "write " + Quoted(*nearest + rest) : "build it into that folder";
        const std::string path = m_factory.PathOf(library);
        const std::string folder = path.substr(0, path.rfind('/'));
        for (const std::string& file : {library + ".so", "lib" + library + ".so.1", "lib" + library + ".dll"})
            if (FindPath(JoinPath(folder, file)) && !nearest)
                cure = "rename " + Quoted(file) + " to " + Quoted("lib" + library + ".so");
        if (FindPath(JoinPath(folder, "lib" + library)) && !nearest)
            cure = "rename the folder " + Quoted("lib" + library) + " to " + Quoted(library);
        else if (FindPath(JoinPath(folder, library)) && !nearest)
            cure = "write plugins/" + library + "/plugin.json, which says how the program is started";
        const bool isService = provider.kind == ProviderKind::Service;
        m_report.Add(Rule::MissingPlugin, provider.At(attribute),
                     "there is no plug-in " + Quoted(path) + ", so " + provider.Named() +
                         (isService ? " is left out with its whole file" : " can't be made"),
                     cure);
        if (nearest)
            m_report.Last().edits = {ValueEdit(*provider.file, *provider.element->Find(attribute), *nearest + rest)};
    }

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
            // One that is meant as the framework's has a finding of its own.
            if (!IsFormAlone(provider, application) && !IsMeantAsFramework(model, provider))
                progIds.Check(provider);
}

} // namespace corvane::check
