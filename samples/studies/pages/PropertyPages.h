// The pages of the properties dialogs: of a study, of a data set, of its columns.
#pragma once

#include "PageParts.h"
#include "StudiesPage.h"
#include "StudyContexts.h"

class QLineEdit;
class QPlainTextEdit;
class QTableWidget;

namespace studies {

// A name and notes, with what is wrong with the name below it.
class NamePage : public StudiesPage {
public:
    QWidget* FirstFocus() override;
    [[nodiscard]] bool IsChanged() override;

protected:
    QWidget* MakeWidget(QWidget* parent) override;
    [[nodiscard]] bool IsValid() override { return Problem().empty(); }
    [[nodiscard]] virtual std::string NameProblem(const std::string& name) = 0; // "" for none
    // Lines of what is only shown: a caption and a text.
    [[nodiscard]] virtual std::vector<std::pair<QString, QString>> Facts() { return {}; }
    [[nodiscard]] std::string Name() const;
    [[nodiscard]] std::string Notes() const;

    // As they are in the store.
    std::string m_nameText;
    std::string m_notesText;

private:
    [[nodiscard]] std::string Problem();

    QPointer<QLineEdit> m_name;
    QPointer<QPlainTextEdit> m_notes;
    QPointer<ProblemLabel> m_problem;
};

class StudyPropertiesPage final : public corvane::Automation<StudyPropertiesPage, NamePage> {
public:
    std::string_view TypeName() const override { return "StudyPropertiesPage"; }
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnInitialize() override;
    void OnSave() override;
    [[nodiscard]] std::string NameProblem(const std::string& name) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> Facts() override;
};

class DataSetPropertiesPage final : public corvane::Automation<DataSetPropertiesPage, NamePage> {
public:
    std::string_view TypeName() const override { return "DataSetPropertiesPage"; }
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnInitialize() override;
    void OnSave() override;
    [[nodiscard]] std::string NameProblem(const std::string& name) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> Facts() override;
};

class UnitsPage final : public corvane::Automation<UnitsPage, StudiesPage> {
public:
    std::string_view TypeName() const override { return "UnitsPage"; }
    [[nodiscard]] bool IsChanged() override;
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    [[nodiscard]] std::vector<std::string> Units() const;

    std::vector<std::string> m_units; // as they are in the store
    QPointer<QTableWidget> m_table;
};

} // namespace studies
