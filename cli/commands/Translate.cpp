#include "adapters/catalogue/Catalogue.h"
#include "adapters/catalogue/SourceTexts.h"
#include "adapters/common/Paths.h"
#include "adapters/files/FileSystem.h"
#include "adapters/xml/XmlService.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Text.h"
#include "forms/FormReader.h"
#include "forms/WelcomeFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

namespace fs = std::filesystem;

struct TranslateArguments {
    std::string application;
    std::vector<std::string> languages;
    std::vector<std::string> sources;
    bool check = false;
};

// The folder of an application's definition files, or one that holds definition files itself.
std::string DefinitionFolder(const std::string& application) {
    const std::string services = application + "/Services";
    std::string folder = fs::is_directory(services) ? services : application;
    // A build links to the definitions of the sources, and there the work of translators has to stay.
    for (const std::string& path : FileSystem().Files(folder))
        if (EqualText(fs::path(path).extension().string(), ".xml") && fs::is_symlink(path))
            return fs::proximate(fs::canonical(path).parent_path()).string();
    return folder;
}

// Those of the forms beside the folder of definitions, in the order of their names.
void AddTextsOfForms(const std::string& folder, std::vector<DefinitionText>& texts) {
    const auto path = FindPath(JoinPath(fs::path(folder).parent_path().string(), "Forms"));
    if (!path || !fs::is_directory(*path))
        return;
    const FileSystem files;
    for (const std::string& file : files.Files(*path)) {
        if (!EqualText(files.Extension(file), "ui"))
            continue;
        const forms::FormDef form = forms::ReadFormFile(file);
        if (!form.readable)
            Fail(FailureNumber::FileAccess,
                 file + ":" + std::to_string(form.problems.front().at.line) + ": " + form.problems.front().text);
        for (const forms::FormMessage& message : forms::TextsOf(form))
            texts.push_back({message.key, message.text, files.FileName(file), message.at.line});
    }
}

void AddTextsOfWelcome(const std::string& folder, std::vector<DefinitionText>& texts) {
    const std::string path = forms::WelcomePathOf(fs::path(folder).parent_path().string());
    if (path.empty())
        return;
    const forms::WelcomeDef welcome = forms::ReadWelcome(ReadFileOrFail(path));
    for (const auto& [key, entry] : forms::WelcomeTexts(welcome))
        texts.push_back({forms::WelcomeKey(key), entry.text, FileSystem().FileName(path), entry.at.line});
}

// Those of all sources in the folders and below them, in the order of their names.
void AddTextsOfSources(const std::vector<std::string>& folders, std::vector<DefinitionText>& texts) {
    std::vector<fs::path> paths;
    for (const std::string& folder : folders) {
        if (!fs::is_directory(folder))
            Fail(FailureNumber::PathNotFound, "there is no folder \"" + folder + "\" of sources");
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (const fs::path ending = entry.path().extension(); ending == ".cpp" || ending == ".h")
                paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    for (const fs::path& path : paths)
        AddSourceTexts(ReadFileOrFail(path.string()), path.filename().string(), texts);
}

std::vector<DefinitionText> TextsIn(const std::string& folder) {
    const FileSystem files;
    XmlService xml;
    DefinitionTexts texts;
    for (const std::string& path : files.Files(folder)) {
        if (!EqualText(files.Extension(path), "xml"))
            continue;
        const auto document = xml.NewDocument();
        if (!document->LoadXml(files.ReadAll(path)))
            Fail(FailureNumber::FileAccess, path + ": " + document->ParseError().sReason);
        if (const auto service = document->SelectSingleNode("/Service"))
            texts.Add(service, files.FileName(path));
    }
    std::vector<DefinitionText> all = texts.All();
    AddTextsOfForms(folder, all);
    AddTextsOfWelcome(folder, all);
    if (all.empty())
        Fail(FailureNumber::PathNotFound, "there is no definition file with a text in \"" + folder + "\"");
    return all;
}

// Whole or not at all: a catalogue holds the work of users.
void Write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    const fs::path newPath = path.string() + ".new";
    std::ofstream file(newPath, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        Fail(FailureNumber::FileAccess, "\"" + newPath.string() + "\" can't be written");
    fs::rename(newPath, path);
}

// True when nothing is left to do.
bool Update(const fs::path& path, std::vector<DefinitionText> texts, bool withSources, bool writes) {
    const bool isNew = !fs::exists(path);
    const std::string before = isNew ? std::string() : FileSystem().ReadAll(path.string());
    std::vector<CatalogueFault> faults;
    Catalogue catalogue = Catalogue::Read(before, faults);
    for (const CatalogueFault& fault : faults)
        std::cerr << path.string() << ":" << fault.line << ": " << fault.text << "\n";
    if (catalogue.Messages().empty() && !faults.empty())
        Fail(FailureNumber::FileAccess, "correct " + path.string() + " first; nothing has been written");
    if (!withSources) // whose texts stay as they are
        for (const CatalogueMessage& message : catalogue.Messages())
            if (message.key == sourceTextKey && !message.vanished)
                texts.push_back({message.key, message.text, message.place, 0});
    const CatalogueUpdate update = catalogue.Update(texts, path.stem().string());
    const std::string after = catalogue.AsText();
    if (writes && after != before)
        Write(path, after);
    std::cout << path.string() << ": " << texts.size() << " texts, " << update.unfinished << " to be translated; "
              << update.newCount << " new";
    if (update.filled > 0)
        std::cout << " (" << update.filled << " as the same text elsewhere)";
    std::cout << ", " << update.changed << " changed, " << update.vanished << " vanished\n";
    return faults.empty() && update.unfinished == 0 && update.newCount == 0;
}

// "de", "pt_BR", "sr_Latn": anything else would be a file that no host looks for.
bool IsLanguage(const std::string& language) {
    const auto letters = [](std::string_view part) {
        return !part.empty() && std::all_of(part.begin(), part.end(), [](unsigned char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        });
    };
    const std::string_view text = language;
    const std::size_t end = std::min(text.find('_'), text.size());
    bool is = (end == 2 || end == 3) && letters(text.substr(0, end)) &&
              text.substr(0, end).find_first_not_of("abcdefghijklmnopqrstuvwxyz") == std::string_view::npos;
    for (std::size_t i = end; is && i < text.size();) {
        const std::size_t next = std::min(text.find('_', i + 1), text.size());
        is = letters(text.substr(i + 1, next - i - 1));
        i = next;
    }
    return is;
}

int Translate(TranslateArguments arguments) {
    const std::string folder = DefinitionFolder(ApplicationFolder(arguments.application, Also::Sources));
    const fs::path catalogues = fs::path(folder) / "translations";
    for (const std::string& language : arguments.languages)
        if (!IsLanguage(language)) {
            std::cerr << "corvane translate: error: \"" << language
                      << "\" isn't a language; write it as in \"de\" or \"pt_BR\"\n";
            return Exit::Usage;
        }
    if (arguments.languages.empty() && fs::is_directory(catalogues))
        for (const auto& entry : fs::directory_iterator(catalogues))
            if (entry.path().extension() == ".po")
                arguments.languages.push_back(entry.path().stem().string());
    std::sort(arguments.languages.begin(), arguments.languages.end());
    if (arguments.languages.empty()) {
        std::cerr << "corvane translate: error: " << catalogues.string()
                  << " holds no catalogue yet; name a language, as in --language de\n";
        return Exit::Usage;
    }
    std::vector<DefinitionText> texts = TextsIn(folder);
    AddTextsOfSources(arguments.sources, texts);
    bool done = true;
    for (const std::string& language : arguments.languages)
        done = Update(catalogues / (language + ".po"), texts, !arguments.sources.empty(), !arguments.check) && done;
    return done || !arguments.check ? Exit::Clean : Exit::Findings;
}

} // namespace

void AddTranslate(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<TranslateArguments>();
    auto* translate = app.add_subcommand(
        "translate", "Updates the catalogues of translations from the definition files of an application");
    translate->add_option("APP", arguments->application, "The application folder, or a folder of definition files")
        ->required();
    translate
        ->add_option("--language", arguments->languages,
                     "The language of a catalogue to create or update; by default all existing ones")
        ->type_name("LANGUAGE");
    translate
        ->add_option("--sources", arguments->sources,
                     "A folder of C++ sources, whose texts in calls of Translated are added; may be repeated")
        ->type_name("FOLDER");
    translate->add_flag("--check", arguments->check,
                        "Write nothing; exit with 1 if something is missing, changed or wrong");
    translate->callback([arguments, &run] { run = [arguments] { return Translate(*arguments); }; });
}

} // namespace corvane::tool
