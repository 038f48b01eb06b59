#include "Files.h"

#include "Errors.h"
#include "corvane/author/Host.h"

#include <cstdlib>
#include <filesystem>

namespace studies {

using namespace corvane;

std::string FileNameOf(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

std::optional<std::string> AskForDataFile(const std::string& title, bool orStudy) {
    const std::string endings = orStudy ? "*.csv *.tsv *.txt *.study" : "*.csv *.tsv *.txt";
    return AskOpenFile(
        title, (orStudy ? Translated("Text and studies") : Translated("Text")) + " (" + endings + ")|" + endings,
        AppPath("Data"));
}

std::string AskForSavePath(const std::string& title, const std::string& filter, const std::string& fileName) {
    std::filesystem::path path = fileName;
    if (path.is_relative()) {
        // The name of a data set may hold what no file's name can.
        std::string name = fileName;
        for (char& c : name)
            if (c == '/' || c == ':')
                c = '-';
        const char* home = std::getenv("HOME");
        path = std::filesystem::path(home ? home : "") / name;
    }
    return AskSaveFile(title, filter, path.string()).value_or("");
}

void ExportAs(const std::string& filter, const std::string& fileName,
              const std::function<void(const std::string& path)>& write) {
    const std::string path = AskForSavePath(Translated("Export"), filter, fileName);
    if (path.empty())
        return;
    write(path);
    SetStatus(Translated("Exported to %1", {path}));
}

} // namespace studies
