#include "desktop/preview/PreviewWindow.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace corvane::desktop {

// The file of the recorder goes on with the next run.
void PreviewWindow::Restart() {
    ViewState oView = m_pApplication ? ViewState::Of(*m_pApplication) : ViewState();
    if (m_oOptions.pRecorder)
        m_oOptions.pRecorder->SetHeld(true);
    m_bRestarts = true;
    m_bRestarts = close(); // unsaved work may keep it open
    if (m_bRestarts)
        m_oView = std::move(oView);
    if (!m_oOptions.pRecorder)
        return;
    m_oOptions.pRecorder->SetHeld(false);
    if (m_bRestarts)
        m_oOptions.pRecorder->Comment("Here the preview was started again.");
}

QString PreviewWindow::SessionFile() const {
    return m_oKept.filePath("session.json");
}

QByteArray PreviewWindow::HandOver() const {
    QJsonArray aOpened;
    for (const std::string& sName : m_setOpened)
        aOpened.append(QString::fromStdString(sName));
    QJsonObject oJson{{"opened", aOpened}};
    if (m_oView)
        oJson["view"] = m_oView->ToJson();
    if (QFile oSession(SessionFile()); oSession.open(QIODevice::ReadOnly))
        oJson["session"] = QString::fromUtf8(oSession.readAll());
    return QJsonDocument(oJson).toJson(QJsonDocument::Compact);
}

void PreviewWindow::TakeOver() {
    const QJsonObject oJson = QJsonDocument::fromJson(m_oOptions.aTakenOver).object();
    if (!oJson.contains("view"))
        return;
    m_bTakesOver = true;
    m_oView = ViewState::OfJson(oJson["view"].toObject());
    for (const QJsonValue& oName : oJson["opened"].toArray())
        m_setOpened.insert(oName.toString().toStdString());
    if (QFile oSession(SessionFile()); oSession.open(QIODevice::WriteOnly))
        oSession.write(oJson["session"].toString().toUtf8());
}

// What hasn't come back is closed for those who take the recorded steps, too.
void PreviewWindow::TellClosed(const ViewState& oView) const {
    for (const ViewState::OpenWindow& oOpen : oView.aWindows)
        if (m_oOptions.pRecorder && !ViewState::IsOpen(oOpen))
            m_oOptions.pRecorder->ByHost("close " + (oOpen.sKey.empty() ? oOpen.sName : oOpen.sKey));
}

} // namespace corvane::desktop
