#include "desktop/preview/SavedPlace.h"

#include "adapters/common/Paths.h"
#include "desktop/session/WindowPlace.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <cstdio>
#include <filesystem>

namespace corvane::desktop {

namespace {

constexpr int version = 1;
constexpr int settleMilliseconds = 400;

// Empty, so that nothing is kept, where the user has no folder for it.
QString FileOf(const std::string& applicationFolder) {
    const std::string state = UserFolder("XDG_STATE_HOME", ".local/state");
    std::error_code error;
    const std::string name = std::filesystem::weakly_canonical(applicationFolder, error).filename().string();
    if (state.empty() || name.empty())
        return {};
    return QString::fromStdString(JoinPath(JoinPath(JoinPath(state, "corvane"), AsFileName(name)), "preview.json"));
}

} // namespace

SavedPlace::SavedPlace(QMainWindow* window, const std::string& applicationFolder)
    : QObject(window), m_window(window), m_file(FileOf(applicationFolder), [](const QString& text) {
          std::fprintf(stderr, "corvane-preview: warning: %s\n", qUtf8Printable(text));
      }) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(settleMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &SavedPlace::Save);
}

void SavedPlace::Restore() {
    m_written = m_file.Read();
    if (m_written["version"].toInt() == version) { // another's isn't known here
        PlaceAgain(*m_window, m_written["geometry"]);
        m_window->restoreState(Unpacked(m_written["docks"]), version);
    }
    m_window->installEventFilter(this);
    for (QDockWidget* dock : m_window->findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly))
        dock->installEventFilter(this);
}

void SavedPlace::Save() {
    m_timer.stop();
    const QJsonObject state{{"version", version},
                            {"geometry", Packed(m_window->saveGeometry())},
                            {"docks", Packed(m_window->saveState(version))}};
    if (state != m_written && m_file.Write(state))
        m_written = state;
}

bool SavedPlace::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
    case QEvent::Show:
        if (!m_timer.isActive())
            m_timer.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace corvane::desktop

#include "moc_SavedPlace.cpp"
