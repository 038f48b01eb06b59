// The steps of the import wizard: which file, how it is read, where it goes. They share one ImportJob.
#pragma once

#include "PageParts.h"
#include "StudiesPage.h"
#include "StudyContexts.h"

class QCheckBox;
class QLineEdit;
class QTableWidget;

namespace studies {

class ImportPage : public StudiesPage {
protected:
    void OnInitialize() override;
    [[nodiscard]] corvane::Ref<ImportJob> Job() const { return About<ImportJob>(); }
};

class ImportFilePage final : public corvane::Automation<ImportFilePage, ImportPage> {
public:
    std::string_view TypeName() const override { return "ImportFilePage"; }
    QWidget* FirstFocus() override;
    [[nodiscard]] bool IsChanged() override;
    static constexpr auto Members = corvane::MemberTable();

protected:
    QWidget* MakeWidget(QWidget* pParent) override;
    [[nodiscard]] bool IsValid() override;

    void OnActivate() override;

private:
    void FollowTyping();
    void TakePath();
    void ShowFound();

    QPointer<QLineEdit> m_pPath;
    QPointer<QLabel> m_pFound;
    QPointer<ProblemLabel> m_pProblem;
};

class ImportFormatPage final : public corvane::Automation<ImportFormatPage, ImportPage> {
public:
    std::string_view TypeName() const override { return "ImportFormatPage"; }
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnActivate() override;
    QWidget* MakeWidget(QWidget* pParent) override;
    [[nodiscard]] bool IsValid() override;

private:
    void LookAgain();
    void ShowFile();
    void ShowTypes(const Table& oTable);
    void ShowRows(const Table& oTable);
    void ShowSkipped(const std::vector<std::string>& aSkipped);

    QPointer<QComboBox> m_pDelimiter;
    QPointer<QTableWidget> m_pPreview;
    QPointer<QLabel> m_pSize;
    QPointer<ProblemLabel> m_pProblem;
    QPointer<QCheckBox> m_pSkip;
};

class ImportTargetPage final : public corvane::Automation<ImportTargetPage, ImportPage> {
public:
    std::string_view TypeName() const override { return "ImportTargetPage"; }
    QWidget* FirstFocus() override;
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnActivate() override;
    void OnSave() override;
    QWidget* MakeWidget(QWidget* pParent) override;
    [[nodiscard]] bool IsValid() override { return Job()->TargetProblem().empty(); }

private:
    void TakeTarget();
    void ShowTarget();

    QPointer<QComboBox> m_pStudy;
    QPointer<QLineEdit> m_pNewStudy;
    QPointer<QLabel> m_pNewStudyLabel;
    QPointer<QLineEdit> m_pName;
    QPointer<ProblemLabel> m_pProblem;
};

} // namespace studies
