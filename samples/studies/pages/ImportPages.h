// The steps of the import wizard: which file, how it is read, where it goes. They share one ImportJob.
#pragma once

#include "Choices.h"
#include "EditedText.h"
#include "Errors.h"
#include "Report.h"
#include "StudyContexts.h"
#include "corvane/Page.h"
#include "corvane/platform/Platform.h"

#include <algorithm>
#include <array>
#include <utility>

namespace studies {

class ImportPage : public corvane::AnyPage {
protected:
    [[nodiscard]] corvane::Ref<ImportJob> Job() const { return AboutAs<ImportJob>(); }
    // What one step enters may put another in order, or out of it; and a large file is read while the user goes on.
    void OnInitialize() override {
        Keep(Job()->Changed.Subscribe([this] { ShowRead(); }));
        Keep(Job()->HasRead.Subscribe([this] { ShowRead(); }));
    }
    void OnActivate() override {
        LookAgain();
        ShowRead();
    }
    void LookAgain() {
        if (!Job()->Path().empty())
            Job()->LookAgain();
    }
    virtual void ShowRead() {
        OwnForm()->Refresh();
        ValidityChanged();
    }
    [[nodiscard]] std::string Problem() const { return Job()->Path().empty() ? std::string() : Job()->Problem(); }
    // What is in the file; nothing while it is being read and when it can't be.
    [[nodiscard]] const CsvResult* Read() const {
        return Job()->Path().empty() || !Job()->Problem().empty() ? nullptr : Job()->Result();
    }
    [[nodiscard]] std::string Size() const {
        if (const CsvResult* read = Read())
            return SizeText(read->table.rows, read->table.columns.size());
        return Job()->IsReading() ? Translated("Reading the file…") : std::string();
    }
};

class ImportFilePage final : public corvane::Page<ImportFilePage, ImportJob, ImportPage> {
    std::string m_path; // as it is being typed

    void OnInitialize() override {
        m_path = Job()->Path();
        ImportPage::OnInitialize();
    }
    [[nodiscard]] bool IsChanged() override { return !m_path.empty(); }
    [[nodiscard]] bool IsValid() override { return Read(); }
    void OnPathChanged() { Job()->SetPath(Trimmed(m_path)); }
    [[nodiscard]] bool SizeVisible() const { return !Size().empty(); }

public:
    static constexpr auto Members =
        corvane::Fields<&ImportFilePage::m_path, &ImportFilePage::OnPathChanged, &ImportFilePage::Size,
                        &ImportFilePage::SizeVisible>(corvane::Method("PathProblem", &ImportFilePage::Problem));
};

// A column of the file; one of numbers can be made one of text.
class ImportedColumn final : public corvane::Automation<ImportedColumn> {
    std::string m_name, m_values;
    corvane::Ref<ImportJob> m_job;
    std::size_t m_index;
    bool m_isNumeric;

public:
    ImportedColumn(corvane::Ref<ImportJob> job, std::size_t index, const Table& table)
        : m_name(table.columns[index].name), m_job(std::move(job)), m_index(index),
          m_isNumeric(table.columns[index].IsNumeric()) {
        constexpr std::size_t mostShown = 12;
        for (std::size_t row = 0; row < std::min(mostShown, table.rows); ++row)
            m_values +=
                (row > 0 ? ", " : "") + (table.columns[index].IsMissing(row) ? "NA" : table.columns[index].Text(row));
        m_values += table.rows > mostShown ? ", …" : "";
    }
    [[nodiscard]] std::string Type() const { return m_isNumeric && !m_job->IsText(m_index) ? "numbers" : "text"; }
    void SetType(const std::string& type) {
        if (!m_isNumeric && type != "text")
            FailWith(Translated("“%1” has values that aren't numbers.", {m_name}));
        m_job->SetText(m_index, type == "text");
    }
    static constexpr auto Members = corvane::Fields<&ImportedColumn::m_name, &ImportedColumn::m_values>(
        corvane::Property("Type", &ImportedColumn::Type, &ImportedColumn::SetType));
};

class ImportFormatPage final : public corvane::Page<ImportFormatPage, ImportJob, ImportPage> {
    static constexpr std::array<char, 4> delimiters{'\0', ',', ';', '\t'};

    corvane::Long m_delimiter = 0; // by its place in the form
    corvane::Ref<corvane::Rows> m_columns = corvane::New<corvane::Rows>();
    const CsvResult* m_shown = nullptr; // only to tell it from another; it may be gone
    corvane::Ref<corvane::ITimer> m_look = corvane::CurrentPlatform().oTimers->NewTimer();

    // Who has put the file in order in another program finds it so here.
    void OnInitialize() override {
        ImportPage::OnInitialize();
        m_look->SetInterval(1000);
        Keep(m_look->Tick.Subscribe([this] { LookAgain(); }));
    }
    void OnActivate() override {
        m_look->SetEnabled(true);
        ImportPage::OnActivate();
    }
    void OnDeactivate() override { m_look->SetEnabled(false); }
    void OnDelimiterChanged() { Job()->SetDelimiter(delimiters[static_cast<std::size_t>(m_delimiter)]); }
    [[nodiscard]] bool IsValid() override { return Read() && (Job()->SkipsBadRows() || !SkipVisible()); }
    [[nodiscard]] bool Skip() const { return Job()->SkipsBadRows(); }
    void SetSkip(bool skip) { Job()->SetSkipsBadRows(skip); }
    [[nodiscard]] bool SkipVisible() const { return Read() && !Read()->skipped.empty(); }
    [[nodiscard]] std::string SkipProblem() const {
        if (!SkipVisible() || Skip())
            return {};
        const std::size_t count = Read()->skipped.size();
        return Translated(count, "A row can't be read:", "%1 rows can't be read:") + "\n" + FirstLines(Read()->skipped);
    }
    [[nodiscard]] std::string Kept() const { return Read() ? FirstLines(Read()->keptAsText) : std::string(); }
    [[nodiscard]] bool KeptVisible() const { return !Kept().empty(); }
    void ShowRead() override {
        const CsvResult* read = Read();
        if (read != m_shown || !read) {
            m_columns->Clear();
            for (std::size_t i = 0; read && i < read->table.columns.size(); ++i)
                m_columns->Add(corvane::New<ImportedColumn>(Job(), i, read->table));
        }
        m_shown = read;
        ImportPage::ShowRead();
        OwnForm()->SetProblem("Delimiter", Problem()); // to be seen at once, whatever the user has looked at
        OwnForm()->SetProblem("Skip", SkipProblem());
    }

public:
    static constexpr auto Members =
        corvane::Fields<&ImportFormatPage::m_delimiter, &ImportFormatPage::m_columns,
                        &ImportFormatPage::OnDelimiterChanged, &ImportFormatPage::Size, &ImportFormatPage::SkipVisible,
                        &ImportFormatPage::SkipProblem, &ImportFormatPage::Kept, &ImportFormatPage::KeptVisible>(
            corvane::Method("DelimiterProblem", &ImportFormatPage::Problem),
            corvane::Property("Skip", &ImportFormatPage::Skip, &ImportFormatPage::SetSkip));
};

class ImportTargetPage final : public corvane::Page<ImportTargetPage, ImportJob, ImportPage> {
    std::vector<studies::Study> m_studies; // of the store

    void OnInitialize() override {
        m_studies = InStore().Studies();
        ImportPage::OnInitialize();
    }
    void OnActivate() override {
        m_studies = InStore().Studies();
        ShowRead();
    }
    void OnSave() override { Job()->Run(); }
    [[nodiscard]] Store& InStore() const { return Job()->Space()->GetStore(); }
    // By its name; "" is a new one.
    [[nodiscard]] std::string Study() const {
        const auto study = std::find_if(m_studies.begin(), m_studies.end(),
                                        [this](const studies::Study& one) { return one.id == Job()->studyId; });
        return study == m_studies.end() ? std::string() : study->name;
    }
    void SetStudy(const std::string& name) {
        const auto study = std::find_if(m_studies.begin(), m_studies.end(),
                                        [&](const studies::Study& one) { return one.name == name; });
        Job()->studyId = study == m_studies.end() ? 0 : study->id;
    }
    [[nodiscard]] std::string StudyChoices() const {
        std::string choices;
        for (const studies::Study& study : m_studies)
            choices += study.name + "\n";
        return choices + noneChoice;
    }
    [[nodiscard]] std::string NewStudy() const { return Job()->newStudyName; }
    void SetNewStudy(const std::string& name) { Job()->newStudyName = Trimmed(name); }
    [[nodiscard]] bool NewStudyVisible() const { return Job()->studyId == 0; }
    [[nodiscard]] std::string NewStudyProblem() const {
        return NewStudyVisible() ? InStore().NameProblem(NewStudy()) : std::string();
    }
    [[nodiscard]] std::string Name() const { return Job()->name; }
    void SetName(const std::string& name) { Job()->name = Trimmed(name); }
    [[nodiscard]] std::string NameProblem() const { return InStore().DataSetNameProblem(Name(), Job()->studyId); }

public:
    static constexpr auto Members =
        corvane::Methods<&ImportTargetPage::StudyChoices, &ImportTargetPage::NewStudyVisible,
                         &ImportTargetPage::NewStudyProblem, &ImportTargetPage::NameProblem>(
            corvane::Property("Study", &ImportTargetPage::Study, &ImportTargetPage::SetStudy),
            corvane::Property("NewStudy", &ImportTargetPage::NewStudy, &ImportTargetPage::SetNewStudy),
            corvane::Property("Name", &ImportTargetPage::Name, &ImportTargetPage::SetName));
};

} // namespace studies
