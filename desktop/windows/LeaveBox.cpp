#include "desktop/windows/LeaveBox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace corvane::desktop {

namespace {

struct LeaveBox {
    Q_DECLARE_TR_FUNCTIONS(LeaveBox)
};

} // namespace

LeaveAnswer AskInBox(const LeaveQuestion& question) {
    QMessageBox box(QMessageBox::Warning, question.window, QString(), QMessageBox::NoButton, question.over);
    box.setTextFormat(Qt::PlainText);
    QPushButton* save = nullptr;
    if (question.canSave) {
        box.setText(LeaveBox::tr("“%1” has unsaved changes.").arg(question.window));
        box.setInformativeText(LeaveBox::tr("Do you want to save them before closing?"));
        save = box.addButton(LeaveBox::tr("&Save"), QMessageBox::AcceptRole);
    } else {
        box.setText(LeaveBox::tr("Your entries in “%1” will be lost.").arg(question.window));
        if (!question.hindrance.isEmpty())
            box.setInformativeText(LeaveBox::tr("It can't be saved yet. %1").arg(question.hindrance));
    }
    QPushButton* discard = box.addButton(LeaveBox::tr("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* stay = box.addButton(LeaveBox::tr("&Keep Editing"), QMessageBox::RejectRole);
    box.setDefaultButton(save ? save : stay);
    box.setEscapeButton(stay);
    box.exec();
    if (save && box.clickedButton() == save)
        return LeaveAnswer::Save;
    return box.clickedButton() == discard ? LeaveAnswer::Discard : LeaveAnswer::Stay;
}

} // namespace corvane::desktop
