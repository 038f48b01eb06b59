#include "desktop/windows/LeaveBox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace corvane::desktop {

namespace {

QString Tr(const char* sText) {
    return QCoreApplication::translate("LeaveBox", sText);
}

} // namespace

LeaveAnswer AskInBox(const LeaveQuestion& oQuestion) {
    QMessageBox oBox(QMessageBox::Warning, oQuestion.sWindow, QString(), QMessageBox::NoButton, oQuestion.pOver);
    oBox.setTextFormat(Qt::PlainText);
    QPushButton* pSave = nullptr;
    if (oQuestion.bCanSave) {
        oBox.setText(Tr("“%1” has changes that aren't saved.").arg(oQuestion.sWindow));
        oBox.setInformativeText(Tr("Do you want to save them before it closes?"));
        pSave = oBox.addButton(Tr("&Save"), QMessageBox::AcceptRole);
    } else {
        oBox.setText(Tr("What you have entered in “%1” will be lost.").arg(oQuestion.sWindow));
        if (!oQuestion.sHindrance.isEmpty())
            oBox.setInformativeText(Tr("It can't be saved as it is. %1").arg(oQuestion.sHindrance));
    }
    QPushButton* pDiscard = oBox.addButton(Tr("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* pStay = oBox.addButton(Tr("&Keep Editing"), QMessageBox::RejectRole);
    oBox.setDefaultButton(pSave ? pSave : pStay);
    oBox.setEscapeButton(pStay);
    oBox.exec();
    if (pSave && oBox.clickedButton() == pSave)
        return LeaveAnswer::Save;
    return oBox.clickedButton() == pDiscard ? LeaveAnswer::Discard : LeaveAnswer::Stay;
}

} // namespace corvane::desktop
