// The pages of the properties dialogs: of a study, of a data set, of its columns.
#pragma once

#include "PageParts.h"
#include "StudyContexts.h"
#include "desktop/QtPage.h"

class QLineEdit;
class QPlainTextEdit;
class QTableWidget;

namespace studies {

// A name and notes, with what is wrong with the name below it.
class NamePage : public corvane::desktop::AnyQtPage {
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

    // What is to be saved over what the store has now: entries that no one has touched here stay as they are there.
    // Fails, once for each, when an entry has been changed in both places; saving again replaces it.
    [[nodiscard]] std::string NameOver(const std::string& stored);
    [[nodiscard]] std::string NotesOver(const std::string& stored);

    // As they were in the store when they were read.
    std::string m_nameText;
    std::string m_notesText;

private:
    [[nodiscard]] std::string Problem();

    QPointer<QLineEdit> m_name;
    QPointer<QPlainTextEdit> m_notes;
    QPointer<ProblemLabel> m_problem;
};

class StudyPropertiesPage final : public corvane::desktop::QtPage<StudyPropertiesPage, StudyContext, NamePage> {
protected:
    void OnInitialize() override;
    void OnSave() override;
    [[nodiscard]] std::string NameProblem(const std::string& name) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> Facts() override;
};

class DataSetPropertiesPage final : public corvane::desktop::QtPage<DataSetPropertiesPage, DataSetContext, NamePage> {
protected:
    void OnInitialize() override;
    void OnSave() override;
    [[nodiscard]] std::string NameProblem(const std::string& name) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> Facts() override;
};

class UnitsPage final : public corvane::desktop::QtPage<UnitsPage, DataSetContext> {
public:
    [[nodiscard]] bool IsChanged() override;

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    [[nodiscard]] std::vector<std::string> Units() const;

    std::vector<std::string> m_units; // as they are in the store
    QPointer<QTableWidget> m_table;
};

} // namespace studies
