// The steps of the import wizard: which file, how it is read, where it goes. They share one ImportJob.
#pragma once

#include "PageParts.h"
#include "StudyContexts.h"
#include "desktop/QtPage.h"

class QCheckBox;
class QLineEdit;
class QTableWidget;

namespace studies {

class ImportPage : public corvane::desktop::AnyQtPage {
protected:
    void OnInitialize() override;
    // Shows what has been read by now.
    virtual void ShowRead() {}
    [[nodiscard]] corvane::Ref<ImportJob> Job() const { return AboutAs<ImportJob>(); }
};

class ImportFilePage final : public corvane::desktop::QtPage<ImportFilePage, ImportJob, ImportPage> {
public:
    QWidget* FirstFocus() override;
    [[nodiscard]] bool IsChanged() override;

protected:
    QWidget* MakeWidget(QWidget* parent) override;
    [[nodiscard]] bool IsValid() override;

    void OnActivate() override;
    void ShowRead() override;

private:
    void FollowTyping();
    void TakePath();

    QPointer<QLineEdit> m_path;
    QPointer<QLabel> m_found;
    QPointer<ProblemLabel> m_problem;
};

class ImportFormatPage final : public corvane::desktop::QtPage<ImportFormatPage, ImportJob, ImportPage> {
protected:
    void OnActivate() override;
    void ShowRead() override;
    QWidget* MakeWidget(QWidget* parent) override;
    [[nodiscard]] bool IsValid() override;

private:
    void LookAgain();
    void ShowTypes(const Table& table);
    void ShowRows(const Table& table);
    void ShowSkipped(const std::vector<std::string>& skipped);

    QPointer<QComboBox> m_delimiter;
    QPointer<QTableWidget> m_preview;
    QPointer<QLabel> m_size;
    QPointer<QLabel> m_kept; // which columns of digits stay text, and why
    QPointer<ProblemLabel> m_problem;
    QPointer<QCheckBox> m_skip;
};

class ImportTargetPage final : public corvane::desktop::QtPage<ImportTargetPage, ImportJob, ImportPage> {
public:
    QWidget* FirstFocus() override;

protected:
    void OnActivate() override;
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;
    [[nodiscard]] bool IsValid() override { return Job()->TargetProblem().empty(); }

private:
    void TakeTarget();
    void ShowTarget();

    QPointer<QComboBox> m_study;
    QPointer<QLineEdit> m_newStudy;
    QPointer<QLabel> m_newStudyLabel;
    QPointer<QLineEdit> m_name;
    QPointer<ProblemLabel> m_problem;
};

} // namespace studies
