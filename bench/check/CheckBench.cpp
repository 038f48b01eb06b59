// How long a check of many definition files takes, against reading, parsing and validating them and nothing else. The
// medians of the processor time of several runs in turn, in one process.
#include "adapters/files/FileSystem.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Check.h"
#include "analysis/Print.h"
#include "bench/Times.h"
#include "bench/startup/Inputs.h"

#include <cstdio>
#include <fstream>

namespace corvane::bench {

namespace {

void ParseAndValidate(const std::string& application) {
    const auto fileSystem = New<FileSystem>();
    const auto xml = New<XmlService>();
    const Ref<IXmlSchemaCache> schema = xml->NewSchemaCache();
    schema->Add("", application + "/Services/Service.xdr");
    for (const std::string& file : fileSystem->Files(application + "/Services")) {
        if (!file.ends_with(".xml"))
            continue;
        const Ref<IXmlDocument> document = xml->NewDocument();
        if (!document->LoadXml(fileSystem->ReadAll(file)) || !document->Validate(schema).sReason.empty())
            std::fprintf(stderr, "%s isn't valid\n", file.c_str());
    }
}

void Measure(const std::string& application, const char* what, int runs) {
    std::vector<double> floor;
    std::vector<double> checks;
    std::size_t findings = 0;
    for (int n = 0; n < runs; ++n) {
        floor.push_back(ProcessorMilliseconds([&] { ParseAndValidate(application); }));
        checks.push_back(ProcessorMilliseconds([&] { findings = check::Check({application, false}).size(); }));
    }
    std::printf("%-28s %6zu findings  parse and validate %8.1f ms  check %8.1f ms  ratio %.2f\n", what, findings,
                Median(floor), Median(checks), Median(checks) / Median(floor));
}

// Something to say about every file: a shortcut that can't be read, in place of one that can.
void Spoil(const std::string& application) {
    const auto fileSystem = New<FileSystem>();
    for (const std::string& file : fileSystem->Files(application + "/Services")) {
        if (!file.ends_with(".xml"))
            continue;
        std::string text = fileSystem->ReadAll(file);
        constexpr std::string_view caption = " Caption=\"Action";
        for (std::size_t i = text.find(caption); i != std::string::npos; i = text.find(caption, i + 40))
            text.insert(i, " ShortCutKey=\"Contrl+S\"");
        std::ofstream(file, std::ios::binary) << text;
    }
}

} // namespace

} // namespace corvane::bench

int main() {
    using namespace corvane::bench;
    constexpr int runs = 9;
    for (const Size& size : {Size{1000, 10}, Size{1000, 100}}) {
        const TemporaryFolder folder;
        const std::string application = WriteApplication(folder.Path(), size).string();
        std::filesystem::remove(application + "/plugins");
        Measure(application, (size.Text() + ", as it is").c_str(), runs);
        Spoil(application);
        Measure(application, (size.Text() + ", spoilt").c_str(), runs);
    }
    return 0;
}
