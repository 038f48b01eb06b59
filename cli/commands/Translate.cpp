#include "adapters/catalogue/Catalogue.h"
#include "adapters/files/FileSystem.h"
#include "adapters/xml/XmlService.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

namespace fs = std::filesystem;

struct Arguments {
    std::string sApplication;
    std::vector<std::string> aLanguages;
    bool bCheck = false;
};

// The folder of an application's definition files, or one that holds definition files itself.
std::string DefinitionFolder(const std::string& sApplication) {
    const std::string sServices = sApplication + "/Services";
    const std::string sFolder = fs::is_directory(sServices) ? sServices : sApplication;
    // A build links to the definitions of the sources, and there the work of translators has to stay.
    for (const std::string& sPath : FileSystem().Files(sFolder))
        if (EqualText(fs::path(sPath).extension().string(), ".xml") && fs::is_symlink(sPath))
            return fs::proximate(fs::canonical(sPath).parent_path()).string();
    return sFolder;
}

DefinitionTexts TextsIn(const std::string& sFolder) {
    const FileSystem oFiles;
    XmlService oXml;
    DefinitionTexts oTexts;
    for (const std::string& sPath : oFiles.Files(sFolder)) {
        if (!EqualText(oFiles.Extension(sPath), "xml"))
            continue;
        const auto oDocument = oXml.NewDocument();
        if (!oDocument->LoadXml(oFiles.ReadAll(sPath)))
            Fail(FailureNumber::FileAccess, sPath + ": " + oDocument->ParseError().sReason);
        if (const auto oService = oDocument->SelectSingleNode("/Service"))
            oTexts.Add(oService, oFiles.FileName(sPath));
    }
    if (oTexts.All().empty())
        Fail(FailureNumber::PathNotFound, "there is no definition file with a text in \"" + sFolder + "\"");
    return oTexts;
}

// Whole or not at all: a catalogue holds the work of people.
void Write(const fs::path& oPath, const std::string& sText) {
    fs::create_directories(oPath.parent_path());
    const fs::path oNew = oPath.string() + ".new";
    std::ofstream oFile(oNew, std::ios::binary);
    oFile << sText;
    oFile.close();
    if (!oFile)
        Fail(FailureNumber::FileAccess, "\"" + oNew.string() + "\" can't be written");
    fs::rename(oNew, oPath);
}

// True when nothing is left to do.
bool Update(const fs::path& oPath, const DefinitionTexts& oTexts, bool bWrites) {
    const bool bIsNew = !fs::exists(oPath);
    const std::string sBefore = bIsNew ? std::string() : FileSystem().ReadAll(oPath.string());
    std::vector<CatalogueFault> aFaults;
    Catalogue oCatalogue = Catalogue::Read(sBefore, aFaults);
    for (const CatalogueFault& oFault : aFaults)
        std::cerr << oPath.string() << ":" << oFault.lLine << ": " << oFault.sText << "\n";
    if (oCatalogue.Messages().empty() && !aFaults.empty())
        Fail(FailureNumber::FileAccess, "correct " + oPath.string() + " first; nothing has been written");
    const CatalogueUpdate oUpdate = oCatalogue.Update(oTexts.All(), oPath.stem().string());
    const std::string sAfter = oCatalogue.AsText();
    if (bWrites && sAfter != sBefore)
        Write(oPath, sAfter);
    std::cout << oPath.string() << ": " << oTexts.All().size() << " texts, " << oUpdate.nUnfinished
              << " to be translated; " << oUpdate.nNew << " new";
    if (oUpdate.nFilled > 0)
        std::cout << " (" << oUpdate.nFilled << " as the same text elsewhere)";
    std::cout << ", " << oUpdate.nChanged << " changed, " << oUpdate.nVanished << " vanished\n";
    return aFaults.empty() && oUpdate.nUnfinished == 0 && oUpdate.nNew == 0;
}

// "de", "pt_BR", "sr_Latn": anything else would be a file that no host looks for.
bool IsLanguage(const std::string& sLanguage) {
    const auto fnLetters = [](std::string_view sPart) {
        return !sPart.empty() && std::all_of(sPart.begin(), sPart.end(), [](unsigned char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        });
    };
    const std::string_view sText = sLanguage;
    const std::size_t iEnd = std::min(sText.find('_'), sText.size());
    bool bIs = (iEnd == 2 || iEnd == 3) && fnLetters(sText.substr(0, iEnd)) &&
               sText.substr(0, iEnd).find_first_not_of("abcdefghijklmnopqrstuvwxyz") == std::string_view::npos;
    for (std::size_t i = iEnd; bIs && i < sText.size();) {
        const std::size_t iNext = std::min(sText.find('_', i + 1), sText.size());
        bIs = fnLetters(sText.substr(i + 1, iNext - i - 1));
        i = iNext;
    }
    return bIs;
}

int Translate(Arguments oArguments) {
    const std::string sFolder = DefinitionFolder(ApplicationFolder(oArguments.sApplication, Also::Sources));
    const fs::path oCatalogues = fs::path(sFolder) / "translations";
    for (const std::string& sLanguage : oArguments.aLanguages)
        if (!IsLanguage(sLanguage)) {
            std::cerr << "corvane translate: error: \"" << sLanguage
                      << "\" isn't a language; write it as in \"de\" or \"pt_BR\"\n";
            return Exit::Usage;
        }
    if (oArguments.aLanguages.empty() && fs::is_directory(oCatalogues))
        for (const auto& oEntry : fs::directory_iterator(oCatalogues))
            if (oEntry.path().extension() == ".po")
                oArguments.aLanguages.push_back(oEntry.path().stem().string());
    std::sort(oArguments.aLanguages.begin(), oArguments.aLanguages.end());
    if (oArguments.aLanguages.empty()) {
        std::cerr << "corvane translate: error: " << oCatalogues.string()
                  << " holds no catalogue yet; name a language, as in --language de\n";
        return Exit::Usage;
    }
    const DefinitionTexts oTexts = TextsIn(sFolder);
    bool bDone = true;
    for (const std::string& sLanguage : oArguments.aLanguages)
        bDone = Update(oCatalogues / (sLanguage + ".po"), oTexts, !oArguments.bCheck) && bDone;
    return bDone || !oArguments.bCheck ? Exit::Clean : Exit::Findings;
}

} // namespace

void AddTranslate(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pTranslate = oApp.add_subcommand(
        "translate", "Updates the catalogues of translations from the definition files of an application");
    pTranslate->add_option("APP", pArguments->sApplication, "The application folder, or a folder of definition files")
        ->required();
    pTranslate
        ->add_option("--language", pArguments->aLanguages,
                     "The language of a catalogue to create or update; by default all existing ones")
        ->type_name("LANGUAGE");
    pTranslate->add_flag("--check", pArguments->bCheck,
                         "Write nothing; exit with 1 if something is missing, changed or wrong");
    pTranslate->callback([pArguments, &fnRun] { fnRun = [pArguments] { return Translate(*pArguments); }; });
}

} // namespace corvane::tool
