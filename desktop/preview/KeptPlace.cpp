#include "desktop/preview/KeptPlace.h"

#include "adapters/common/Paths.h"
#include "desktop/session/WindowPlace.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <cstdio>
#include <filesystem>

namespace corvane::desktop {

namespace {

constexpr int nVersion = 1;
constexpr int nSettleMilliseconds = 400;

// Empty, so that nothing is kept, where the person has no folder for it.
QString FileOf(const std::string& sApplicationFolder) {
    const std::string sState = UserFolder("XDG_STATE_HOME", ".local/state");
    std::error_code oError;
    const std::string sName = std::filesystem::weakly_canonical(sApplicationFolder, oError).filename().string();
    if (sState.empty() || sName.empty())
        return {};
    return QString::fromStdString(JoinPath(JoinPath(JoinPath(sState, "corvane"), AsFileName(sName)), "preview.json"));
}

} // namespace

KeptPlace::KeptPlace(QMainWindow* pWindow, const std::string& sApplicationFolder)
    : QObject(pWindow), m_pWindow(pWindow), m_oFile(FileOf(sApplicationFolder), [](const QString& sText) {
          std::fprintf(stderr, "corvane-preview: warning: %s\n", qUtf8Printable(sText));
      }) {
    m_oTimer.setSingleShot(true);
    m_oTimer.setInterval(nSettleMilliseconds);
    connect(&m_oTimer, &QTimer::timeout, this, &KeptPlace::Keep);
}

void KeptPlace::Restore() {
    m_oWritten = m_oFile.Read();
    if (m_oWritten["version"].toInt() == nVersion) { // another's isn't known here
        PlaceAgain(*m_pWindow, m_oWritten["geometry"]);
        m_pWindow->restoreState(Unpacked(m_oWritten["docks"]), nVersion);
    }
    m_pWindow->installEventFilter(this);
    for (QDockWidget* pDock : m_pWindow->findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly))
        pDock->installEventFilter(this);
}

void KeptPlace::Keep() {
    m_oTimer.stop();
    const QJsonObject oState{{"version", nVersion},
                             {"geometry", Packed(m_pWindow->saveGeometry())},
                             {"docks", Packed(m_pWindow->saveState(nVersion))}};
    if (oState != m_oWritten && m_oFile.Write(oState))
        m_oWritten = oState;
}

bool KeptPlace::eventFilter(QObject* pWatched, QEvent* pEvent) {
    switch (pEvent->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
    case QEvent::Show:
        if (!m_oTimer.isActive())
            m_oTimer.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(pWatched, pEvent);
}

} // namespace corvane::desktop
