// How long a check of many definition files takes, against reading, parsing and validating them and nothing else. The
// medians of the processor time of several runs in turn, in one process.
#include "adapters/files/FileSystem.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Check.h"
#include "analysis/Print.h"
#include "bench/startup/Inputs.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>

namespace corvane::bench {

namespace {

// Of this process on a processor: what else the machine does counts little.
double Milliseconds(const std::function<void()>& fnWork) {
    const std::clock_t nBegin = std::clock();
    fnWork();
    return static_cast<double>(std::clock() - nBegin) * 1000 / CLOCKS_PER_SEC;
}

double Median(std::vector<double> aTimes) {
    std::sort(aTimes.begin(), aTimes.end());
    return aTimes[aTimes.size() / 2];
}

void ParseAndValidate(const std::string& sApplication) {
    const auto oFileSystem = New<FileSystem>();
    const auto oXml = New<XmlService>();
    const Ref<IXmlSchemaCache> oSchema = oXml->NewSchemaCache();
    oSchema->Add("", sApplication + "/Services/Service.xdr");
    for (const std::string& sFile : oFileSystem->Files(sApplication + "/Services")) {
        if (!sFile.ends_with(".xml"))
            continue;
        const Ref<IXmlDocument> oDocument = oXml->NewDocument();
        if (!oDocument->LoadXml(oFileSystem->ReadAll(sFile)) || !oDocument->Validate(oSchema).sReason.empty())
            std::fprintf(stderr, "%s isn't valid\n", sFile.c_str());
    }
}

void Measure(const std::string& sApplication, const char* sWhat, int nRuns) {
    std::vector<double> aFloor;
    std::vector<double> aCheck;
    std::size_t nFindings = 0;
    for (int n = 0; n < nRuns; ++n) {
        aFloor.push_back(Milliseconds([&] { ParseAndValidate(sApplication); }));
        aCheck.push_back(Milliseconds([&] { nFindings = check::Check({sApplication, false}).size(); }));
    }
    std::printf("%-28s %6zu findings  parse and validate %8.1f ms  check %8.1f ms  ratio %.2f\n", sWhat, nFindings,
                Median(aFloor), Median(aCheck), Median(aCheck) / Median(aFloor));
}

// Something to say about every file: a shortcut that can't be read, in place of one that can.
void Spoil(const std::string& sApplication) {
    const auto oFileSystem = New<FileSystem>();
    for (const std::string& sFile : oFileSystem->Files(sApplication + "/Services")) {
        if (!sFile.ends_with(".xml"))
            continue;
        std::string sText = oFileSystem->ReadAll(sFile);
        constexpr std::string_view sCaption = " Caption=\"Action";
        for (std::size_t i = sText.find(sCaption); i != std::string::npos; i = sText.find(sCaption, i + 40))
            sText.insert(i, " ShortCutKey=\"Contrl+S\"");
        std::ofstream(sFile, std::ios::binary) << sText;
    }
}

} // namespace

} // namespace corvane::bench

int main() {
    using namespace corvane::bench;
    constexpr int nRuns = 9;
    for (const Size& oSize : {Size{1000, 10}, Size{1000, 100}}) {
        const TemporaryFolder oFolder;
        const std::string sApplication = WriteApplication(oFolder.Path(), oSize).string();
        std::filesystem::remove(sApplication + "/plugins");
        Measure(sApplication, (oSize.Text() + ", as it is").c_str(), nRuns);
        Spoil(sApplication);
        Measure(sApplication, (oSize.Text() + ", spoilt").c_str(), nRuns);
    }
    return 0;
}
