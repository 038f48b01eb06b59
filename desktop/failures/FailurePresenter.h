// Brings failures before the user's eyes, one after another, and lets the application go on.
#pragma once

#include "adapters/log/Utilities.h"
#include "analysis/Findings.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace corvane::desktop {

// What the dialog says of a failure.
struct FailureTexts {
    QString headline;       // what is wrong, in one sentence
    QString where;          // file and line, or module and procedure
    QString advice;         // what to do; empty when no one knows
    QString details;        // all that is known, to copy
    QString file;           // the definition file that failed, without its folder; empty for none
    bool isForUser = false; // the headline says all that a user needs: it comes from the application itself
};
[[nodiscard]] FailureTexts TextsOf(const ShownFailure& shown, const QString& servicesFolder);

// All that is wrong with a definition file, by `corvane check`; nothing when it isn't in that folder or can't be
// checked.
[[nodiscard]] std::vector<check::Finding> FindingsIn(const QString& filePath, const QString& servicesFolder);

class FailurePresenter final : public QObject {
    Q_OBJECT
public:
    // Without dialogs failures go to the error stream, for runs that no one watches.
    explicit FailurePresenter(bool withDialogs, QObject* parent = nullptr);

    void SetParentWindow(QWidget* window) { m_window = window; }
    void SetServicesFolder(QString folder) { m_servicesFolder = std::move(folder); }
    void SetLogFile(std::string logFile) { m_logFile = std::move(logFile); }

    // Asked first; true when it has taken the failure, which isn't shown then.
    void SetTaker(std::function<bool(const ShownFailure&)> take) { m_take = std::move(take); }

    // How many places there are on the way here at which a failure ends: guards, and events of the toolkit. A failure
    // that ends at the innermost of N has ended all code that began at a depth of at least N, and none before.
    [[nodiscard]] int Depth() const;

    // Notified of each failure that has come up to a guard or, at last, to the toolkit.
    class Observer {
    public:
        virtual void Failed(int depth) = 0; // before it is shown; where it has ended
        virtual void Seen() = 0;
        // A guard around everything else has made its call, which has failed or not.
        virtual void Returned() = 0;

    protected:
        ~Observer() = default;
    };
    // Outlives it.
    void SetObserver(Observer& observer) { m_observer = &observer; }

    // Shows a failure and returns when it has been seen. A failure that comes while another is shown waits its turn.
    void Show(const ShownFailure& shown);
    // The same for one that the library, or a plug-in's own guard, has logged and ended. Where that was in an event of
    // the toolkit and not in a command of the host, it counts as one that has come up to a guard.
    void ShowReported(const ShownFailure& shown);
    // The same for one that no guard was around. One that may come again by itself, as a timer's does, is shown once.
    void ShowUncaught(const ShownFailure& shown, bool comesByItself);
    // Runs what enters the library; a failure that leaves it is shown.
    void Guard(const std::function<void()>& act);

    // Distinguishes one entry into the library from another: 0 outside of all, else a number that belongs to the
    // outermost Guard of this turn of an event loop. A modal loop inside is entered again.
    [[nodiscard]] long Entry() const { return m_entries.empty() ? 0 : m_entries.back().number; }

    [[nodiscard]] int ShownCount() const { return m_shown; }

private:
    void ShowNow(const ShownFailure& shown);
    void ShowEnded(const ShownFailure& shown);

    struct EntryLevel {
        int loop;   // the depth of event loops
        int events; // and of events
        long number;
    };

    std::function<bool(const ShownFailure&)> m_take;
    std::vector<EntryLevel> m_entries;
    long m_entryCount = 0;
    bool m_withDialogs;
    bool m_showing = false;
    int m_shown = 0;
    std::deque<ShownFailure> m_waiting;
    Observer* m_observer = nullptr;
    std::set<std::string> m_shownOnce; // what is known of those that come by themselves
    QPointer<QWidget> m_window;
    QString m_servicesFolder;
    std::string m_logFile;
};

} // namespace corvane::desktop
