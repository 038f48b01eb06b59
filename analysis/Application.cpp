#include "analysis/Application.h"

#include "adapters/common/Paths.h"
#include "adapters/files/FileSystem.h"
#include "adapters/ini/IniReader.h"
#include "adapters/xml/XmlService.h"
#include "analysis/CheckForm.h"
#include "corvane/base/Text.h"

#include <filesystem>
#include <string_view>
#include <unordered_map>

namespace corvane::check {

namespace fs = std::filesystem;

namespace {

// This one file is read only while the INI file of the installation lets it.
bool IsShutOut(const std::string& name, const std::string& application) {
    return EqualText(name, "MirelonSvc.xml") &&
           New<IniReader>()->ReadInteger(JoinPath(application, "QRZ.INI"), "Preferences", "QRZVGEnabled", 1) != 1;
}

Ref<IXmlSchemaCache> ReadSchema(const Ref<IXmlService>& xml, const std::string& folder, Report& report) {
    const std::string path = JoinPath(folder, "Service.xdr");
    try {
        Ref<IXmlSchemaCache> schema = xml->NewSchemaCache();
        schema->Add("", path);
        return schema;
    } catch (const Failure& failure) {
        report.Add(Rule::SchemaFile, {path, {}}, failure.Description,
                   "copy the Service.xdr that comes with Corvane there");
        return nullptr;
    }
}

// Where a user edits the file: the application folder of a build has links to those of the sources. Relative
// to the current folder if the application's path is.
std::string EditedPath(const std::string& path) {
    std::error_code error;
    if (!fs::is_symlink(path, error))
        return path;
    const fs::path real = fs::canonical(path, error);
    if (error)
        return path;
    const fs::path here = fs::current_path(error);
    const fs::path below = error || fs::path(path).is_absolute() ? fs::path() : real.lexically_relative(here);
    return below.empty() || *below.begin() == ".." ? real.string() : below.string();
}

// A copy is one mistake, however many names are there twice.
void LeaveOutCopy(File& file, const File& first, Report& report) {
    report.Add(Rule::DuplicateName, file.At(file.root->At("Name")), "the file is a copy of " + Quoted(first.name),
               "remove one of them, or give all that it defines names of its own",
               {{first.At(first.root->At("Name")), "the first one"}});
    file.active = false;
}

} // namespace

void ReadApplication(Model& model, const std::string& application, Report& report) {
    const std::optional<std::string> folder = FindPath(JoinPath(application, "Services"));
    if (!folder || !fs::is_directory(*folder))
        Fail(FailureNumber::PathNotFound,
             "\"" + application +
                 "\" isn't an application folder: it has no folder \"Services\" with definition files");
    const Ref<IXmlService> xml = New<XmlService>();
    const Ref<IXmlSchemaCache> schema = ReadSchema(xml, *folder, report);
    const auto fileSystem = New<FileSystem>();
    std::unordered_map<std::string_view, const File*> texts;
    for (const std::string& path : fileSystem->Files(*folder)) {
        const std::string name = fileSystem->FileName(path);
        if (!EqualText(fileSystem->Extension(path), "xml") || IsShutOut(name, application))
            continue;
        auto file = std::make_unique<File>();
        file->path = EditedPath(path);
        file->name = name;
        file->bytes = fileSystem->ReadAll(path);
        ReadFile(*file, xml, schema, model.memory, report);
        model.complete &= file->root != nullptr;
        if (file->active && !file->root->Value("Name").empty())
            if (const auto [it, isNew] = texts.try_emplace(file->bytes, file.get()); !isNew)
                LeaveOutCopy(*file, *it->second, report);
        model.files.push_back(std::move(file));
    }
}

} // namespace corvane::check
