// Where and how the rows of a data set are written to a file.
#pragma once

#include "Csv.h"
#include "EditedText.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "Report.h"
#include "Workspace.h"
#include "corvane/Jobs.h"
#include "corvane/Page.h"
#include "corvane/author/Host.h"
#include "corvane/platform/Platform.h"
#include "desktop/WholeFile.h"

#include <QDir>
#include <QStandardPaths>
#include <array>
#include <filesystem>
#include <unistd.h>

namespace studies {

class ExportPage final : public corvane::Page<ExportPage, DataSetContext> {
    static constexpr std::array<const char*, 3> endings{".csv", ".csv", ".tsv"};
    static constexpr std::array<CsvStyle, 3> styles{{{',', '.'}, {';', ','}, {'\t', '.'}}};

    std::string m_contents, m_path;
    corvane::Long m_format = 0; // by its place in the form
    corvane::Ref<corvane::ITimer> m_moment = corvane::CurrentPlatform().oTimers->NewTimer();
    bool m_isHeldBack = false; // for a moment, as the user has refused

    [[nodiscard]] bool IsChanged() override { return true; } // there is always something to write
    [[nodiscard]] bool IsValid() override { return !m_isHeldBack; }
    void OnInitialize() override {
        const DataSet dataSet = About()->Info();
        m_contents =
            SizeText(static_cast<std::size_t>(dataSet.rows), About()->Space()->GetStore().Columns(dataSet.id).size());
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        const QDir folder(QDir(documents).exists() ? documents : QDir::homePath());
        // A file that isn't there yet: that of the same name may be the one that the data were read from.
        const std::string path = Utf8(folder.filePath(Text(std::filesystem::path(dataSet.name).stem().string())));
        const auto IsTaken = [](const std::string& free) { return std::filesystem::exists(free + endings[0]); };
        m_path = FreeText(path, IsTaken) + endings[0];
        m_moment->SetInterval(1);
        Keep(m_moment->Tick.Subscribe([this] {
            m_moment->SetEnabled(m_isHeldBack = false);
            ValidityChanged();
        }));
    }
    [[nodiscard]] std::filesystem::path Path() const { return Trimmed(m_path); }
    void OnFormatChanged() { m_path = Path().replace_extension(endings[static_cast<std::size_t>(m_format)]).string(); }
    std::string PathProblem() {
        std::error_code error;
        const std::filesystem::path path = Path();
        const std::filesystem::path folder = path.parent_path();
        if (path.empty())
            return Translated("Choose a file.");
        if (std::filesystem::is_directory(path, error))
            return Translated("This is a folder.");
        if (!path.is_absolute() || !std::filesystem::is_directory(folder, error))
            return Translated("There is no folder “%1”.", {folder.string()});
        const bool isWritable = std::filesystem::exists(path, error) || ::access(folder.c_str(), W_OK) == 0;
        return isWritable ? std::string() : Translated("That folder isn't writable.");
    }
    [[nodiscard]] bool Exists() const {
        std::error_code error;
        return std::filesystem::is_regular_file(Path(), error);
    }
    std::string Replaces() { return Exists() ? Translated("The file exists and will be replaced.") : std::string(); }
    // Both ask before the form saves, "Save As" for another file. A page that isn't valid then holds the form back, for
    // as long as the command runs.
    void OnCommand(corvane::StandardCommandConstants command) override {
        if (command == corvane::StandardCommandConstants::cvSave && Exists()) {
            m_isHeldBack = !corvane::Ask(Translated("“%1” exists already. Replace it?", {Path().filename().string()}),
                                         {Translated("Replace")}, Translated("Export"));
        } else if (command == corvane::StandardCommandConstants::cvSaveAs) {
            const std::string path =
                AskForSavePath(Translated("Export"), Translated("Text") + " (*.csv *.tsv)|*.csv *.tsv", m_path);
            m_isHeldBack = path.empty();
            m_path = path.empty() ? m_path : path;
            OwnForm()->Refresh();
        }
        m_moment->SetEnabled(m_isHeldBack);
    }
    // A large table by a job, which goes on when the window has closed.
    void OnSave() override {
        const Target target{Path().string(), About()->Info().name, styles[static_cast<std::size_t>(m_format)]};
        About()->WithTable(nullptr, [target](const SharedTable& table) {
            if (table)
                Export(table, target);
        });
    }
    struct Target {
        std::string path, name; // of the file, and of the data set
        CsvStyle style;
    };
    static void Export(const SharedTable& table, const Target& target) {
        corvane::StartJobIf(
            !IsSmall(table->rows, table->columns.size()),
            {.title = Translated("Export %1", {target.name}),
             .owner = corvane::FindService("Studies"),
             .writes = {target.path}},
            [table, target](corvane::JobProgress& progress) {
                corvane::desktop::WriteWholeFile(target.path, [&](const corvane::desktop::FileSink& write) {
                    WriteCsv(*table, target.style, write, progress);
                });
            },
            [target](corvane::JobResult<void>& result) {
                if (result.WasCancelled())
                    return corvane::SetStatus(Translated("Cancelled; %1 hasn't been exported", {target.name}));
                (void)result.Value();
                corvane::SetStatus(Translated("%1 has been exported to %2", {target.name, target.path}));
            });
    }

public:
    static constexpr auto Members =
        corvane::Fields<&ExportPage::m_contents, &ExportPage::m_path, &ExportPage::m_format,
                        &ExportPage::OnFormatChanged, &ExportPage::PathProblem, &ExportPage::Replaces>();
};

} // namespace studies
