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

LeaveAnswer AskInBox(const LeaveQuestion& oQuestion) {
    QMessageBox oBox(QMessageBox::Warning, oQuestion.sWindow, QString(), QMessageBox::NoButton, oQuestion.pOver);
    oBox.setTextFormat(Qt::PlainText);
    QPushButton* pSave = nullptr;
    if (oQuestion.bCanSave) {
        oBox.setText(LeaveBox::tr("“%1” has unsaved changes.").arg(oQuestion.sWindow));
        oBox.setInformativeText(LeaveBox::tr("Do you want to save them before closing?"));
        pSave = oBox.addButton(LeaveBox::tr("&Save"), QMessageBox::AcceptRole);
    } else {
        oBox.setText(LeaveBox::tr("Your entries in “%1” will be lost.").arg(oQuestion.sWindow));
        if (!oQuestion.sHindrance.isEmpty())
            oBox.setInformativeText(LeaveBox::tr("It can't be saved yet. %1").arg(oQuestion.sHindrance));
    }
    QPushButton* pDiscard = oBox.addButton(LeaveBox::tr("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* pStay = oBox.addButton(LeaveBox::tr("&Keep Editing"), QMessageBox::RejectRole);
    oBox.setDefaultButton(pSave ? pSave : pStay);
    oBox.setEscapeButton(pStay);
    oBox.exec();
    if (pSave && oBox.clickedButton() == pSave)
        return LeaveAnswer::Save;
    return oBox.clickedButton() == pDiscard ? LeaveAnswer::Discard : LeaveAnswer::Stay;
}

} // namespace corvane::desktop
