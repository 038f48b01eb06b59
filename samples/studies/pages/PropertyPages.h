// The pages of the properties dialogs: of a study, of a data set, of its columns.
#pragma once

#include "EditedText.h"
#include "Errors.h"
#include "Report.h"
#include "StudyContexts.h"
#include "corvane/Page.h"

#include <string>
#include <vector>

namespace studies {

// A name and notes.
template <class Context>
class NamePage : public corvane::AnyPage {
    std::string m_readName, m_readNotes; // as they were in the store then

protected:
    std::string m_name, m_notes;

    void Take(const std::string& name, const std::string& notes) {
        m_name = m_readName = name;
        m_notes = m_readNotes = notes;
    }
    // What others have changed meanwhile stays, as far as it isn't changed here. False when there is nothing to save.
    bool TakeChanges(const std::string& storedName, const std::string& storedNotes) {
        const std::string name = Merged(
            m_readName, Trimmed(m_name), storedName,
            Translated(
                "The name has been changed in another window of Studies, to “%1”. OK replaces it; Cancel keeps it."));
        const std::string notes = Merged(m_readNotes, m_notes, storedNotes,
                                         Translated("The notes have been changed in another window of Studies, to "
                                                    "“%1”. OK replaces them; Cancel keeps them."));
        Take(name, notes);
        return name != storedName || notes != storedNotes;
    }
    std::string NameProblem() { return Trimmed(m_name) == m_readName ? std::string() : ProblemOf(Trimmed(m_name)); }
    virtual std::string ProblemOf(const std::string& name) = 0;
    void Tell() { AboutAs<Context>()->Space()->Tell(Translated("“%1” has been changed", {m_name})); }
    [[nodiscard]] Store& InStore() const { return AboutAs<Context>()->Space()->GetStore(); }
};

class StudyPropertiesPage final : public corvane::Page<StudyPropertiesPage, StudyContext, NamePage<StudyContext>> {
    std::string m_dataSets, m_analyses;

    void OnInitialize() override {
        const Study study = InStore().StudyOf(About()->Number());
        Take(study.name, study.notes);
        m_dataSets = CountText(InStore().DataSets(study.id).size());
        m_analyses = CountText(InStore().Analyses(study.id).size());
    }
    void OnSave() override {
        const Study stored = InStore().StudyOf(About()->Number());
        if (!TakeChanges(stored.name, stored.notes))
            return;
        InStore().SetStudyProperties(stored.id, m_name, m_notes);
        Tell();
    }
    std::string ProblemOf(const std::string& name) override { return InStore().NameProblem(name, About()->Number()); }

public:
    static constexpr auto Members =
        corvane::Fields<&StudyPropertiesPage::m_name, &StudyPropertiesPage::m_notes, &StudyPropertiesPage::m_dataSets,
                        &StudyPropertiesPage::m_analyses, &StudyPropertiesPage::NameProblem>();
};

class DataSetPropertiesPage final
    : public corvane::Page<DataSetPropertiesPage, DataSetContext, NamePage<DataSetContext>> {
    std::string m_source, m_size;

    void OnInitialize() override {
        const DataSet dataSet = About()->Info();
        Take(dataSet.name, dataSet.notes);
        m_source = dataSet.source;
        m_size = SizeText(static_cast<std::size_t>(dataSet.rows), InStore().Columns(dataSet.id).size());
    }
    void OnSave() override {
        const DataSet stored = About()->Info();
        if (!TakeChanges(stored.name, stored.notes))
            return;
        InStore().SetDataSetProperties(stored.id, {m_name, m_notes, {}});
        Tell();
    }
    std::string ProblemOf(const std::string& name) override {
        const DataSet dataSet = About()->Info();
        return InStore().DataSetNameProblem(name, dataSet.studyId, dataSet.id);
    }

public:
    static constexpr auto Members = corvane::Fields<&DataSetPropertiesPage::m_name, &DataSetPropertiesPage::m_notes,
                                                    &DataSetPropertiesPage::m_source, &DataSetPropertiesPage::m_size,
                                                    &DataSetPropertiesPage::NameProblem>();
};

class UnitsPage final : public corvane::Page<UnitsPage, DataSetContext> {
    class Row final : public corvane::Automation<Row> {
        std::string m_name, m_type, m_unit;
        bool m_isNumeric;

        void SetUnit(const std::string& unit) {
            if (!m_isNumeric && !Trimmed(unit).empty())
                FailWith(Translated("Only columns of numbers have a unit."));
            m_unit = Trimmed(unit);
        }

    public:
        explicit Row(const Column& column)
            : m_name(column.name), m_type(ShownName(column.type)), m_unit(column.unit), m_isNumeric(column.IsNumeric()),
              read(column.unit) {}
        [[nodiscard]] const std::string& Unit() const { return m_unit; }

        std::string read; // the unit as it was in the store then

        static constexpr auto Members =
            corvane::Fields<&Row::m_name, &Row::m_type>(corvane::Property("Unit", &Row::Unit, &Row::SetUnit));
    };

    corvane::Ref<corvane::Rows> m_columns = corvane::New<corvane::Rows>();

    void OnInitialize() override {
        for (const Column& column : About()->Space()->GetStore().Columns(About()->Number()))
            m_columns->Add(corvane::New<Row>(column));
    }
    void OnSave() override {
        const DataSet dataSet = About()->Info();
        Store& store = About()->Space()->GetStore();
        std::vector<std::string> units;
        bool isOther = false;
        for (const Column& stored : store.Columns(dataSet.id)) {
            const auto row = m_columns->Item(static_cast<corvane::Long>(units.size()) + 1).As<Row>();
            units.push_back(Merged(row->read, row->Unit(), stored.unit,
                                   Translated("The unit of “%2” has been changed in another window of Studies, to "
                                              "“%1”. OK replaces it; Cancel keeps it.",
                                              {"%1", stored.name})));
            isOther = isOther || units.back() != stored.unit;
        }
        if (!isOther)
            return;
        store.SetDataSetProperties(dataSet.id, {dataSet.name, dataSet.notes, units});
        m_columns->Clear();
        OnInitialize();
        About()->Space()->Tell(Translated("The units of “%1” have been changed", {dataSet.name}));
    }

public:
    static constexpr auto Members = corvane::Fields<&UnitsPage::m_columns>();
};

} // namespace studies
