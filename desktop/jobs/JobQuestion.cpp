#include "desktop/jobs/JobQuestion.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace corvane::desktop {

namespace {

struct JobQuestionBox {
    Q_DECLARE_TR_FUNCTIONS(JobQuestionBox)
};

constexpr qsizetype mostListed = 5;

} // namespace

JobAnswer AskInBox(const JobQuestion& question) {
    QMessageBox box(QMessageBox::Question, question.window, QString(), QMessageBox::NoButton, question.over);
    box.setTextFormat(Qt::PlainText);
    box.setText(
        question.jobs.size() == 1
            ? JobQuestionBox::tr("“%1” is still running in “%2”.").arg(question.jobs.front(), question.window)
            : JobQuestionBox::tr("%n jobs are still running in “%1”.", nullptr, static_cast<int>(question.jobs.size()))
                  .arg(question.window));
    QStringList listed = question.jobs.size() == 1 ? QStringList() : question.jobs.mid(0, mostListed);
    if (question.jobs.size() > mostListed)
        listed.append("…");
    listed.append(JobQuestionBox::tr("If the window closes, the result isn't shown in it any more."));
    box.setInformativeText(listed.join('\n'));
    QPushButton* later = box.addButton(JobQuestionBox::tr("&Wait, Then Close"), QMessageBox::AcceptRole);
    QPushButton* cancel = question.canCancel
                              ? box.addButton(JobQuestionBox::tr("&Cancel the Job"), QMessageBox::DestructiveRole)
                              : nullptr;
    QPushButton* leave = box.addButton(JobQuestionBox::tr("&Leave It Running"), QMessageBox::DestructiveRole);
    QPushButton* keep = box.addButton(JobQuestionBox::tr("&Keep Open"), QMessageBox::RejectRole);
    box.setDefaultButton(later);
    box.setEscapeButton(keep);
    box.exec();
    if (box.clickedButton() == later)
        return JobAnswer::CloseLater;
    if (cancel && box.clickedButton() == cancel)
        return JobAnswer::CancelJobs;
    return box.clickedButton() == leave ? JobAnswer::LeaveRunning : JobAnswer::KeepOpen;
}

} // namespace corvane::desktop
