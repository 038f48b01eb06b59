// The pages about one analysis. Their forms show its settings and change them at once; charts are widgets in their
// places, and the analysis is kept in the study.
#pragma once

#include "Chart.h"
#include "Choices.h"
#include "ComparisonText.h"
#include "Workspace.h"
#include "corvane/Page.h"
#include "desktop/IQtPage.h"

#include <QPointer>
#include <functional>
#include <type_traits>
#include <utility>

namespace studies {

class ChartWidget;

// What they have in common. Not each form has all the fields.
class AnalysisPage : public corvane::AnyPage, public corvane::desktop::IQtPage {
public:
    QWidget* NewWidget(QWidget* place) override;
    QWidget* FirstFocus() override;
    // The chart as a drawing, below what it is about, with what was found.
    bool Print(corvane::desktop::IPrintout& printout) override;
    // Asked about when the window closes.
    [[nodiscard]] bool IsChanged() override { return OwnWindow() && Document()->HasUnsavedResult(); }

protected:
    [[nodiscard]] virtual AnalysisKind Kind() const = 0;
    [[nodiscard]] virtual ChartScene Scene() const = 0;
    // What was found, in sentences.
    [[nodiscard]] virtual std::string Findings(const ChartScene& scene) const = 0;
    virtual void OnExport(); // the picture, as PNG or SVG
    void OnCopy();           // the picture
    // Shows settings and figures as they are now.
    virtual void ShowAnalysis();
    void OnInitialize() override;
    void OnActivate() override;
    void OnSave() override;

    [[nodiscard]] corvane::Ref<AnalysisDocument> Document() const { return AboutAs<AnalysisDocument>(); }
    [[nodiscard]] const AnalysisSettings& Settings() const { return Document()->Settings(); }
    // As it was read last: when it is being read again, ShowAnalysis follows.
    [[nodiscard]] const Table& Data() const { return *Document()->Data()->Latest(); }
    [[nodiscard]] const std::string& Result() const { return m_result; }
    // Asks for a file; "" when the user cancels. The filters are those of the host's file dialog.
    [[nodiscard]] std::string AskForFile(const std::string& filter, const std::string& ending) const;

private:
    void Follow();
    void FollowSpace();
    void OnSaveAnalysis() { Document()->Save(); }
    void OnTable();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // another one of the data, by the item's name

    // A field of the form is one of the settings.
    template <auto Setting>
    [[nodiscard]] auto Get() const {
        return Settings().*Setting;
    }
    template <auto Setting>
    void Set(const std::remove_cvref_t<decltype(std::declval<AnalysisSettings>().*Setting)>& value) {
        Change([&](AnalysisSettings& settings) { settings.*Setting = value; });
    }
    template <auto Option>
    [[nodiscard]] auto GetOption() const {
        return Settings().bootstrap.*Option;
    }
    template <auto Option>
    void SetOption(const std::remove_cvref_t<decltype(std::declval<BootstrapOptions>().*Option)>& value) {
        Change([&](AnalysisSettings& settings) { settings.bootstrap.*Option = value; });
    }
    [[nodiscard]] corvane::Long Seed() const { return static_cast<corvane::Long>(Settings().bootstrap.seed); }
    void SetSeed(corvane::Long seed) { SetOption<&BootstrapOptions::seed>(static_cast<std::uint64_t>(seed)); }
    void SetGroup(const std::string& name);
    void Change(const std::function<void(AnalysisSettings&)>& change);
    [[nodiscard]] std::string ColumnChoices() const { return studies::ColumnChoices(Data().columns, true); }
    [[nodiscard]] std::string GroupChoices();
    [[nodiscard]] std::string ValueChoices();

    TableChoices m_choices;
    std::string m_result;
    QPointer<ChartWidget> m_chart;
    corvane::Ref<Workspace> m_space;

public:
    // The table of members, with what a page has beside.
    template <class... Entries>
    static constexpr auto Shared(Entries... more) {
        using Self = AnalysisPage;
        using In = AnalysisSettings;
        using Options = BootstrapOptions;
        using corvane::Property, corvane::Method;
        return corvane::Methods<&Self::OnSaveAnalysis, &Self::OnTable, &Self::OnAnalyse, &Self::OnExport, &Self::Result,
                                &Self::ColumnChoices, &Self::GroupChoices>(
            Property("Column", &Self::Get<&In::columnX>, &Self::Set<&In::columnX>),
            Property("ColumnY", &Self::Get<&In::columnY>, &Self::Set<&In::columnY>),
            Method("ColumnYChoices", &Self::ColumnChoices),
            Property("Group", &Self::Get<&In::groupColumn>, &Self::SetGroup),
            Property("Bins", &Self::Get<&In::bins>, &Self::Set<&In::bins>),
            Property("First", &Self::Get<&In::firstGroup>, &Self::Set<&In::firstGroup>),
            Method("FirstChoices", &Self::ValueChoices),
            Property("Second", &Self::Get<&In::secondGroup>, &Self::Set<&In::secondGroup>),
            Method("SecondChoices", &Self::ValueChoices),
            Property("Figure", &Self::GetOption<&Options::figure>, &Self::SetOption<&Options::figure>),
            Property("Resamples", &Self::GetOption<&Options::resamples>, &Self::SetOption<&Options::resamples>),
            Property("Seed", &Self::Seed, &Self::SetSeed), more...);
    }
};

template <AnalysisKind kind, ChartScene (*scene)(const Table& table, const AnalysisSettings& settings)>
class ChartPage final : public corvane::Page<ChartPage<kind, scene>, AnalysisDocument, AnalysisPage> {
    [[nodiscard]] AnalysisKind Kind() const override { return kind; }
    [[nodiscard]] ChartScene Scene() const override { return scene(this->Data(), this->Settings()); }
    // Where there is no chart, it says why; once is enough.
    [[nodiscard]] std::string Findings(const ChartScene& drawn) const override {
        if (kind != AnalysisKind::Comparison || !drawn.empty.empty())
            return {};
        return ComparisonText(this->Data(), this->Settings(), ReadPreferences().decimals);
    }

public:
    static constexpr auto Members = AnalysisPage::Shared(corvane::Method("OnCopy", &ChartPage::OnCopy));
};
using HistogramPage = ChartPage<AnalysisKind::Histogram, HistogramScene>;
using ScatterPage = ChartPage<AnalysisKind::Scatter, ScatterScene>;
using ComparisonPage = ChartPage<AnalysisKind::Comparison, ComparisonScene>;

// Its chart is that of the resamples.
class BootstrapPage final : public corvane::Page<BootstrapPage, AnalysisDocument, AnalysisPage> {
    bool m_running = false;

    [[nodiscard]] AnalysisKind Kind() const override { return AnalysisKind::Bootstrap; }
    [[nodiscard]] ChartScene Scene() const override;
    [[nodiscard]] std::string Findings(const ChartScene& drawn) const override;
    QWidget* FirstFocus() override { return nullptr; } // the first field
    void ShowAnalysis() override;
    void OnExport() override; // the figures, as text
    void Run();
    void Start(const SharedTable& table);
    [[nodiscard]] bool RunEnabled() const { return !m_running; }

public:
    static constexpr auto Members =
        Shared(corvane::Method("Run", &BootstrapPage::Run), corvane::Method("RunEnabled", &BootstrapPage::RunEnabled));
};

} // namespace studies
