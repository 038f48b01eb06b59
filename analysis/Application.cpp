#include "analysis/Application.h"

#include "adapters/common/Paths.h"
#include "adapters/files/FileSystem.h"
#include "adapters/ini/IniReader.h"
#include "adapters/xml/XmlService.h"
#include "analysis/CheckForm.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace corvane::check {

namespace fs = std::filesystem;

namespace {

// This one file is read only while the INI file of the installation lets it.
bool IsShutOut(const std::string& name, const std::string& application) {
    return EqualText(name, "MirelonSvc.xml") &&
           New<IniReader>()->ReadInteger(JoinPath(application, "QRZ.INI"), "Preferences", "QRZVGEnabled", 1) != 1;
}

void ReportSchema(const std::string& path, const std::string& folder, const Failure& failure, Report& report) {
    std::string cure = "copy the Service.xdr that comes with Corvane there";
    if (!FindPath(path))
        for (const char* name : {"Service.xsd", "Services.xdr", "Service.xdr.txt", "Service.rng", "Service.xdr.xml"})
            if (FindPath(JoinPath(folder, name)))
                cure = "rename " + Quoted(name) + " to \"Service.xdr\"";
    report.Add(Rule::SchemaFile, {path, {}}, "the application doesn't start: " + failure.Description, std::move(cure));
}

Ref<IXmlSchemaCache> ReadSchema(const Ref<IXmlService>& xml, const std::string& folder, Report& report) {
    const std::string path = JoinPath(folder, "Service.xdr");
    try {
        Ref<IXmlSchemaCache> schema = xml->NewSchemaCache();
        schema->Add("", path);
        return schema;
    } catch (const Failure& failure) {
        ReportSchema(path, folder, failure, report);
        return nullptr;
    }
}

// The names of the links in a folder, by one look into it.
std::unordered_set<std::string> LinksIn(const std::string& folder) {
    std::unordered_set<std::string> links;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        if (it->is_symlink(error))
            links.insert(it->path().filename().string());
    return links;
}

// Where a user edits a file that is a link: the application folder of a build has links to those of the sources.
// Relative to the current folder if the application's path is.
std::string EditedPath(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    if (error)
        return path;
    const fs::path here = fs::current_path(error);
    const fs::path below = error || fs::path(path).is_absolute() ? fs::path() : real.lexically_relative(here);
    return below.empty() || *below.begin() == ".." ? real.string() : below.string();
}

// The files that take part, by the names of their services.
using ByName = std::unordered_multimap<std::string_view, const File*>;

// The file before of which this one is a copy, whose bytes are all the same; a null pointer when it is none.
const File* OriginalOf(const File& file, const ByName& before) {
    const auto [first, last] = before.equal_range(file.root->Value("Name"));
    const auto it = std::find_if(first, last, [&](const auto& each) { return each.second->bytes == file.bytes; });
    return it == last ? nullptr : it->second;
}

// A copy is one mistake, however many names are there twice.
void LeaveOutCopy(File& file, const File& first, Report& report) {
    report.Add(Rule::DuplicateName, file.At(file.root->At("Name")),
               "the file is a copy of " + Quoted(first.name) + ", so the library leaves it out",
               "remove one of both, or give all that it defines names of its own",
               {{first.At(first.root->At("Name")), "the first one"}});
    file.active = false;
    file.isCopy = true;
}

// What an editor holds of the file comes before what has been saved.
bool ReadBytesOf(File& file, const std::string& path, const Buffers& buffers, Report& report) {
    const auto buffer = buffers.find(file.path);
    if (buffer != buffers.end()) {
        file.bytes = buffer->second;
        return true;
    }
    if (auto bytes = ReadBytes(path)) {
        file.bytes = *std::move(bytes);
        return true;
    }
    report.Add(Rule::UnreadableFile, {file.path, {}},
               Quoted(file.name) + " can't be read (" + std::strerror(errno) + "), so its service is left out",
               "make it readable, as with chmod a+r " + file.name);
    return false;
}

} // namespace

void ReadApplication(Model& model, const std::string& application, Report& report, const Buffers& buffers) {
    const std::optional<std::string> folder = FindPath(JoinPath(application, "Services"));
    if (!folder || !fs::is_directory(*folder))
        Fail(FailureNumber::PathNotFound,
             "\"" + application +
                 "\" isn't an application folder: it has no folder \"Services\" with definition files");
    const Ref<IXmlService> xml = New<XmlService>();
    const FileReader reader(xml, ReadSchema(xml, *folder, report));
    const auto fileSystem = New<FileSystem>();
    const std::unordered_set<std::string> links = LinksIn(*folder);
    ByName before;
    for (const std::string& path : fileSystem->Files(*folder)) {
        const std::string name = fileSystem->FileName(path);
        if (!EqualText(fileSystem->Extension(path), "xml") || IsShutOut(name, application))
            continue;
        auto file = std::make_unique<File>();
        file->path = links.contains(name) ? EditedPath(path) : path;
        file->name = name;
        if (!ReadBytesOf(*file, path, buffers, report)) {
            model.complete = false;
            continue;
        }
        reader.Read(*file, model.memory, report);
        model.complete &= file->root != nullptr;
        if (file->active && !file->root->Value("Name").empty()) {
            if (const File* original = OriginalOf(*file, before))
                LeaveOutCopy(*file, *original, report);
            else
                before.emplace(file->root->Value("Name"), file.get());
        }
        model.files.push_back(std::move(file));
    }
}

} // namespace corvane::check
