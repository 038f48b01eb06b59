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
bool IsShutOut(const std::string& sName, const std::string& sApplication) {
    return EqualText(sName, "MirelonSvc.xml") &&
           New<IniReader>()->ReadInteger(JoinPath(sApplication, "QRZ.INI"), "Preferences", "QRZVGEnabled", 1) != 1;
}

Ref<IXmlSchemaCache> ReadSchema(const Ref<IXmlService>& oXml, const std::string& sFolder, Report& oReport) {
    const std::string sPath = JoinPath(sFolder, "Service.xdr");
    try {
        Ref<IXmlSchemaCache> oSchema = oXml->NewSchemaCache();
        oSchema->Add("", sPath);
        return oSchema;
    } catch (const Failure& oFailure) {
        oReport.Add(Rule::SchemaFile, {sPath, {}}, oFailure.Description,
                    "copy the Service.xdr that comes with Corvane there");
        return nullptr;
    }
}

// Where a person edits the file: the application folder of a build has links to those of the sources. It is told from
// the current folder on when the application is.
std::string EditedPath(const std::string& sPath) {
    std::error_code oError;
    if (!fs::is_symlink(sPath, oError))
        return sPath;
    const fs::path oReal = fs::canonical(sPath, oError);
    if (oError)
        return sPath;
    const fs::path oHere = fs::current_path(oError);
    const fs::path oBelow = oError || fs::path(sPath).is_absolute() ? fs::path() : oReal.lexically_relative(oHere);
    return oBelow.empty() || *oBelow.begin() == ".." ? oReal.string() : oBelow.string();
}

// A copy is one mistake, however many names stand there twice.
void LeaveOutCopy(File& oFile, const File& oFirst, Report& oReport) {
    oReport.Add(Rule::DuplicateName, oFile.At(oFile.pRoot->At("Name")), "the file is a copy of " + Quoted(oFirst.sName),
                "remove one of them, or give all that it defines names of its own",
                {{oFirst.At(oFirst.pRoot->At("Name")), "the first one"}});
    oFile.bActive = false;
}

} // namespace

void ReadApplication(Model& oModel, const std::string& sApplication, Report& oReport) {
    const std::optional<std::string> oFolder = FindPath(JoinPath(sApplication, "Services"));
    if (!oFolder || !fs::is_directory(*oFolder))
        Fail(FailureNumber::PathNotFound,
             "\"" + sApplication +
                 "\" isn't an application folder: it has no folder \"Services\" with definition files");
    const Ref<IXmlService> oXml = New<XmlService>();
    const Ref<IXmlSchemaCache> oSchema = ReadSchema(oXml, *oFolder, oReport);
    const auto oFileSystem = New<FileSystem>();
    std::unordered_map<std::string_view, const File*> mapTexts;
    for (const std::string& sPath : oFileSystem->Files(*oFolder)) {
        const std::string sName = oFileSystem->FileName(sPath);
        if (!EqualText(oFileSystem->Extension(sPath), "xml") || IsShutOut(sName, sApplication))
            continue;
        auto pFile = std::make_unique<File>();
        pFile->sPath = EditedPath(sPath);
        pFile->sName = sName;
        pFile->sBytes = oFileSystem->ReadAll(sPath);
        ReadFile(*pFile, oXml, oSchema, oModel.oMemory, oReport);
        oModel.bComplete &= pFile->pRoot != nullptr;
        if (pFile->bActive && !pFile->pRoot->Value("Name").empty())
            if (const auto [it, bNew] = mapTexts.try_emplace(pFile->sBytes, pFile.get()); !bNew)
                LeaveOutCopy(*pFile, *it->second, oReport);
        oModel.aFiles.push_back(std::move(pFile));
    }
}

} // namespace corvane::check
