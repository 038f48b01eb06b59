#include "desktop/preview/PreviewWindow.h"
#include "desktop/record/StepRecorder.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace corvane::desktop {

// The file of the recorder goes on with the next run.
void PreviewWindow::Restart() {
    ViewState view = m_application ? ViewState::Of(*m_application) : ViewState();
    if (m_options.recorder)
        m_options.recorder->SetHeld(true);
    m_restarts = true;
    m_restarts = close(); // unsaved work may keep it open
    if (m_restarts)
        m_view = std::move(view);
    if (!m_options.recorder)
        return;
    m_options.recorder->SetHeld(false);
    if (m_restarts)
        m_options.recorder->Comment("Here the preview was started again.");
}

QString PreviewWindow::SessionFile() const {
    return m_kept.filePath("session.json");
}

QByteArray PreviewWindow::HandOver() const {
    QJsonArray opened;
    for (const std::string& name : m_opened)
        opened.append(QString::fromStdString(name));
    QJsonObject json{{"opened", opened}};
    if (m_view)
        json["view"] = m_view->ToJson();
    if (QFile session(SessionFile()); session.open(QIODevice::ReadOnly))
        json["session"] = QString::fromUtf8(session.readAll());
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

void PreviewWindow::TakeOver() {
    const QJsonObject json = QJsonDocument::fromJson(m_options.takenOver).object();
    if (!json.contains("view"))
        return;
    m_takesOver = true;
    m_view = ViewState::OfJson(json["view"].toObject());
    for (const auto& name : json["opened"].toArray())
        m_opened.insert(name.toString().toStdString());
    if (QFile session(SessionFile()); session.open(QIODevice::WriteOnly))
        session.write(json["session"].toString().toUtf8());
}

// What hasn't come back is closed for those who take the recorded steps, too.
void PreviewWindow::ReportClosedWindows(const ViewState& view) const {
    for (const ViewState::OpenWindow& open : view.windows)
        if (m_options.recorder && !ViewState::IsOpen(open))
            m_options.recorder->ByHost("close " + (open.key.empty() ? open.name : open.key));
}

} // namespace corvane::desktop
