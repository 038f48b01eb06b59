// The place of the preview's own window and of the lists in it, which a user finds again at the next preview of that
// application. What is in the application isn't a part of it.
#pragma once

#include "desktop/state/StateFile.h"

#include <QObject>
#include <QTimer>
#include <string>

class QMainWindow;

namespace corvane::desktop {

class SavedPlace final : public QObject {
    Q_OBJECT
public:
    // Beside the log of the application in that folder.
    SavedPlace(QMainWindow* window, const std::string& applicationFolder);

    // Before the window is shown, with all its docks. From here on changes are kept, a moment after they were made.
    void Restore();
    // Writes what has changed, now.
    void Save();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QMainWindow* m_window;
    StateFile m_file;
    QJsonObject m_written;
    QTimer m_timer;
};

} // namespace corvane::desktop
