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
#include <iterator>
#include <sstream>
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

// A column of the file, as it is read now.
class ImportedColumn final : public corvane::Automation<ImportedColumn> {
    static constexpr std::array<const char*, 5> words{"automatic", "numbers", "text", "categories", "dates"};

    corvane::Ref<ImportJob> m_job;
    std::size_t m_index;

    [[nodiscard]] const Column* Now() const {
        const CsvResult* read = m_job->Result();
        return read && m_index < read->table.columns.size() ? &read->table.columns[m_index] : nullptr;
    }

public:
    ImportedColumn(corvane::Ref<ImportJob> job, std::size_t index) : m_job(std::move(job)), m_index(index) {}

    [[nodiscard]] std::string Name() const { return Now() ? Now()->name : std::string(); }
    [[nodiscard]] std::string Values() const {
        constexpr std::size_t mostShown = 12;
        const std::size_t rows = Now() ? m_job->Result()->table.rows : 0;
        std::string values;
        for (std::size_t row = 0; row < std::min(mostShown, rows); ++row) {
            const std::string text = Now()->IsMissing(row) ? "NA" : Now()->Text(row);
            values += (row > 0 ? "  " : "") + (Now()->IsNumeric() ? corvane::ShownNumber(text) : text);
        }
        return values + (rows > mostShown ? "  …" : "");
    }
    [[nodiscard]] std::string Type() const {
        const ColumnReading reading = m_job->Reading(m_index);
        if (reading != ColumnReading::Automatic)
            return words[static_cast<std::size_t>(reading)];
        return Now() && Now()->IsNumeric() ? "numbers" : "text";
    }
    void SetType(const std::string& type) {
        const auto* const word = std::find(words.begin(), words.end(), type);
        m_job->SetReading(m_index, static_cast<ColumnReading>(word - words.begin()));
    }
    static constexpr auto Members = corvane::Methods<>(
        corvane::Property("Name", &ImportedColumn::Name), corvane::Property("Values", &ImportedColumn::Values),
        corvane::Property("Type", &ImportedColumn::Type, &ImportedColumn::SetType));
};

class ImportFormatPage final : public corvane::Page<ImportFormatPage, ImportJob, ImportPage> {
    static constexpr std::array<char, 4> delimiters{'\0', ',', ';', '\t'};
    static constexpr std::array<char, 3> points{'\0', '.', ','};

    corvane::Ref<corvane::Rows> m_columns = corvane::New<corvane::Rows>();
    std::string m_missing; // as it is typed
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
    // One of the options, by its place in the form among the values that it may have.
    template <auto Option, const auto& Values>
    [[nodiscard]] corvane::Long Place() const {
        return static_cast<corvane::Long>(std::find(Values.begin(), Values.end(), Job()->Options().*Option) -
                                          Values.begin());
    }
    template <auto Option, const auto& Values>
    void SetPlace(corvane::Long place) {
        Job()->ChangeFormat(
            [place](CsvOptions& options) { options.*Option = Values[static_cast<std::size_t>(place)]; });
    }
    [[nodiscard]] bool Header() const { return Job()->Options().header; }
    void SetHeader(bool header) {
        Job()->ChangeFormat([header](CsvOptions& options) { options.header = header; });
    }
    [[nodiscard]] corvane::Long SkipLines() const { return static_cast<corvane::Long>(Job()->Options().skipLines); }
    void SetSkipLines(corvane::Long lines) {
        Job()->ChangeFormat([lines](CsvOptions& options) { options.skipLines = static_cast<std::size_t>(lines); });
    }
    [[nodiscard]] corvane::Long Encoding() const { return static_cast<corvane::Long>(Job()->Options().encoding); }
    void SetEncoding(corvane::Long encoding) {
        Job()->ChangeFormat(
            [encoding](CsvOptions& options) { options.encoding = static_cast<corvane::TextEncoding>(encoding); });
    }
    void OnMissingChanged() {
        std::istringstream words(m_missing);
        const std::vector<std::string> codes{std::istream_iterator<std::string>(words), {}};
        if (codes != Job()->Options().missing)
            Job()->ChangeFormat([&](CsvOptions& options) { options.missing = codes; });
    }
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
    [[nodiscard]] std::string Kept() const { return Read() ? FirstLines(Read()->notes) : std::string(); }
    [[nodiscard]] bool KeptVisible() const { return !Kept().empty(); }
    void ShowRead() override {
        const CsvResult* read = Read();
        const auto count = static_cast<corvane::Long>(read ? read->table.columns.size() : 0);
        if (count != m_columns->Count() && !Job()->IsReading()) {
            m_columns->Clear();
            for (corvane::Long i = 0; i < count; ++i)
                m_columns->Add(corvane::New<ImportedColumn>(Job(), static_cast<std::size_t>(i)));
        }
        ImportPage::ShowRead();
        OwnForm()->SetProblem("Delimiter", Problem()); // to be seen at once, whatever the user has looked at
        OwnForm()->SetProblem("Skip", SkipProblem());
    }

public:
    static constexpr auto Members =
        corvane::Fields<&ImportFormatPage::m_columns, &ImportFormatPage::m_missing, &ImportFormatPage::OnMissingChanged,
                        &ImportFormatPage::Size, &ImportFormatPage::SkipVisible, &ImportFormatPage::SkipProblem,
                        &ImportFormatPage::Kept, &ImportFormatPage::KeptVisible>(
            corvane::Method("DelimiterProblem", &ImportFormatPage::Problem),
            corvane::Property("Delimiter", &ImportFormatPage::Place<&CsvOptions::delimiter, delimiters>,
                              &ImportFormatPage::SetPlace<&CsvOptions::delimiter, delimiters>),
            corvane::Property("Point", &ImportFormatPage::Place<&CsvOptions::point, points>,
                              &ImportFormatPage::SetPlace<&CsvOptions::point, points>),
            corvane::Property("Header", &ImportFormatPage::Header, &ImportFormatPage::SetHeader),
            corvane::Property("SkipLines", &ImportFormatPage::SkipLines, &ImportFormatPage::SetSkipLines),
            corvane::Property("Encoding", &ImportFormatPage::Encoding, &ImportFormatPage::SetEncoding),
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
